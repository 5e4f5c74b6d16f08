#include "base/trap.h"

ErrState& Err() {
    static ErrState state;
    return state;
}

Trap::Resume Trap::fault(int number, const std::string& description) {
    Err().Number = number;
    Err().Description = description;
    if (handler_) {
        Resume resume = Resume::Exit;
        try {
            resume = handler_(number);
        } catch (const ProgramEnded&) {
            throw;
        } catch (...) {
            // A fault inside the handler leaves the procedure.
        }
        if (resume == Resume::Exit) exited_ = true;
        return resume;
    }
    if (reporter_) {
        try {
            reporter_(tag_);
        } catch (...) {
            // The reporter has no failure of its own; nothing it does may end the procedure.
        }
    }
    return Resume::Next;
}
