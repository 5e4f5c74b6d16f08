// The field placement board `Frame11`: source boxes `Label2` are dragged onto the target
// boxes `Label1`, one per column of Products, and the result is `FieldPlacement`. The events
// only set values and flags; GetFiles acts on them in its wait.
#include "base/convert.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "build/text_split.h"
#include "forms/placement.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace {

constexpr std::int32_t White = 0xFFFFFF;
constexpr std::int32_t Filled = 0xFFFF80;
constexpr std::int32_t SourceBack = 0xC0FFFF;
constexpr std::int32_t Black = 0;
constexpr int LastSourceBox = 41;
constexpr int NoLookupItem = 777;

// The yes/no columns, whose boxes show True or False.
bool yesNoBox(int Index) {
    return Index == 19 || Index == 21 || Index == 22 || Index == 30;
}

// "True" when the text's first letter in upper case is Y or T, else "False".
std::string trueOrFalse(const std::string& text) {
    const std::string first = UCase(Left(text, 1));
    return first == "Y" || first == "T" ? "True" : "False";
}

}  // namespace

Bulk::Bulk(Products& form) : ProductsPart(form) {
    KeyItem = -1;  // no stock number source yet
    createBoard();
    wireBoard();
}

void Bulk::createBoard() {
    // The targets in two columns of 15 on the left, the sources in three columns of 14 on
    // the right, the commands below the sources.
    for (int i = 1; i <= 30; ++i) {
        const double left = 120 + ((i - 1) / 15) * 2250.0, top = 300 + ((i - 1) % 15) * 340.0;
        Control& box = addControl(P, "Label1", ControlKind::Label, i, {left, top, 2200, 285});
        box.SetProperty("DragMode", Variant::Integer(1));
        inside(box, "Frame11");
    }
    for (int i = 0; i <= LastSourceBox; ++i) {
        const double left = 4700 + (i / 14) * 1520.0, top = 300 + (i % 14) * 340.0;
        Control& box = addControl(P, "Label2", ControlKind::Label, i, {left, top, 1450, 285});
        box.SetProperty("DragMode", Variant::Integer(1));
        // Pale yellow, so that the pieces to drag stand apart from the white fields.
        box.SetProperty("BackColor", Variant::Long(SourceBack));
        box.SetVisible(false);
        inside(box, "Frame11");
    }
    const char* const commands[] = {"Prev Line", "Next Line", "Done", "Cancel"};
    for (int i = 0; i < 4; ++i)
        inside(
            addControl(P, "Command2" + std::to_string(i + 2), ControlKind::CommandButton, -1,
                       {4700 + (i % 2) * 1450.0, 5000 + (i / 2) * 340.0, 1400, 300}, commands[i]),
            "Frame11");
    addControl(P, "mnuPopUp1", ControlKind::Menu, -1, {0, 0, 0, 0}, "PopUp").SetVisible(false);
    const char* const items[][2] = {{"mnuPopupDA", "Delete All Items In This Field"},
                                    {"mnuPopupAI", "Add Item Info To This Filed"},
                                    {"mnuPopupCI", "Clear This Box"}};
    for (const auto& item : items)
        inside(addControl(P, item[0], ControlKind::Menu, -1, {0, 0, 0, 0}, item[1]), "mnuPopUp1");
}

void Bulk::wireBoard() {
    auto drop = [this](EventArgs& e) { Label1_DragDrop(e.Index, e.Source); };
    P.On("Label1", "DragDrop", drop);
    P.On("Label2", "DragDrop", drop);
    P.On("Frame11", "DragDrop", [this](EventArgs& e) { Frame11_DragDrop(e.Source); });
    P.On("Label1", "MouseUp", [this](EventArgs& e) { Label1_MouseUp(e.Index, e.Button); });
    OnClick("cmdAddAll", &Bulk::cmdAddAll_Click);
    OnClick("cmdDAll", &Bulk::cmdDAll_Click);
    OnClick("Command22", &Bulk::Command22_Click);
    OnClick("Command23", &Bulk::Command23_Click);
    OnClick("Command24", &Bulk::Command24_Click);
    OnClick("Command25", &Bulk::Command25_Click);
    OnClick("mnuPopupDA", &Bulk::mnuPopupDA_Click);
    OnClick("mnuPopupAI", &Bulk::mnuPopupAI_Click);
    OnClick("mnuPopupCI", &Bulk::mnuPopupCI_Click);
    OnClick("cmdSelectAll", &Bulk::cmdSelectAll_Click);
    OnClick("cmdUnSelect", &Bulk::cmdUnSelect_Click);
}

