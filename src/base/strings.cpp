#include "base/strings.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "base/vb_error.h"

namespace {

bool isContinuation(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

// Byte offset just past the character that starts at byte i.
std::size_t nextChar(std::string_view s, std::size_t i) {
    ++i;
    while (i < s.size() && isContinuation(static_cast<unsigned char>(s[i])))
        ++i;
    return i;
}

// Eight bytes of a text as one word, in memory order.
std::uint64_t wordAt(std::string_view s, std::size_t i) {
    std::uint64_t word;
    std::memcpy(&word, s.data() + i, sizeof word);
    return word;
}

constexpr std::uint64_t HighBits = 0x8080808080808080ULL;

// Byte offset of the character with 0-based index n (s.size() when past the end).
std::size_t offsetOf(std::string_view s, long n) {
    // Plain ASCII, one byte a character, is passed over first, eight bytes at a time.
    std::size_t i = 0;
    const std::size_t ascii = n > 0 ? std::min(s.size(), static_cast<std::size_t>(n)) : 0;
    while (i + 8 <= ascii && (wordAt(s, i) & HighBits) == 0)
        i += 8;
    while (i < ascii && static_cast<unsigned char>(s[i]) < 0x80)
        ++i;
    // Stray continuation bytes belong to the character before them, even a plain one.
    if (i > 0 && i < s.size() && isContinuation(static_cast<unsigned char>(s[i]))) --i;
    n -= static_cast<long>(i);
    while (n > 0 && i < s.size()) {
        i = nextChar(s, i);
        --n;
    }
    return i;
}

// Number of characters in the first `bytes` bytes: the first byte starts one, and so does
// every later byte that continues none. Counted eight bytes at a time: a continuation byte
// has its top bit set and the next one clear.
long charsIn(std::string_view s, std::size_t bytes) {
    const std::size_t end = std::min(bytes, s.size());
    if (end == 0) return 0;
    long continuations = 0;
    std::size_t i = 1;
    for (; i + 8 <= end; i += 8) {
        const std::uint64_t word = wordAt(s, i);
        continuations += std::popcount(word & ~(word << 1) & HighBits);
    }
    for (; i < end; ++i)
        continuations += isContinuation(static_cast<unsigned char>(s[i])) ? 1 : 0;
    return static_cast<long>(end) - continuations;
}

// The code point at byte i and the offset past it; bytes of a broken sequence stand for
// themselves, above the Unicode range, so that junk still compares consistently.
char32_t decode(std::string_view s, std::size_t i, std::size_t& next) {
    next = nextChar(s, i);
    const auto lead = static_cast<unsigned char>(s[i]);
    const std::size_t length = next - i;
    if (lead < 0x80 && length == 1) return lead;
    std::size_t expected = 0;
    char32_t cp = 0;
    if ((lead & 0xE0) == 0xC0) {
        expected = 2;
        cp = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        expected = 3;
        cp = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        expected = 4;
        cp = lead & 0x07;
    }
    if (expected == 0 || expected != length) return 0x110000 + lead;
    for (std::size_t k = i + 1; k < next; ++k)
        cp = (cp << 6) | (static_cast<unsigned char>(s[k]) & 0x3F);
    return cp;
}

char32_t fold(char32_t c) {
    return (c >= 'A' && c <= 'Z') ? c - 'A' + 'a' : c;
}
char foldChar(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

// The byte offset of the last `needle` in `s`: one byte, the usual separator, by memrchr.
std::size_t lastOf(std::string_view s, std::string_view needle) {
    if (needle.size() != 1) return s.rfind(needle);
    const void* hit = ::memrchr(s.data(), needle[0], s.size());
    return hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - s.data())
               : std::string_view::npos;
}

void checkLength(long n) {
    if (n < 0) throw VbError(vberr::InvalidProcedureCall);
}

}  // namespace

long Len(std::string_view s) {
    return charsIn(s, s.size());
}

long InStr(long start, std::string_view haystack, std::string_view needle) {
    if (start < 1) throw VbError(vberr::InvalidProcedureCall);
    if (haystack.empty()) return 0;
    const std::size_t from = offsetOf(haystack, start - 1);
    if (needle.empty()) return start <= Len(haystack) + 1 ? start : 0;
    if (from >= haystack.size()) return 0;
    const std::size_t at = haystack.find(needle, from);
    if (at == std::string_view::npos) return 0;
    return start + charsIn(haystack.substr(from), at - from);
}

long InStr(std::string_view haystack, std::string_view needle) {
    return InStr(1, haystack, needle);
}

long InStrText(long start, std::string_view haystack, std::string_view needle) {
    // InStr with both texts folded, compared in place: a page's every template line is
    // searched for each marker. The first character's two cases are found by memchr.
    if (start < 1) throw VbError(vberr::InvalidProcedureCall);
    if (haystack.empty()) return 0;
    const std::size_t from = offsetOf(haystack, start - 1);
    if (needle.empty()) return start <= Len(haystack) + 1 ? start : 0;
    if (from >= haystack.size() || haystack.size() - from < needle.size()) return 0;
    const std::size_t last = haystack.size() - needle.size();  // the last place it fits
    const char lower = foldChar(needle[0]);
    const char upper = lower >= 'a' && lower <= 'z' ? static_cast<char>(lower - 32) : lower;
    auto next = [&](char c, std::size_t at) {
        if (at > last) return std::string_view::npos;
        const void* hit = std::memchr(haystack.data() + at, c, last - at + 1);
        return hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - haystack.data())
                   : std::string_view::npos;
    };
    std::size_t nextLower = next(lower, from);
    std::size_t nextUpper = upper == lower ? std::string_view::npos : next(upper, from);
    for (;;) {
        const std::size_t at = std::min(nextLower, nextUpper);
        if (at == std::string_view::npos) return 0;
        std::size_t i = 1;
        while (i < needle.size() && foldChar(haystack[at + i]) == foldChar(needle[i]))
            ++i;
        if (i == needle.size()) return start + charsIn(haystack.substr(from), at - from);
        if (at == nextLower)
            nextLower = next(lower, at + 1);
        else
            nextUpper = next(upper, at + 1);
    }
}

