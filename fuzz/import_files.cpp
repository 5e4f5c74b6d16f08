// The import's readers on any bytes: the separator guess and the split of a record, and the
// placement file, as a supplier's file and a file left beside it would reach them.
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <string>

#include "build/placement_file.h"
#include "build/text_split.h"

namespace {

// One scratch file for the whole run, as the placement file beside a source file.
const std::string& scratchFile() {
    static const std::string path = "/tmp/fuzz_placement_" + std::to_string(::getpid()) + ".dat";
    return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Trap on = Trap::Ignoring();

    const auto guess = guessSeparator(text);
    for (const std::string& separator : {guess ? guess->separator : ",", std::string("nl"),
                                         std::string("  "), std::string("][")}) {
        SlotArray slots;
        std::size_t taken = 0;
        // The following lines of a record are the input again, cut shorter each time.
        splitItems(
            text, separator, 3, slots,
            [&](std::string& line) { line = text.substr(0, text.size() / ++taken); }, on);
    }

    std::ofstream(scratchFile(), std::ios::binary | std::ios::trunc) << text;
    std::string supplier, separator;
    std::int16_t linesPerItem = 0, skipLines = 0, addedSlots = 0, keyItem = 0;
    bool skipDiscontinued = false;
    SlotArray placement;
    readPlacementFile(scratchFile(),
                      {supplier, separator, linesPerItem, skipLines, addedSlots, skipDiscontinued,
                       keyItem, placement},
                      on);
    return 0;
}
