#pragma once

#include <string>
#include <string_view>

class Variant;

// Dates are serials: whole days since 1899-12-30, the fraction is the time of day.
// A negative serial counts its days backwards but its time forwards (-1.25 is
// 1899-12-29 06:00), as the classic runtime keeps them.

// Dates run from 1 January 100 to 31 December 9999; a serial outside is VbError 6 wherever
// it is read as a date (split, formatted, converted or reached by addition).
void checkDateRange(double serial);

// The serial of a calendar day. Months and days out of range roll over into the
// neighbouring months and years; a year 0 to 99 is read as 2000-2029 or 1930-1999.
double DateSerial(int y, int m, int d);

// The calendar day of a serial; the time is ignored. VbError 6 out of range.
void splitDate(double serial, int& y, int& m, int& d);

// The time of day of a serial in whole seconds since midnight (0 to 86399).
int secondsOfDay(double serial);

// The date in one of the masks "MM/DD/YY", "MM/DD/YYYY" or "Short Date" (upper or lower
// case). Any other mask is VbError 5.
std::string formatDate(double serial, std::string_view mask);

// The short date of this program: "M/D/YYYY", no leading zeros.
std::string shortDate(double serial);

// The general date: the short date, followed by the time as "h:mm:ss AM" when the
// serial has one; a serial of day 0 shows only its time ("12:00:00 AM").
std::string generalDate(double serial);

// Reads "M/D/YYYY", "MM/DD/YY" (00-29 are 2000s, 30-99 are 1900s) or "YYYY-MM-DD",
// optionally followed by a time "h:mm[:ss] [AM|PM]", or a time alone. Blanks around
// are allowed. False when the text is no valid date.
bool parseDate(std::string_view text, double& serial);

// A value as a date: a Date as it is, a number as a serial, a text parsed by
// parseDate; Empty is 0. Null is VbError 94, any other text VbError 13, a serial out of
// range VbError 6.
double CDate(const Variant& v);