long InStrText(std::string_view haystack, std::string_view needle) {
    return InStrText(1, haystack, needle);
}

long InStrRev(std::string_view haystack, std::string_view needle, long start) {
    if (start == 0 || start < -1) throw VbError(vberr::InvalidProcedureCall);
    const long length = Len(haystack);
    if (start == -1) start = length;
    if (start > length) return 0;
    if (needle.empty()) return start;
    // The match must end by the end of character `start`.
    const std::size_t limit = offsetOf(haystack, start);
    if (needle.size() > limit) return 0;
    const std::size_t at = lastOf(haystack.substr(0, limit), needle);
    if (at == std::string_view::npos) return 0;
    return charsIn(haystack, at) + 1;
}

std::string Mid(std::string_view s, long start) {
    if (start < 1) throw VbError(vberr::InvalidProcedureCall);
    return std::string(s.substr(offsetOf(s, start - 1)));
}

std::string Mid(std::string_view s, long start, long length) {
    if (start < 1) throw VbError(vberr::InvalidProcedureCall);
    checkLength(length);
    const std::string_view rest = s.substr(offsetOf(s, start - 1));
    return std::string(rest.substr(0, offsetOf(rest, length)));
}

std::string Left(std::string_view s, long n) {
    return std::string(LeftView(s, n));
}

std::string_view LeftView(std::string_view s, long n) {
    checkLength(n);
    return s.substr(0, offsetOf(s, n));
}

std::string Right(std::string_view s, long n) {
    checkLength(n);
    const long length = Len(s);
    if (n >= length) return std::string(s);
    return std::string(s.substr(offsetOf(s, length - n)));
}

std::string UCase(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return out;
}

std::string LCase(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        c = foldChar(c);
    return out;
}

std::string LTrim(std::string_view s) {
    const std::size_t first = s.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string() : std::string(s.substr(first));
}

std::string RTrim(std::string_view s) {
    const std::size_t last = s.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string() : std::string(s.substr(0, last + 1));
}

std::string Trim(std::string_view s) {
    return LTrim(RTrim(s));
}

std::string Concat(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (std::string_view part : parts)
        size += part.size();
    std::string out;
    out.reserve(size);
    for (std::string_view part : parts)
        out.append(part);
    return out;
}

std::string Replace(std::string_view s, std::string_view find, std::string_view with) {
    if (find.empty()) return std::string(s);
    std::string out;
    out.reserve(s.size());
    std::size_t from = 0;
    for (;;) {
        const std::size_t at = s.find(find, from);
        if (at == std::string_view::npos) break;
        out.append(s.substr(from, at - from));
        out.append(with);
        from = at + find.size();
    }
    out.append(s.substr(from));
    return out;
}

