#pragma once

#include <string>

#include "drawing/shape.h"

/// Typed lookups of a shape's properties, in its own table and in the user's. They tell whether the property
/// was found; if not, the output keeps what the caller put in.
struct KQueryProp {
  using Shape = mso_escher::MsoROShape;
  using Converter = float (*)(int);

  static bool QueryProp(const Shape* shape, PID id, mso_escher::MsoROShapeProp& property);
  static bool QueryUDefProp(const Shape* shape, PID id, mso_escher::MsoROShapeProp& property);
  /// True when the file sets the flag.
  static bool QueryBoolProp(const Shape* shape, PID id, bool& value);
  static bool QueryBoolUDefProp(const Shape* shape, PID id, bool& value);
  /// The operand, signed; or what the converter makes of it, truncated.
  static bool QueryI4Prop(const Shape* shape, PID id, int& value, Converter convert = nullptr);
  static bool QueryI4UDefProp(const Shape* shape, PID id, int& value, Converter convert = nullptr);
  /// The operand as an unsigned value; or what the converter makes of it as a signed one.
  static bool QueryFloatProp(const Shape* shape, PID id, float& value, Converter convert = nullptr);
  static bool QueryFloatUDefProp(const Shape* shape, PID id, float& value, Converter convert = nullptr);
  /// The complex data as text up to its zero; true when it is not empty. The output is cleared first.
  static bool QueryBstrProp(const Shape* shape, PID id, std::u16string& text);
  static bool QueryBstrUDefProp(const Shape* shape, PID id, std::u16string& text);
};
