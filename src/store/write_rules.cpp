#include "store/write_rules.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/strings.h"

Affinity affinityOf(const std::string& declared) {
    const std::string t = UCase(declared);
    auto has = [&](const char* part) { return t.find(part) != std::string::npos; };
    if (has("INT")) return Affinity::Integer;
    if (has("CHAR") || has("CLOB") || has("TEXT")) return Affinity::Text;
    if (has("BLOB") || t.empty()) return Affinity::Blob;
    if (has("REAL") || has("FLOA") || has("DOUB")) return Affinity::Real;
    return Affinity::Numeric;
}

namespace {

StoredValue integer(std::int64_t i) {
    StoredValue v;
    v.type = StoredValue::Type::Integer;
    v.i = i;
    return v;
}

StoredValue real(double r) {
    StoredValue v;
    v.type = StoredValue::Type::Real;
    v.r = r;
    return v;
}

}  // namespace

std::optional<StoredValue> storedAfter(Affinity affinity, const StoredValue& written) {
    using Type = StoredValue::Type;
    if (written.type == Type::Null || affinity == Affinity::Blob) return written;
    switch (affinity) {
        case Affinity::Text:
            if (written.type == Type::Text) return written;
            return std::nullopt;  // a number is kept as its text, in the engine's own format
        case Affinity::Real:
            if (written.type == Type::Integer) return real(static_cast<double>(written.i));
            if (written.type == Type::Real) return written;
            return std::nullopt;
        case Affinity::Numeric:
        case Affinity::Integer: {
            if (written.type == Type::Integer) return written;
            if (written.type != Type::Real) return std::nullopt;
            // A whole real is kept as a whole number; near the ends of the range the engine's
            // own rounding decides, so that is left to reading back.
            const double r = written.r;
            if (!std::isfinite(r) || r != std::trunc(r)) return written;
            if (std::fabs(r) >= 0x1p62) return std::nullopt;
            return integer(static_cast<std::int64_t>(r));
        }
        case Affinity::Blob:
            break;
    }
    return written;
}

std::optional<StoredValue> literalDefault(const StoredValue& declared) {
    using Type = StoredValue::Type;
    if (declared.type == Type::Null) return StoredValue{};
    if (declared.type != Type::Text) return std::nullopt;
    const std::string t = Trim(declared.text);
    if (UCase(t) == "NULL") return StoredValue{};
    if (t.size() >= 2 && t.front() == '\'' && t.back() == '\'') {
        const std::string inner = t.substr(1, t.size() - 2);
        if (inner.find('\'') != std::string::npos) return std::nullopt;
        StoredValue v;
        v.type = Type::Text;
        v.text = inner;
        return v;
    }
    // A whole number of a few digits, with its sign.
    std::size_t digits = t.find_first_not_of("+-") == 1 ? 1 : 0;
    if (t.empty() || t.size() - digits > 15 ||
        t.find_first_not_of("0123456789", digits) != std::string::npos || digits == t.size())
        return std::nullopt;
    return integer(std::strtoll(t.c_str(), nullptr, 10));
}

bool WriteRules::added(const std::vector<int>& written, const std::vector<StoredValue>& values,
                       std::vector<StoredValue>& row) const {
    row.resize(columns.size());
    for (std::size_t c = 0; c < columns.size(); ++c) {
        const Column& column = columns[c];
        const auto at = std::find(written.begin(), written.end(), static_cast<int>(c));
        if (column.key) {
            row[c].type = StoredValue::Type::Integer;
            row[c].i = 0;
        } else if (at != written.end()) {
            std::optional<StoredValue> stored = storedAfter(
                column.affinity, values[static_cast<std::size_t>(at - written.begin())]);
            if (!stored) return false;
            row[c] = std::move(*stored);
        } else if (!column.initial) {
            return false;
        } else {
            row[c] = *column.initial;
        }
    }
    return true;
}

std::optional<std::vector<StoredValue>> WriteRules::updated(
    const std::vector<int>& written, const std::vector<StoredValue>& values) const {
    std::vector<StoredValue> out;
    out.reserve(written.size());
    for (std::size_t i = 0; i < written.size(); ++i) {
        const Column& column = columns[written[i]];
        std::optional<StoredValue> stored = storedAfter(column.affinity, values[i]);
        if (column.key || !stored) return std::nullopt;
        out.push_back(std::move(*stored));
    }
    return out;
}
