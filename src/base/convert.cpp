#include "base/convert.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "base/dates.h"
#include "base/fold.h"
#include "base/vb_error.h"

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// Reads the digits, point and exponent of a plain number (no sign) into a form that
// from_chars understands; thousands separators are allowed between digits when
// `separators` is set. Returns the bytes consumed, 0 when there is no number.
std::size_t scanUnsigned(std::string_view s, bool separators, std::string& clean) {
    std::size_t i = 0;
    bool digits = false;
    while (i < s.size()) {
        if (isDigit(s[i])) {
            clean += s[i++];
            digits = true;
        } else if (separators && s[i] == ',' && digits && i + 1 < s.size() && isDigit(s[i + 1])) {
            ++i;
        } else {
            break;
        }
    }
    if (i < s.size() && s[i] == '.') {
        std::size_t j = i + 1;
        std::string fraction;
        while (j < s.size() && isDigit(s[j]))
            fraction += s[j++];
        if (digits || !fraction.empty()) {
            clean += '.';
            clean += fraction;
            digits = true;
            i = j;
        }
    }
    if (!digits) return 0;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
        std::size_t j = i + 1;
        std::string exponent = "e";
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) exponent += s[j++];
        const std::size_t firstDigit = j;
        while (j < s.size() && isDigit(s[j]))
            exponent += s[j++];
        if (j > firstDigit) {
            clean += exponent;
            i = j;
        }
    }
    return i;
}

double fromClean(const std::string& clean) {
    double value = 0;
    const auto result = std::from_chars(clean.data(), clean.data() + clean.size(), value);
    if (result.ec != std::errc::result_out_of_range) return value;
    // Out of range either way: a tiny value reads as 0, a huge one cannot be held.
    const std::size_t e = clean.find('e');
    long exponent = 0;
    if (e != std::string::npos) {
        const char* first = clean.data() + e + 1;
        if (*first == '+') ++first;
        if (std::from_chars(first, clean.data() + clean.size(), exponent).ec != std::errc())
            exponent = clean[e + 1] == '-' ? -100000 : 100000;
    }
    const std::string mantissa = clean.substr(0, e);
    const std::size_t point = mantissa.find('.');
    const std::size_t firstNonZero = mantissa.find_first_of("123456789");
    if (firstNonZero == std::string::npos) return 0;
    const long magnitude =
        point == std::string::npos || firstNonZero < point
            ? static_cast<long>((point == std::string::npos ? mantissa.size() : point) -
                                firstNonZero)
            : -static_cast<long>(firstNonZero - point - 1);
    if (magnitude + exponent > 0) throw VbError(vberr::Overflow);
    return 0;
}

double strictOrThrow(const Variant& v) {
    switch (v.Type()) {
        case VarType::Empty:
            return 0;
        case VarType::Null:
            throw VbError(vberr::InvalidUseOfNull);
        case VarType::String: {
            double value = 0;
            if (!strictNumber(v.Str(), value)) throw VbError(vberr::TypeMismatch);
            return value;
        }
        default:
            return v.Number();
    }
}

std::string_view trimBlanks(std::string_view s) {
    while (!s.empty() && isBlank(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && isBlank(s.back()))
        s.remove_suffix(1);
    return s;
}

// The general form with `precision` significant digits, in the runtime's spelling.
std::string generalNumber(double value, int precision) {
    if (value == 0) return "0";  // also -0
    char buf[64];
    const auto result =
        std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, precision);
    std::string out(buf, result.ptr);
    for (char& c : out)
        if (c == 'e') c = 'E';
    return out;
}

std::string currencyText(std::int64_t scaled) {
    const bool negative = scaled < 0;
    // The magnitude as unsigned so that the most negative value is safe.
    std::uint64_t magnitude = negative ? static_cast<std::uint64_t>(-(scaled + 1)) + 1
                                       : static_cast<std::uint64_t>(scaled);
    std::string out = std::to_string(magnitude / 10000);
    std::uint64_t fraction = magnitude % 10000;
    if (fraction != 0) {
        std::string digits = std::to_string(fraction);
        digits.insert(0, 4 - digits.size(), '0');
        while (digits.back() == '0')
            digits.pop_back();
        out += '.' + digits;
    }
    return negative ? "-" + out : out;
}

// Kinds as they take part in addition.
enum class AddKind { Integer, Long, Single, Double, Currency, Date };

AddKind addKind(const Variant& v) {
    switch (v.Type()) {
        case VarType::Empty:
        case VarType::Boolean:
        case VarType::Integer:
            return AddKind::Integer;
        case VarType::Long:
            return AddKind::Long;
        case VarType::Single:
            return AddKind::Single;
        case VarType::Currency:
            return AddKind::Currency;
        case VarType::Date:
            return AddKind::Date;
        default:
            return AddKind::Double;  // Double, and a text read as a number
    }
}

Variant currencyOf(const Variant& v, double value) {
    return v.Type() == VarType::Currency ? Variant::CurrencyFromScaled(v.CurrencyScaled())
                                         : CCur(Variant::Double(value));
}

Variant checkedDouble(double sum) {
    if (!std::isfinite(sum)) throw VbError(vberr::Overflow);
    return Variant::Double(sum);
}

}  // namespace

int compareListed(std::string_view a, std::string_view b) {
    double x = 0, y = 0;
    if (strictNumber(a, x) && strictNumber(b, y)) return x < y ? -1 : (x > y ? 1 : 0);
    return compareFolded(a, b);
}

