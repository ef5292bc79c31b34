#include <gtest/gtest.h>

#include <string>

#include "base/byte_source.h"
#include "flow/walk.h"
#include "mutation/flow_documents.h"
#include "mutation/mutations.h"
#include "storage/com_interfaces.h"
#include "storage/compound_file.h"
#include "support/flow_transcript.h"

// Walks over documents that are sound but for a few bytes: whatever these are, all that begins ends, stands
// where it may stand, and is not endless.

namespace {

using namespace pagerex;
using mutation::changed;
using mutation::fileOf;
using support::Bytes;

constexpr RevisionView kViews[] = {RevisionView::kFinal, RevisionView::kOriginal, RevisionView::kAll};

/// False if the file is refused.
bool walkOver(const Bytes& file, RevisionView view, const std::string& what) {
  MemorySource source(file.data(), file.size());
  IStorage* storage = nullptr;
  if (OpenCompoundFile(source, nullptr, &storage) != Status::kOk) return false;
  support::FlowTranscript transcript(~0u);
  Warnings warnings;
  bool isOpen = false;
  {
    WordFile word;
    isOpen = word.Open(storage, nullptr, &warnings) == Status::kOk;
    RunControl control;
    if (isOpen) walk(word, {.revisions = view, .hiddenText = true}, control, nullptr, transcript);
  }
  storage->Release();
  if (!isOpen) return false;
  constexpr size_t kMost = 1 << 22;
  EXPECT_TRUE(transcript.isBalanced()) << what;
  EXPECT_LT(transcript.text().size(), kMost) << what;
  return true;
}

void walkOverMutations(const std::vector<mutation::NamedDocument>& documents, int rounds) {
  mutation::Random random;
  int walked = 0, refused = 0;
  for (const mutation::NamedDocument& rich : documents) {
    ASSERT_TRUE(walkOver(rich.document.build(), RevisionView::kFinal, rich.name));
    const support::WordStreams sound = rich.document.streams();
    for (int round = 0; round < rounds; ++round) {
      const std::string what = std::string(rich.name) + " " + std::to_string(round);
      ++(walkOver(fileOf(changed(sound, random)), random.of(kViews), what) ? walked : refused);
    }
  }
  EXPECT_GT(walked, refused);
}

}  // namespace

TEST(MutatedWalk, EndsInOrderWhateverTheViewsReadToo) {
  walkOverMutations(mutation::richDocuments(), 200);
}

TEST(MutatedWalk, EndsInOrderWhateverOnlyTheWalkReads) {
  walkOverMutations(mutation::flowDocuments(), 500);
}

TEST(MutatedWalk, EndsInOrderWhereverAStreamIsCut) {
  for (const mutation::NamedDocument& each : mutation::flowDocuments()) {
    const support::WordStreams sound = each.document.streams();
    for (size_t size = 0; size < sound.wordDocument.size(); size += 37) {
      support::WordStreams cut = sound;
      cut.wordDocument.resize(size);
      walkOver(fileOf(cut), RevisionView::kAll, each.name);
    }
    for (size_t size = 0; size < sound.table.size(); size += 13) {
      support::WordStreams cut = sound;
      cut.table.resize(size);
      walkOver(fileOf(cut), RevisionView::kAll, each.name);
    }
  }
}
