// The page designer, the panel `Frame12` "Page Setup": fonts, alignments, inserted texts,
// the boxes of a product's cell and the fields they show, the counts, the cells' borders
// and colours, the background and the Buy Link. Each control writes one setting of the
// layout and sets PanelGo, so the waiting page run writes page 1 again and shows it.
#include <array>
#include <cstdio>

#include "base/convert.h"
#include "base/files.h"
#include "base/format.h"
#include "base/strings.h"
#include "forms/placement.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"
#include "webcat/web_catalogue.h"

namespace {

const std::string quote = "\"";

// The box rows: the first box's top and the step from one row to the next.
constexpr double BoxTop = 600, BoxPitch = 305;

// The nine common colours, by the dialogs' number, and their words in the page.
struct CommonColour {
    long number;
    const char* word;
};
constexpr std::array<CommonColour, 9> commonColours{{{16776960, "#00FFFF"},
                                                     {16711680, "#0000FF"},
                                                     {65535, "#FFFF00"},
                                                     {65280, "#00FF00"},
                                                     {255, "#FF0000"},
                                                     {128, "#800000"},
                                                     {32896, "#808000"},
                                                     {8388608, "#000080"},
                                                     {8421376, "#008080"}}};

// The number a colour word stands for, to preset a dialog with it; 0 when it is no colour.
long colourNumber(const std::string& word) {
    for (const CommonColour& c : commonColours)
        if (word == c.word) return c.number;
    if (Left(word, 1) != "#" || Len(word) < 2) return 0;
    try {
        return std::stol(Mid(word, 2), nullptr, 16);
    } catch (const std::exception&) {
        return 0;
    }
}

const std::array<const char*, 3> positionButtons{"cmdPosL", "cmdPosC", "cmdPosR"};

}  // namespace

std::string colourWord(long colour) {
    for (const CommonColour& c : commonColours)
        if (colour == c.number) return c.word;
    // The hexadecimal text formatted "000000": a text of digits only is padded as a number,
    // one with letters stands as it is.
    char digits[17];
    std::snprintf(digits, sizeof digits, "%lX", static_cast<unsigned long>(colour) & 0xFFFFFFFFul);
    std::string hex = digits;
    if (hex.find_first_not_of("0123456789") == std::string::npos && hex.size() < 6)
        hex = std::string(6 - hex.size(), '0') + hex;
    return "#" + hex;
}

int htmlFontSize(double points) {
    if (points < 9) return 1;
    if (points <= 10) return 2;
    if (points <= 12) return 3;
    if (points <= 14) return 4;
    if (points <= 18) return 5;
    if (points <= 24) return 6;
    return 7;
}

