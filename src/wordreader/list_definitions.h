#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "base/byte_view.h"
#include "base/warnings.h"

namespace pagerex {

constexpr unsigned kLevelsOfList = 9;

/// One level of a list (LVL), as it lies in the table stream.
struct ListLevel {
  int32_t start = 0;
  uint8_t nfc = 0;
  uint8_t alignment = 0;  ///< 0 left, 1 centre, 2 right of where it stands
  uint8_t follow = 0;     ///< behind the number: 0 a tab, 1 a space, 2 nothing
  bool isLegal = false;   ///< all numbers of its text are decimal
  /// A paragraph of a level below this one, and above the level itself, starts it anew: 9 if all do, 0 if
  /// none.
  uint8_t restartLimit = kLevelsOfList;
  ByteView text;          ///< UTF-16; characters 0 to 8 at the placeholders stand for numbers of levels
  ByteView placeholders;  ///< nine places in the text, from 1, ascending; 0 behind the last
  ByteView papx;          ///< sprms of its paragraphs
  ByteView chpx;          ///< sprms of its label
};

/// A level as a paragraph uses it.
struct UsedLevel {
  const ListLevel* level = nullptr;  ///< null: the list has no such level
  int32_t start = 0;
  bool hasOwnStart = false;  ///< the use begins anew, at `start`
  uint8_t number = 0;        ///< of the level, from 0: not that of the paragraph in a list with one level
};

/// The lists of a document: definitions (LSTF) by lsid, and their uses (LFO) by ilfo, which counts from 1.
/// Levels lie in the table stream, which must stay. What is damaged is absent.
class ListDefinitions {
 public:
  static constexpr uint16_t kNoStyle = 0x0FFF;

  /// `behindLst` is the rest of the table stream from the end of `plfLst` on, where the levels lie.
  void Read(ByteView plfLst, ByteView behindLst, ByteView plfLfo, Warnings* warnings);

  uint32_t UseCount() const { return static_cast<uint32_t>(uses_.size()); }
  uint32_t DefinitionCount() const { return static_cast<uint32_t>(lists_.size()); }

  /// Index of the definition that `ilfo` uses, below `DefinitionCount()`; -1 for no list: 0, 0x7FF, ...
  int32_t DefinitionOf(uint16_t ilfo) const { return ilfo - 1u < uses_.size() ? uses_[ilfo - 1u].list : -1; }
  int32_t Lsid(int32_t definition) const { return lists_[static_cast<size_t>(definition)].lsid; }
  /// Of a list with one level, each level is that one.
  UsedLevel Level(uint16_t ilfo, unsigned level) const;
  /// The paragraph style that is linked to a level of a use's list (istd); kNoStyle for none.
  uint16_t StyleOfLevel(uint16_t ilfo, unsigned level) const;
  /// The level that a paragraph style is linked to in the list of a use; -1 for none.
  int LevelOfStyle(uint16_t ilfo, uint16_t istd) const;

 private:
  static constexpr uint32_t kNone = UINT32_MAX;

  struct List {
    int32_t lsid;
    uint32_t firstLevel;  ///< in `levels_`
    uint8_t levelCount;   ///< those that could be read
    bool isSimple;        ///< has one level
    ByteView styles;      ///< rgistdPara
  };
  struct Use {
    int32_t list;  ///< -1 if its definition is missing
    uint32_t firstOverride;
    uint8_t overrideCount;
  };
  struct Override {
    uint8_t level;
    bool hasStart;
    int32_t start;
    uint32_t format;  ///< in `levels_`; kNone for none
  };

  bool ReadLists(ByteView plfLst, ByteView behindLst);
  bool ReadUses(ByteView plfLfo);
  bool ReadOverrides(ByteView& left, unsigned count, Use& use);
  bool ReadLevel(ByteView& left);
  int32_t ListWithId(int32_t lsid) const;

  std::vector<List> lists_;
  std::vector<std::pair<int32_t, uint32_t>> listsById_;
  std::vector<Use> uses_;
  std::vector<Override> overrides_;
  std::vector<ListLevel> levels_;
};

}  // namespace pagerex
