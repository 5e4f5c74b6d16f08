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

// The end of a tool: "Click Here To Continue" added to the pane, a wait until the user
// follows it, then the form reset and refreshed.
void continueAndReset(Products& P, Trap& on);
