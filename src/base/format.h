#pragma once

#include <string>
#include <string_view>

#include "base/variant.h"

// A value through a display mask, as the program uses them:
//  - number masks built of an optional "$" and blanks before, "#" and "0" digit places,
//    "," for thousands separators and "." for the decimal point: "$#,###.##" (12 gives
//    "$12.", 0.5 gives "$.5"), "$#,###.00", "$ #,###.00", "000000". Rounding is half up
//    on the decimal value (1.005 gives "$1.01"); a negative number gets "-" in front.
//  - date masks "MM/DD/YY", "MM/DD/YYYY", "Short Date".
// A text that is a number by the strict conversion is formatted as that number (a date
// text as that date for a date mask); any other text comes back unchanged. Null and Empty
// give "". An empty mask gives the plain text form. Any other mask is VbError 5.
std::string Format(const Variant& v, std::string_view mask);
