// The shop's own names for the field labels and the boxes it hides. Both are kept in the
// settings; the names also feed the six lstAll lists, which read them at load.
#include "base/convert.h"
#include "base/strings.h"
#include "forms/runtime.h"
#include "shell/module.h"
#include "shell/products.h"

void Products::Label3_DblClick(int Index) {
    Trap ignore = Trap::Ignoring();
    Runtime& rt = Runtime::Current();
    std::string strName;
    ignore([&] {
        strName = rt.ui().InputBox(
            "Enter The Name You Want For This Label - Blank or Cancel To Hide The Label",
            "Change Label Name", (*this)("Label3", Index).Caption());
    });
    // Restore gives back the name before the last change.
    ignore([&] {
        Control& label = (*this)("Label3", Index);
        label.SetProperty("Tag", Variant(label.Caption()));
    });
    // An empty name hides the label from view.
    ignore([&] { (*this)("Label3", Index).SetCaption(strName); });
    ignore([&] { rt.SaveSetting("Settings", numbered("LabelName", Index), strName); });
}

void Products::mnuRestoreLabels_Click() {
    Trap ignore = Trap::Ignoring();
    Runtime& rt = Runtime::Current();
    ignore([&] { rt.SetMousePointer(vb::vbHourglass); });
    // Label3 has no 1 and 17: those statements fail and the loop goes on.
    SteppingOverMissingElements missing;
    for (int n = 1; n <= 30; ++n) {
        ignore([&] {
            Control& label = (*Mod().MainForm)("Label3", n);
            label.SetCaption(CStr(label.Property("Tag")));
        });
        ignore([&] {
            rt.SaveSetting("Settings", numbered("LabelName", n),
                           CStr((*Mod().MainForm)("Label3", n).Property("Tag")));
        });
    }
    ignore([&] { rt.SetMousePointer(vb::vbNormal); });
}

void Products::mnuRestore_Click() {
    Trap ignore = Trap::Ignoring();
    Runtime& rt = Runtime::Current();
    ignore([&] { rt.SetMousePointer(vb::vbHourglass); });
    // The check boxes stand at 7, 14, 15 and 29: txtFields has no such elements.
    SteppingOverMissingElements missing;
    for (int n = 1; n <= 30; ++n) {
        ignore([&] {
            Control& box = (*Mod().MainForm)("txtFields", n);
            box.SetVisible(CBool(box.Property("Tag")));
        });
        ignore([&] {
            rt.SaveSetting("Settings", numbered("HideText", n),
                           CStr((*Mod().MainForm)("txtFields", n).Property("Tag")));
        });
    }
    ignore([&] { rt.SetMousePointer(vb::vbNormal); });
}
