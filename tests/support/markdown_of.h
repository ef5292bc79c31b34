#pragma once

#include <functional>
#include <string>

#include "formats/markdown/markdown_writer.h"
#include "support/flow_script.h"
#include "support/memory_sink.h"

namespace support {

/// The Markdown of a document that is told call by call.
inline std::string markdownOf(const std::function<void(FlowScript&)>& inside,
                              const std::function<void(FlowScript&)>& behind = {},
                              const pagerex::MarkdownOptions& options = {},
                              pagerex::PictureOutput* pictures = nullptr,
                              pagerex::Warnings* warnings = nullptr) {
  MemorySink sink;
  OutputFiles files(sink);
  pagerex::Utf8Output out(files);
  out.Open("markdown");
  pagerex::MarkdownWriter writer(out, options, pictures, warnings);
  FlowScript script(writer);
  script.Document([&] { inside(script); },
                  [&] {
                    if (behind) behind(script);
                  });
  out.Close();
  return sink.files["markdown"];
}

}  // namespace support
