#include "desktop/guard.h"

#include <cstdio>
#include <exception>

#include "base/trap.h"
#include "base/vb_error.h"
#include "forms/runtime.h"

namespace desktop {

namespace {
std::function<void()>& endedHandler() {
    static std::function<void()> handler;
    return handler;
}

bool programEnded() {
    try {
        return Runtime::Current().Ended();
    } catch (const VbError&) {
        return false;
    }
}
}  // namespace

namespace {
int depth = 0;
struct Depth {
    Depth() { ++depth; }
    ~Depth() { --depth; }
};
}  // namespace

int dispatchDepth() {
    return depth;
}

void setEndedHandler(std::function<void()> handler) {
    endedHandler() = std::move(handler);
}

void guarded(const std::function<void()>& procedure) {
    try {
        Depth inside;
        procedure();
        return;
    } catch (const ProgramEnded&) {
    } catch (const VbError& e) {
        std::fprintf(stderr, "catalogue: unhandled error %d %s\n", e.Number(),
                     e.Description().c_str());
        return;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "catalogue: unhandled fault: %s\n", e.what());
        return;
    }
    if (endedHandler()) endedHandler()();
}

void rethrowIfEnded() {
    if (programEnded()) throw ProgramEnded{};
}

}  // namespace desktop
