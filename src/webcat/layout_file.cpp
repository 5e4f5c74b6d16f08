// Saved layouts: the `.spd` file of one value a line, and the images folder's marker.
#include <cmath>
#include <filesystem>

#include "base/convert.h"
#include "base/files.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"
#include "webcat/web_catalogue.h"

namespace {

// What the free-format input gives a variant: nothing for an empty value, a number for a
// numeric text (16-bit, 32-bit or double, the narrowest that holds it), else the text.
Variant inputVariant(const std::string& text) {
    double number = 0;
    if (text.empty()) return {};
    if (!strictNumber(text, number)) return Variant(text);
    if (number == std::floor(number) && std::fabs(number) <= 32767)
        return Variant::Integer(static_cast<int>(number));
    if (number == std::floor(number) && std::fabs(number) <= 2147483647.0)
        return Variant::Long(static_cast<std::int32_t>(number));
    return Variant::Double(number);
}

// An empty value read into a number is 0; any other text must be a number (13).
std::int16_t inputInteger(const std::string& text) {
    return text.empty() ? std::int16_t{0} : CInt(Variant(text));
}

LayoutValue of(std::string& s) {
    return {[&s] { return Variant(s); }, [&s](const std::string& t) { s = t; }};
}
LayoutValue of(std::int16_t& n) {
    return {[&n] { return Variant::Integer(n); },
            [&n](const std::string& t) { n = inputInteger(t); }};
}
LayoutValue of(Variant& v) {
    return {[&v] { return v; }, [&v](const std::string& t) { v = inputVariant(t); }};
}
// The text of a box; writing it fires the box's Change.
LayoutValue textOf(Control& c) {
    return {[&c] { return Variant(c.Text()); }, [&c](const std::string& t) { c.SetText(t); }};
}
// The value of a check box; writing it fires the box's Click.
LayoutValue valueOf(Control& c) {
    return {[&c] { return c.Value(); },
            [&c](const std::string& t) { c.SetValue(Variant::Integer(inputInteger(t))); }};
}

}  // namespace

void WebCatalogue::forEachLayoutValue(const std::function<void(const LayoutValue&)>& each) {
    Module& m = Mod();
    for (int i = 0; i <= 1; ++i) {
        for (int j = 0; j <= 30; ++j) {
            if (i == 0 && j == 0) {
                each(of(m.PageAlign));
                each(textOf((*this)("txtIR")));
                each(of(m.ItemsPerRow));
                each(of(CellBorderColor));
                each(of(CellStyle));
                each(of(CellColor));
                each(of(m.SelectItemsMode));
                each(of(BuyLinkTag));
                each(textOf((*this)("Text5")));
                each(textOf((*this)("txtTitle")));
                each(of(CellBorderStyle));
                each(of(FrameStyle));
                each(valueOf((*this)("chkDetail", 3)));
            }
            if (i == 0 && j < 2) {
                each(of(BodyTag[j]));
                each(of(BodyColor[j]));
            }
            if (i == 0 && j < 5) {
                each(textOf((*this)("Text3", j)));
                if (j < 3) each(valueOf((*this)("chkDetail", j)));
            }
            if (j < 9) {
                each(of(m.BoxField[i][j]));
                each(of(m.BoxOrder[i][j]));
            }
            if (j < 11) {
                each(of(InsertText[i][j]));
                if (i == 0) each(textOf((*this)("Text4", j)));
            }
            if (j < 21) {
                each(of(m.CloseTags[i][j]));
                each(of(m.FontNameOf[i][j]));
                each(of(m.FontColorOf[i][j]));
                each(of(m.FontSizeOf[i][j]));
                each(of(m.BoldOn[i][j]));
                each(of(m.ItalicOn[i][j]));
                each(of(m.StrikeOn[i][j]));
                each(of(m.UnderlineOn[i][j]));
            }
            if (j < 23) each(of(ItemAlign[i][j]));
            each(of(m.BoxListIndex[i][j]));
        }
    }
}

void WebCatalogue::SaveLoad_Click(int Index) {
    Trap on = reportTo("(Form) Products::Sub SaveLoad_Click");
    Module& m = Mod();
    Ui& ui = Runtime::Current().ui();
    CommonDialog dialog;
    std::string name;
    on([&] { dialog.InitDir = CStr(m.AppDir) + "Pages/"; });
    on([&] { dialog.FileName = "*.spd"; });
    on([&] { dialog.Filter = "Saved Page Data|*.spd"; });
    on([&] {
        bool chosen = Index == 0 ? ui.ShowSave(dialog) : ui.ShowOpen(dialog);
        name = chosen ? dialog.FileName : "";
    });
    if (name.empty() || name == "*.spd") return;
    if (Index == 0) {
        if (when(on, [&] { return InStr(UCase(name), ".SPD") == 0; })) on([&] { name += ".spd"; });
        TextFileWriter out;
        on([&] { out.open(name); });
        forEachLayoutValue([&](const LayoutValue& v) { on([&] { out.printValue(v.get()); }); });
        on([&] { out.close(); });
    } else {
        TextFileReader in;
        on([&] { in.open(name); });
        forEachLayoutValue([&](const LayoutValue& v) { on([&] { v.set(in.input()); }); });
        on([&] { in.close(); });
        if (when(on, [&] { return CInt((*this)("chkDetail", 1).Value()) == 1; }))
            on([&] { MoveCopy(); });
    }
    // The designer draws itself again through the side switch.
    on([&] { (*this)("chkDetail", 0).SetValue(Variant::Integer(1)); });
    on([&] { (*this)("chkDetail", 0).SetValue(Variant::Integer(0)); });
    on([&] { m.PanelGo = true; });
}

void WebCatalogue::makeImagesFolder(Trap& on) {
    const std::string images = CStr(Mod().AppDir) + "Pages/images/";
    if (when(on, [&] { return Dir(images + "start.dat").empty(); })) {
        if (when(on, [&] { return !std::filesystem::is_directory(images); }))
            on([&] { MkDir(images); });
        TextFileWriter marker;
        on([&] { marker.open(images + "start.dat"); });
        on([&] { marker.printLine("started"); });
        on([&] { marker.close(); });
    }
}

// The copy of the chosen items' pictures into Pages/images/ is the bulk tools'.
void WebCatalogue::MoveCopy() {
    P.bulk->MoveCopy();
}
