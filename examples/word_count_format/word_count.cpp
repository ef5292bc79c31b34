#include "word_count_format/word_count.h"

#include <string>

#include "base/utf8_output.h"
#include "formats/flow_format.h"

namespace pagerex {
namespace {

class WordCountWriter final : public FlowHandler {
 public:
  /// `out` is not owned.
  explicit WordCountWriter(Utf8Output& out) : out_(out) {}

  void BeginDocument(const DocumentFacts&) override { out_.Put(std::string_view("In front: ")); }
  void BeginHeader(const HeaderFacts&) override { isInHeader_ = true; }
  void EndHeader() override { isInHeader_ = false; }

  void BeginParagraph(const ParagraphFacts& facts) override {
    isInWord_ = false;
    isHeading_ = facts.headingLevel != 0 && !isInHeader_;
    if (isHeading_) PutCount();
  }

  void EndParagraph() override {
    if (isHeading_) out_.Put(std::string_view(": "));
    isHeading_ = false;
  }

  /// A word goes on from one text to the next, whatever they look like.
  void Text(std::u16string_view text, const RunProperties&) override {
    if (isInHeader_) return;
    if (isHeading_) return out_.Put(text);
    for (const char16_t unit : text) {
      if (unit != u' ' && !isInWord_) ++words_;
      isInWord_ = unit != u' ';
    }
  }

  void MarkHere(Mark, const RunProperties&) override { isInWord_ = false; }
  void EndDocument() override { PutCount(); }

 private:
  void PutCount() {
    out_.Put(std::to_string(words_) + "\n");
    words_ = 0;
  }

  Utf8Output& out_;
  uint64_t words_ = 0;
  bool isInWord_ = false, isHeading_ = false, isInHeader_ = false;
};

}  // namespace

Status writeWordCount(FormatJob& job) {
  Utf8Output out(job.files);
  if (!out.Open(job.mainName.c_str())) return Status::kFailure;
  WordCountWriter writer(out);
  walkFor(job, writer);
  return Status::kOk;
}

}  // namespace pagerex
