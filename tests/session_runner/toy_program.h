#pragma once

#include "session/runner.h"

// A toy program for the runner's own tests: a form `Main` with a button for each thing a
// program can do to the runner (a message box, a wait on a flag, End, a modal form ...), and
// the modal form `Dialog`.
ProgramHooks toyProgram();
