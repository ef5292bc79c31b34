#pragma once

/// Form of a number's text.
enum FLOATTOTEXTFORMAT {
  kExponentForm = 0,  ///< one digit, the point, `precision` decimals, an exponent
  kFixedForm = 1,     ///< `precision` decimals
  kGeneralForm = 2,   ///< `precision` digits in whichever of the two forms suits, trimmed
};

/// Bits of `exponentFlags`, for the exponent form.
enum : unsigned {
  kExponentUpperCase = 1,  ///< "E" instead of "e"
  kExponentThird = 2,      ///< with kExponentTwoDigits: one more zero in front
  kExponentTwoDigits = 4,  ///< at least two digits
  kExponentNoPlus = 8,     ///< no "+" before an exponent that is not negative
};

/// Writes `value` as text with at most 15 significant digits, as a spreadsheet shows it; further digits are
/// zeros.
///
/// `precision`: decimals, or digits for the general form. A negative one counts as 6 there, and as 0
/// otherwise. `buffer` takes `size` characters with the NUL; what does not fit is cut. `plus` writes "+"
/// before a number that is not negative, `trim` drops trailing zeros of the decimals, `localePoint` takes the
/// point of the C locale.
///
/// Returns the length of the whole text, also if it was cut. Returns -1 for a null buffer or a size below 1;
/// for an infinity or a NaN, whose names ("1.#INF", "1.#QNAN", "1.#SNAN") are written; and for a precision
/// that asks for hundreds of thousands of digits, which leaves the buffer empty. With `size` 1 a number gives
/// an empty text and 0.
int __dbltostr(double value, int precision, wchar_t* buffer, int size, bool plus, FLOATTOTEXTFORMAT format,
               bool trim, unsigned exponentFlags, bool localePoint);

/// '.', or with `locale` the decimal point of the C locale that is set; a blank if that point is not a single
/// wide character.
wchar_t GetDecimalPoint(bool locale);

/// A number as plain text, 11 digits: "1.23456789E+15". The second argument is not used. Writes and returns
/// as
/// __dbltostr does, with the locale's point.
int _ConvertDecimal_Gen(double value, int, wchar_t* buffer, long size);

/// The integer part of `value`, toward zero; a value within 4 units in the last place of the next integer
/// gives that integer. Large values are treated alike: from 2^50 on the next integer always lies that near.
double _GetDoulbeInt(double value);

/// The greatest common divisor, never negative except where |LONG_MIN| is the answer; 0 of two zeros.
long _GreatestCommonDivisor(long a, long b);
