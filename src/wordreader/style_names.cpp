#include "wordreader/style_names.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace pagerex {
namespace {

/// Styles of one name, or of names that end with a number.
struct Names {
  uint16_t sti;  ///< of the first
  uint8_t count;
  uint8_t firstNumber;  ///< 0 for names without a number
  char name[25];
};

/// By sti.
constexpr Names kNames[] = {
    {0, 1, 0, "Normal"},
    {1, 9, 1, "heading "},
    {10, 9, 1, "index "},
    {19, 9, 1, "toc "},
    {28, 1, 0, "Normal Indent"},
    {29, 1, 0, "footnote text"},
    {30, 1, 0, "annotation text"},
    {31, 1, 0, "header"},
    {32, 1, 0, "footer"},
    {33, 1, 0, "index heading"},
    {34, 1, 0, "caption"},
    {35, 1, 0, "table of figures"},
    {36, 1, 0, "envelope address"},
    {37, 1, 0, "envelope return"},
    {38, 1, 0, "footnote reference"},
    {39, 1, 0, "annotation reference"},
    {40, 1, 0, "line number"},
    {41, 1, 0, "page number"},
    {42, 1, 0, "endnote reference"},
    {43, 1, 0, "endnote text"},
    {44, 1, 0, "table of authorities"},
    {45, 1, 0, "macro"},
    {46, 1, 0, "toa heading"},
    {47, 1, 0, "List"},
    {48, 1, 0, "List Bullet"},
    {49, 1, 0, "List Number"},
    {50, 4, 2, "List "},
    {54, 4, 2, "List Bullet "},
    {58, 4, 2, "List Number "},
    {62, 1, 0, "Title"},
    {63, 1, 0, "Closing"},
    {64, 1, 0, "Signature"},
    {65, 1, 0, "Default Paragraph Font"},
    {66, 1, 0, "Body Text"},
    {67, 1, 0, "Body Text Indent"},
    {68, 1, 0, "List Continue"},
    {69, 4, 2, "List Continue "},
    {73, 1, 0, "Message Header"},
    {74, 1, 0, "Subtitle"},
    {75, 1, 0, "Salutation"},
    {76, 1, 0, "Date"},
    {77, 1, 0, "Body Text First Indent"},
    {78, 1, 0, "Body Text First Indent 2"},
    {79, 1, 0, "Note Heading"},
    {80, 2, 2, "Body Text "},
    {82, 2, 2, "Body Text Indent "},
    {84, 1, 0, "Block Text"},
    {85, 1, 0, "Hyperlink"},
    {86, 1, 0, "FollowedHyperlink"},
    {87, 1, 0, "Strong"},
    {88, 1, 0, "Emphasis"},
    {89, 1, 0, "Document Map"},
    {90, 1, 0, "Plain Text"},
    {91, 1, 0, "E-mail Signature"},
    {92, 1, 0, "HTML Top of Form"},
    {93, 1, 0, "HTML Bottom of Form"},
    {94, 1, 0, "Normal (Web)"},
    {95, 1, 0, "HTML Acronym"},
    {96, 1, 0, "HTML Address"},
    {97, 1, 0, "HTML Cite"},
    {98, 1, 0, "HTML Code"},
    {99, 1, 0, "HTML Definition"},
    {100, 1, 0, "HTML Keyboard"},
    {101, 1, 0, "HTML Preformatted"},
    {102, 1, 0, "HTML Sample"},
    {103, 1, 0, "HTML Typewriter"},
    {104, 1, 0, "HTML Variable"},
    {105, 1, 0, "Normal Table"},
    {106, 1, 0, "annotation subject"},
    {107, 1, 0, "No List"},
    {108, 3, 1, "Outline List "},
    {111, 3, 1, "Table Simple "},
    {114, 4, 1, "Table Classic "},
    {118, 3, 1, "Table Colorful "},
    {121, 5, 1, "Table Columns "},
    {126, 8, 1, "Table Grid "},
    {134, 8, 1, "Table List "},
    {142, 3, 1, "Table 3D effects "},
    {145, 1, 0, "Table Contemporary"},
    {146, 1, 0, "Table Elegant"},
    {147, 1, 0, "Table Professional"},
    {148, 2, 1, "Table Subtle "},
    {150, 3, 1, "Table Web "},
    {153, 1, 0, "Balloon Text"},
    {154, 1, 0, "Table Grid"},
    {155, 1, 0, "Table Theme"},
    {156, 1, 0, "Placeholder Text"},
    {157, 1, 0, "No Spacing"},
    {178, 1, 0, "Revision"},
    {179, 1, 0, "List Paragraph"},
    {180, 1, 0, "Quote"},
    {181, 1, 0, "Intense Quote"},
    {260, 1, 0, "Subtle Emphasis"},
    {261, 1, 0, "Intense Emphasis"},
    {262, 1, 0, "Subtle Reference"},
    {263, 1, 0, "Intense Reference"},
    {264, 1, 0, "Book Title"},
    {265, 1, 0, "Bibliography"},
    {266, 1, 0, "TOC Heading"},
};

}  // namespace

std::u16string builtInStyleName(uint16_t sti) {
  const auto next = std::upper_bound(std::begin(kNames), std::end(kNames), sti,
                                     [](uint16_t value, const Names& names) { return value < names.sti; });
  const Names& names = *std::prev(next);  // the first one has sti 0
  const int place = sti - names.sti;
  if (place >= names.count) return {};
  const std::string_view name = names.name;
  std::u16string result(name.begin(), name.end());
  if (names.firstNumber != 0) result += static_cast<char16_t>(u'0' + names.firstNumber + place);
  return result;
}

}  // namespace pagerex
