// The placement file of an import: what the board decided for a source file, kept beside it
// so that the next import of the same file runs without the board.
#include "build/placement_file.h"

#include "base/convert.h"
#include "base/textio.h"
#include "base/vb_error.h"

std::string& slotAt(SlotArray& slots, int i) {
    if (i < 0 || i >= SlotCount) throw VbError(vberr::SubscriptOutOfRange);
    return slots[static_cast<std::size_t>(i)];
}

void writePlacementFile(const std::string& path, const PlacementFields& p, Trap& on) {
    TextFileWriter out;
    on([&] { out.open(path); });
    on([&] { out.printLine(p.SavedSupplier); });
    on([&] { out.printLine(p.Separator); });
    on([&] { out.printValue(Variant::Integer(p.LinesPerItem)); });
    on([&] { out.printValue(Variant::Integer(p.SkipLines)); });
    on([&] { out.printValue(Variant::Integer(p.AddedSlots)); });
    on([&] { out.printValue(Variant(p.SkipDiscontinued)); });
    on([&] { out.printValue(Variant::Integer(p.KeyItem)); });
    for (const std::string& placement : p.FieldPlacement)
        on([&] { out.printLine(placement); });
    on([&] { out.close(); });
}

namespace {

// The separator as written, or one of the letters that stand for the usual ones.
std::string separatorOf(const std::string& line) {
    if (line == "T") return "\t";
    if (line == "C") return ",";
    if (line == "S") return "  ";
    return line;
}

}  // namespace

void readPlacementFile(const std::string& path, const PlacementFields& p, Trap& on) {
    TextFileReader in;
    on([&] { in.open(path); });
    auto line = [&] { return in.lineInput(); };
    on([&] { p.SavedSupplier = line(); });
    on([&] { p.Separator = separatorOf(line()); });
    on([&] { p.LinesPerItem = CInt(Variant(line())); });
    on([&] { p.SkipLines = CInt(Variant(line())); });
    on([&] { p.AddedSlots = CInt(Variant(line())); });
    on([&] { p.SkipDiscontinued = CBool(Variant(line())); });
    on([&] { p.KeyItem = CInt(Variant(line())); });
    for (std::string& placement : p.FieldPlacement)
        on([&] { placement = line(); });
    on([&] { in.close(); });
}
