#include "drawing/query_prop.h"

#include <cmath>
#include <cstdint>

namespace {

using mso_escher::MsoROShapeOPT;
using mso_escher::MsoROShapeProp;

const MsoROShapeOPT* own(const KQueryProp::Shape* shape) {
  return shape && shape->Good() ? &shape->GetProperties() : nullptr;
}

const MsoROShapeOPT* users(const KQueryProp::Shape* shape) {
  return shape && shape->Good() ? &shape->GetUDefProperties() : nullptr;
}

bool find(const MsoROShapeOPT* table, PID id, MsoROShapeProp& property) {
  return table && table->Find(id, &property) == Status::kOk;
}

bool findBool(const MsoROShapeOPT* table, PID id, bool& value) {
  return table && table->FindBool(id, value) == Status::kOk;
}

/// Toward zero; what no int can hold, and what is no number, to the nearest end of its range or to 0.
int truncated(float value) {
  constexpr float kLimit = 2147483648.0f;
  if (!(value > -kLimit)) return std::isnan(value) ? 0 : INT32_MIN;
  return value < kLimit ? static_cast<int>(value) : INT32_MAX;
}

bool findInt(const MsoROShapeOPT* table, PID id, int& value, KQueryProp::Converter convert) {
  MsoROShapeProp property;
  if (!find(table, id, property)) return false;
  const int operand = static_cast<int>(property.operand);
  value = convert ? truncated(convert(operand)) : operand;
  return true;
}

bool findFloat(const MsoROShapeOPT* table, PID id, float& value, KQueryProp::Converter convert) {
  MsoROShapeProp property;
  if (!find(table, id, property)) return false;
  value = convert ? convert(static_cast<int>(property.operand)) : static_cast<float>(property.operand);
  return true;
}

bool findText(const MsoROShapeOPT* table, PID id, std::u16string& text) {
  text.clear();
  MsoROShapeProp property;
  if (!find(table, id, property)) return false;
  for (size_t at = 0; at + 1 < property.data.size() && property.data.u16(at) != 0; at += 2) {
    text += static_cast<char16_t>(property.data.u16(at));
  }
  return !text.empty();
}

}  // namespace

bool KQueryProp::QueryProp(const Shape* shape, PID id, MsoROShapeProp& property) {
  return find(own(shape), id, property);
}
bool KQueryProp::QueryUDefProp(const Shape* shape, PID id, MsoROShapeProp& property) {
  return find(users(shape), id, property);
}
bool KQueryProp::QueryBoolProp(const Shape* shape, PID id, bool& value) {
  return findBool(own(shape), id, value);
}
bool KQueryProp::QueryBoolUDefProp(const Shape* shape, PID id, bool& value) {
  return findBool(users(shape), id, value);
}
bool KQueryProp::QueryI4Prop(const Shape* shape, PID id, int& value, Converter convert) {
  return findInt(own(shape), id, value, convert);
}
bool KQueryProp::QueryI4UDefProp(const Shape* shape, PID id, int& value, Converter convert) {
  return findInt(users(shape), id, value, convert);
}
bool KQueryProp::QueryFloatProp(const Shape* shape, PID id, float& value, Converter convert) {
  return findFloat(own(shape), id, value, convert);
}
bool KQueryProp::QueryFloatUDefProp(const Shape* shape, PID id, float& value, Converter convert) {
  return findFloat(users(shape), id, value, convert);
}
bool KQueryProp::QueryBstrProp(const Shape* shape, PID id, std::u16string& text) {
  return findText(own(shape), id, text);
}
bool KQueryProp::QueryBstrUDefProp(const Shape* shape, PID id, std::u16string& text) {
  return findText(users(shape), id, text);
}
