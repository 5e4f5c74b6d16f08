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
    createDesignerControls();
    createPageFileControls();
    wireEvents();
    wireDesigner();
    wirePageFiles();
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
    // The width of the thumbnails' pictures, beside the Thumbnails button.
    addControl(f, "Text1", ControlKind::TextBox, -1, {5200, 6090, 600, 315})
        .SetProperty("ToolTipText", Variant("Thumbnail width"));
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
        // Elements 12 and 13 have no buttons of their own.
        if (e <= 11)
            on([&] {
                const std::string word = textOf(ItemAlign[CInt(m.LayoutSide)][e]);
                markPosition(e, word == "Left" || word == "Top"        ? "cmdPosL"
                                : word == "Right" || word == "Bottom " ? "cmdPosR"
                                                                       : "cmdPosC");
            });
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
    on([&] { (*this)("Command29").SetVisible(true); });
    // Done stands whenever the panel opens, also after Select Items left through it.
    on([&] { (*this)("Command26").SetVisible(true); });
}

void WebCatalogue::Command26_Click() {
    Trap on = reportTo("(Form) Products::Sub Command26_Click");
    on([&] { (*this)("Command26").SetVisible(false); });
    // After Select Items the button goes on to the thumbnails, else it makes the pages.
    on([&] {
        (*this)("Command17").SetCaption(CBool(Mod().SelectItemsMode) ? "Continue" : "Make Pages");
    });
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
        on([&] { redrawDesigner(CInt(m.LayoutSide)); });
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