bool Bulk::overProducts() const {
    return Mod().BulkEditMode || P.ExportMode;
}

bool Bulk::filled(int Index) const {
    return CLng((*this)("Label1", Index).Property("BackColor")) == Filled;
}

void Bulk::emptyBox(int Index) {
    Control& box = (*this)("Label1", Index);
    box.SetProperty("BackColor", Variant::Long(White));
    box.SetProperty("ForeColor", Variant::Long(Black));
    box.SetCaption(CStr(box.Property("ToolTipText")));
    box.SetProperty("LinkItem", Variant(""));
}

void Bulk::fillBox(int Index) {
    (*this)("Label1", Index).SetProperty("BackColor", Variant::Long(Filled));
}

// Opening the board: the source boxes show the items of the sample; the first time, the
// target boxes take the field labels of the form.
void Bulk::openBoard(Trap& on, bool returning) {
    {
        // Items past the last source box have no box to show them.
        SteppingOverMissingElements past;
        for (int i = 0; i <= lastItem_; ++i) {
            if (!returning) on([&] { (*this)("Label2", i).SetVisible(true); });
            on([&] { (*this)("Label2", i).SetCaption(slotAt(SourceItems, i)); });
        }
    }
    if (!returning) {
        SteppingOverMissingElements noLabel;  // Label3 has no 1 and 17
        for (int i = 1; i <= 30; ++i) {
            std::string caption;
            if (i == 1)
                caption = "Suppliers Name / ID Number";
            else if (i == 17)
                caption = "Picture Path";
            else
                on([&] { caption = (*this)("Label3", i).Caption(); });
            on([&] { (*this)("Label1", i).SetCaption(caption); });
            on([&] { (*this)("Label1", i).SetProperty("ToolTipText", Variant(caption)); });
            // Boxes drag in an import only; in an export Notes drags, so that a click can
            // never put it into the file, and the supplier does not.
            const int dragMode = overProducts() && !(P.ExportMode && i == 29) ? 0 : 1;
            if (i >= 2 || P.ExportMode)
                on([&] { (*this)("Label1", i).SetProperty("DragMode", Variant(dragMode)); });
        }
    }
    on([&] { source_.close(); });
    on([&] { (*this)("Frame11").SetVisible(true); });
    on([&] { SkipDiscontinued = false; });
    on([&] { KeyItem = -1; });
    on([&] { PrevLineFlag = false; });
    on([&] { NextLineFlag = false; });
    on([&] { boardCounter_ = 0; });
}

Next Bulk::waitOnBoard(Trap& on) {
    for (;;) {
        on([&] { P.ContinueFlag = false; });
        on([&] { PrevLineFlag = false; });
        on([&] { NextLineFlag = false; });
        on([&] { LastLinkItem = -1; });
        bool done = false, resampled = false;
        while (!done && !resampled && !when(on, [&] { return P.ContinueFlag; })) {
            if (when(on, [&] { return DoneFlag; })) {
                on([&] { DoneFlag = false; });
                on([&] { P.ContinueFlag = false; });
                done = true;
                continue;
            }
            const bool textImport = when(on, [&] { return P.ImportKind != 7 && !overProducts(); });
            int step = 0;
            if (textImport && when(on, [&] { return PrevLineFlag && SampleLine > 1; }))
                step = -1;
            else if (textImport && when(on, [&] { return NextLineFlag; }))
                step = 1;
            if (step != 0) {
                moveSample(on, step);
                openBoard(on, true);
                resampled = true;
                continue;
            }
            on([&] { Runtime::Current().WaitForUser(); });
        }
        if (resampled) continue;
        if (!done) {
            if (when(on, [&] { return P.LastBox == 21 && !FieldPlacement[21].empty(); })) {
                int answer = vb::vbYes;
                on([&] {
                    answer = MsgBox(std::string("If This List Includes Discontinued Items!") +
                                        vb::vbCrLf +
                                        "Do You Want To Include The Items That Are "
                                        "Discontinued In The Database?",
                                    vb::vbYesNo);
                });
                on([&] { SkipDiscontinued = answer == vb::vbNo; });
            }
            if (when(on, [&] { return CancelFlag; })) {
                on([&] { (*this)("Frame11").SetVisible(false); });
                return Next::Ending;
            }
            if (when(on, [&] { return P.LastBox == 2; })) on([&] { KeyItem = boardCounter_; });
            continue;
        }
        on([&] { (*this)("Frame11").SetVisible(false); });
        if (overProducts()) {
            on([&] { KeyItem = NoLookupItem; });
            return Next::Go;
        }
        // The placeholders of the added slots never reach a record.
        for (boardCounter_ = lastItem_ - AddedSlots + 1; boardCounter_ <= lastItem_;
             ++boardCounter_)
            on([&] { slotAt(SourceItems, boardCounter_) = ""; });
        if (when(on, [&] { return KeyItem < 0; })) {
            on([&] {
                MsgBox(std::string("You Did NOT Enter A Product ID/Stock Number!") + vb::vbCrLf +
                           "You Must Enter One Of The Fields As This!",
                       vb::vbCritical);
            });
            on([&] { (*this)("Frame11").SetVisible(true); });
            continue;
        }
        return Next::Go;
    }
}

