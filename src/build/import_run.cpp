// The run of an import: each record of the source is skipped, flagged, added or edited
// through `Data2` as FieldPlacement says, with a dated change log in Notes, and a totals
// page ends it.
#include <filesystem>
#include <optional>

#include "base/convert.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "build/run_steps.h"
#include "build/text_split.h"
#include "forms/runtime.h"
#include "records/data_control.h"
#include "records/pane.h"
#include "shell/products.h"
#include "shell/when.h"

namespace fs = std::filesystem;

namespace {

constexpr int NoLookupItem = 777;
constexpr int PriceColumn = 13;
constexpr int RetailColumn = 12;
constexpr int NotesColumn = 29;
constexpr int DiscoColumn = 21;

bool yesNoColumn(int i) {
    return i == 19 || i == 21 || i == 22 || i == 30;
}

// True for a text whose first letter, in upper case and trimmed, is Y or T.
bool saysYes(const std::string& text) {
    const std::string first = Left(Trim(UCase(text)), 1);
    return first == "Y" || first == "T";
}

}  // namespace

void Bulk::importRun(Trap& on) {
    Pane& pane = P.Wb1();
    on([&] { pane.Navigate2("about:blank"); });
    on([&] {
        pane.Write("<center><font color=blue>Getting Information From: " +
                   UCase(fs::path(fileName_).filename().string()) + "<br><br><br>");
    });
    if (database_ && !openTable(on)) return;
    if (!database_) openTextSource(on);
    on([&] { P.ContinueFlag = false; });
    // The records are committed a group at a time; every way out of the run commits the
    // last group, so the ending and any later reader find every record the run wrote.
    std::optional<WriteGroup> group;
    on([&] { group.emplace(*P.Data2); });
    for (bool first = true; database_ ? nextTableRecord(on, first) : !textAtEnd(); first = false) {
        if (database_)
            readTableRecord(on);
        else
            readRecord(on);
        importRecord(on);
        on([&] { Runtime::Current().LetEventsRun(); });
        if (stopAsked(on)) break;
    }
    on([&] {
        if (group) group->End();
    });
}

// A text source: the note of the run, the lines counted, and the lines before the first
// record skipped.
void Bulk::openTextSource(Trap& on) {
    on([&] {
        ImportNote = Runtime::Current().ui().InputBox(
            std::string("Would You Like To Put A Note For This?") + vb::vbCrLf +
                "Enter It In The Text Box Below, Or Use The One Already In There",
            "Want A Note?", noteDate() + " - ");
    });
    on([&] { source_.open(fileName_); });
    on([&] { TotalLines = 0; });
    while (!textAtEnd()) {
        on([&] { source_.lineInput(); });
        on([&] { return addOne(TotalLines); });
    }
    on([&] { source_.close(); });
    on([&] { source_.open(fileName_); });
    for (int n = 1; n <= SkipLines; ++n)
        on([&] { line_ = source_.lineInput(); });
}

// A file that did not open is at its end at once.
bool Bulk::textAtEnd() const {
    return !source_.isOpen() || source_.eof();
}

bool Bulk::stopAsked(Trap& on) {
    if (when(on, [&] { return P.ContinueFlag; })) {
        on([&] { P.ContinueFlag = false; });
        return true;
    }
    if (when(on, [&] { return CancelFlag; })) {
        on([&] { CancelFlag = false; });
        return true;
    }
    return false;
}

void Bulk::readRecord(Trap& on) {
    on([&] { line_ = source_.lineInput(); });
    on([&] {
        splitItems(
            line_, Separator, LinesPerItem, SourceItems,
            [&](std::string& next) { next = source_.lineInput(); }, on);
    });
}

void Bulk::findStockNo(Trap& on, const std::string& stockNo) {
    on([&] { P.Data2->Recordset().FindFirst("[StockNo] = '" + stockNo + "'"); });
}