void WebCatalogue::createDesignerControls() {
    Products& f = P;
    auto add = [&](const std::string& name, ControlKind kind, int index, Box b,
                   const std::string& caption = "") -> Control& {
        return inside(addControl(f, name, kind, index, b, caption), "Frame12");
    };
    auto button = [&](const std::string& name, int index, Box b,
                      const std::string& caption) -> Control& {
        return add(name, ControlKind::CommandButton, index, b, caption);
    };
    // Reaches below the form, so that the pane it leaves (its height less the command
    // panel's) is as tall as the pane beside a panel.
    place(f("Frame12"), {0, 0, 9200, 11100});
    // The title's row, then a row per box: name, font, alignment, inserted text, field.
    button("cmdFont", 0, {100, 200, 300, 300}, "F");
    button("cmdPosL", 0, {410, 200, 640, 300}, "LEFT");
    button("cmdPosC", 0, {1060, 200, 760, 300}, "CENTER");
    button("cmdPosR", 0, {1830, 200, 640, 300}, "RIGHT");
    button("cmdInsrt", 9, {2480, 200, 300, 300}, "IB");
    button("cmdInsrt", 10, {2790, 200, 300, 300}, "IA");
    for (int k = 0; k <= 8; ++k) {
        const double top = BoxTop + k * BoxPitch;
        place(f("Label4", k), {100, top, 1300, 285});
        button("cmdFont", k + 1, {1420, top, 280, 285}, "F");
        button("cmdPosL", k + 1, {1710, top, 280, 285}, "L");
        button("cmdPosC", k + 1, {2000, top, 280, 285}, "C");
        button("cmdPosR", k + 1, {2290, top, 280, 285}, "R");
        place(f("cmdInsrt", k), {2580, top, 280, 285}).SetCaption("I");
        if (k < 6) place(f("lstAll", k), {2900, top - 20, 1900, 285}).SetVisible(false);
    }
    // Cells Alignment: across, then up and down.
    static const char* const across[] = {"LEFT", "CENTER", "RIGHT"};
    static const char* const upDown[] = {"TOP", "CENTER", "BOTTOM"};
    for (int i = 0; i < 3; ++i) {
        const Box b{100 + i * 700.0, 3450, 690, 300};
        button(positionButtons[i], 10, b, across[i]);
        button(positionButtons[i], 11, {b.left, 3780, b.width, b.height}, upDown[i]);
    }
    // The inserted texts and the Buy Link are typed in one place, one box at a time.
    for (int i = 0; i <= 10; ++i)
        add("Text4", ControlKind::TextBox, i, {100, 4150, 4700, 1000}).SetVisible(false);
    add("Text5", ControlKind::TextBox, -1, {100, 4150, 4700, 1000}).SetVisible(false);
    static const char* const acts[] = {"Insert", "Graphic", "Break"};
    for (int i = 0; i <= 2; ++i)
        button("Command28", i, {100 + i * 900.0, 5200, 850, 300}, acts[i]).SetVisible(false);
    // The right side: the title, the counts, the cells, the pages.
    add("lblSetup", ControlKind::Label, 0, {5000, 150, 4100, 255}, "Pages Title");
    add("txtTitle", ControlKind::TextBox, -1, {5000, 400, 4100, 285});
    add("lblSetup", ControlKind::Label, 1, {5000, 800, 800, 255}, "Per Row: ");
    add("txtIR", ControlKind::TextBox, -1, {5800, 780, 600, 285});
    static const char* const counts[] = {"Image Border", "Image Width", "Image Height", "Per Page",
                                         "Border Size"};
    for (int i = 0; i <= 4; ++i) {
        add("lblSetup", ControlKind::Label, i + 2, {5000 + i * 820.0, 1150, 800, 255}, counts[i]);
        add("Text3", ControlKind::TextBox, i, {5000 + i * 820.0, 1400, 780, 285});
    }
    static const char* const cells[] = {"Background",   "Border  Color", "Add Borders",
                                        "Select Items", "Cells Color",   "Border Style"};
    for (int i = 0; i <= 5; ++i)
        button("Command27", i, {5000 + (i % 3) * 1370.0, 1800 + (i / 3) * 330.0, 1350, 300},
               cells[i]);
    button("cmdeditBuy", -1, {5000, 2460, 1350, 300}, "Edit Buy Link");
    button("Command30", -1, {6370, 2460, 1350, 300}, "Choose Frame Style");
    button("Command29", -1, {7740, 2460, 1350, 300}, "View Page");
    static const char* const checks[] = {"Edit Detail Pages", "Copy Pictures To: ('\\images')",
                                         "Use Page # As Title", "New Page On Page # Change"};
    for (int i = 0; i <= 3; ++i)
        add("chkDetail", ControlKind::CheckBox, i, {5000, 2820 + i * 300.0, 4100, 285}, checks[i]);
    button("SaveLoad", 0, {5000, 4050, 1350, 300}, "Save Layout");
    button("SaveLoad", 1, {6370, 4050, 1350, 300}, "Load Layout");
    button("Command26", -1, {7740, 4050, 1350, 300}, "Done");
    add("Label7", ControlKind::Label, -1, {5000, 4450, 4100, 700});
}

void WebCatalogue::wireDesigner() {
    P.On("cmdFont", "Click", [this](EventArgs& e) { cmdFont_Click(e.Index); });
    for (const char* which : positionButtons)
        P.On(which, "Click", [this, which](EventArgs& e) { cmdPos_Click(which, e.Index); });
    P.On("cmdInsrt", "Click", [this](EventArgs& e) { cmdInsrt_Click(e.Index); });
    P.On("Command28", "Click", [this](EventArgs& e) { Command28_Click(e.Index); });
    P.On("Command27", "Click", [this](EventArgs& e) { Command27_Click(e.Index); });
    P.On("Label4", "Click", [this](EventArgs& e) { Label4_Click(e.Index); });
    P.On("lstAll", "Click", [this](EventArgs& e) { lstAll_Click(e.Index); });
    P.On("txtIR", "Change", [this](EventArgs&) { txtIR_Change(); });
    OnClick("cmdeditBuy", &WebCatalogue::cmdeditBuy_Click);
    OnClick("Command29", &WebCatalogue::Command29_Click);
}

