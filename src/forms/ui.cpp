#include "forms/ui.h"

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
