#include "objectwriter/shape_props.h"

#include "base/encoding.h"

namespace ObjectWriter {

std::string ShapeProps::text(PID id) const {
  std::u16string units;
  KQueryProp::QueryBstrProp(&shape_, id, units);
  std::string text;
  Utf16Joiner joiner;
  for (const char16_t unit : units) appendUtf8(text, joiner.Join(unit));
  return text;
}

ByteView ShapeProps::data(PID id) const {
  mso_escher::MsoROShapeProp property;
  KQueryProp::QueryProp(&shape_, id, property);
  return property.data;
}

std::optional<ShapeProps::Array> ShapeProps::array(PID id) const {
  constexpr size_t kHeader = 6;
  mso_escher::MsoROShapeProp property;
  KQueryProp::QueryProp(&shape_, id, property);
  if (property.data.empty()) return std::nullopt;
  const object::CMsoArray array(property.data);
  return Array{array.GetItemCount(), array.GetItemSize(), property.reach.part(kHeader)};
}

TextMargins ShapeProps::textMargins() const {
  const TextMargins usual;
  return {number(pid::kTextLeft, usual.left), number(pid::kTextTop, usual.top),
          number(pid::kTextRight, usual.right), number(pid::kTextBottom, usual.bottom)};
}

}  // namespace ObjectWriter
