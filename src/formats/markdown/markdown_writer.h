#pragma once

#include <memory>

#include "base/link_policy.h"
#include "base/utf8_output.h"
#include "base/warnings.h"
#include "flow/handler.h"
#include "formats/picture_output.h"

namespace pagerex {

struct MarkdownOptions {
  /// Nothing of GitHub's beyond CommonMark: tables as HTML, notes as links, `<del>`.
  bool commonMarkOnly = false;
  bool comments = true;
  bool frontMatter = false;
  bool pageBreaks = false;  ///< as `<!-- page break -->`
  bool htmlTables =
      true;  ///< for tables that a pipe table cannot show; otherwise these are brought into its form
  LinkPolicy links = LinkPolicy::kSafe;
};

class MarkdownBody;

/// Writes a document as Markdown, GitHub's unless it is to be CommonMark only.
class MarkdownWriter final : public FlowHandler {
 public:
  /// None is owned. `pictures` and `warnings` may be null; without `pictures` their descriptions are shown.
  MarkdownWriter(Utf8Output& out, const MarkdownOptions& options, PictureOutput* pictures,
                 Warnings* warnings);
  ~MarkdownWriter() override;
};

}  // namespace pagerex
