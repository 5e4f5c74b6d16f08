#pragma once

#include <string>

struct SearchFormCycles {
    double residentBeforeMiB = 0;  // the program started, the search form never opened
    double residentAfterMiB = 0;   // after the last cycle
    double msPerCycle = 0;
};

// Starts the program on the catalogue at `cataloguePath` (program folder `appDir`), then
// opens the detailed search form from the main form and cancels it `times` times, as a
// user would; after each cycle the forms unloaded meanwhile are freed, as the desktop does
// once the user's call has returned. Throws when the program waits for anything else.
SearchFormCycles runSearchFormCycles(const std::string& appDir, const std::string& cataloguePath,
                                     int times);