bool strictNumber(std::string_view text, double& value) {
    std::string_view s = trimBlanks(text);
    bool negative = false;
    bool sign = false;
    bool currency = false;
    // Leading sign and currency sign, in either order.
    for (int k = 0; k < 2 && !s.empty(); ++k) {
        if (!sign && (s.front() == '-' || s.front() == '+')) {
            sign = true;
            negative = s.front() == '-';
            s = trimBlanks(s.substr(1));
        } else if (!currency && s.front() == '$') {
            currency = true;
            s = trimBlanks(s.substr(1));
        }
    }
    std::string clean;
    const std::size_t used = scanUnsigned(s, true, clean);
    if (used == 0) return false;
    s = trimBlanks(s.substr(used));
    if (!s.empty() && !sign && (s.front() == '-' || s.front() == '+')) {
        negative = s.front() == '-';
        s = trimBlanks(s.substr(1));
    }
    if (!s.empty()) return false;
    const double magnitude = fromClean(clean);
    value = negative ? -magnitude : magnitude;
    return true;
}

double CDbl(const Variant& v) {
    return strictOrThrow(v);
}

Variant CCur(const Variant& v) {
    if (v.Type() == VarType::Currency) return v;
    const double value = strictOrThrow(v);
    // Currency holds 922,337,203,685,477.5807 at most.
    if (!(std::fabs(value) < 922337203685477.5)) throw VbError(vberr::Overflow);
    return Variant::Currency(value);
}

std::int16_t CInt(const Variant& v) {
    const double rounded = std::nearbyint(strictOrThrow(v));
    if (!(rounded >= -32768.0 && rounded <= 32767.0)) throw VbError(vberr::Overflow);
    return static_cast<std::int16_t>(rounded);
}

std::int32_t CLng(const Variant& v) {
    const double rounded = std::nearbyint(strictOrThrow(v));
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) throw VbError(vberr::Overflow);
    return static_cast<std::int32_t>(rounded);
}

bool CBool(const Variant& v) {
    if (v.IsString()) {
        const std::string_view s = trimBlanks(v.Str());
        if (equalFolded(s, "True")) return true;
        if (equalFolded(s, "False")) return false;
    }
    return strictOrThrow(v) != 0;
}

bool IsNumeric(const Variant& v) {
    switch (v.Type()) {
        case VarType::Null:
            return false;
        case VarType::String: {
            double value = 0;
            try {
                return strictNumber(v.Str(), value);
            } catch (const VbError&) {
                return false;  // too large to hold
            }
        }
        case VarType::Date:
            return false;  // a date is no number to IsNumeric, though CDbl reads it
        default:
            return true;
    }
}

double Val(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && isBlank(text[i]))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    std::string clean;
    if (scanUnsigned(text.substr(i), false, clean) == 0) return 0;
    const double magnitude = fromClean(clean);
    return negative ? -magnitude : magnitude;
}

Variant Add(const Variant& a, const Variant& b) {
    if (a.IsNull() || b.IsNull()) return Variant::Null();
    if (!a.IsNumberKind() && !b.IsNumberKind()) {
        if (a.IsEmpty() && b.IsEmpty()) return Variant::Integer(0);
        return Variant(a.Str() + b.Str());
    }
    const double x = strictOrThrow(a);
    const double y = strictOrThrow(b);
    const AddKind ka = addKind(a);
    const AddKind kb = addKind(b);
    if (ka == AddKind::Date || kb == AddKind::Date) {
        const double sum = x + y;
        checkDateRange(sum);
        return Variant::Date(sum);
    }
    if (ka == AddKind::Currency || kb == AddKind::Currency) {
        const AddKind other = ka == AddKind::Currency ? kb : ka;
        if (other == AddKind::Single || other == AddKind::Double) return checkedDouble(x + y);
        const std::int64_t p = currencyOf(a, x).CurrencyScaled();
        const std::int64_t q = currencyOf(b, y).CurrencyScaled();
        std::int64_t sum = 0;
        if (__builtin_add_overflow(p, q, &sum)) throw VbError(vberr::Overflow);
        return Variant::CurrencyFromScaled(sum);
    }
    const AddKind kind = ka > kb ? ka : kb;
    switch (kind) {
        case AddKind::Integer: {
            const long sum = static_cast<long>(x) + static_cast<long>(y);
            if (sum >= -32768 && sum <= 32767) return Variant::Integer(static_cast<int>(sum));
            return Variant::Long(static_cast<std::int32_t>(sum));
        }
        case AddKind::Long: {
            const double sum = x + y;  // exact: both hold at most 32 bits
            if (sum >= -2147483648.0 && sum <= 2147483647.0)
                return Variant::Long(static_cast<std::int32_t>(sum));
            return Variant::Double(sum);
        }
        case AddKind::Single: {
            const double sum = static_cast<double>(static_cast<float>(x) + static_cast<float>(y));
            if (std::isfinite(sum)) return Variant::Single(static_cast<float>(sum));
            return checkedDouble(x + y);
        }
        default:
            return checkedDouble(x + y);
    }
}

std::string CStr(const Variant& v) {
    switch (v.Type()) {
        case VarType::Empty:
            return "";
        case VarType::Null:
            throw VbError(vberr::InvalidUseOfNull);
        case VarType::Boolean:
            return v.BoolValue() ? "True" : "False";
        case VarType::Integer:
        case VarType::Long:
            return std::to_string(static_cast<long long>(v.Number()));
        case VarType::Single:
            return generalNumber(static_cast<double>(static_cast<float>(v.Number())), 7);
        case VarType::Double:
            return generalNumber(v.Number(), 15);
        case VarType::Currency:
            return currencyText(v.CurrencyScaled());
        case VarType::Date:
            return generalDate(v.Number());
        case VarType::String:
            return v.Str();
    }
    return "";
}

std::string textOf(const Variant& v) {
    return v.IsNull() ? std::string() : CStr(v);
}
