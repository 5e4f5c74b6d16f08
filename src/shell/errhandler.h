#pragma once

#include <functional>
#include <string>

#include "base/trap.h"

// Receives every fault a procedure traps. It shows almost nothing: only a missing file
// reaches the screen. Reads the error number from Err() and clears nothing.
void Errhandler(const std::string& Tag);

// Where the composed line "Error - <n>\r\n  In  <tag>" goes; nowhere unless set.
void setErrorTrace(std::function<void(const std::string&)> trace);

// A Trap that reports to Errhandler under the procedure's tag.
inline Trap reportTo(const std::string& tag) {
    return Trap(tag, &Errhandler);
}
