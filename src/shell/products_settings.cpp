// Placing the pane for the panels that are open.
#include "shell/errhandler.h"
#include "shell/products.h"
#include "shell/when.h"

void Products::SetSize() {
    Trap on = reportTo("(Form) Products::Sub SetSize");
    Control& wb = Wb1Box();
    Control& frame5 = (*this)("Frame5");
    Control& frame9 = (*this)("Frame9");
    Control& frame12 = (*this)("Frame12");
    Control& cmdShowPic = (*this)("cmdShowPic");
    if (when(on, [&] { return frame12.Visible(); })) {
        on([&] { wb.SetNum("Left", 50); });
        on([&] { wb.SetNum("Height", frame12.Num("Height") - frame5.Num("Height")); });
        on([&] { wb.SetNum("Width", Num("Width") - 200); });
        on([&] { cmdShowPic.SetEnabled(false); });
        return;
    }
    on([&] { wb.SetNum("Height", frame5.Num("Height")); });
    if (when(on, [&] { return frame9.Visible(); })) {
        on([&] { wb.SetNum("Left", frame9.Num("Width") + frame9.Num("Left")); });
        on([&] { wb.SetNum("Width", Num("Width") - (wb.Num("Left") + 150)); });
        on([&] { cmdShowPic.SetEnabled(false); });
    } else if (when(on, [&] { return frame5.Visible(); })) {
        on([&] { wb.SetNum("Left", frame5.Num("Width") + frame5.Num("Left")); });
        on([&] { wb.SetNum("Width", Num("Width") - (wb.Num("Left") + 150)); });
    } else {
        on([&] { wb.SetNum("Left", 50); });
        on([&] { wb.SetNum("Width", Num("Width") - 200); });
        on([&] { cmdShowPic.SetEnabled(true); });
    }
}
