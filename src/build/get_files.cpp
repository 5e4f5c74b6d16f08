// Imports from a text file or a database (`TextFiles`, `TextEdit`, `DBFiles`), bulk edit and
// export through the placement board: one long procedure that waits for the user on flags.
#include "build/bulk.h"
#include "forms/ui.h"
#include "records/data_control.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

void Bulk::GetFiles() {
    Trap on = reportTo("(Form) BuildDB::Sub GetFiles");
    database_ = P.ImportKind == 7;
    fileName_.clear();
    line_.clear();
    lastItem_ = 0;
    ImportNote = "";
    TotalChecked = TotalAdded = TotalEdited = 0;
    openingSteps(on);
    if (when(on, [&] { return overProducts(); })) {
        Next next = exportOrEditBoard(on);
        if (next == Next::Go) next = exportFileAndHeader(on);
        if (next == Next::Go) exportOrEditRun(on);
        commonEnding(on);
        return;
    }
    if (when(on, [&] { return P.Data2->Recordset().RecordCount() >= 1; })) {
        int answer = vb::vbNo;
        on([&] {
            answer =
                MsgBox(std::string("To EDIT The Existing Items ONLY, Click [YES]") + vb::vbCrLf +
                           vb::vbCrLf + "To ADD New Items AND Edit Existing Items Press [NO]",
                       vb::vbYesNo, "ADD New Items or Just Edit Items?");
        });
        on([&] { EditOnly = answer == vb::vbYes; });
    }
    Next next = database_ ? chooseTable(on) : chooseTextFile(on);
    if (!database_ && next == Next::Go) next = showHead(on);
    if (!database_ && next == Next::Go) next = chooseSeparator(on);
    if (!database_ && next == Next::Go) {
        if (when(on, [&] { return LinesPerItem > 0; })) {
            on([&] { source_.open(fileName_); });
            on([&] { line_ = source_.lineInput(); });
        }
        splitSample(on);
        askAddedSlots(on);
    }
    if (next == Next::Go) {
        openBoard(on, false);
        next = waitOnBoard(on);
    }
    if (next != Next::Ending) importRun(on);
    commonEnding(on);
}

PlacementFields Bulk::placements() {
    return {SavedSupplier, Separator,        LinesPerItem, SkipLines,
            AddedSlots,    SkipDiscontinued, KeyItem,      FieldPlacement};
}