void Bulk::importRecord(Trap& on) {
    DaoRecordset* rs = nullptr;
    on([&] { rs = &P.Data2->Recordset(); });
    if (!rs) return;
    if (when(on, [&] { return rs->RecordCount() > 0; })) {
        on([&] { rs->MoveLast(); });
        on([&] { NextId = CLng(rs->GetValue(0)); });
    }
    on([&] { return addOne(TotalChecked); });
    if (KeyItem != NoLookupItem && when(on, [&] {
            const std::string& key = slotAt(SourceItems, KeyItem);
            return key == "99999999" || key.empty() || key == "0";
        }))
        return;
    for (int i : {7, 8})
        if (when(on, [&] { return Trim(slotAt(SourceItems, i)) == "-"; }))
            on([&] { slotAt(SourceItems, i) = ""; });
    // A discontinued source item is never added; an existing one is only flagged.
    int n = 0;
    if (when(on, [&] {
            if (!SkipDiscontinued || Left(FieldPlacement[DiscoColumn], 3) != "FI-") return false;
            n = CInt(Variant(Mid(FieldPlacement[DiscoColumn], 4)));
            return saysYes(slotAt(SourceItems, n));
        })) {
        if (when(on, [&] { return KeyItem == NoLookupItem; }))
            findStockNo(on, Mid(FieldPlacement[2], 4));
        else
            on([&] { findStockNo(on, slotAt(SourceItems, KeyItem)); });
        if (!when(on, [&] { return rs->NoMatch(); })) {
            on([&] { rs->Edit(); });
            on([&] { return rs->TrySetValue(DiscoColumn, Variant(true)); });
            on([&] { rs->Update(); });
        }
        return;
    }
    on([&] { return addOne(NextId); });
    if (when(on, [&] { return KeyItem == NoLookupItem; })) {
        findStockNo(on, Mid(FieldPlacement[2], 4) + std::to_string(NextId));
    } else if (when(on, [&] { return KeyItem == -1; })) {
        findStockNo(on, std::to_string(NextId));
    } else {
        if (when(on, [&] { return slotAt(SourceItems, KeyItem).empty(); })) return;
        on([&] { findStockNo(on, slotAt(SourceItems, KeyItem)); });
    }
    if (when(on, [&] { return rs->NoMatch(); })) {
        on([&] { IsNew = true; });
        if (when(on, [&] { return EditOnly; })) return;
        on([&] { rs->AddNew(); });
        on([&] { return rs->TrySetValue(0, Variant::Long(NextId)); });
    } else {
        on([&] { rs->Edit(); });
        on([&] { IsNew = false; });
    }
    writeColumns(on);
    if (when(on, [&] { return rs->GetValue(PriceColumn).IsNull(); }))
        on([&] { return rs->TrySetValue(PriceColumn, rs->GetValue(RetailColumn)); });
    writeChangeLog(on);
    if (when(on, [&] { return FieldPlacement[NotesColumn] == "AI-Delete"; }))
        on([&] { return rs->TrySetValue(NotesColumn, Variant("")); });
    on([&] { rs->Update(); });
    if (when(on, [&] { return ChangeSeen == "ok"; })) on([&] { return addOne(TotalEdited); });
    if (when(on, [&] { return IsNew; })) on([&] { return addOne(TotalAdded); });
    on([&] { ChangeSeen = ""; });
    for (auto& row : ChangeLog)
        row = {Variant(""), Variant("")};
    on([&] { (*this)("lblStatus").SetCaption("Adding Product ID # " + std::to_string(NextId)); });
}

void Bulk::writeRecord(Trap& on) {
    DaoRecordset& rs = P.Data2->Recordset();
    writeColumns(on);
    if (when(on, [&] { return rs.GetValue(PriceColumn).IsNull(); }))
        on([&] { rs.SetValue(PriceColumn, rs.GetValue(RetailColumn)); });
    writeChangeLog(on);
    if (when(on, [&] { return FieldPlacement[NotesColumn] == "AI-Delete"; }))
        on([&] { rs.SetValue(NotesColumn, Variant("")); });
}

// Columns 1 to 30 as FieldPlacement says; a value the column refuses leaves what an earlier
// statement put there.
void Bulk::writeColumns(Trap& on) {
    DaoRecordset& rs = P.Data2->Recordset();
    int n = 0;  // the source item of the placement; kept when a placement names none
    for (int i = 1; i <= 30; ++i) {
        const std::string& placement = FieldPlacement[static_cast<std::size_t>(i)];
        const std::string typed = Mid(placement, 4);
        const bool ai = Left(placement, 3) == "AI-";
        if (!placement.empty() && !ai) on([&] { n = CInt(Variant(typed)); });
        if (yesNoColumn(i) && !placement.empty() && !ai) {
            std::string said;
            on([&] { said = Trim(UCase(slotAt(SourceItems, n))); });
            const std::string first = Left(said, 1);
            if (when(on, [&] { return first == "Y" || first == "T" || Left(said, 3) == "YES"; }))
                on([&] { slotAt(SourceItems, n) = "True"; });
            else if (when(on,
                          [&] { return first == "N" || first == "F" || Left(said, 2) == "NO"; }))
                on([&] { slotAt(SourceItems, n) = "False"; });
        }
        if (placement.empty()) continue;
        if (!IsNew) {
            if (ai) {
                on([&] { ChangeLog[i][0] = rs.GetValue(i); });
                on([&] { ChangeLog[i][1] = Variant(typed); });
            } else if (when(on, [&] {
                           const Variant column = rs.GetValue(i);
                           return column.IsNull() ||
                                  Val(Trim(slotAt(SourceItems, n))) != Val(Trim(textOf(column)));
                       })) {
                on([&] { ChangeLog[i][0] = rs.GetValue(i); });
                on([&] { ChangeLog[i][1] = Variant(slotAt(SourceItems, n)); });
            }
        }
        if (i >= 7 && i <= 13)
            on([&] {
                return rs.TrySetValue(i, Variant::Double(Val(ai ? typed : slotAt(SourceItems, n))));
            });
        if (yesNoColumn(i)) {
            if (ai)
                on([&] {
                    return rs.TrySetValue(i, Variant(saysYes(Mid(Trim(UCase(placement)), 4, 1))));
                });
            else
                on([&] {
                    const std::string said = Trim(UCase(slotAt(SourceItems, n)));
                    return rs.TrySetValue(i, Variant(said == "Y" || said == "T"));
                });
        }
        if (ai)
            on([&] {
                return rs.TrySetValue(i, Variant(i == 2 ? typed + std::to_string(NextId) : typed));
            });
        else
            on([&] { return rs.TrySetValue(i, Variant(slotAt(SourceItems, n))); });
        if (placement == "AI-Delete") on([&] { return rs.TrySetValue(i, Variant("")); });
    }
}

