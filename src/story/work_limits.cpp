#include "story/work_limits.h"

#include "base/write_archive.h"
#include "wordreader/bookmarks.h"
#include "wordreader/document.h"
#include "wordreader/text_pool.h"

namespace pagerex {
namespace {

// How often a thing of the document may be met, and what is granted on top so that small documents may be
// damaged at will. In a sound document a story is written once, or twice for the text of a shape.
constexpr uint64_t kMostReadings = 8;
constexpr uint64_t kSpareSteps = 1 << 16;
constexpr uint64_t kMostSearches = 64;
constexpr uint64_t kSpareSearches = 1 << 16;
constexpr uint64_t kMostDecodings = 64;
constexpr uint64_t kSpareDecodedBytes = 1 << 20;
constexpr uint64_t kMostLinks = 2;  // for each paragraph and bookmark of the main text
constexpr uint64_t kSpareLinks = 1024;
constexpr uint64_t kMostTables = 4;    // for each paragraph
constexpr uint64_t kMostLooks = 64;    // at each paragraph
constexpr uint64_t kMostFillers = 64;  // for each paragraph
constexpr uint64_t kShapeCost = 32;    // for each byte of the document
constexpr uint64_t kSpareShapeCost = 4 << 20;
constexpr uint64_t kPictureBytes = 32;  // for each byte of the document
constexpr uint64_t kSparePictureBytes = 64 << 20;
constexpr uint64_t kOutputBytes = 256;  // for each byte of the document
constexpr uint64_t kSpareOutputBytes = 16 << 20;

}  // namespace

KWorkLimits::KWorkLimits(const KDRDocument* document, RunControl* control) : control_(control) {
  if (!document) return;
  uint64_t characters = 0;
  uint64_t paragraphs = 0;
  for (size_t i = 0; i < stories_.size(); ++i) {
    const auto type = static_cast<mso_word::SUBDOC_TYPE>(i);
    const uint64_t runs = document->GetPlcfChp(type).Count();
    const uint64_t entries = runs + document->GetPlcfPap(type).Count();
    const uint64_t steps = document->GetTextPool(type).size() + entries;
    characters += document->GetTextPool(type).size();
    stories_[i].visits = KBudget(kMostReadings * steps + kSpareSteps);
    stories_[i].searches = KBudget(kMostSearches * steps + kSpareSearches);
    paragraphs += document->GetPlcfPap(type).Count();
  }
  bullets_ = KBudget(kMostSearches * characters + kSpareSearches);
  navigation_ =
      KBudget(kMostLinks * (document->GetPlcfPap(mso_word::SUBDOC_MAIN).Count() +
                            uint64_t{document->GetBookMarks().GetStarts(mso_word::SUBDOC_MAIN).Count()}) +
              kSpareLinks);
  tables_ = KBudget(kMostTables * paragraphs + kSpareSteps);
  looks_ = KBudget(kMostLooks * paragraphs + kSpareSteps);
  fillers_ = KBudget(kMostFillers * paragraphs + kSpareSteps);
  const uint64_t bytes = document->GetStreamBytes();
  sharedBytes_ = KBudget(kMostDecodings * bytes + kSpareDecodedBytes);
  shapes_ = KBudget(kShapeCost * bytes + kSpareShapeCost);
  pictureBytes_ = KBudget(kPictureBytes * bytes + kSparePictureBytes);
  outputBytes_ = MostOutputBytes(*document);
}

uint64_t KWorkLimits::MostOutputBytes(const KDRDocument& document) {
  return kOutputBytes * document.GetStreamBytes() + kSpareOutputBytes;
}

void KWorkLimits::Report(const IWriteArchive& archive, Warnings& warnings) const {
  struct Row {
    const KBudget& budget;
    const char* work;
  };
  const Row rows[] = {
      {bullets_, "picture bullets"}, {navigation_, "navigation"}, {sharedBytes_, "shared properties"},
      {tables_, "tables"},           {looks_, "tables"},          {fillers_, "cells without content"},
      {shapes_, "shapes"},           {pictureBytes_, "pictures"},
  };
  for (const Row& row : rows) {
    if (row.budget.refused()) warnings.Add(WarningCode::kWorkLimit, row.work);
  }
  for (const Story& story : stories_) {
    if (story.visits.refused()) warnings.Add(WarningCode::kWorkLimit, "text");
    if (story.searches.refused()) warnings.Add(WarningCode::kWorkLimit, "runs out of order");
  }
  if (archive.GetWrittenBytes() >= outputBytes_) warnings.Add(WarningCode::kOutputFull);
}

}  // namespace pagerex
