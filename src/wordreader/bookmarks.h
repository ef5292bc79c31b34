#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "base/status.h"
#include "wordreader/plcf.h"
#include "wordreader/sttbf.h"

class KDRFib;

/// Starts of ranges that are named by a string table: bookmarks (22 with 21), annotation ranges (42 with 37).
template <uint32_t bkfId, uint32_t sttbfId>
class KDRPlcfbkf : public KDRSttbf<sttbfId> {
 public:
  struct ItemType {
    KDWRange range;
    mso_word::BKF bkf{};
    KDRSttbfItem name;
  };
  /// kFailure, and no entries, if there are not as many names as positions.
  Status Read(const KDRDocument& document);
  uint32_t Count() const { return positions_.Count(); }
  /// Throws std::out_of_range for an entry without a name.
  ItemType Item(uint32_t i) const;
  const KDRPlcf<mso_word::BKF, bkfId>& positions() const { return positions_; }

 private:
  KDRPlcf<mso_word::BKF, bkfId> positions_;
};

using KBookmarkStarts = KDRPlcfbkf<mso_word::FCLCB_BOOKMARK_STARTS, mso_word::FCLCB_BOOKMARK_NAMES>;
using KBookmarkEnds = KDRPlcf<void, mso_word::FCLCB_BOOKMARK_ENDS>;

/// One sub-document's view of the bookmark starts; positions are relative to the sub-document.
class KDRPlcfBkf {
 public:
  Status Init(const KDRFib& fib, mso_word::SUBDOC_TYPE type, const KBookmarkStarts* starts);
  uint32_t Count() const { return count_; }
  /// An entry of zeros without a name outside the view.
  KBookmarkStarts::ItemType Item(int i) const;
  /// Position of bookmark i alone.
  uint32_t Start(uint32_t i) const;
  uint32_t first() const { return first_; }
  uint32_t subDocStart() const { return subDocStart_; }

 private:
  const KBookmarkStarts* starts_ = nullptr;
  uint32_t first_ = 0;
  uint32_t subDocStart_ = 0;
  uint32_t count_ = 0;
};

/// The ends that go with a KDRPlcfBkf, paired by their place in the table.
class KDRPlcfBkl {
 public:
  Status Init(const KDRFib& fib, mso_word::SUBDOC_TYPE type, const KDRPlcfBkf* starts,
              const KBookmarkEnds* ends);
  /// End position of bookmark i, relative to the sub-document.
  uint32_t Item(unsigned int i) const;

 private:
  const KBookmarkEnds* ends_ = nullptr;
  const KDRPlcfBkf* starts_ = nullptr;
};

/// Bookmark index by position.
using KBookmarkPositions = std::multimap<unsigned int, unsigned int>;

/// All bookmarks of a document, by sub-document.
class KDRBookMarks {
 public:
  Status Read(const KDRDocument& document);
  const KDRPlcfBkf& GetStarts(mso_word::SUBDOC_TYPE type) const { return bkf_[type]; }
  const KBookmarkPositions& GetCPStarts(mso_word::SUBDOC_TYPE type) const { return cpStarts_[type]; }

 private:
  void EnterPositions(mso_word::SUBDOC_TYPE type);

  std::array<KDRPlcfBkf, mso_word::kSubDocCount> bkf_;
  std::array<KDRPlcfBkl, mso_word::kSubDocCount> bkl_;
  KBookmarkEnds ends_;
  KBookmarkStarts starts_;
  std::array<KBookmarkPositions, mso_word::kSubDocCount> cpStarts_;
  std::array<KBookmarkPositions, mso_word::kSubDocCount> cpEnds_;
};
