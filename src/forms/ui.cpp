#include "forms/ui.h"

#include <fstream>

#include "base/vb_error.h"

namespace {
Ui* current = nullptr;
}

Ui* theUi() {
    return current;
}
void setUi(Ui* ui) {
    current = ui;
}

int MsgBox(const std::string& prompt, int buttons, const std::string& title) {
    return current ? current->MsgBox(prompt, buttons, title) : vb::vbOK;
}

void Ui::ShowReport(const ReportWindow& report) {
    std::ofstream out(report.File, std::ios::binary | std::ios::trunc);
    out << report.Html;
    if (!out) throw VbError(75, "Path/File access error");
}
