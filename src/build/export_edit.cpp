// Export and bulk edit: GetFiles over the products of the search in force instead of over a
// source. The board shows its boxes alone: in an export the user picks the columns to write
// to a text file, in a bulk edit types the values to give every product.
#include "base/convert.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "build/run_steps.h"
#include "forms/runtime.h"
#include "records/data_control.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace {

constexpr int NotesColumn = 29;
constexpr int StockNoColumn = 2;

}  // namespace

Next Bulk::exportOrEditBoard(Trap& on) {
    Module& m = Mod();
    DataControl& Data2 = *P.Data2;
    if (when(on, [&] { return CStr(m.SearchCriteria) != ""; })) {
        on([&] {
            Data2.SetRecordSource("select * from [products] where " + CStr(m.SearchCriteria));
        });
        on([&] { Data2.Refresh(); });
        on([&] { Data2.Recordset().MoveLast(); });
        on([&] { Data2.Recordset().MoveFirst(); });
    }
    // No source: the board shows no items, and there is no list of lines to click.
    lastItem_ = -1;
    listedLines_ = 0;
    if (P.ExportMode && askSeparator(on) == Next::Ending) return Next::Ending;
    openBoard(on, false);
    if (waitOnBoard(on) == Next::Ending) return Next::Ending;
    on([&] { Data2.Refresh(); });
    on([&] { Data2.Recordset().MoveLast(); });
    on([&] { Data2.Recordset().MoveFirst(); });
    if (when(on, [&] { return Data2.Recordset().RecordCount() < 1; })) return Next::Ending;
    return Next::Go;
}

// The export's file, named by the user, and its header: the captions of the chosen boxes.
Next Bulk::exportFileAndHeader(Trap& on) {
    if (!P.ExportMode) return Next::Go;
    lastChosen_ = 0;
    for (int i = 1; i <= 30; ++i)
        if (!FieldPlacement[static_cast<std::size_t>(i)].empty()) lastChosen_ = i;
    CommonDialog dialog;
    dialog.FileName = "*.txt";
    dialog.Filter = TextFilesFilter;
    on([&] { exportName_ = Runtime::Current().ui().ShowSave(dialog) ? dialog.FileName : ""; });
    if (when(on, [&] { return exportName_.empty(); })) return Next::Ending;
    on([&] { exportFile_.open(exportName_); });
    for (int i = 1; i <= 30; ++i) {
        if (FieldPlacement[static_cast<std::size_t>(i)].empty()) continue;
        on([&] {
            exportFile_.write((*this)("Label1", i).Caption() +
                              (i == lastChosen_ ? std::string(vb::vbCrLf) : Separator));
        });
    }
    return Next::Go;
}

void Bulk::exportOrEditRun(Trap& on) {
    DaoRecordset* rs = nullptr;
    on([&] { rs = &P.Data2->Recordset(); });
    if (!rs) return;
    const bool exporting = P.ExportMode;
    Control& lblStatus = (*this)("lblStatus");
    on([&] { P.ContinueFlag = false; });
    on([&] { ImportNote = ""; });
    on([&] { rs->MoveFirst(); });
    std::int32_t running = 0;
    {
        // Committed a group at a time, and whatever way the run is left, what it wrote is in
        // the file.
        WriteGroup group(*P.Data2);
        while (!when(on, [&] { return rs->Eof(); })) {
            ++running;
            on([&] { rs->Edit(); });
            on([&] { IsNew = false; });
            if (exporting)
                exportRecord(on, *rs);
            else
                writeRecord(on);
            on([&] { rs->Update(); });
            if (exporting || when(on, [&] { return ChangeSeen == "ok"; }))
                on([&] { return addOne(TotalEdited); });
            on([&] { ChangeSeen = ""; });
            for (auto& row : ChangeLog)
                row = {Variant(""), Variant("")};
            if (exporting)
                on([&] { lblStatus.SetCaption("Exporting Record # " + std::to_string(running)); });
            else
                on([&] {
                    lblStatus.SetCaption("Editing Product ID # " +
                                         textOf(rs->GetValue(StockNoColumn)));
                });
            on([&] { Runtime::Current().LetEventsRun(); });
            if (stopAsked(on)) break;
            on([&] { rs->MoveNext(); });
        }
    }
    on([&] { exportFile_.close(); });
}

// One line of the export, and the note of it in the product's Notes. Notes itself is never
// written to the file.
void Bulk::exportRecord(Trap& on, DaoRecordset& rs) {
    for (int i = 1; i <= 30; ++i) {
        if (i == NotesColumn || FieldPlacement[static_cast<std::size_t>(i)].empty()) continue;
        on([&] {
            exportFile_.write(textOf(rs.GetValue(i)) +
                              (i == lastChosen_ ? std::string(vb::vbCrLf) : Separator));
        });
    }
    on([&] {
        rs.SetValue(NotesColumn, Variant(textOf(rs.GetValue(NotesColumn)) + noteDate() +
                                         " - Exported This Item To File: " + UCase(exportName_) +
                                         ".TXT" + vb::vbCrLf));
    });
}

void Bulk::leaveExportAndEdit(Trap& on) {
    on([&] { Mod().BulkEditMode = false; });
    on([&] { P.ExportMode = false; });
    on([&] { (*this)("cmdSelectAll").SetVisible(false); });
    on([&] { (*this)("cmdUnSelect").SetVisible(false); });
}
