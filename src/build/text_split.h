#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/trap.h"
#include "build/placement_file.h"

// A separator that the program offers the user for a line.
struct SeparatorGuess {
    std::string separator;
    std::string name;  // as the question shows it: SPACES, COMMAS, TABS, BRACKETS
};

// The separator a line seems to use: the first of two blanks, ",", tab and "]" found in
// the line's first half, unless it stands exactly at the half; none when nothing fits.
std::optional<SeparatorGuess> guessSeparator(std::string_view line);

// Splits a record into slots from slot 0 on, one literal separator at a time ("nl": one
// item per line). One character of the separator is dropped, so the rest of a longer one
// stays at the head of the next item; with two blanks a run of blanks separates once. While
// the item number is below linesPerItem the next line is read by nextLine (a fault there
// keeps the buffer). Slots above the last item keep what they held; a slot past 30 is the
// fault 9 through `on`, and the pieces that follow it go nowhere. Returns the index of the
// last item.
int splitItems(std::string buffer, const std::string& separator, int linesPerItem, SlotArray& slots,
               const std::function<void(std::string&)>& nextLine, Trap& on);
