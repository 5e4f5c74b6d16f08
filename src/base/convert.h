#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/variant.h"

// The three ways the program reads a number, and the text form of a value.
//
// Strict conversion: a text must be wholly a number. Blanks around it, a sign before or
// after it, a "$" before or after a leading sign, "," between digits, one decimal point
// and an exponent are allowed. "" or any other text is VbError 13, Null VbError 94,
// Empty is 0 and True is -1.

// The strict reading of a text alone; false when the text is no number.
bool strictNumber(std::string_view text, double& value);
// Two texts in the order of a listing: by value when both are numbers (page "2" before
// page "10"), else ignoring case. Negative, zero or positive.
int compareListed(std::string_view a, std::string_view b);

double CDbl(const Variant& v);
Variant CCur(const Variant& v);       // a Currency value; out of range is VbError 6
std::int16_t CInt(const Variant& v);  // halves go to the even neighbour; VbError 6 outside 16 bits
std::int32_t CLng(const Variant& v);  // halves go to the even neighbour; VbError 6 outside 32 bits
bool CBool(const Variant& v);         // numbers are True when not 0; "True"/"False" are read too

// Whether the strict conversion would succeed; Empty counts as numeric, a Date does not.
bool IsNumeric(const Variant& v);

// Prefix reading: leading blanks skipped, then the longest leading number (sign, digits,
// point, digits, exponent E or D). "$5" and "" give 0, "12.50 each" gives 12.5.
double Val(std::string_view text);

// Loose addition. Null on either side gives Null. When either side is a number (Boolean
// and Date included) the other is converted strictly (Empty is 0, a text counts as a
// Double) and the two are added in the wider kind; Integer overflow widens to Long and
// Long to Double. Two texts, or a text and Empty, are joined. Empty + Empty is Integer 0.
Variant Add(const Variant& a, const Variant& b);

// The text form of a value: up to 15 significant digits for Double (7 for Single,
// Currency exact with up to 4 decimals), no trailing zeros, exponent form for very large
// or small numbers ("1E+16", "1.5E-07"); "True"/"False"; a Date as its general date;
// Empty is "". Null is VbError 94.
std::string CStr(const Variant& v);

// What a text box shows for a field: CStr, but Null shows as "".
std::string textOf(const Variant& v);
