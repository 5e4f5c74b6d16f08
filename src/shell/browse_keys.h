#pragma once

#include <functional>

#include "base/trap.h"

// The keys that move through the records, as the main form and every record form take
// them: Escape closes, Home and End go to the first and the last record, Up and PgUp to the
// previous one (with Ctrl the first), Down and PgDn to the next (with Ctrl the last). Each
// command runs as one statement of the calling procedure's trap.
struct BrowseCommands {
    std::function<void()> close, first, last, previous, next;
};
void browseKey(int KeyCode, int Shift, Trap& on, const BrowseCommands& commands);
