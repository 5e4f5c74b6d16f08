#include "app/console_ui.h"

#include <cstdio>

#include "forms/runtime.h"

int ConsoleUi::MsgBox(const std::string& prompt, int buttons, const std::string& title) {
    std::printf("[%s] %s\n", title.c_str(), prompt.c_str());
    // The first button of each set is the default.
    switch (buttons & 7) {
        case vb::vbOKCancel:
            return vb::vbOK;
        case vb::vbAbortRetryIgnore:
            return vb::vbAbort;
        case vb::vbYesNoCancel:
        case vb::vbYesNo:
            return vb::vbYes;
        case vb::vbRetryCancel:
            return vb::vbRetry;
        default:
            return vb::vbOK;
    }
}

std::string ConsoleUi::InputBox(const std::string& prompt, const std::string& title,
                                const std::string& defaultText) {
    std::printf("[%s] %s -> %s\n", title.c_str(), prompt.c_str(), defaultText.c_str());
    return defaultText;
}

Pane& ConsoleUi::PaneFor(Form& form, const std::string& controlName) {
    auto& pane = panes_[{&form, controlName}];
    if (!pane) pane = std::make_unique<HeadlessPane>();
    return *pane;
}

void ConsoleUi::RunDocument(const std::string& path) {
    std::printf("run %s\n", path.c_str());
}

void ConsoleUi::FormShown(Form& form, bool modal) {
    if (modal) modal_.push_back(&form);
}

void ConsoleUi::WaitForUser() {
    // No one is at the keyboard: the modal form on top is closed.
    if (modal_.empty()) return;
    Form* form = modal_.back();
    modal_.pop_back();
    Runtime::Current().Unload(*form);
}
