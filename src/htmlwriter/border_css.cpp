#include <cstring>

#include "base/number_text.h"
#include "htmlwriter/css_props.h"

namespace pagerex {
namespace {

struct BorderWords {
  const char* css;
  const char* mso;
};

constexpr BorderWords kBorderWords[] = {
    {"none", "none"},
    {"solid", "solid"},
    {"solid", "solid"},
    {"double", "double"},
    {"solid", "solid"},
    {"dotted", "dotted"},
    {"dotted", "dotted"},
    {"dashed", "dashed"},
    {"dashed", "dot-dash"},
    {"dashed", "dot-dot-dash"},
    {"double", "triple"},
    {"double", "thin-thick-small-gap"},
    {"double", "thick-thin-small-gap"},
    {"double", "thin-thick-thin-small-gap"},
    {"double", "thin-thick-medium-gap"},
    {"double", "thick-thin-medium-gap"},
    {"double", "thin-thick-thin-medium-gap"},
    {"double", "thick-thin-large-gap"},
    {"double", "thick-thin-large-gap"},
    {"double", "thin-thick-thin-large-gap"},
    {"solid", "wave"},
    {"double", "double-wave"},
    {"dashed", "dashed"},
    {"solid", "dash-dot-stroked"},
    {"ridge", "three-d-emboss"},
    {"groove", "three-d-engrave"},
    {"outset", "outset"},
    {"inset", "inset"},
};

const BorderWords& borderWords(unsigned int type) {
  return kBorderWords[type < std::size(kBorderWords) ? type : 0];
}

/// Width, type and space: what tells one border from another, and zero in an undefined one.
bool sameLine(const mso_word::BRCEX& a, const mso_word::BRCEX& b) {
  return std::memcmp(&a.width, &b.width, 4) == 0;
}

NumberText borderText(const mso_word::BRCEX& brc, const char* style) {
  NumberText text = pointsOf(brc.width / 8.0);
  text.append(' ').append(style).append(" rgb(");
  text.appendUnsigned(brc.colour & 0xFF).append(',');
  text.appendUnsigned(brc.colour >> 8 & 0xFF).append(',');
  return text.appendUnsigned(brc.colour >> 16 & 0xFF).append(')');
}

bool convertBorder(IWriteArchive* archive, const mso_word::BRCEX* brc, const char* property,
                   const mso_word::BRCEX* fallback, const mso_word::BRCEX* compare,
                   const char* (*word)(unsigned int)) {
  if (sameLine(*brc, mso_word::BRCEX{})) {
    if (fallback) convertBorder(archive, fallback, property, nullptr, compare, word);
    return false;
  }
  const bool none = brc->type == 0 || (compare && sameLine(*brc, *compare));
  archive->AddCssProp(property, none ? "none" : borderText(*brc, word(brc->type)).c_str());
  return true;
}

}  // namespace

const char* BRCTYPE2Cssval(unsigned int type) {
  return borderWords(type).css;
}
const char* BRCTYPE2MsoCssval(unsigned int type) {
  return borderWords(type).mso;
}

bool ConvertBorderEx(IWriteArchive* archive, const mso_word::BRCEX* brc, const char* property, const char*,
                     const mso_word::BRCEX* fallback, const mso_word::BRCEX* compare) {
  return convertBorder(archive, brc, property, fallback, compare, BRCTYPE2Cssval);
}

bool MsoConvertBorderEx(IWriteArchive* archive, const mso_word::BRCEX* brc, const char* property, const char*,
                        const mso_word::BRCEX* fallback, const mso_word::BRCEX* compare) {
  return convertBorder(archive, brc, property, fallback, compare, BRCTYPE2MsoCssval);
}

}  // namespace pagerex