void Bulk::moveSample(Trap& on, int step) {
    const std::int32_t wanted = SampleLine + step;
    on([&] { source_.open(fileName_); });
    for (std::int32_t n = 1; n <= wanted; ++n)
        if (!on([&] { line_ = source_.lineInput(); })) break;
    on([&] { SampleLine = std::max(1, wanted); });
    splitSample(on);
}

void Bulk::Label1_DragDrop(int Index, Control* Source) {
    Trap on = reportTo("(Form) Products::Sub Label1_DragDrop");
    if (when(on, [&] { return filled(Index); })) return;
    const bool fromTarget = when(on, [&] { return Source->Name() == "Label1"; });
    if (fromTarget && when(on, [&] { return !filled(Source->Index()); })) return;
    Control& box = (*this)("Label1", Index);
    if (!fromTarget) {
        const int s = Source->Index();
        if (!yesNoBox(Index))
            on([&] { box.SetCaption(Source->Caption()); });
        else
            on([&] { box.SetCaption(trueOrFalse(slotAt(SourceItems, s))); });
        on([&] { slotAt(FieldPlacement, Index) = "FI-" + std::to_string(s); });
        on([&] { fillBox(Index); });
        on([&] { box.SetProperty("LinkItem", Variant(std::to_string(s))); });
        on([&] { Source->SetVisible(false); });
    } else {
        const int from = Source->Index();
        std::string link;
        on([&] { slotAt(FieldPlacement, Index) = slotAt(FieldPlacement, from); });
        on([&] { slotAt(FieldPlacement, from) = ""; });
        on([&] { box.SetCaption(Source->Caption()); });
        on([&] { fillBox(Index); });
        on([&] { link = CStr(Source->Property("LinkItem")); });
        on([&] { box.SetProperty("LinkItem", Variant(link)); });
        on([&] { emptyBox(from); });
        on([&] { LastLinkItem = CInt(Variant(link)); });
        if (from == 2) on([&] { KeyItem = -1; });
    }
    on([&] { P.LastBox = static_cast<std::int16_t>(Index); });
    on([&] { P.ContinueFlag = true; });
}

void Bulk::Frame11_DragDrop(Control* Source) {
    Trap on = reportTo("(Form) Products::Sub Frame11_DragDrop");
    if (when(on, [&] { return Source->Name() != "Label1"; })) return;
    std::string link;
    on([&] { link = CStr(Source->Property("LinkItem")); });
    if (link.empty()) return;
    takeBackFromFrame(Source->Index());
}

// A placed source item goes back to its source box, and the target box is empty again.
void Bulk::takeBackFromFrame(int Index) {
    Trap on = reportTo("(Form) Products::Sub Frame11_DragDrop");
    Control& box = (*this)("Label1", Index);
    std::string link;
    on([&] { link = CStr(box.Property("LinkItem")); });
    on([&] { LastLinkItem = CInt(Variant(link)); });
    if (Index == 2) on([&] { KeyItem = -1; });
    on([&] { slotAt(FieldPlacement, Index) = ""; });
    on([&] { emptyBox(Index); });
    on([&] { (*this)("Label2", CInt(Variant(link))).SetVisible(true); });
    on([&] { box.SetProperty("LinkItem", Variant("")); });
    on([&] { P.ContinueFlag = true; });
    on([&] { P.LastBox = static_cast<std::int16_t>(Index); });
}

