#include "forms/user_input.h"

#include "base/convert.h"
#include "forms/control.h"
#include "forms/form.h"
#include "forms/runtime.h"
#include "records/recordset.h"

#include <algorithm>

namespace UserInput {

void Click(Control& c) {
    if (c.Kind() == ControlKind::CheckBox)
        c.SetValue(Variant::Integer(CDbl(c.Value()) != 0 ? 0 : 1));
    else if (c.Kind() == ControlKind::OptionButton)
        c.SetValue(Variant(true));
    else
        c.Raise("Click");
}

void DblClick(Control& c) {
    c.Raise("DblClick");
    // A folder list goes into the folder double-clicked, by itself.
    if (c.Kind() == ControlKind::DirList && c.Parent().IsLoaded())
        c.SetProperty("Path", Variant(c.List(c.ListIndex())));
}

void Type(Control& c, const std::string& text) {
    c.SetText(text);
}

namespace {

// A grid moves its own row on the keys that move about, by the step the main form's keys move
// its record (Page Up and Page Down a row, as Up and Down; with Ctrl to the first or last),
// and before the form sees the key: a form following its record in the grid then finds it
// on the grid's new row. No Click: a key is no click on a row. True for those keys.
bool moveGridRow(Control& grid, int keyCode, int shift) {
    Recordset* rows = grid.DataSource();
    if (!rows || rows->RecordCount() <= 0) return false;
    const long last = rows->RecordCount();
    // A grid past either end (its record set followed a record it does not hold) steps back
    // in from that end.
    long now = rows->AbsolutePosition();
    if (now < 1) now = rows->Eof() ? last + 1 : 0;
    const bool ctrl = (shift & 2) != 0;
    long row = now;
    switch (keyCode) {
        case 33:  // Page Up
        case 38:  // Up
            row = ctrl ? 1 : std::max(1L, now - 1);
            break;
        case 34:  // Page Down
        case 40:  // Down
            row = ctrl ? last : std::min(last, now + 1);
            break;
        case 36:  // Home
            row = 1;
            break;
        case 35:  // End
            row = last;
            break;
        default:
            return false;
    }
    row = std::clamp(row, 1L, last);
    if (row != now) {
        rows->SetAbsolutePosition(row);
        grid.Raise("RowColChange");
    }
    return true;
}

// The button that Enter (the default one) or Escape (the cancel one) clicks on this form,
// if the form has one that can be clicked; a focused button takes Enter itself.
Control* keyButton(const Form& form, const Control* c, int keyCode) {
    const char* role = keyCode == 13 ? "Default" : keyCode == 27 ? "Cancel" : nullptr;
    if (!role || (keyCode == 13 && c && c->Kind() == ControlKind::CommandButton)) return nullptr;
    for (const auto& button : form.Controls())
        if (button->Kind() == ControlKind::CommandButton && button->Property(role).BoolValue() &&
            button->Visible() && button->Enabled())
            return button.get();
    return nullptr;
}

}  // namespace

bool KeyDown(Form& form, Control* c, int keyCode, int shift, int ascii) {
    if (Control* button = keyButton(form, c, keyCode)) {
        Click(*button);
        return true;
    }
    const bool preview = c == nullptr || form.KeyPreview();
    int code = keyCode;
    const bool gridMoved =
        c && c->Kind() == ControlKind::DataGrid && code && moveGridRow(*c, code, shift);
    if (code && preview) form.Form_KeyDown(code, shift);
    if (c && code && form.IsLoaded()) {
        EventArgs args;
        args.KeyCode = code;
        args.Shift = shift;
        c->Raise("KeyDown", args);
    }
    if (!ascii || !form.IsLoaded()) return gridMoved;
    int typed = ascii;
    if (preview) form.Form_KeyPress(typed);
    if (c && typed != 0 && form.IsLoaded()) {
        EventArgs args;
        args.KeyAscii = typed;
        c->Raise("KeyPress", args);
        typed = args.KeyAscii;
    }
    return typed == 0;
}

void KeyUp(Control& c, int keyCode, int shift) {
    if (!c.Parent().IsLoaded()) return;
    EventArgs args;
    args.KeyCode = keyCode;
    args.Shift = shift;
    c.Raise("KeyUp", args);
}

void Select(Control& c, int index) {
    if (c.ListIndex() == index)
        c.Raise("Click");
    else
        c.SetListIndex(index);
    // A drive list changes drive by itself when the user picks one.
    if (c.Kind() == ControlKind::DriveList && c.Parent().IsLoaded())
        c.SetProperty("Drive", Variant(c.List(index)));
}

void SelectItem(Control& c, int index, bool on) {
    c.SetSelected(index, on);
    c.Raise("Click");
}

void Slide(Control& c, int value) {
    c.SetProperty("Value", Variant(value));
    c.Raise("Scroll");
}

void GridRow(Control& grid, long row) {
    grid.Raise("Click");
    if (!grid.Parent().IsLoaded() || !grid.DataSource()) return;
    grid.DataSource()->SetAbsolutePosition(row);
    grid.Raise("RowColChange");
}

void Focus(Control& c) {
    c.Parent().SetActiveControl(&c);
    c.Raise("GotFocus");
}

void Blur(Control& c) {
    if (c.Parent().ActiveControl() == &c) c.Parent().SetActiveControl(nullptr);
    c.Raise("LostFocus");
}

namespace {
// The kinds whose widgets do not report a click of their own: the release makes it.
bool reportsNoClick(ControlKind kind) {
    return kind == ControlKind::Label || kind == ControlKind::Image || kind == ControlKind::Frame ||
           kind == ControlKind::TextBox;
}

EventArgs mouseArgs(const Mouse& m) {
    EventArgs args;
    args.Button = m.button;
    args.Shift = m.shift;
    args.X = m.x;
    args.Y = m.y;
    return args;
}
}  // namespace

void MouseDown(Control& c, const Mouse& m) {
    EventArgs args = mouseArgs(m);
    c.Raise("MouseDown", args);
}

void MouseUp(Control& c, const Mouse& m, bool completesClick) {
    EventArgs args = mouseArgs(m);
    c.Raise("MouseUp", args);
    if (reportsNoClick(c.Kind()) && completesClick && m.button == 1 && c.Parent().IsLoaded())
        c.Raise("Click");
}

void MouseClick(Control& c) {
    if (c.Kind() == ControlKind::Menu) {
        Click(c);
        return;
    }
    // A control that drags by itself takes the press for a drag, which a release on the
    // spot ends with nothing dropped.
    if (Draggable(c)) return;
    MouseDown(c, {});
    if (!c.Parent().IsLoaded()) return;
    MouseUp(c, {}, true);
    if (!reportsNoClick(c.Kind()) && c.Parent().IsLoaded()) Click(c);
}

bool Draggable(const Control& c) {
    return c.HasProperty("DragMode") && CDbl(c.Property("DragMode")) == 1;
}

void Drag(Control& source, Control& target, float x, float y) {
    if (!Draggable(source)) {
        MouseDown(source, {});
        if (source.Parent().IsLoaded()) MouseUp(source, {}, false);
        return;
    }
    EventArgs args;
    args.Source = &source;
    args.X = x;
    args.Y = y;
    target.Raise("DragDrop", args);
}

void CloseByFrame(Form& form) {
    constexpr int vbFormControlMenu = 0;
    Runtime::Current().Unload(form, vbFormControlMenu);
}

void SetWindowState(Form& form, int state) {
    form.SetProperty("WindowState", Variant(state));
}

void Activate(Form& form) {
    Runtime::Current().Activate(form);
}

}  // namespace UserInput
