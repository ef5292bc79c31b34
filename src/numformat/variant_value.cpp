#include "numformat/variant_value.h"

#include <optional>

namespace {

std::optional<double> readNumber(const tagVARIANT& value) {
  switch (value.vt) {
    case NF_VT_I2:
      return value.iVal;
    case NF_VT_I4:
      return value.lVal;
    case NF_VT_R4:
      return value.fltVal;
    case NF_VT_R8:
      return value.dblVal;
    case NF_VT_DATE:
      return value.date;
    case NF_VT_BOOL:
      return value.boolVal;
    case NF_VT_UI1:
      return value.bVal;
    case NF_VT_UI2:
      return value.uiVal;
    case NF_VT_UI4:
      return value.ulVal;
    case NF_VT_INT:
      return value.intVal;
    case NF_VT_UINT:
      return value.uintVal;
    default:
      return std::nullopt;
  }
}

}  // namespace

bool isNumber(const tagVARIANT& value) {
  return readNumber(value).has_value();
}

double numberOf(const tagVARIANT& value) {
  return readNumber(value).value_or(0);
}

bool isText(const tagVARIANT& value) {
  return value.vt == NF_VT_BSTR || value.vt == NF_VT_BYREF;
}

const wchar_t* textOf(const tagVARIANT& value) {
  const wchar_t* text = nullptr;
  if (value.vt == NF_VT_BSTR) text = value.bstrVal;
  if (value.vt == NF_VT_BYREF && value.pbstrVal) text = *value.pbstrVal;
  return text ? text : L"";
}