void Bulk::writeChangeLog(Trap& on) {
    DaoRecordset& rs = P.Data2->Recordset();
    auto append = [&](const std::string& text) {
        on([&] {
            return rs.TrySetValue(NotesColumn, Variant(textOf(rs.GetValue(NotesColumn)) + text));
        });
    };
    if (when(on, [&] { return IsNew; })) {
        append(ImportNote + " - Added This Item" + vb::vbCrLf);
        return;
    }
    append(ImportNote + noteDate() + " - Edited This Item" + vb::vbCrLf);
    for (int i = 0; i <= 30; ++i) {
        if (!when(on, [&] { return textOf(ChangeLog[i][1]) != ""; })) continue;
        on([&] { ChangeSeen = "ok"; });
        on([&] {
            append(std::string("\t") + "Changed: " + rs.FieldName(i) + " From '" +
                   textOf(ChangeLog[i][0]) + "' To '" + textOf(ChangeLog[i][1]) + "'" + vb::vbCrLf);
        });
    }
    if (when(on, [&] { return ChangeSeen != "ok"; })) append("\tNo Changes Made");
}

// Every way out of an import: the totals page, the placement file of a finished plain
// import, the wait for "Click Here To Continue", and the form reset and refreshed.
void Bulk::commonEnding(Trap& on) {
    Pane& pane = P.Wb1();
    on([&] { source_.close(); });
    on([&] { P.Data3->Refresh(); });
    on([&] { P.Data3->Recordset().MoveFirst(); });
    on([&] { (*this)("lblStatus").SetCaption("Finished"); });
    on([&] { pane.Navigate2("about:blank"); });
    on([&] { P.Data2->Refresh(); });
    on([&] { P.Data2->Recordset().MoveFirst(); });
    if (when(on, [&] { return P.ExportMode; }))
        on([&] {
            pane.Write("<font size=4><center>Total Records Exported: " +
                       std::to_string(TotalEdited));
        });
    else
        on([&] {
            pane.Write("<font size=4><center>Total Checked: " + std::to_string(TotalChecked) +
                       "<br>Total Added: " + std::to_string(TotalAdded) +
                       "<br>Total Edited: " + std::to_string(TotalEdited));
        });
    on([&] {
        pane.Write(
            "<br><p align=center><font size=3 font color=red><a href='CONTINUE'>Click Here To "
            "Continue</a>");
    });
    on([&] { P.ContinueFlag = false; });
    // An export or a bulk edit has no source to keep placements for.
    if (when(on, [&] { return overProducts(); })) {
        leaveExportAndEdit(on);
    } else if (when(on, [&] { return KeyItem != -1; })) {
        std::string placement;
        on([&] { placement = Left(fileName_, Len(fileName_) - 3) + "dat"; });
        if (when(on, [&] { return !fs::exists(placement); }))
            writePlacementFile(placement, placements(), on);
    }
    while (!when(on, [&] { return P.ContinueFlag; }))
        on([&] { Runtime::Current().WaitForUser(); });
    on([&] { source_.close(); });
    on([&] { P.ImportKind = 0; });
    on([&] { P.cmdReset_Click(); });
    on([&] { P.cmdRefresh_Click(); });
    on([&] { P.ContinueFlag = false; });
    on([&] { P.Data1->Refresh(); });
    on([&] { P.Data2->Refresh(); });
}