int WebCatalogue::openInsertBox() const {
    for (int t = 0; t <= 10; ++t)
        if ((*this)("Text4", t).Visible()) return t;
    return -1;
}

void WebCatalogue::markInsertButton(int t) {
    const bool holdsText = !(*this)("Text4", t).Text().empty();
    (*this)("cmdInsrt", t)
        .SetProperty("BackColor", Variant::Long(holdsText ? MarkerColor : ButtonFaceColor));
}

void WebCatalogue::markPosition(int Index, const std::string& which) {
    for (const char* name : positionButtons)
        (*this)(name, Index)
            .SetProperty("BackColor", Variant::Long(name == which ? MarkerColor : ButtonFaceColor));
}

void WebCatalogue::cmdFont_Click(int Index) {
    Trap on = reportTo("(Form) Products::Sub cmdFont_Click");
    Module& m = Mod();
    const int open = openInsertBox();
    int e = open < 0 ? Index : Index != 0 ? Index + 10 : open;
    if ((*this)("Text4", 9).Visible()) e = 19;
    CommonDialog dialog;
    int side = 0;
    on([&] { side = CInt(m.LayoutSide); });
    on([&] {
        dialog.Flags = 259;
        dialog.FontName = m.FontNameOf.at(side).at(e);
        dialog.FontSize = m.FontSizeOf.at(side).at(e) * 4.0;
        dialog.FontBold = !m.BoldOn[side][e].empty();
        dialog.FontItalic = !m.ItalicOn[side][e].empty();
        dialog.FontUnderline = !m.UnderlineOn[side][e].empty();
        dialog.FontStrikethru = !m.StrikeOn[side][e].empty();
        dialog.Color = colourNumber(m.FontColorOf[side][e]);
    });
    bool chosen = false;
    on([&] { chosen = Runtime::Current().ui().ShowFont(dialog); });
    // A cancelled dialog leaves the font as it was.
    if (!chosen) return;
    on([&] {
        m.FontNameOf.at(side).at(e) = dialog.FontName;
        m.FontColorOf[side][e] = colourWord(dialog.Color);
        m.BoldOn[side][e] = dialog.FontBold ? "<b>" : "";
        m.ItalicOn[side][e] = dialog.FontItalic ? "<i>" : "";
        m.StrikeOn[side][e] = dialog.FontStrikethru ? "<strike>" : "";
        m.UnderlineOn[side][e] = dialog.FontUnderline ? "<u>" : "";
        m.FontSizeOf[side][e] = static_cast<std::int16_t>(htmlFontSize(dialog.FontSize));
        m.CloseTags[side][e] =
            std::string(dialog.FontBold ? "</b>" : "") + (dialog.FontItalic ? "</i>" : "") +
            (dialog.FontUnderline ? "</u>" : "") + (dialog.FontStrikethru ? "</strike>" : "");
    });
    on([&] { m.PanelGo = true; });
}

void WebCatalogue::cmdPos_Click(const std::string& which, int Index) {
    Trap on = reportTo("(Form) Products::Sub " + which + "_Click");
    Module& m = Mod();
    on([&] { markPosition(Index, which); });
    int e = 0;
    const int open = openInsertBox();
    if (open >= 0) e = Index == 0 ? open + 3 : Index + 13;
    if (e == 0) e = Index;
    const bool upDown = Index == 11;
    const std::string word = which == "cmdPosL"   ? (upDown ? "Top" : "Left")
                             : which == "cmdPosR" ? (upDown ? "Bottom" : "Right")
                                                  : "Center";
    if (e == 0) {
        on([&] { m.PageAlign = word; });
        on([&] { ItemAlign.at(CInt(m.LayoutSide))[0] = Variant(word); });
    } else {
        on([&] { ItemAlign.at(CInt(m.LayoutSide)).at(e) = Variant(word); });
    }
    on([&] { m.PanelGo = true; });
}

