#pragma once

#include <limits>
#include <string>

#include "base/trap.h"
#include "base/vb_error.h"

class Products;

// Steps that the bulk tools share.

// A counter goes up by one; past its largest value it overflows (6) and stays. A long run
// meets that fault on every record, so it is given back rather than thrown.
template <class Counter>
Fault addOne(Counter& counter) {
    if (counter == std::numeric_limits<Counter>::max()) return {vberr::Overflow};
    ++counter;
    return {};
}

// Today as the notes write it, "MM/DD/YY".
std::string noteDate();

// "Click Here To Continue" added to the pane, and a wait until the user follows it.
void waitForContinue(Products& P, Trap& on);
// The form reset and refreshed after a tool.
void resetAfterRun(Products& P, Trap& on);
// The end of a tool: both of the above.
void continueAndReset(Products& P, Trap& on);
