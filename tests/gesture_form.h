#pragma once

#include <string>
#include <vector>

#include "forms/form.h"

// A form on which the desktop tests and the session runner's tests make the same gestures,
// so that the two can be compared: a box that drags itself, one that does not, a target for
// drops in a frame, and a text box for keys. Every event notes what it saw in `seen`,
// readable by a script as the variable `frmBoard.Seen` (the notes joined by "|").
class GestureForm : public Form {
  public:
    GestureForm();
    std::vector<std::string> seen;
    float lastX = -1, lastY = -1;

  private:
    std::string describe(const EventArgs& e);
};

// The gestures, as a session script's lines, and what the form notes of them: the same
// from the mouse and keys of the desktop.
extern const char* const GestureScript;
extern const std::vector<std::string> GestureNotes;
