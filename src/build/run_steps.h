#pragma once

#include <limits>
#include <string>

#include "base/trap.h"
#include "base/vb_error.h"

class Products;

// Steps that the bulk tools share.

// A counter goes up by one; past its largest value it overflows (6) and stays.
template <class Counter>
void addOne(Counter& counter) {
    if (counter == std::numeric_limits<Counter>::max()) throw VbError(vberr::Overflow);
    ++counter;
}

// Today as the notes write it, "MM/DD/YY".
std::string noteDate();

// The end of a tool: "Click Here To Continue" added to the pane, a wait until the user
// follows it, then the form reset and refreshed.
void continueAndReset(Products& P, Trap& on);
