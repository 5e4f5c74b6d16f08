#pragma once

#include <utility>

#include "base/trap.h"

// The test of an If in a procedure that resumes after faults. A test that fails counts as
// passed: resuming at the statement after the failed one enters the block.
template <class Test>
bool when(Trap& on, Test&& test) {
    bool passed = true;
    on([&] { passed = static_cast<bool>(std::forward<Test>(test)()); });
    return passed;
}
