#pragma once

#include "base/vb_error.h"

// Runs one call of the program's; a classic fault is an answer the program gives, not a
// finding: only crashes, sanitizer reports and hangs are.
template <class F>
void tolerated(F&& f) {
    try {
        f();
    } catch (const VbError&) {
    }
}
