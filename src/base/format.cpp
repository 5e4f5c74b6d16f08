#include "base/format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "base/convert.h"
#include "base/dates.h"
#include "base/fold.h"
#include "base/vb_error.h"

namespace {

bool isDateMask(std::string_view mask) {
    return equalFolded(mask, "MM/DD/YY") || equalFolded(mask, "MM/DD/YYYY") ||
           equalFolded(mask, "Short Date") || equalFolded(mask, "M/D/YYYY");
}

// A number mask taken apart.
struct NumberMask {
    std::string prefix;
    std::string suffix;
    int minIntegerDigits = 0;
    bool thousands = false;
    bool point = false;
    int minDecimals = 0;
    int maxDecimals = 0;
};

bool isLiteral(char c) {
    return c == '$' || c == ' ';
}

bool parseNumberMask(std::string_view mask, NumberMask& out) {
    std::size_t i = 0;
    while (i < mask.size() && isLiteral(mask[i]))
        out.prefix += mask[i++];
    bool anyPlace = false;
    while (i < mask.size() && (mask[i] == '#' || mask[i] == '0' || mask[i] == ',')) {
        if (mask[i] == ',') out.thousands = true;
        if (mask[i] == '0') ++out.minIntegerDigits;
        if (mask[i] != ',') anyPlace = true;
        ++i;
    }
    if (i < mask.size() && mask[i] == '.') {
        out.point = true;
        ++i;
        while (i < mask.size() && (mask[i] == '#' || mask[i] == '0')) {
            if (mask[i] == '0') {
                // A "0" after a "#" still shows: the decimals up to it are all kept.
                out.minDecimals = out.maxDecimals + 1;
            }
            ++out.maxDecimals;
            anyPlace = true;
            ++i;
        }
    }
    while (i < mask.size() && isLiteral(mask[i]))
        out.suffix += mask[i++];
    return anyPlace && i == mask.size();
}

// The decimal digits of a magnitude: integer part and fraction part, from its
// 15-significant-digit text so that rounding sees the decimal value (1.005 stays 1.005).
void decimalDigits(double magnitude, std::string& integer, std::string& fraction) {
    integer.clear();
    fraction.clear();
    if (magnitude == 0) return;
    char buf[64];
    const auto result =
        std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific, 14);
    const std::string text(buf, result.ptr);
    const std::size_t e = text.find('e');
    std::string digits;
    for (std::size_t k = 0; k < e; ++k)
        if (text[k] != '.') digits += text[k];
    const int exponent = std::stoi(text.substr(e + 1));
    // The point sits after digit number exponent + 1.
    const int pointAt = exponent + 1;
    if (pointAt <= 0) {
        fraction = std::string(static_cast<std::size_t>(-pointAt), '0') + digits;
    } else if (pointAt >= static_cast<int>(digits.size())) {
        integer = digits + std::string(static_cast<std::size_t>(pointAt) - digits.size(), '0');
    } else {
        integer = digits.substr(0, static_cast<std::size_t>(pointAt));
        fraction = digits.substr(static_cast<std::size_t>(pointAt));
    }
}

void currencyDigits(std::int64_t scaled, std::string& integer, std::string& fraction) {
    const std::uint64_t magnitude = scaled < 0 ? static_cast<std::uint64_t>(-(scaled + 1)) + 1
                                               : static_cast<std::uint64_t>(scaled);
    char buf[24];
    integer.clear();
    if (magnitude / 10000 != 0)
        integer.assign(buf, static_cast<std::size_t>(
                                std::to_chars(buf, buf + sizeof buf, magnitude / 10000).ptr - buf));
    const char* end = std::to_chars(buf, buf + sizeof buf, magnitude % 10000).ptr;
    fraction.assign(static_cast<std::size_t>(4 - (end - buf)), '0');
    fraction.append(buf, static_cast<std::size_t>(end - buf));
}

// Rounds the decimal digits to `decimals` places, half up.
void roundHalfUp(std::string& integer, std::string& fraction, int decimals) {
    const std::size_t keep = static_cast<std::size_t>(decimals);
    if (fraction.size() <= keep) return;
    const bool up = fraction[keep] >= '5';
    fraction.resize(keep);
    if (!up) return;
    std::string all = integer + fraction;
    int k = static_cast<int>(all.size()) - 1;
    while (k >= 0 && all[static_cast<std::size_t>(k)] == '9')
        all[static_cast<std::size_t>(k--)] = '0';
    if (k >= 0) {
        ++all[static_cast<std::size_t>(k)];
    } else {
        all.insert(all.begin(), '1');
    }
    integer = all.substr(0, all.size() - keep);
    fraction = all.substr(all.size() - keep);
}

std::string formatNumber(const Variant& value, const NumberMask& mask) {
    std::string integer;
    std::string fraction;
    bool negative = false;
    if (value.Type() == VarType::Currency) {
        negative = value.CurrencyScaled() < 0;
        currencyDigits(value.CurrencyScaled(), integer, fraction);
    } else {
        const double number = value.Number();
        if (!std::isfinite(number)) throw VbError(vberr::Overflow);
        negative = number < 0;
        decimalDigits(std::fabs(number), integer, fraction);
    }
    roundHalfUp(integer, fraction, mask.maxDecimals);
    while (fraction.size() > static_cast<std::size_t>(mask.minDecimals) && fraction.back() == '0')
        fraction.pop_back();
    if (fraction.size() < static_cast<std::size_t>(mask.minDecimals))
        fraction.append(static_cast<std::size_t>(mask.minDecimals) - fraction.size(), '0');

    integer.erase(0, std::min(integer.find_first_not_of('0'), integer.size()));
    if (integer.size() < static_cast<std::size_t>(mask.minIntegerDigits))
        integer.insert(0, static_cast<std::size_t>(mask.minIntegerDigits) - integer.size(), '0');
    std::string out;
    out.reserve(1 + mask.prefix.size() + integer.size() * 4 / 3 + 1 + fraction.size() +
                mask.suffix.size());
    if (negative) out += '-';
    out += mask.prefix;
    if (mask.thousands && integer.size() > 3) {
        const std::size_t lead = integer.size() % 3 == 0 ? 3 : integer.size() % 3;
        out.append(integer, 0, lead);
        for (std::size_t k = lead; k < integer.size(); k += 3)
            out.append(1, ',').append(integer, k, 3);
    } else {
        out += integer;
    }
    if (mask.point) out.append(1, '.').append(fraction);
    out += mask.suffix;
    return out;
}

}  // namespace

std::string Format(const Variant& v, std::string_view mask) {
    if (mask.empty()) return textOf(v);
    const bool dateMask = isDateMask(mask);
    NumberMask numberMask;
    if (!dateMask && !parseNumberMask(mask, numberMask)) throw VbError(vberr::InvalidProcedureCall);
    if (v.IsNull() || v.IsEmpty()) return "";

    if (dateMask) {
        double serial = 0;
        if (v.IsString()) {
            if (parseDate(v.Str(), serial)) return formatDate(serial, mask);
            double number = 0;
            if (strictNumber(v.Str(), number)) return formatDate(number, mask);
            return v.Str();
        }
        return formatDate(v.Number(), mask);
    }

    if (v.IsString()) {
        double number = 0;
        try {
            if (!strictNumber(v.Str(), number)) return v.Str();
        } catch (const VbError&) {
            return v.Str();  // a number too large to hold is shown as written
        }
        return formatNumber(Variant::Double(number), numberMask);
    }
    return formatNumber(v, numberMask);
}