std::string Space(long n) {
    checkLength(n);
    return std::string(static_cast<std::size_t>(n), ' ');
}

std::string StringOf(long n, std::string_view ch) {
    checkLength(n);
    if (ch.empty()) throw VbError(vberr::InvalidProcedureCall);
    const std::string_view one = ch.substr(0, nextChar(ch, 0));
    std::string out;
    out.reserve(one.size() * static_cast<std::size_t>(n));
    for (long k = 0; k < n; ++k)
        out.append(one);
    return out;
}

std::string StringOf(long n, char ch) {
    checkLength(n);
    return std::string(static_cast<std::size_t>(n), ch);
}

LikePattern::LikePattern(std::string_view pattern) {
    std::size_t i = 0;
    while (i < pattern.size()) {
        std::size_t next = 0;
        const char32_t c = decode(pattern, i, next);
        Token t;
        if (c == '*') {
            t.kind = Token::Star;
            i = next;
            // Runs of stars are one star.
            if (!tokens_.empty() && tokens_.back().kind == Token::Star) continue;
        } else if (c == '?') {
            t.kind = Token::AnyOne;
            i = next;
        } else if (c == '#') {
            t.kind = Token::Digit;
            i = next;
        } else if (c == '[') {
            t.kind = Token::Set;
            i = next;
            if (i < pattern.size() && pattern[i] == '!') {
                t.negate = true;
                ++i;
            }
            bool closed = false;
            while (i < pattern.size()) {
                char32_t lo = decode(pattern, i, next);
                if (lo == ']') {
                    closed = true;
                    i = next;
                    break;
                }
                i = next;
                char32_t hi = lo;
                if (i + 1 < pattern.size() && pattern[i] == '-' && pattern[i + 1] != ']') {
                    hi = decode(pattern, i + 1, next);
                    i = next;
                    if (hi < lo) throw VbError(93, "Invalid pattern string");
                }
                t.ranges.emplace_back(lo, hi);
            }
            if (!closed) throw VbError(93, "Invalid pattern string");
            // "[]" matches the empty string: no token at all.
            if (t.ranges.empty() && !t.negate) continue;
        } else {
            t.ch = fold(c);
            i = next;
        }
        tokens_.push_back(std::move(t));
    }
}

bool LikePattern::tokenMatches(const Token& t, char32_t c) const {
    switch (t.kind) {
        case Token::Literal:
            return fold(c) == t.ch;
        case Token::AnyOne:
            return true;
        case Token::Digit:
            return c >= '0' && c <= '9';
        case Token::Set: {
            bool in = false;
            const char32_t f = fold(c);
            for (const auto& [lo, hi] : t.ranges) {
                if ((c >= lo && c <= hi) || (f >= fold(lo) && f <= fold(hi))) {
                    in = true;
                    break;
                }
            }
            return in != t.negate;
        }
        case Token::Star:
            return false;
    }
    return false;
}

bool LikePattern::matches(std::string_view text) const {
    // Two cursors; on a mismatch the text falls back to one character past where the last
    // star began to match. Every token but the star takes exactly one character, so this
    // finds a match whenever one exists.
    const std::size_t m = tokens_.size();
    std::size_t ti = 0;
    std::size_t pi = 0;
    std::size_t starToken = m;  // none yet
    std::size_t starText = 0;
    while (ti < text.size()) {
        if (pi < m && tokens_[pi].kind == Token::Star) {
            starToken = pi++;
            starText = ti;
            continue;
        }
        std::size_t next = 0;
        const char32_t c = decode(text, ti, next);
        if (pi < m && tokenMatches(tokens_[pi], c)) {
            ti = next;
            ++pi;
            continue;
        }
        if (starToken == m) return false;
        pi = starToken + 1;
        starText = nextChar(text, starText);
        ti = starText;
    }
    while (pi < m && tokens_[pi].kind == Token::Star)
        ++pi;
    return pi == m;
}

bool likeMatch(std::string_view text, std::string_view pattern) {
    return LikePattern(pattern).matches(text);
}

std::string numbered(const std::string& key, int n) {
    return key + "(" + std::to_string(n) + ")";
}
