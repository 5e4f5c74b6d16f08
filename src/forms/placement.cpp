#include "forms/placement.h"

Control& place(Control& c, Box b) {
    c.SetNum("Left", b.left);
    c.SetNum("Top", b.top);
    c.SetNum("Width", b.width);
    c.SetNum("Height", b.height);
    return c;
}

Control& addControl(Form& f, const std::string& name, ControlKind kind, int index, Box b,
                    const std::string& caption) {
    Control& c = place(f.Add(name, kind, index), b);
    if (!caption.empty()) c.SetCaption(caption);
    return c;
}

Control& inside(Control& c, const std::string& container) {
    c.SetContainer(container);
    return c;
}
