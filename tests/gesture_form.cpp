#include "gesture_form.h"

#include "forms/placement.h"

GestureForm::GestureForm() : Form("frmBoard") {
    SetCaption("Board");
    SetNum("Width", 6000);
    SetNum("Height", 4500);
    addControl(*this, "Frame1", ControlKind::Frame, -1, {100, 100, 5600, 3600}, "Drag the boxes");
    inside(addControl(*this, "lblItem", ControlKind::Label, 0, {300, 400, 1500, 300}, "Item"),
           "Frame1")
        .SetProperty("DragMode", Variant(1));
    inside(addControl(*this, "lblItem", ControlKind::Label, 1, {300, 1000, 1500, 300}, "Fixed"),
           "Frame1");
    inside(addControl(*this, "lblBox", ControlKind::Label, 7, {3000, 400, 2000, 600}, "Drop here"),
           "Frame1");
    inside(addControl(*this, "txtName", ControlKind::TextBox, -1, {300, 2000, 2000, 315}),
           "Frame1");
    auto note = [this](const std::string& what) {
        return [this, what](EventArgs& e) { seen.push_back(what + describe(e)); };
    };
    On("lblBox", "DragDrop", note("box drop"));
    On("Frame1", "DragDrop", note("frame drop"));
    On("lblBox", "MouseUp", note("box up"));
    On("Frame1", "MouseUp", note("frame up"));
    On("lblItem", "MouseDown", note("item down"));
    On("lblItem", "MouseUp", note("item up"));
    On("lblItem", "Click", note("item click"));
    On("lblItem", "DragDrop", note("item drop"));
    On("txtName", "KeyDown",
       [this](EventArgs& e) { seen.push_back("key down " + std::to_string(e.KeyCode)); });
    On("txtName", "KeyPress",
       [this](EventArgs& e) { seen.push_back("key press " + std::to_string(e.KeyAscii)); });
    On("txtName", "KeyUp",
       [this](EventArgs& e) { seen.push_back("key up " + std::to_string(e.KeyCode)); });
    Vars().Add("Seen", [this] {
        std::string joined;
        for (const std::string& s : seen)
            joined += (joined.empty() ? "" : "|") + s;
        return Variant(joined);
    });
}

std::string GestureForm::describe(const EventArgs& e) {
    std::string s = " " + std::to_string(e.Index);
    if (e.Source) s += " from " + e.Source->Path();
    if (e.Button) s += " button " + std::to_string(e.Button);
    lastX = e.X;
    lastY = e.Y;
    return s;
}

const char* const GestureScript =
    "drag frmBoard.lblItem(0) frmBoard.lblBox(7)\n"
    "drag frmBoard.lblItem(1) frmBoard.lblBox(7)\n"
    "click frmBoard.lblItem(1)\n"
    "key frmBoard.txtName 65\n";

const std::vector<std::string> GestureNotes{
    "box drop 7 from lblItem(0)",
    // A box that does not drag is pressed and let go over another: no drop, no click.
    "item down 1 button 1", "item up 1 button 1", "item down 1 button 1", "item up 1 button 1",
    "item click 1", "key down 65", "key press 97", "key up 65"};
