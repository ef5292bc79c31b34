#include "flow/walked_document.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/byte_source.h"
#include "storage/com_interfaces.h"
#include "storage/compound_file.h"

namespace flow_test {

using namespace pagerex;

Warnings walkInto(const support::Bytes& file, FlowHandler& handler, const WalkOptions& options) {
  Warnings warnings;
  MemorySource source(file.data(), file.size());
  IStorage* storage = nullptr;
  if (OpenCompoundFile(source, nullptr, &storage) != Status::kOk) {
    ADD_FAILURE() << "this is no compound file";
    return warnings;
  }
  {
    WordFile word;
    const Status status = word.Open(storage, nullptr, &warnings);
    EXPECT_EQ(status, Status::kOk);
    RunControl control;
    if (status == Status::kOk) walk(word, options, control, nullptr, handler);
  }
  storage->Release();
  return warnings;
}

Walked::Walked(const support::Bytes& file, unsigned parts, const WalkOptions& options) : transcript_(parts) {
  warnings_ = walkInto(file, transcript_, options);
  EXPECT_TRUE(transcript_.isBalanced()) << transcript_.text();
}

bool Walked::warnsOf(WarningCode code) const {
  return std::any_of(warnings_.all().begin(), warnings_.all().end(),
                     [code](const Warning& warning) { return warning.code == code; });
}

std::string transcriptOf(const support::WordDocument& document, unsigned parts, const WalkOptions& options) {
  Walked walked(document, parts, options);
  EXPECT_FALSE(walked.warns());
  return "\n" + walked.text();
}

}  // namespace flow_test