void WebCatalogue::cmdInsrt_Click(int Index) {
    Trap on = reportTo("(Form) Products::Sub cmdInsrt_Click");
    for (int t = 0; t <= 10; ++t) {
        if (t == Index) continue;
        on([&] { (*this)("Text4", t).SetVisible(false); });
        on([&] { markInsertButton(t); });
    }
    Control& box = (*this)("Text4", Index);
    on([&] { box.SetVisible(!box.Visible()); });
    const bool editing = box.Visible();
    if (editing)
        on([&] {
            (*this)("cmdInsrt", Index).SetProperty("BackColor", Variant::Long(MarkerColor));
        });
    else
        on([&] { markInsertButton(Index); });
    on([&] { (*this)("Command26").SetVisible(!editing); });
    for (int i = 0; i <= 2; ++i)
        on([&] { (*this)("Command28", i).SetVisible(editing); });
}

void WebCatalogue::Command28_Click(int Index) {
    Trap on = reportTo("(Form) Products::Sub Command28_Click");
    Module& m = Mod();
    const int t = openInsertBox();
    if (Index == 0) {
        if (t >= 0) {
            Control& box = (*this)("Text4", t);
            on([&] { InsertText.at(CInt(m.LayoutSide))[t] = Variant(box.Text()); });
            on([&] { box.SetVisible(false); });
            on([&] { markInsertButton(t); });
        } else if ((*this)("Text5").Visible()) {
            on([&] { (*this)("Text5").SetVisible(false); });
        }
        for (int i = 0; i <= 2; ++i)
            on([&] { (*this)("Command28", i).SetVisible(false); });
        on([&] { (*this)("Command26").SetVisible(true); });
        on([&] { m.PanelGo = true; });
    } else if (Index == 1) {
        CommonDialog dialog;
        dialog.FileName = "*.jpg";
        dialog.Filter = "JPG|*.jpg|GIF|*.gif|BMP|*.bmp|All Files|*.*";
        bool chosen = false;
        on([&] { chosen = Runtime::Current().ui().ShowOpen(dialog); });
        // A cancelled dialog puts no picture in.
        if (!chosen) return;
        if (t >= 0)
            on([&] {
                (*this)("Text4", t)
                    .SetText("<img border=" + textOf(m.ImageBorder) + " dynsrc=" + quote +
                             dialog.FileName + quote + m.ImageSizeAttr + "'>");
            });
        on([&] { Command28_Click(0); });
    } else if (Index == 2 && t >= 0) {
        Control& box = (*this)("Text4", t);
        on([&] { box.SetText(t == 10 ? box.Text() + "<br>" : "<br>" + box.Text()); });
    }
}

bool WebCatalogue::chooseColour(Trap& on, std::string& word) {
    CommonDialog dialog;
    bool chosen = false;
    on([&] { chosen = Runtime::Current().ui().ShowColor(dialog); });
    if (chosen) word = colourWord(dialog.Color);
    return chosen;
}

int WebCatalogue::chooseFrom(Trap& on, const std::string& lines, const std::string& title,
                             const std::string& defaultText) {
    std::string answer;
    on([&] { answer = Runtime::Current().ui().InputBox(lines, title, defaultText); });
    return IsNumeric(Variant(answer)) ? static_cast<int>(CDbl(Variant(answer))) : 0;
}

