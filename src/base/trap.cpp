#include "base/trap.h"

ErrState& Err() {
    static ErrState state;
    return state;
}

namespace {
NamingFaultWatcher& namingWatcher() {
    static NamingFaultWatcher watcher;
    return watcher;
}
int steppingOver = 0;
}  // namespace

SteppingOverMissingElements::SteppingOverMissingElements() {
    ++steppingOver;
}
SteppingOverMissingElements::~SteppingOverMissingElements() {
    --steppingOver;
}

bool IsNamingFault(int number) {
    return number == vberr::ControlArrayElementMissing || number == vberr::PropertyNotFound;
}

NamingFaultWatcher WatchNamingFaults(NamingFaultWatcher watcher) {
    std::swap(namingWatcher(), watcher);
    return watcher;
}

Trap::Resume Trap::fault(int number, std::string_view description) {
    if (IsNamingFault(number) && namingWatcher() && steppingOver == 0)
        namingWatcher()(number, std::string(description));
    Err().Number = number;
    Err().Description.assign(description);
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
