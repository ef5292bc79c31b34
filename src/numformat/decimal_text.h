#pragma once

#include <string>
#include <string_view>

// Whole numbers as texts, whatever the C library's locale.

std::wstring decimalText(unsigned long long n);

/// The number that a sign, which may be missing, and decimal digits spell.
int signedNumber(std::wstring_view text);
