// The generated pages in the Web Pages panel `Frame9`: the file list on `Pages/`, a page
// opened in the pane, one page deleted, all pages or all copied pictures deleted.
#include "base/convert.h"
#include "base/files.h"
#include "forms/placement.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"
#include "webcat/web_catalogue.h"

void WebCatalogue::createPageFileControls() {
    Products& f = P;
    place(f("File1"), {100, 1950, 2800, 2200}).SetProperty("Pattern", Variant("*.htm*"));
    auto button = [&](const std::string& name, Box b, const std::string& caption) {
        inside(addControl(f, name, ControlKind::CommandButton, -1, b, caption), "Frame9");
    };
    button("Command7", {100, 4200, 2800, 300}, "Delete Selected Page");
    button("Command11", {100, 4520, 2800, 300}, "Delete ALL Pages");
    button("Command18", {100, 4840, 2800, 300}, "Delete ALL Copied Pictures");
    button("Command14", {100, 5160, 1390, 300}, "Refresh List");
    button("Command9", {1510, 5160, 1390, 300}, "Close");
}

void WebCatalogue::wirePageFiles() {
    OnClick("File1", &WebCatalogue::File1_Click);
    OnClick("Command7", &WebCatalogue::Command7_Click);
    OnClick("Command11", &WebCatalogue::Command11_Click);
    OnClick("Command18", &WebCatalogue::Command18_Click);
    OnClick("Command14", &WebCatalogue::Command14_Click);
    OnClick("Command9", &WebCatalogue::Command9_Click);
}

void WebCatalogue::File1_Click() {
    Trap on = reportTo("(Form) Products::Sub File1_Click");
    on([&] { (*this)("Frame9").SetVisible(false); });
    on([&] { P.SetSize(); });
    on([&] { P.Wb1().Navigate2(pagesFolder() + textOf((*this)("File1").Property("FileName"))); });
}

void WebCatalogue::Command7_Click() {
    Trap on = reportTo("(Form) Products::Sub Command7_Click");
    Control& list = (*this)("File1");
    on([&] {
        const std::string name = textOf(list.Property("FileName"));
        // No row chosen names the folder itself, which is no file.
        if (name.empty()) throw VbError(vberr::FileNotFound);
        Kill(textOf(list.Property("Path")) + "/" + name);
    });
    on([&] { list.Refresh(); });
    on([&] { list.SetListIndex(0); });
}

void WebCatalogue::deleteFiles(const std::string& tag, const std::vector<std::string>& patterns,
                               const std::string& starting, const std::string& finished) {
    Trap on = reportTo(tag);
    Runtime& rt = Runtime::Current();
    Pane& pane = P.Wb1();
    on([&] { pane.Refresh2(); });
    on([&] { pane.Write(starting); });
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    on([&] { (*this)("lblStatus").SetCaption("Deleting Files:"); });
    for (const std::string& pattern : patterns)
        on([&] { Kill(pagesFolder() + pattern); });
    on([&] { (*this)("File1").Refresh(); });
    on([&] { pane.Refresh2(); });
    on([&] { pane.Write(finished); });
    on([&] { (*this)("lblStatus").SetCaption("Finished Deleting"); });
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}

void WebCatalogue::Command11_Click() {
    deleteFiles("(Form) Products::Sub Command11_Click", {"*.htm"},
                "<p align=center><font size=5 font color=Red> Deleting Pages From Pages Folder! "
                "Please Wait...</font><br><br>",
                "<p align=center><font size=5 font color=blue> Finished Deleting Pages From "
                "Pages Folder! </font><br><br>");
}

void WebCatalogue::Command18_Click() {
    deleteFiles("(Form) Products::Sub Command18_Click", {"images/*.jpg", "images/*.gif"},
                "<p align=center><font size=5 font color=red> Deleting Pictures From images "
                "folder! Please Wait...</font><br><br>",
                "<p align=center><font size=5 font color=blue> Finished Deleting Pictures From "
                "images folder! </font><br><br>");
}

void WebCatalogue::Command14_Click() {
    Trap on = reportTo("(Form) Products::Sub Command14_Click");
    on([&] { (*this)("File1").Refresh(); });
}

void WebCatalogue::Command9_Click() {
    Trap on = reportTo("(Form) Products::Sub Command9_Click");
    Control& frame = (*this)("Frame9");
    Control& wb = P.Wb1Box();
    // The pane ends where the main fields' frame ends, the right edge it keeps elsewhere.
    Control& fields = (*this)("Frame4");
    on([&] { frame.SetVisible(false); });
    on([&] { wb.SetNum("Left", frame.Num("Left")); });
    on([&] { wb.SetNum("Width", fields.Num("Left") + fields.Num("Width") - wb.Num("Left")); });
}
