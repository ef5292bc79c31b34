#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/font_names.h"
#include "wordreader/list_definitions.h"

namespace pagerex {

/// The label of a list paragraph.
struct LabelFacts {
  std::u16string_view text;          ///< as shown, signs as Unicode; until the next label
  const ListLevel* level = nullptr;  ///< whose papx and chpx hold, and what follows
  int32_t number = 0;                ///< in its level
  int32_t listId = 0;                ///< lsid: one for all that count together
  uint8_t nfc = 0;
  bool isBullet = false;
  int32_t pictureBullet = -1;              ///< index of the picture that is the bullet; -1 for none
  SymbolFont symbols = SymbolFont::kNone;  ///< of the label's font: its text is Unicode all the same
};

/// Makes the labels of lists, counting from paragraph to paragraph. Each story counts on its own.
class ListLabels {
 public:
  /// Both must outlive this.
  ListLabels(const ListDefinitions& lists, const FontNames& fonts);

  /// A new story begins.
  void Reset();

  /// Counts a paragraph of a list, and tells its label; false if there is none: no list (0, 0x7FF, ...), no
  /// such list or level. `language` is that of numbers in words, `markFont` the font of the paragraph mark,
  /// in which the label is if the level names none.
  bool Next(uint16_t ilfo, uint8_t level, LabelFacts& out, uint16_t language = 0,
            uint16_t markFont = kNoFont);

  static constexpr uint16_t kNoFont = 0xFFFF;

 private:
  struct Counts {
    std::array<int32_t, kLevelsOfList> numbers{};
    uint16_t started = 0;  ///< a bit for each level
  };

  int32_t Count(uint16_t ilfo, const UsedLevel& used);
  void EndDeeperLevels(uint16_t ilfo, unsigned level, Counts& counts) const;
  void MakeText(uint16_t ilfo, const UsedLevel& used, uint16_t font, uint16_t language);
  void AppendNumberOf(uint16_t ilfo, unsigned level, const ListLevel& shownIn, uint16_t language);
  void AppendSign(char16_t sign, bool isBullet, uint16_t font);

  const ListDefinitions& lists_;
  const FontNames& fonts_;
  std::vector<Counts> counts_;         ///< by definition
  std::vector<uint16_t> startsTaken_;  ///< by ilfo - 1: levels whose own start was taken
  std::vector<uint16_t> seen_;         ///< those ilfo of this story that counts or starts depend on
  std::u16string text_;
};

}  // namespace pagerex
