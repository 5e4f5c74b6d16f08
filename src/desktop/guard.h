#pragma once

#include <functional>

namespace desktop {

// Every call from Qt into the program goes through here: the program's End unwinds to this
// point and the process ends by the handler set below; any other fault that escaped the
// program's own traps is written to the error stream instead of crossing Qt's event loop.
void guarded(const std::function<void()>& procedure);

// What to do when the program has ended (the desktop quits its event loop).
void setEndedHandler(std::function<void()> handler);

// How many calls from Qt into the program are running now, one inside the other. Windows
// are only taken down when none runs.
int dispatchDepth();

// After the event queue ran: when the program ended meanwhile, unwind the caller too.
void rethrowIfEnded();

}  // namespace desktop
