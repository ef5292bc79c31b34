#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "base/byte_view.h"
#include "base/status.h"
#include "wordreader/bookmarks.h"
#include "wordreader/mso_word.h"
#include "wordreader/plcf.h"

/// An author of annotations; both texts are NUL-terminated.
struct UserInfo {
  unsigned short name[64] = {};  ///< cut to 63 characters
  unsigned short initials[16] = {};
};

/// A reference to an annotation in the main text.
struct AtnRef {
  int32_t rangeTag = -1;     ///< tag of the annotated range, -1 for none
  int16_t authorIndex = 0;   ///< into the users, unchecked: use `KDRAnnotations::GetAuthor`
  uint32_t position = 0;     ///< of the reference in the main text
  uint32_t rangeLength = 0;  ///< characters from the start of the annotated range to the reference
};

/// Starts of the annotated ranges, found by tag.
class KDRAtnBkmkStars
    : public KDRPlcfbkf<mso_word::FCLCB_ANNOTATION_RANGE_STARTS, mso_word::FCLCB_ANNOTATION_RANGE_NAMES> {
 public:
  static constexpr uint32_t kNoRange = 65535;

  Status Read(const KDRDocument& document);
  /// Index of the first range whose name carries `tag`, or kNoRange.
  uint32_t FindRefIndex(unsigned int tag) const;

 private:
  std::vector<std::pair<uint32_t, uint32_t>> indexByTag_;  ///< sorted
};

/// The annotation references in the order of the file.
class KDRAtnRefs {
 public:
  /// Reads the authors into `users` and the references. kNothing, and no reference, if the document has no
  /// table of authors.
  Status Read(const KDRDocument& document, const KDRAtnBkmkStars& ranges, std::vector<UserInfo>& users);
  uint32_t Count() const { return static_cast<uint32_t>(refs_.size()); }
  /// A reference of default values outside the table.
  AtnRef Item(unsigned int i) const { return i < refs_.size() ? refs_[i] : AtnRef(); }

 private:
  std::vector<AtnRef> refs_;
};

/// Dates of the annotations by index: records of 18 bytes that begin with a DTTM.
class KDRAtnDTTMs {
 public:
  static constexpr uint32_t kRecordSize = 18;

  Status Read(const KDRDocument& document);
  uint32_t Count() const { return static_cast<uint32_t>(bytes_.size() / kRecordSize); }
  /// In place; null outside the table.
  const mso_word::DTTM* Item(uint32_t i) const {
    return i < Count() ? bytes_.record<mso_word::DTTM>(size_t{i} * kRecordSize) : nullptr;
  }

 private:
  ByteView bytes_;
};

/// The annotations of a document: authors, references, dates, and where their texts lie in the annotation
/// sub-document.
class KDRAnnotations {
 public:
  using TextRanges = KDRPlcf<void, mso_word::FCLCB_ANNOTATION_TEXT>;

  /// Stops at the first table that fails; absent tables are empty.
  Status Read(const KDRDocument& document);
  const std::vector<UserInfo>& GetUsers() const { return users_; }
  const KDRAtnRefs& GetRefs() const { return refs_; }
  const TextRanges& GetTextRanges() const { return textRanges_; }
  const KDRAtnDTTMs& GetDTTMs() const { return dates_; }
  /// The author that a reference names; one with empty texts if there is none of that index.
  const UserInfo& GetAuthor(const AtnRef& ref) const;

 private:
  std::vector<UserInfo> users_;
  KDRAtnRefs refs_;
  TextRanges textRanges_;
  KDRAtnDTTMs dates_;
  KDRAtnBkmkStars ranges_;
  KDRPlcf<void, mso_word::FCLCB_ANNOTATION_RANGE_ENDS> rangeEnds_;
};
