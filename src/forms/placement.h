#pragma once

#include <string>

#include "forms/form.h"

// Where a control stands on its form or in its container, in twips.
struct Box {
    double left, top, width, height;
};

// Sets the control's place and returns it.
Control& place(Control& c, Box b);
// Adds a control at its place, with its caption when one is given.
Control& addControl(Form& f, const std::string& name, ControlKind kind, int index, Box b,
                    const std::string& caption = "");
// The control stands in a frame (or a menu item under its menu); its place is the frame's.
Control& inside(Control& c, const std::string& container);
