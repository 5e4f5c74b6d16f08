#include "shell/frm_about.h"

#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/legal.h"

frmAbout::frmAbout() : Form("frmAbout") {
    SetNum("Width", 5730);
    SetNum("Height", 3600);
    auto add = [&](const char* name, int index, double left, double top, double width,
                   double height) -> Control& {
        Control& c =
            Add(name, name[0] == 'c' ? ControlKind::CommandButton : ControlKind::Label, index);
        c.SetNum("Left", left);
        c.SetNum("Top", top);
        c.SetNum("Width", width);
        c.SetNum("Height", height);
        return c;
    };
    add("lblTitle", -1, 1050, 240, 4400, 480);
    add("lblVersion", -1, 1050, 780, 4400, 225).SetCaption(legal::Version);
    add("lblDisclaimer", 0, 255, 1500, 5200, 450);
    add("lblDisclaimer", 1, 255, 2000, 5200, 450);
    Control& ok = add("cmdOK", -1, 4245, 2700, 1260, 345);
    ok.SetCaption("OK");
    // Enter or Escape closes the box, as OK does.
    ok.SetProperty("Default", Variant(true));
    ok.SetProperty("Cancel", Variant(true));
    OnClick("cmdOK", &frmAbout::cmdOK_Click);
}

void frmAbout::Form_Load() {
    Trap on = reportTo("(Form) frmAbout::Sub Form_Load");
    Runtime& rt = Runtime::Current();
    on([&] { rt.SetMousePointer(vb::vbDefault); });
    on([&] { SetCaption("About " + rt.Title()); });
    on([&] { (*this)("lblTitle").SetCaption(rt.Title()); });
    on([&] { (*this)("lblDisclaimer", 0).SetCaption(legal::Line0); });
    on([&] { (*this)("lblDisclaimer", 1).SetCaption(legal::Line1); });
}

void frmAbout::cmdOK_Click() {
    Runtime::Current().Unload(*this);
}
