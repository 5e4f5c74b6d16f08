#include "base/trap.h"

ErrState& Err() {
    static ErrState state;
    return state;
}

void Trap::fault(int number, const std::string& description) {
    Err().Number = number;
    Err().Description = description;
    if (!reporter_) return;
    try {
        reporter_(tag_);
    } catch (...) {
        // The reporter has no failure of its own; nothing it does may end the procedure.
    }
}
