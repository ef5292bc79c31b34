#pragma once

#include <cstdint>

#include "wordreader/mso_word.h"

namespace ObjectWriter {

/// The word for a wrapping mode of text around a floating shape (bits 5 to 8 of its anchor's flags); null for
/// one that has none.
const char* GetTextWrap(unsigned int wrap);

}  // namespace ObjectWriter

/// Words of VML for values of drawing properties. Each function gives the word for a value as it stands in
/// the file; for an unknown value a default, which is null where none is told.
namespace objectAttr {

/// Element of a preset shape; null stands for "shape". Null for unknown types.
const char* GetShapeName(unsigned int shapeType);
/// Null for unknown values.
const char* GetConnectorType(int value);
/// Null for unknown values.
const char* GetFillType(unsigned int value);
const char* GetStrokeStyle(int value);
const char* GetStrokeDashStyle(int value);
const char* GetLineJoinType(int value);
const char* GetLineCapType(int value);
const char* GetArrowType(int value);
const char* GetArrowWidth(int value);
const char* GetArrowLength(int value);
const char* GetShadowType(int value);
const char* GetRenderMode(int value);
const char* GetAnchorTextType(int value);
const char* GetGeoTextAlignType(int value);
/// Null for unknown values.
const char* GetAlignTypeV(int value);
const char* GetAlignTypeH(int value);

/// Extension of a picture file by the type of its blip (record type minus 0xF018); null for types 0 and 1. No
/// picture is converted: an EMF is stored as "wmf", a PICT as "jpg".
const char* GetImageExt(unsigned int blipType);
/// Place of a picture in the blip list of an inline picture, by the property that names it; -1 for another
/// property.
int GetImageBase(uint32_t property);

}  // namespace objectAttr
