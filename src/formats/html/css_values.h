#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "flow/properties.h"

namespace pagerex {

/// "#f00" or "#12ab34".
void appendColour(std::string& out, uint32_t rgb);
/// "12pt", "7.35pt", "-.5pt", "0". No more than Word itself lets a length be.
void appendPoints(std::string& out, int64_t twips);
/// An indent that gives way on small screens: "calc(36pt*var(--i))", outwards "calc(-36pt*var(--n))"; nothing
/// for 0.
void appendIndent(std::string& out, int64_t twips);
void appendHalfPoints(std::string& out, int64_t halfPoints);
/// Hundredths with their unit, if not 0: "1.17em", "50%", "0".
void appendHundredths(std::string& out, int64_t hundredths, std::string_view unit);

/// True where white text can be read on a ground of this colour, and black text cannot.
bool isDark(uint32_t rgb);
/// What an automatic colour comes to on a ground; an automatic ground is white paper.
uint32_t automaticColourOn(const Colour& ground);

/// "1pt solid #f00": an automatic colour is left to that of the text; "0" where there is no line.
void appendBorder(std::string& out, const Border& border);
/// All that the line takes of the page; 0 where there is none.
int32_t borderWidthTwips(const Border& border);

/// "vertical-rl" and such by the way text flows in a cell or frame; empty for as usual.
std::string_view writingModeOf(uint16_t textFlow);

void appendDeclaration(std::string& out, std::string_view name, std::string_view value);

/// A property that some look has, and its value where nothing is said. Without pointers, so that nothing of
/// the tables is touched when the library is loaded.
struct CssProperty {
  char name[28];
  char initial[14];
  char ofAllSides[8] = "";  ///< what says this one and the next three at once
};

/// "name:value;" for each property in which `values` differ from `base`, in the order of the table. An empty
/// value is the initial one.
void appendDifferences(std::string& out, std::span<const CssProperty> properties,
                       std::span<const std::string> values, std::span<const std::string> base);

}  // namespace pagerex
