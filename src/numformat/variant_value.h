#pragma once

#include "pagerex/numformat.h"

/// Whether `value` holds a number, and that number; 0 if it holds none.
bool isNumber(const tagVARIANT& value);
double numberOf(const tagVARIANT& value);

/// Whether `value` holds a text, and that text; null pointers count as an empty one.
bool isText(const tagVARIANT& value);
const wchar_t* textOf(const tagVARIANT& value);
