// Splitting the lines of a text source: no quoting and no escaping, one literal separator.
#include "build/text_split.h"

#include <array>

#include "base/strings.h"
#include "shell/when.h"

std::optional<SeparatorGuess> guessSeparator(std::string_view line) {
    static const std::array<SeparatorGuess, 4> candidates{{
        {"  ", "SPACES"},
        {",", "COMMAS"},
        {"\t", "TABS"},
        {"]", "BRACKETS"},
    }};
    const double half = static_cast<double>(Len(line)) / 2;
    long p = 0;
    const SeparatorGuess* found = &candidates.back();
    for (const SeparatorGuess& candidate : candidates) {
        p = InStr(line, candidate.separator);
        if (p != 0 && p <= half) {
            found = &candidate;
            break;
        }
    }
    // Accepted at exactly the half, a candidate is still not offered.
    if (p > 0 && half > p) return *found;
    return std::nullopt;
}

namespace {

// The length in bytes of the UTF-8 character that starts at text[at].
std::size_t characterLength(const std::string& text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    std::size_t n = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    while (n > 1 && at + n > text.size())
        --n;
    return n;
}

}  // namespace

int splitItems(std::string buffer, const std::string& separator, int linesPerItem, SlotArray& slots,
               const std::function<void(std::string&)>& nextLine, Trap& on) {
    const bool twoBlanks = separator == "  ";
    const bool perLine = separator == "nl";
    std::size_t from = 0;
    int k = 0;
    for (;;) {
        std::size_t p = std::string::npos;
        if (!perLine && from < buffer.size()) p = buffer.find(separator, from);
        if (p != std::string::npos) {
            on([&] { slotAt(slots, k) = buffer.substr(from, p - from); });
            from = p + characterLength(buffer, p);
            // A slot past the last one fails this test too, and so keeps its index.
            const bool stay = when(on, [&] {
                const bool blank = slotAt(slots, k).empty() || slotAt(slots, k) == "  ";
                return twoBlanks && blank;
            });
            if (!stay) ++k;
            continue;
        }
        on([&] { slotAt(slots, k) = buffer.substr(from); });
        if (k + 1 >= linesPerItem) return k;
        std::string next;
        if (on([&] { nextLine(next); })) {
            buffer = std::move(next);
            from = 0;
        }
        ++k;
    }
}
