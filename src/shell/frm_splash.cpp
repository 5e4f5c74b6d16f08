#include "shell/frm_splash.h"

#include "forms/runtime.h"
#include "shell/legal.h"

frmSplash::frmSplash() : Form("frmSplash") {
    SetNum("Width", 7380);
    SetNum("Height", 4245);
    auto add = [&](const char* name, ControlKind kind, double left, double top, double width,
                   double height) -> Control& {
        Control& c = Add(name, kind);
        c.SetNum("Left", left);
        c.SetNum("Top", top);
        c.SetNum("Width", width);
        c.SetNum("Height", height);
        return c;
    };
    add("imgLogo", ControlKind::Image, 360, 795, 1815, 1815);
    // The title is the running program's; a splash made without one shows none.
    std::string title;
    try {
        title = Runtime::Current().Title();
    } catch (...) {
    }
    add("lblProductName", ControlKind::Label, 2670, 1140, 4300, 765).SetCaption(title);
    add("lblVersion", ControlKind::Label, 2670, 2000, 4300, 300).SetCaption(legal::Version);
    add("lblWarning", ControlKind::Label, 360, 3360, 6600, 500).SetCaption(legal::Line1);
}
