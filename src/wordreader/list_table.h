#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "base/byte_view.h"
#include "base/status.h"
#include "wordreader/mso_word.h"
#include "wordreader/propx.h"

class KDRDocument;

// All objects of this header live in the document's allocator, or within an object that does. Positions are
// byte offsets in the table stream; the readers move the cursor that they are given behind what they read.

constexpr unsigned int kListLevels = 9;

/// One level of a list: how its paragraphs are numbered and indented.
class KDRListLevel {
 public:
  /// kFailure if the level lies partly outside the stream.
  Status ReadRecord(const KDRDocument& document, uint64_t& cursor);

  bool Good() const { return good_; }
  uint8_t GetNfc() const { return record_.nfc; }
  /// What follows the number: 0 a tab, 1 a space, 2 nothing.
  uint8_t GetIxchFollow() const { return record_.ixchFollow; }
  /// Nine 1-based positions of level numbers in the number text.
  const uint8_t* GetrgbxchNums() const { return record_.rgbxchNums; }
  uint16_t GetStartAt() const { return static_cast<uint16_t>(record_.startAt); }
  /// The number text, cut to 255 characters, with a terminating zero, null if it is empty; a character below
  /// 9 stands for a level's number where `GetrgbxchNums` says so.
  const uint16_t* GetXst() const { return text_; }
  uint16_t GetXstLen() const { return textLength_; }

  /// The level's sprms, read on first use; of size 0 if it has none, null if they could not be read.
  const KDRPropx* GetPapx(const KDRDocument& document) const;
  const KDRPropx* GetChpx(const KDRDocument& document) const;

 private:
  mso_word::LVLF record_{};
  bool good_ = false;
  uint16_t textLength_ = 0;  ///< characters that are kept
  const uint16_t* text_ = nullptr;
  uint64_t groups_ = 0;  ///< position of the paragraph group; the character group follows it
  mutable const KDRPropx* papx_ = nullptr;
  mutable const KDRPropx* chpx_ = nullptr;
};

/// A list definition and its levels: one, or nine.
class KDRlstf {
 public:
  /// Reads the levels at the cursor. A level that could not be read stays null, as do those behind it.
  Status ReadRecord(const mso_word::LSTF& record, const KDRDocument& document, uint64_t& cursor);

  bool Good() const { return levelCount_ != 0; }
  int32_t Getlsid() const { return lsid_; }
  unsigned int GetLevelCount() const { return levelCount_; }
  /// Null if the level is out of range or could not be read.
  const KDRListLevel* GetLevel(unsigned int level) const {
    return level < levelCount_ ? levels_[level] : nullptr;
  }

 private:
  int32_t lsid_ = 0;
  unsigned int levelCount_ = 0;
  std::array<const KDRListLevel*, kListLevels> levels_{};
};

/// The override of one level.
class KDRLfoLvl {
 public:
  Status ReadRecord(const KDRDocument& document, uint64_t& cursor);

  /// The level that takes the place of the definition's; null if the override brings none.
  const KDRListLevel* GetLevel() const { return level_; }
  uint16_t Getilvl() const { return record_.flags & mso_word::LFOLVL::kLevel; }
  bool HasSetStartAt() const { return (record_.flags & mso_word::LFOLVL::kStartAt) != 0; }
  bool HasSetFormat() const { return (record_.flags & mso_word::LFOLVL::kFormat) != 0; }
  uint16_t GetStartAt() const { return static_cast<uint16_t>(record_.startAt); }

 private:
  mso_word::LFOLVL record_{};
  const KDRListLevel* level_ = nullptr;
};

/// A use of a list definition with the levels that it overrides.
class KDRListFormatOverride {
 public:
  Status ReadRecord(const mso_word::LFO& record, const KDRDocument& document, uint64_t& cursor);

  bool Good() const { return good_; }
  int32_t Getlsid() const { return lsid_; }
  /// Index of the override of `level`; of two, the first. False if the level is not overridden.
  bool Find(unsigned short level, unsigned short& index) const;
  /// Null if out of range.
  const KDRLfoLvl* Item(unsigned int index) const {
    return index < overrides_.size() ? overrides_[index] : nullptr;
  }

 private:
  static constexpr uint8_t kNone = 0xFF;  ///< an override has at most 255 entries

  int32_t lsid_ = 0;
  bool good_ = false;
  std::array<uint8_t, 16> indexOfLevel_{};  ///< valid once good
  std::vector<const KDRLfoLvl*> overrides_;
};

/// A list as paragraphs use it: a definition seen through an override.
class KDRList {
 public:
  KDRList(const KDRListFormatOverride& format, const KDRlstf& definition)
      : format_(&format), definition_(&definition) {}

  bool Good() const { return format_->Good() && definition_->Good(); }
  unsigned int GetLevelCount() const { return definition_->GetLevelCount(); }
  /// The overriding level, else the definition's; null if it is out of range or could not be read.
  const KDRListLevel* GetLevel(unsigned short level) const;
  /// The number that the level begins with. A full overriding level does not bring a start of its own: that
  /// of the definition holds.
  uint16_t GetLevelStartAt(unsigned short level) const;

 private:
  const KDRLfoLvl* FindOverride(unsigned short level) const;

  const KDRListFormatOverride* format_;
  const KDRlstf* definition_;
};

/// Table 73: the list definitions by `lsid`. The levels lie directly behind the table's own bytes.
class KDRListDataTable {
 public:
  Status Read(const KDRDocument& document);
  /// The definition with that id; if there is none, one that is not `Good()`.
  const KDRlstf& Item(int32_t lsid) const;

 private:
  Status ReadRecord(ByteView bytes, const KDRDocument& document, uint64_t cursor);

  std::map<int32_t, const KDRlstf*> lists_;
};

/// Table 74: the list overrides, in file order. Their levels lie directly behind the records.
class KDRLfoDataTable {
 public:
  Status Read(const KDRDocument& document);
  unsigned int Count() const { return static_cast<unsigned int>(overrides_.size()); }
  /// Null if out of range.
  const KDRListFormatOverride* Item(unsigned int index) const {
    return index < overrides_.size() ? overrides_[index] : nullptr;
  }

 private:
  static ByteView ReadRecords(const KDRDocument& document, uint64_t cursor, uint32_t count);

  std::vector<const KDRListFormatOverride*> overrides_;
};

/// The document's lists by list number (ilfo), which counts from 1.
/// An override whose definition is missing is left out, and the numbers behind it move up by one.
class KDRListTable {
 public:
  Status Read(const KDRDocument& document);
  unsigned int Count() const { return static_cast<unsigned int>(lists_.size()); }
  /// List number `ilfo`, 1 to `Count()`; null outside of it.
  const KDRList* Item(unsigned int ilfo) const {
    return ilfo - 1 < lists_.size() ? &lists_[ilfo - 1] : nullptr;
  }

 private:
  KDRListDataTable definitions_;
  KDRLfoDataTable overrides_;
  std::vector<KDRList> lists_;
};
