// The events of the pane `Wb1`.
#include "base/convert.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

void Products::Wb1_BeforeNavigate2(const std::string& /*url*/, bool& /*Cancel*/) {
    Trap ignore = Trap::Ignoring();
    if (Mod().StartingUp) return;
    // Anything else is a real navigation and goes on.
}

void Products::Wb1_NavigateComplete2(const std::string& url) {
    Trap ignore = Trap::Ignoring();
    if (Mod().StartingUp) return;
    ignore([&] { Mod().LastUrl = url; });
}

void Products::Wb1_CommandStateChange() {
    Trap ignore = Trap::Ignoring();
    // The user agreed to close before a program runs: the first pane event ends the process.
    if (when(ignore, [&] { return CBool(ExitAfterRun); })) Runtime::Current().End();
}

void Products::Wb1_NavigateError(const std::string& /*url*/) {
    Trap ignore = Trap::Ignoring();
    // A pane without a screen fails at once; one retry at a time stands for the browser's
    // retry that keeps coming back.
    if (retrying_) return;
    retrying_ = true;
    ignore([&] { Wb1().Navigate2(Mod().LastUrl); });
    retrying_ = false;
}