void Bulk::Label1_MouseUp(int Index, int Button) {
    Trap on = reportTo("(Form) Products::Sub Label1_MouseUp");
    constexpr int RightButton = 2;
    if (when(on, [&] { return P.ExportMode; })) {
        if (when(on, [&] { return !filled(Index); })) {
            on([&] { fillBox(Index); });
            on([&] { slotAt(FieldPlacement, Index) = "EX-" + slotAt(FieldPlacement, Index); });
        } else {
            on([&] { (*this)("Label1", Index).SetProperty("BackColor", Variant::Long(White)); });
            on([&] { slotAt(FieldPlacement, Index) = ""; });
        }
        return;
    }
    if (Button == RightButton) {
        Control* chosen = nullptr;
        on([&] { chosen = Runtime::Current().ui().PopupMenu(P, "mnuPopUp1"); });
        if (chosen) on([&] { chosen->Raise("Click"); });
    }
    const std::int16_t choice = PopupChoice;
    on([&] { PopupChoice = 0; });
    bool clearing = choice == 3;
    if (choice == 1) {
        on([&] { slotAt(FieldPlacement, Index) = "Delete"; });
    } else if (!clearing) {
        if (when(on, [&] { return filled(Index); })) return;
        if (Index < 1) {
            on([&] { P.LastBox = static_cast<std::int16_t>(Index); });
            return;
        }
        std::string answer;
        on([&] {
            answer = Runtime::Current().ui().InputBox("What Do You Want To Go Here?",
                                                      "Enter Information Here", "");
        });
        clearing = answer.empty();
        if (!clearing) {
            on([&] { slotAt(FieldPlacement, Index) = answer; });
            if (Index == 1) on([&] { SavedSupplier = answer; });
            if (yesNoBox(Index)) on([&] { slotAt(FieldPlacement, Index) = trueOrFalse(answer); });
            if (Index == 2) on([&] { KeyItem = NoLookupItem; });
        }
    }
    if (clearing) {
        if (when(on, [&] { return Left(slotAt(FieldPlacement, Index), 3) == "FI-"; })) {
            takeBackFromFrame(Index);
        } else {
            on([&] { slotAt(FieldPlacement, Index) = ""; });
            on([&] { emptyBox(Index); });
        }
        return;
    }
    Control& box = (*this)("Label1", Index);
    on([&] { box.SetCaption(slotAt(FieldPlacement, Index)); });
    on([&] { slotAt(FieldPlacement, Index) = "AI-" + slotAt(FieldPlacement, Index); });
    on([&] { fillBox(Index); });
    on([&] { box.SetProperty("LinkItem", Variant("")); });
    on([&] { P.LastBox = static_cast<std::int16_t>(Index); });
}

void Bulk::Command22_Click() {
    PrevLineFlag = true;
    NextLineFlag = false;
}

void Bulk::Command23_Click() {
    NextLineFlag = true;
    PrevLineFlag = false;
}

void Bulk::Command24_Click() {
    DoneFlag = true;
    P.ContinueFlag = true;
}

void Bulk::Command25_Click() {
    CancelFlag = true;
    P.ContinueFlag = true;
}

void Bulk::mnuPopupDA_Click() {
    PopupChoice = 1;
}

void Bulk::mnuPopupAI_Click() {
    PopupChoice = 2;
}

void Bulk::mnuPopupCI_Click() {
    PopupChoice = 3;
}

void Bulk::cmdSelectAll_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdSelectAll_Click");
    if (!when(on, [&] { return P.ExportMode; })) return;
    for (int i = 1; i <= 30; ++i) {
        if (i == 29) continue;  // Notes never goes into an export
        on([&] { slotAt(FieldPlacement, i) = "EX-" + slotAt(FieldPlacement, i); });
        on([&] { fillBox(i); });
    }
}

void Bulk::cmdUnSelect_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdUnSelect_Click");
    if (!when(on, [&] { return P.ExportMode; })) return;
    for (int i = 1; i <= 30; ++i) {
        if (i == 29) continue;
        on([&] { slotAt(FieldPlacement, i) = ""; });
        on([&] { (*this)("Label1", i).SetProperty("BackColor", Variant::Long(White)); });
    }
}
