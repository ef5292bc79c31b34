#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pagerex {

/// Numbers from 1 to 999 999 in words, each appended.
void appendEnglishCardinal(uint32_t number, std::u16string& out);  ///< "Twenty-one"
void appendEnglishOrdinal(uint32_t number, std::u16string& out);   ///< "Twenty-first"
void appendHindiWords(uint32_t number, std::u16string& out);
void appendThaiWords(uint32_t number, std::u16string& out);
void appendVietnameseWords(uint32_t number, std::u16string& out);
/// Up to 99.
void appendKoreanWords(uint32_t number, std::u16string& out);

/// What stands behind the digits of an ordinal in a language: "st", "er", ".".
std::u16string_view ordinalSuffix(uint32_t number, uint16_t language);
/// English, or no language at all.
bool isEnglish(uint16_t language);

}  // namespace pagerex
