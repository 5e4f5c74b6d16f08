// The Reports menu: each item runs one report file of the program folder's reports/ over the
// catalogue in use, or one the user browses for. Faults pass in silence: a missing or broken
// report file gives the hourglass back and no window.
#include "reports/reports.h"

#include "base/convert.h"
#include "base/trap.h"
#include "forms/runtime.h"
#include "shell/module.h"
#include "shell/when.h"

Reports::Reports(Products& form) : ProductsPart(form) {
    OnClick("mnuR1", &Reports::mnuR1_Click);
    OnClick("mnuR2", &Reports::mnuR2_Click);
    OnClick("mnuR3", &Reports::mnuR3_Click);
    OnClick("mnuR4", &Reports::mnuR4_Click);
    OnClick("mnuR5", &Reports::mnuR5_Click);
    OnClick("mnuR6", &Reports::mnuR6_Click);
    OnClick("mnuR7", &Reports::mnuR7_Click);
    OnClick("mnuR8", &Reports::mnuR8_Click);
    OnClick("mnuR9", &Reports::mnuR9_Click);
    OnClick("mnuPG", &Reports::mnuPG_Click);
    OnClick("mnuAll", &Reports::mnuAll_Click);
    OnClick("mnuBrwse", &Reports::mnuBrwse_Click);
    OnClick("mnuFileOpen", &Reports::mnuFileOpen_Click);
}

void Reports::runFixed(const std::string& title, const std::string& file) {
    Trap on = Trap::Ignoring();
    on([&] { Runtime::Current().SetMousePointer(vb::vbHourglass); });
    on([&] { Report.WindowState = 2; });
    on([&] { Report.WindowTitle = title; });
    on([&] { Report.SetDataFiles(0, Mod().DBName); });
    on([&] { Report.ReportFileName = file; });
    on([&] { ShowReport(); });
}

void Reports::ShowReport() {
    Trap on = Trap::Ignoring();
    on([&] { Report.Destination = 0; });
    on([&] { Report.DiscardSavedData = true; });
    on([&] { Report.SetAction(1); });
    on([&] { Runtime::Current().SetMousePointer(vb::vbNormal); });
}

void Reports::runShipped(const std::string& title, const std::string& name) {
    // The program folder ends in a separator and each report's name begins with one: the
    // doubled separator stands for one.
    std::string folder;
    Trap::Ignoring()([&] { folder = CStr(Mod().AppDir); });
    runFixed(title, folder + "/reports/" + name);
}

void Reports::mnuR1_Click() {
    runShipped("Cost 1 Report", "cost1.rpt");
}
void Reports::mnuR2_Click() {
    runShipped("Cost 2 Report", "cost2.rpt");
}
void Reports::mnuR3_Click() {
    runShipped("Cost 3 Report", "cost3.rpt");
}
void Reports::mnuR4_Click() {
    runShipped("Cost 4 Report", "cost4.rpt");
}
void Reports::mnuR5_Click() {
    runShipped("Cost 5 Report", "cost5.rpt");
}
void Reports::mnuR6_Click() {
    runShipped("Retail Report", "retail.rpt");
}
void Reports::mnuR7_Click() {
    runShipped("Category Report", "Category.rpt");
}
void Reports::mnuR8_Click() {
    runShipped("Inventory Report", "inventory.rpt");
}
void Reports::mnuR9_Click() {
    runShipped("Orders Report", "orders.rpt");
}
void Reports::mnuPG_Click() {
    runShipped("Page Report", "page.rpt");
}
void Reports::mnuAll_Click() {
    runShipped("All Report", "all.rpt");
}

void Reports::mnuBrwse_Click() {
    // Nothing guards the dialog itself; the silence begins after it. A cancelled dialog
    // hands back the name it was given.
    CommonDialog dialog;
    dialog.FileName = "*.rpt";
    dialog.Filter = "All Supported Reports|*.rpt";
    Runtime::Current().ui().ShowOpen(dialog);
    Trap on = Trap::Ignoring();
    if (when(on, [&] { return dialog.FileName.empty(); })) return;
    runFixed(dialog.FileName, dialog.FileName);
}
