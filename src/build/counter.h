#pragma once

#include <limits>

#include "base/vb_error.h"

// A counter of the bulk tools goes up by one; past its largest value it overflows (6) and
// stays where it is.
template <class Counter>
void addOne(Counter& counter) {
    if (counter == std::numeric_limits<Counter>::max()) throw VbError(vberr::Overflow);
    ++counter;
}
