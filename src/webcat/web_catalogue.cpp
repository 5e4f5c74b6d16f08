// The web catalogue's controls and the settings that the page run reads from them: the
// grouping commands in the Web Pages panel, the run's panel buttons, the page setup panel
// as far as the run opens and closes it, and its check boxes.
#include "webcat/web_catalogue.h"

#include "base/convert.h"
#include "forms/placement.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

WebCatalogue::WebCatalogue(Products& form) : ProductsPart(form) {
    createControls();
    wireEvents();
}

void WebCatalogue::createControls() {
    Products& f = P;
    auto button = [&](const std::string& name, int index, Box b, const std::string& caption,
                      const std::string& frame) -> Control& {
        Control& c = addControl(f, name, ControlKind::CommandButton, index, b, caption);
        return frame.empty() ? c : inside(c, frame);
    };
    // The Web Pages panel: how the site is divided, and the page setup.
    button("Command6", -1, {100, 300, 2800, 300}, "By Page Number", "Frame9");
    button("Command10", -1, {100, 620, 2800, 300}, "By Category", "Frame9");
    button("Command8", -1, {100, 940, 2800, 300}, "By Current Records", "Frame9");
    button("Command20", -1, {100, 1260, 1350, 300}, "By Price Below", "Frame9");
    place(inside(f("Combo1"), "Frame9"), {1500, 1260, 1400, 315});
    button("Command12", -1, {100, 1580, 2800, 300}, "Page Setup Options", "Frame9");
    place(f("File1"), {100, 1950, 2800, 3600});
    // The run's lists and panel buttons, over the pane.
    Control& list1 = addControl(f, "List1", ControlKind::ListBox, -1, {50, 0, 4000, 5300});
    list1.SetVisible(false);
    addControl(f, "List3", ControlKind::ListBox, -1, {4100, 0, 2000, 5300}).SetVisible(false);
    for (int i = 0; i <= 1; ++i)
        addControl(f, "List4", ControlKind::ListBox, i, {6150, 0, 1500, 2000}).SetVisible(false);
    const double bar = 5400;
    button("Command13", -1, {50, bar, 1200, 300}, "Select All", "").SetVisible(false);
    button("Command15", -1, {1260, bar, 1200, 300}, "Unselect All", "").SetVisible(false);
    button("Command17", -1, {2470, bar, 1200, 300}, "Continue", "").SetVisible(false);
    button("Command19", -1, {3680, bar, 1200, 300}, "Cancel", "").SetVisible(false);
    // The page setup panel: the settings that a saved layout carries and the run reads.
    auto box = [&](const std::string& name, int index, Box b) -> Control& {
        return inside(addControl(f, name, ControlKind::TextBox, index, b), "Frame12");
    };
    box("txtTitle", -1, {5000, 1000, 4000, 285});
    box("txtIR", -1, {5000, 1350, 600, 285});
    box("Text5", -1, {5000, 1700, 4000, 285}).SetVisible(false);
    for (int i = 0; i <= 4; ++i)
        box("Text3", i, {5000 + i * 800.0, 2050, 750, 285});
    for (int i = 0; i <= 10; ++i)
        box("Text4", i, {5000, 2400, 4000, 900}).SetVisible(false);
    static const char* const checks[] = {"Edit Detail Pages", "Copy Pictures To: ('\\images')",
                                         "Use Page # As Title", "New Page On Page # Change"};
    for (int i = 0; i <= 3; ++i)
        inside(addControl(f, "chkDetail", ControlKind::CheckBox, i,
                          {5000, 3400 + i * 300.0, 4000, 285}, checks[i]),
               "Frame12");
    button("SaveLoad", 0, {5000, 4700, 1300, 300}, "Save Layout", "Frame12");
    button("SaveLoad", 1, {6350, 4700, 1300, 300}, "Load Layout", "Frame12");
    button("Command30", -1, {7700, 4700, 1500, 300}, "Choose Frame Style", "Frame12");
    button("Command26", -1, {7700, 5050, 1500, 300}, "Done", "Frame12");
    inside(addControl(f, "Label7", ControlKind::Label, -1, {5000, 5050, 2600, 600}), "Frame12");
}

void WebCatalogue::wireEvents() {
    OnClick("Command6", &WebCatalogue::Command6_Click);
    OnClick("Command10", &WebCatalogue::Command10_Click);
    OnClick("Command20", &WebCatalogue::Command20_Click);
    OnClick("Command8", &WebCatalogue::Command8_Click);
    OnClick("Command12", &WebCatalogue::Command12_Click);
    OnClick("Command13", &WebCatalogue::Command13_Click);
    OnClick("Command15", &WebCatalogue::Command15_Click);
    OnClick("Command17", &WebCatalogue::Command17_Click);
    OnClick("Command19", &WebCatalogue::Command19_Click);
    OnClick("Command26", &WebCatalogue::Command26_Click);
    OnClick("Command30", &WebCatalogue::Command30_Click);
    P.On("SaveLoad", "Click", [this](EventArgs& e) { SaveLoad_Click(e.Index); });
    P.On("chkDetail", "Click", [this](EventArgs& e) { chkDetail_Click(e.Index); });
    P.On("Text3", "Change", [this](EventArgs& e) { Text3_Change(e.Index); });
    P.On("txtTitle", "Change", [this](EventArgs&) { txtTitle_Change(); });
}

