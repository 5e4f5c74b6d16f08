#include "build/run_steps.h"

#include "base/clock.h"
#include "base/dates.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/products.h"
#include "shell/when.h"

std::string noteDate() {
    // Formatted again only when the day changes: a run notes every record it writes.
    thread_local double day = -1;
    thread_local std::string text;
    const double today = theClock().Date();
    if (today != day || text.empty()) {
        text = formatDate(today, "MM/DD/YY");
        day = today;
    }
    return text;
}

void waitForContinue(Products& P, Trap& on) {
    on([&] {
        P.Wb1().Write(
            "<br><p align=center><font size=3 font color=red><a href='CONTINUE'>Click Here To "
            "Continue</a>");
    });
    on([&] { P.ContinueFlag = false; });
    while (!when(on, [&] { return P.ContinueFlag; }))
        on([&] { Runtime::Current().WaitForUser(); });
}

void resetAfterRun(Products& P, Trap& on) {
    on([&] { P.cmdReset_Click(); });
    on([&] { P.cmdRefresh_Click(); });
    on([&] { P.ContinueFlag = false; });
}

void continueAndReset(Products& P, Trap& on) {
    waitForContinue(P, on);
    resetAfterRun(P, on);
}
