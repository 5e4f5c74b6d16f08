#include "shell/browse_keys.h"

namespace {
constexpr int vbKeyEscape = 27, vbKeyPageUp = 33, vbKeyPageDown = 34, vbKeyEnd = 35, vbKeyHome = 36,
              vbKeyUp = 38, vbKeyDown = 40;
constexpr int vbCtrlMask = 2;
}  // namespace

void browseKey(int KeyCode, int Shift, Trap& on, const BrowseCommands& c) {
    const bool ctrl = (Shift & vbCtrlMask) != 0;
    switch (KeyCode) {
        case vbKeyEscape:
            on(c.close);
            break;
        case vbKeyEnd:
            on(c.last);
            break;
        case vbKeyHome:
            on(c.first);
            break;
        case vbKeyUp:
        case vbKeyPageUp:
            on(ctrl ? c.first : c.previous);
            break;
        case vbKeyDown:
        case vbKeyPageDown:
            on(ctrl ? c.last : c.next);
            break;
        default:
            break;
    }
}
