#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "flow/field_code.h"

namespace pagerex {

/// The numbers of fields that number paragraphs (AUTONUM and its kin) or places within them (LISTNUM),
/// counted from field to field. Each story counts on its own. Lists that a LISTNUM field names count and look
/// as NumberDefault does, unless they are LegalDefault or OutlineDefault.
class FieldNumbers {
 public:
  /// `type` is that of AUTONUM, AUTONUMLGL or AUTONUMOUT, `headingLevel` that of the paragraph: 1 to 9, or 0
  /// for text below a heading.
  void AppendAutoNumber(FieldType type, std::u16string_view code, uint8_t headingLevel, uint16_t language,
                        std::u16string& out);
  void AppendListNumber(std::u16string_view code, uint16_t language, std::u16string& out);
  void Reset() { *this = {}; }

 private:
  static constexpr unsigned kLevels = 10;  ///< of headings, and of text below the last

  struct Counts {
    std::array<int32_t, kLevels> numbers{};
    uint8_t level = 0;    ///< the last one
    uint8_t heading = 0;  ///< level of the last heading, from 1

    /// Goes on, or begins at `start` unless that is negative; the levels below end.
    void Step(unsigned levelToStep, int32_t start);
  };

  std::array<Counts, 3> autoNumbers_;
  std::array<Counts, 4> lists_;
};

}  // namespace pagerex
