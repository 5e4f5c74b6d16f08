#pragma once

#include <string>

class Control;
class Form;

// What the user's gestures do to the forms. The desktop host and the session runner both
// call only these, so a script plays exactly the code a user's mouse and keys run.
namespace UserInput {

// What a widget reports as its own click: a check box toggles its Value, an option button
// is selected (the others of its container go off), anything else raises Click.
void Click(Control& c);
// A whole click of the left button on a control, as a user's mouse makes it: MouseDown,
// MouseUp, then the click (a label, image, frame or text box hears it through its MouseUp,
// the other kinds as their widget reports it). A menu item only hears its Click; a control
// that drags by itself (DragMode 1) hears nothing, its drag ending where it began.
void MouseClick(Control& c);
void DblClick(Control& c);
// The text a user leaves in a box; Change fires when it differs.
void Type(Control& c, const std::string& text);

// A key going down on a control, or on the form itself when no control has it: KeyDown, then
// KeyPress when the key types a character (ascii, 0 for none), each seen first by the form
// when it previews keys. A handler may change KeyAscii; True when one set it to 0, so the key
// types nothing. Enter clicks the form's default button (unless a button has the focus) and
// Escape its cancel button, and nothing else sees the key then; True. On a grid, the keys that move
// about first move its row (RowColChange); True then too, the key being the grid's.
bool KeyDown(Form& form, Control* c, int keyCode, int shift, int ascii);
void KeyUp(Control& c, int keyCode, int shift);

// The user picks an item of a list or combo box: Click, also when it was picked already.
void Select(Control& c, int index);
// An item of a multi-select list turned on or off.
void SelectItem(Control& c, int index, bool on);
void Slide(Control& c, int value);
// A click on row (1-based) of a grid: Click, then its record set moves there, RowColChange.
void GridRow(Control& grid, long row);

void Focus(Control& c);
void Blur(Control& c);

// Mouse buttons: 1 left, 2 right, 4 middle; the point in twips inside the control.
struct Mouse {
    int button = 1;
    int shift = 0;
    float x = 0, y = 0;
};
void MouseDown(Control& c, const Mouse& m);
// The release. When it completes a click (pressed on this control and let go over it), a
// label, image, frame or text box also gets Click for the left button; the widgets of other
// kinds report their clicks themselves.
void MouseUp(Control& c, const Mouse& m, bool completesClick);

// True when the control drags by itself (DragMode 1): a left press starts a drag instead of
// a click.
bool Draggable(const Control& c);
// The left button pressed on source and let go over target at (x, y) in target's twips.
// An automatic drag drops source there (DragDrop); any other control sees only its own
// press and release, off the control, so no click.
void Drag(Control& source, Control& target, float x, float y);

// The window's gestures: closing it by its frame (QueryUnload may refuse), minimising (1),
// maximising (2) or restoring (0) it, and making it the active window.
void CloseByFrame(Form& form);
void SetWindowState(Form& form, int state);
void Activate(Form& form);

}  // namespace UserInput
