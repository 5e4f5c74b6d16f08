#include "base/dates.h"

#include <cmath>
#include <cstdint>
#include <cstdio>

#include "base/fold.h"
#include "base/variant.h"
#include "base/vb_error.h"

namespace {

// Serial of 1970-01-01, the epoch of the civil-day arithmetic below.
constexpr std::int64_t kUnixEpochSerial = 25569;
// 100-01-01 and the day after 9999-12-31.
constexpr double kFirstSerial = -657434;
constexpr double kEndSerial = 2958466;

std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
    std::int64_t q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
    return q;
}

std::int64_t daysFromCivil(std::int64_t y, int m, int d) {
    y -= m <= 2;
    const std::int64_t era = floorDiv(y, 400);
    const std::int64_t yoe = y - era * 400;
    const std::int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

void civilFromDays(std::int64_t z, int& y, int& m, int& d) {
    z += 719468;
    const std::int64_t era = floorDiv(z, 146097);
    const std::int64_t doe = z - era * 146097;
    const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const std::int64_t mp = (5 * doy + 2) / 153;
    d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(yoe + era * 400 + (m <= 2));
}

int daysInMonth(int y, int m) {
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (m == 2 && ((y % 4 == 0 && y % 100 != 0) || y % 400 == 0)) return 29;
    return days[m - 1];
}

int windowYear(int y) {
    if (y >= 0 && y < 30) return 2000 + y;
    if (y >= 30 && y < 100) return 1900 + y;
    return y;
}

// A small cursor over the text being parsed.
struct Reader {
    std::string_view s;
    std::size_t i = 0;

    bool atEnd() const { return i >= s.size(); }
    char peek() const { return atEnd() ? '\0' : s[i]; }
    void skipBlanks() {
        while (!atEnd() && (s[i] == ' ' || s[i] == '\t'))
            ++i;
    }
    // Up to maxDigits digits; false when there is none.
    bool number(int& value, int& digits, int maxDigits) {
        value = 0;
        digits = 0;
        while (!atEnd() && digits < maxDigits && s[i] >= '0' && s[i] <= '9') {
            value = value * 10 + (s[i] - '0');
            ++digits;
            ++i;
        }
        return digits > 0;
    }
    bool accept(char c) {
        if (peek() != c) return false;
        ++i;
        return true;
    }
};

bool validDay(int y, int m, int d) {
    return y >= 100 && y <= 9999 && m >= 1 && m <= 12 && d >= 1 && d <= daysInMonth(y, m);
}

enum class DatePart { None, Invalid, Valid };

// Reads "M/D/Y" or "YYYY-MM-DD" at the cursor; None leaves the cursor where it was.
DatePart parseDatePart(Reader& r, int& y, int& m, int& d) {
    const std::size_t start = r.i;
    int a = 0, b = 0, c = 0, na = 0, nb = 0, nc = 0;
    if (!r.number(a, na, 4)) return DatePart::None;
    if (na == 4 && r.accept('-')) {
        y = a;
        if (!r.number(m, nb, 2) || !r.accept('-') || !r.number(d, nc, 2)) return DatePart::Invalid;
        return validDay(y, m, d) ? DatePart::Valid : DatePart::Invalid;
    }
    if (na > 2 || !r.accept('/')) {
        r.i = start;
        return DatePart::None;
    }
    if (!r.number(b, nb, 2) || !r.accept('/') || !r.number(c, nc, 4)) return DatePart::Invalid;
    m = a;
    d = b;
    y = nc <= 2 ? windowYear(c) : c;
    return validDay(y, m, d) ? DatePart::Valid : DatePart::Invalid;
}

bool parseTimePart(Reader& r, double& fraction) {
    const std::size_t start = r.i;
    int h = 0, mi = 0, s = 0, nh = 0, nm = 0, ns = 0;
    if (!r.number(h, nh, 2) || !r.accept(':') || !r.number(mi, nm, 2)) {
        r.i = start;
        return false;
    }
    if (r.accept(':') && !r.number(s, ns, 2)) return false;
    if (mi > 59 || s > 59) return false;
    r.skipBlanks();
    if (r.i + 1 < r.s.size() && (foldChar(r.peek()) == 'a' || foldChar(r.peek()) == 'p') &&
        foldChar(r.s[r.i + 1]) == 'm') {
        const bool pm = foldChar(r.peek()) == 'p';
        r.i += 2;
        if (h < 1 || h > 12) return false;
        if (h == 12) h = 0;
        if (pm) h += 12;
    }
    if (h > 23) return false;
    fraction = (h * 3600 + mi * 60 + s) / 86400.0;
    return true;
}

std::string twoDigits(int v) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "%02d", v);
    return buf;
}

}  // namespace

