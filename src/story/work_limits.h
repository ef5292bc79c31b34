#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "base/run_control.h"
#include "base/warnings.h"
#include "base/write_archive.h"
#include "wordreader/mso_word.h"

class KDRDocument;

namespace pagerex {

/// An amount that is used up.
class KBudget {
 public:
  KBudget() = default;
  explicit KBudget(uint64_t amount) : left_(amount) {}

  /// Takes `n`; false, and nothing is taken, if there is not so much.
  bool Take(uint64_t n = 1) {
    if (n > left_) {
      refused_ = true;
      return false;
    }
    left_ -= n;
    return true;
  }
  /// Gives out nothing more.
  void End() { left_ = 0; }
  void Add(uint64_t n) { left_ += n; }
  uint64_t left() const { return left_; }
  /// Whether more has been asked for than there was.
  bool refused() const { return refused_; }

 private:
  uint64_t left_ = UINT64_MAX;
  bool refused_ = false;
};

/// How much a conversion may do, all its stories together. The tables of a damaged document may refer to the
/// same text, rows or shapes again and again, so that a small file asks for endless work; here each kind of
/// work has an amount in proportion to the document, far above what a sound one needs. What lies beyond is
/// left out, and the conversion goes on. docs/limits.md tells all limits.
class KWorkLimits {
 public:
  /// A null `document` for no limits. `control` (may be null) ends the work like a limit does; it is not
  /// owned.
  explicit KWorkLimits(const KDRDocument* document, RunControl* control = nullptr);

  /// A paragraph, or a run and its characters, of a story is written.
  /// After the first that is refused, the story has ended.
  bool Visit(mso_word::SUBDOC_TYPE story, uint64_t steps) {
    KBudget& visits = stories_[story].visits;
    if (!visits.Take(steps)) visits.End();
    return visits.left() > 0;
  }
  /// A step is made in the search for a paragraph's runs, where their table is out of order.
  bool Search(mso_word::SUBDOC_TYPE story) { return stories_[story].searches.Take(); }
  /// A position is tried for a picture bullet.
  bool TryBullet() { return bullets_.Take(); }
  /// A heading or a bookmark goes into the navigation.
  bool AddToNavigation() { return navigation_.Take(); }
  /// Properties that many may share, those of a section or of a label's style, are decoded once more.
  bool DecodeShared(uint64_t bytes) { return sharedBytes_.Take(bytes); }
  /// A table is opened, or one of its paragraphs looked at ahead, or a cell written that has no content.
  bool OpenTable() { return tables_.Take(); }
  bool LookAhead() { return looks_.Take(); }
  uint64_t looksLeft() const { return looks_.left(); }
  bool FillCell() { return fillers_.Take(); }
  /// A shape is written; `cost` counts its properties, points and the like.
  bool WriteShape(uint64_t cost) { return shapes_.Take(cost); }
  /// A picture file of so many bytes is written.
  bool WritePicture(uint64_t bytes) { return pictureBytes_.Take(bytes); }

  /// Bytes of markup that a document may become, without what each page adds.
  static uint64_t MostOutputBytes(const KDRDocument& document);
  /// True once `archive` has written so much, or the conversion is to end.
  bool OutputFull(const IWriteArchive& archive) const {
    return archive.GetWrittenBytes() >= outputBytes_ || (control_ && control_->MustStop());
  }
  /// A new page brings a head and a tail, which do not count.
  void AddPage() { outputBytes_ += kPageFrame; }
  /// Tells what was refused, and whether the output of `archive` came to its limit.
  void Report(const IWriteArchive& archive, Warnings& warnings) const;

 private:
  static constexpr uint64_t kPageFrame = 8192;

  struct Story {
    KBudget visits;
    KBudget searches;
  };

  std::array<Story, mso_word::kSubDocCount> stories_;
  KBudget bullets_, navigation_, sharedBytes_, tables_, looks_, fillers_, shapes_, pictureBytes_;
  uint64_t outputBytes_ = UINT64_MAX / 2;
  RunControl* control_;
};

}  // namespace pagerex