void WebCatalogue::Command27_Click(int Index) {
    Trap on = reportTo("(Form) Products::Sub Command27_Click");
    Module& m = Mod();
    int side = 0;
    on([&] { side = CInt(m.LayoutSide); });
    std::string colour;
    if (Index == 0) {
        const int choice = chooseFrom(on,
                                      std::string("1 - Change Background Color") + vb::vbCrLf +
                                          "2 - Change Background Picture",
                                      "Change Background", "1");
        if (choice == 2) {
            CommonDialog dialog;
            dialog.FileName = "*.jpg";
            dialog.Filter =
                "ALL Files|*.*|All Pictures|*.avi;*.jpg;*.gif;*.bmp;*.ico;*.dib;*.wmf;*.emf";
            bool chosen = false;
            on([&] { chosen = Runtime::Current().ui().ShowOpen(dialog); });
            const std::string copy = std::to_string(side) + "bg" + PageBase + ".spb";
            if (chosen && on([&] { FileCopy(dialog.FileName, pagesFolder() + "images/" + copy); }))
                on([&] {
                    BodyTag.at(side) = "<body bgproperties=fixed background=" + quote + "images/" +
                                       copy + quote + ">";
                });
        } else if (choice == 1 && chooseColour(on, colour)) {
            on([&] { BodyColor.at(side) = colour; });
            on([&] { BodyTag.at(side) = "<body bgcolor=" + quote + colour + quote + ">"; });
        }
    } else if (Index == 1) {
        if (chooseColour(on, colour)) on([&] { CellBorderColor = Variant(colour); });
        on([&] { rebuildCellStyle(); });
    } else if (Index == 2) {
        Control& button = (*this)("Command27", 2);
        if (textOf(CellStyle).empty()) {
            on([&] {
                CellStyle = Variant("style='border-style: " + textOf(CellBorderStyle) +
                                    "; border-width: " + (*this)("Text3", 4).Text() + "'");
            });
            on([&] { button.SetCaption("Remove Borders"); });
        } else {
            on([&] { CellStyle = Variant(""); });
            on([&] { button.SetCaption("Add Borders"); });
        }
    } else if (Index == 3) {
        on([&] { m.SelectItemsMode = Variant(!CBool(m.SelectItemsMode)); });
        on([&] { Command26_Click(); });
    } else if (Index == 4) {
        const int choice = chooseFrom(
            on, std::string("1 - Change Background Color") + vb::vbCrLf + "2 - Clear Background",
            "", "");
        if (choice == 1 && chooseColour(on, colour)) on([&] { CellColor = Variant(colour); });
        if (choice == 2) on([&] { CellColor = Variant(""); });
        on([&] { rebuildCellStyle(); });
    } else if (Index == 5) {
        static const char* const styles[] = {"solid", "double", "dotted", "dashed"};
        const int choice =
            chooseFrom(on,
                       std::string("1 - Solid Lines") + vb::vbCrLf + "2 - Double Lines" +
                           vb::vbCrLf + "3 - Dotted Lines" + vb::vbCrLf + "4 - Dashed Lines",
                       "", "");
        if (choice >= 1 && choice <= 4) on([&] { CellBorderStyle = Variant(styles[choice - 1]); });
        on([&] { rebuildCellStyle(); });
    }
    on([&] { m.PanelGo = true; });
}

void WebCatalogue::cmdeditBuy_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdeditBuy_Click");
    Control& text5 = (*this)("Text5");
    on([&] { text5.SetVisible(!text5.Visible()); });
    if (when(on, [&] { return text5.Visible() && textOf(BuyLinkTag).empty(); }))
        on([&] {
            const std::string store = Runtime::Current().GetSetting(
                "Settings", "StoreAddress", "http://www.example.com/order.htm");
            text5.SetText("<a href=" + quote + store + quote + ">");
        });
    on([&] { (*this)("Command28", 0).SetVisible(true); });
    while (text5.Visible())
        Runtime::Current().WaitForUser();
    on([&] { BuyLinkTag = Variant(text5.Text()); });
    on([&] { Mod().PanelGo = true; });
}

void WebCatalogue::Label4_Click(int Index) {
    Trap on = reportTo("(Form) Products::Sub Label4_Click");
    Module& m = Mod();
    const int side = CInt(m.LayoutSide);
    if (Index == 7 && side == 1) return;
    auto& rows = m.BoxField.at(side);
    auto& order = m.BoxOrder.at(side);
    int free = -1;
    for (int r = 0; r <= 8 && free < 0; ++r)
        if (rows[r] == 10) free = r;
    if (free < 0) return;
    Control& box = (*this)("Label4", Index);
    if (boxMarked(Index)) {
        int row = 0;
        on([&] { row = CInt(order.at(Index)); });
        for (int r = 0; r <= 8; ++r)
            if (rows[r] == Index) row = r;
        for (int r = row; r < 8; ++r)
            rows[r] = rows[r + 1];
        rows[8] = 10;
        for (int k = 0; k <= 8; ++k)
            on([&] {
                if (k != Index && CInt(order[k]) > row)
                    order[k] = Variant::Integer(CInt(order[k]) - 1);
            });
        order[Index] = Variant::Integer(8);
        on([&] { box.SetProperty("BackColor", Variant::Long(WhiteColor)); });
        if (Index < 6) on([&] { (*this)("lstAll", Index).SetVisible(false); });
    } else {
        int was = 8;
        on([&] { was = CInt(order.at(Index)); });
        rows[free] = static_cast<std::int16_t>(Index);
        for (int k = 0; k <= 8; ++k)
            on([&] {
                const int at = CInt(order[k]);
                if (k != Index && at >= free && at < was) order[k] = Variant::Integer(at + 1);
            });
        order[Index] = Variant::Integer(free);
        on([&] { box.SetProperty("BackColor", Variant::Long(MarkerColor)); });
        if (Index < 6) {
            Control& list = (*this)("lstAll", Index);
            on([&] { list.SetVisible(true); });
            if (when(on, [&] {
                    return list.ListIndex() == 30 && CInt((*this)("chkDetail", 1).Value()) == 1;
                }))
                on([&] { MoveCopy(); });
        }
    }
    redrawBoxes();
    on([&] { m.PanelGo = true; });
}