double DateSerial(int y, int m, int d) {
    std::int64_t year = windowYear(y);
    std::int64_t month0 = static_cast<std::int64_t>(m) - 1;
    year += floorDiv(month0, 12);
    const int month = static_cast<int>(month0 - floorDiv(month0, 12) * 12) + 1;
    return static_cast<double>(daysFromCivil(year, month, 1) + (d - 1) + kUnixEpochSerial);
}

void checkDateRange(double serial) {
    // Written so that NaN fails too.
    if (!(serial > kFirstSerial - 1 && serial < kEndSerial)) throw VbError(vberr::Overflow);
}

void splitDate(double serial, int& y, int& m, int& d) {
    checkDateRange(serial);
    const std::int64_t day = static_cast<std::int64_t>(std::trunc(serial));
    civilFromDays(day - kUnixEpochSerial, y, m, d);
}

int secondsOfDay(double serial) {
    const double fraction = std::fabs(serial - std::trunc(serial));
    const long seconds = std::lround(fraction * 86400.0);
    return static_cast<int>(seconds >= 86400 ? 86399 : seconds);
}

std::string formatDate(double serial, std::string_view mask) {
    int y = 0, m = 0, d = 0;
    splitDate(serial, y, m, d);
    if (equalFolded(mask, "MM/DD/YY"))
        return twoDigits(m) + "/" + twoDigits(d) + "/" + twoDigits(((y % 100) + 100) % 100);
    if (equalFolded(mask, "MM/DD/YYYY"))
        return twoDigits(m) + "/" + twoDigits(d) + "/" + std::to_string(y);
    if (equalFolded(mask, "Short Date") || equalFolded(mask, "M/D/YYYY")) return shortDate(serial);
    throw VbError(vberr::InvalidProcedureCall);
}

std::string shortDate(double serial) {
    int y = 0, m = 0, d = 0;
    splitDate(serial, y, m, d);
    return std::to_string(m) + "/" + std::to_string(d) + "/" + std::to_string(y);
}

std::string generalDate(double serial) {
    const bool hasDay = std::trunc(serial) != 0;
    const int seconds = secondsOfDay(serial);
    std::string out;
    if (hasDay) out = shortDate(serial);
    if (seconds != 0 || !hasDay) {
        const int h24 = seconds / 3600;
        const int h12 = h24 % 12 == 0 ? 12 : h24 % 12;
        if (!out.empty()) out += ' ';
        out += std::to_string(h12) + ":" + twoDigits(seconds / 60 % 60) + ":" +
               twoDigits(seconds % 60) + (h24 < 12 ? " AM" : " PM");
    }
    return out;
}

bool parseDate(std::string_view text, double& serial) {
    Reader r{text};
    r.skipBlanks();
    int y = 0, m = 0, d = 0;
    double day = 0;
    double fraction = 0;
    switch (parseDatePart(r, y, m, d)) {
        case DatePart::Invalid:
            return false;
        case DatePart::Valid:
            day = DateSerial(y, m, d);
            r.skipBlanks();
            if (!r.atEnd() && !parseTimePart(r, fraction)) return false;
            break;
        case DatePart::None:
            if (!parseTimePart(r, fraction)) return false;
            break;
    }
    r.skipBlanks();
    if (!r.atEnd()) return false;
    serial = day < 0 ? day - fraction : day + fraction;
    return true;
}

double CDate(const Variant& v) {
    switch (v.Type()) {
        case VarType::Empty:
            return 0;
        case VarType::Null:
            throw VbError(vberr::InvalidUseOfNull);
        case VarType::String: {
            double serial = 0;
            if (parseDate(v.Str(), serial)) return serial;
            throw VbError(vberr::TypeMismatch);
        }
        default: {
            const double serial = v.Number();
            checkDateRange(serial);
            return serial;
        }
    }
}