void WebCatalogue::Command12_Click() {
    Trap on = reportTo("(Form) Products::Sub Command12_Click");
    Module& m = Mod();
    if (when(on, [&] { return !(*this)("List2").Visible(); })) {
        on([&] { Command6_Click(); });
        return;
    }
    if (when(on, [&] { return (*this)("txtIR").Text().empty(); }))
        on([&] { (*this)("txtIR").SetText("5"); });
    if (when(on, [&] { return (*this)("Text3", 3).Text().empty(); }))
        on([&] { (*this)("Text3", 3).SetText("30"); });
    on([&] { CopyPicturesOn = CInt((*this)("chkDetail", 1).Value()) == 1 ? -1 : 0; });
    on([&] { m.SelectItemsMode = Variant(false); });
    on([&] { TitleMode = -1; });
    on([&] { (*this)("chkDetail", 2).SetValue(Variant::Integer(0)); });
    on([&] { (*this)("txtTitle").SetText(""); });
    for (int e = 0; e <= 22; ++e) {
        on([&] {
            Variant& align = ItemAlign[CInt(m.LayoutSide)][e];
            if (textOf(align).empty()) align = Variant(e == 11 ? "Top" : "Center");
        });
        // NOT BUILT YET: the designer's LEFT, CENTER and RIGHT buttons marked by the word.
    }
    on([&] {
        (*this)("Label7").SetCaption(
            "Total Items: " + std::to_string((*this)("List3").ListCount()) + vb::vbCrLf +
            " Total Pages: " + textOf(m.TotalPages));
    });
    static const int boxLabels[][2] = {{0, 2}, {1, 3}, {3, 4}, {4, 12}, {5, 7}};
    for (const auto& bl : boxLabels)
        on([&] { (*this)("Label4", bl[0]).SetCaption((*this)("Label3", bl[1]).Caption()); });
    on([&] { (*this)("Frame5").SetVisible(false); });
    on([&] { (*this)("Frame9").SetVisible(false); });
    on([&] { (*this)("Frame12").SetVisible(true); });
    on([&] { P.SetSize(); });
    for (const char* name : {"Command17", "Command13", "Command15"})
        on([&] { (*this)(name).SetVisible(false); });
}

void WebCatalogue::Command26_Click() {
    Trap on = reportTo("(Form) Products::Sub Command26_Click");
    on([&] { (*this)("Command26").SetVisible(false); });
    on([&] { (*this)("Command17").SetVisible(true); });
    on([&] { (*this)("Frame12").SetVisible(false); });
    on([&] { P.SetSize(); });
}

void WebCatalogue::txtTitle_Change() {
    Trap on = reportTo("(Form) Products::Sub txtTitle_Change");
    on([&] { PageTitle = (*this)("txtTitle").Text(); });
    on([&] { Mod().PanelGo = true; });
}

void WebCatalogue::chkDetail_Click(int Index) {
    Trap on = reportTo("(Form) Products::Sub chkDetail_Click");
    Module& m = Mod();
    Control& box = (*this)("chkDetail", Index);
    const bool checked = CInt(box.Value()) == 1;
    if (Index == 0) {
        if (checked) {
            if (when(on, [&] { return !boxMarked(7); })) {
                on([&] { P.Wb1().Navigate2("about:blank"); });
                on([&] { P.Wb1().Write(detailLinkMissing()); });
                return;
            }
            on([&] { box.SetCaption("Edit Main Pages"); });
            on([&] { m.LayoutSide = Variant::Integer(1); });
        } else {
            on([&] { box.SetCaption("Edit Detail Pages"); });
            on([&] { m.LayoutSide = Variant::Integer(0); });
        }
        on([&] { markPlacedBoxes(CInt(m.LayoutSide)); });
    } else if (Index == 1) {
        on([&] { CopyPicturesOn = checked ? -1 : 0; });
    } else if (Index == 2) {
        on([&] {
            const std::string caption = box.Caption();
            if (!checked)
                TitleMode = -1;
            else if (caption == "Use Page # As Title")
                TitleMode = 0;
            else if (caption == "Use Category As Title")
                TitleMode = 1;
            else if (caption == "Use " + PriceField + " As Title")
                TitleMode = 2;
            else if (caption == "Add Page # After Title")
                TitleMode = 3;
        });
    } else if (Index == 3) {
        newPageOnChange(on, checked);
    }
    on([&] { m.PanelGo = true; });
}

bool WebCatalogue::boxMarked(int k) const {
    return CLng((*this)("Label4", k).Property("BackColor")) == MarkerColor;
}

void WebCatalogue::markPlacedBoxes(int side) {
    Module& m = Mod();
    for (int k = 0; k <= 8; ++k)
        (*this)("Label4", k).SetProperty("BackColor", Variant::Long(WhiteColor));
    for (int r = 0; r <= 8; ++r) {
        const int k = m.BoxField[side][r];
        if (k >= 0 && k <= 8)
            (*this)("Label4", k).SetProperty("BackColor", Variant::Long(MarkerColor));
    }
    // NOT BUILT YET: the rest of the designer's redraw (the boxes' rows, the field lists).
}
