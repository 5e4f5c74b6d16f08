#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/trap.h"

// The slots of one import: source items and placements, index 0 to 30.
inline constexpr int SlotCount = 31;
using SlotArray = std::array<std::string, SlotCount>;
// A slot by index; outside 0 to 30 the fault 9.
std::string& slotAt(SlotArray& slots, int i);

// The values a placement file keeps, as the import holds them.
struct PlacementFields {
    std::string& SavedSupplier;
    std::string& Separator;
    std::int16_t& LinesPerItem;
    std::int16_t& SkipLines;
    std::int16_t& AddedSlots;
    bool& SkipDiscontinued;
    std::int16_t& KeyItem;
    SlotArray& FieldPlacement;
};

// Writes the 38 lines of a placement file, numbers in their print form. Faults are those
// of the file's open and writes, each statement through `on`.
void writePlacementFile(const std::string& path, const PlacementFields& p, Trap& on);

// Reads a placement file line by line into the fields, each line one statement through
// `on`: a short file leaves the fields it does not reach as they were, a line that holds no
// number leaves its field, and lines beyond the 38th are not read. The separator line also
// takes "T" for a tab, "C" for a comma and "S" for two blanks.
void readPlacementFile(const std::string& path, const PlacementFields& p, Trap& on);