void WebCatalogue::redrawBoxes() {
    Trap on = reportTo("(Form) Products::Sub Label4_Click");
    Module& m = Mod();
    const int side = CInt(m.LayoutSide);
    for (int k = 0; k <= 8; ++k) {
        double top = 0;
        on([&] { top = BoxTop + CInt(m.BoxOrder.at(side)[k]) * BoxPitch; });
        on([&] { (*this)("Label4", k).SetProperty("Tag", m.BoxOrder[side][k]); });
        on([&] { (*this)("Label4", k).SetNum("Top", top); });
        for (const char* name : {"cmdFont", "cmdPosL", "cmdPosC", "cmdPosR"})
            on([&] { (*this)(name, k + 1).SetNum("Top", top); });
        on([&] { (*this)("cmdInsrt", k).SetNum("Top", top); });
        if (k < 6) on([&] { (*this)("lstAll", k).SetNum("Top", top - 20); });
    }
}

void WebCatalogue::redrawDesigner(int side) {
    Trap on = reportTo("(Form) Products::Sub chkDetail_Click");
    Module& m = Mod();
    SuppressListEvents = true;
    for (int k = 0; k <= 8; ++k) {
        on([&] { (*this)("Label4", k).SetProperty("Tag", m.BoxOrder.at(side)[k]); });
        on([&] { (*this)("Label4", k).SetProperty("BackColor", Variant::Long(WhiteColor)); });
        if (k < 6) on([&] { (*this)("lstAll", k).SetVisible(false); });
    }
    for (int r = 0; r <= 8; ++r) {
        const int k = m.BoxField.at(side)[r];
        if (k < 0 || k > 8) continue;
        on([&] { (*this)("Label4", k).SetProperty("BackColor", Variant::Long(MarkerColor)); });
        if (k >= 6) continue;
        Control& list = (*this)("lstAll", k);
        on([&] { list.SetVisible(true); });
        on([&] {
            const int position = CInt(m.BoxListIndex[side][k]);
            (*this)("Label4", k).SetCaption(position == 30 ? "Picture" : list.List(position));
        });
    }
    for (int k = 0; k <= 5; ++k)
        on([&] { (*this)("lstAll", k).SetListIndex(CInt(m.BoxListIndex.at(side)[k])); });
    SuppressListEvents = false;
    redrawBoxes();
}

void WebCatalogue::lstAll_Click(int Index) {
    if (SuppressListEvents) return;
    Trap on = reportTo("(Form) Products::Sub lstAll_Click");
    Module& m = Mod();
    Control& list = (*this)("lstAll", Index);
    on([&] { m.BoxListIndex.at(CInt(m.LayoutSide)).at(Index) = Variant(list.ListIndex()); });
    if (when(on,
             [&] { return list.ListIndex() == 30 && CInt((*this)("chkDetail", 1).Value()) == 1; }))
        on([&] { MoveCopy(); });
    on([&] { m.PanelGo = true; });
}

void WebCatalogue::txtIR_Change() {
    Trap on = reportTo("(Form) Products::Sub txtIR_Change");
    Module& m = Mod();
    on([&] { m.ItemsPerRow = CInt(Variant((*this)("txtIR").Text())); });
    on([&] { m.PanelGo = true; });
}

void WebCatalogue::Command29_Click() {
    Trap on = reportTo("(Form) Products::Sub Command29_Click");
    Control& frame = (*this)("Frame12");
    if (!when(on, [&] { return frame.Visible(); })) return;
    on([&] { frame.SetNum("Width", frame.Num("Width") == 9200 ? 3120 : 9200); });
    Control& wb = P.Wb1Box();
    on([&] { wb.SetNum("Left", frame.Num("Left") + frame.Num("Width")); });
    on([&] { wb.SetNum("Width", P.Num("Width") - (wb.Num("Left") + 150)); });
}
