// The detailed search form `Search`. Field i of the two option arrays is column i of
// Products in its stored order, as `Data1` sees the table opened by name.
#include "search/search_form.h"

#include <array>
#include <string>

#include "base/convert.h"
#include "base/strings.h"
#include "forms/placement.h"
#include "forms/runtime.h"
#include "records/store.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"

namespace {

constexpr int FieldCount = 30;
constexpr int vbKeyReturn = 13;
constexpr int vbDefaultPointer = 0;
constexpr int vbChecked = 1;

// What an operator puts into the condition. Open and close "by field" follow the class of
// the chosen field; operator 7 cuts the operator that stands and has no quotes.
struct Operator {
    const char* caption;
    const char* text;
    const char* open;
    const char* close;
    bool byField;
};

constexpr std::array<Operator, 9> Operators{{
    {"Like / Contains", " like ", "'*", "*'", false},
    {"Equals (=)", " = ", "", "", true},
    {"More Than (>)", " > ", "", "", true},
    {"Less Than (<)", " < ", "", "", true},
    {"Equal Or Greater (=>)", " >= ", "", "", true},
    {"Equal Or Less (=<)", " <= ", "", "", true},
    {"Does Not Equal (<>)", " <> ", "", "", true},
    {"Empty Values (NULL)", "", "", "", false},
    {"Starts With", " like ", "'", "*'", false},
}};
constexpr int NullOperator = 7;

enum class FieldClass { Text, Number, YesNo, None };

// Field 18, Category, counts as a number here, and 22, Orderable, has no class.
FieldClass classOf(int field) {
    switch (field) {
        case 1:
        case 2:
        case 3:
        case 4:
        case 5:
        case 6:
        case 14:
        case 17:
        case 20:
        case 27:
        case 28:
        case 29:
            return FieldClass::Text;
        case 7:
        case 8:
        case 9:
        case 10:
        case 11:
        case 12:
        case 13:
        case 15:
        case 16:
        case 18:
        case 23:
        case 24:
        case 25:
        case 26:
            return FieldClass::Number;
        case 19:
        case 21:
        case 30:
            return FieldClass::YesNo;
        default:
            return FieldClass::None;
    }
}

// The fields that take True as their value, with only Equals and Does Not Equal.
bool isBooleanField(int field) {
    return field == 19 || field == 21 || field == 22 || field == 30;
}

Products& mainForm() {
    if (!Mod().MainForm) throw VbError(91, "Object variable or With block variable not set");
    return *Mod().MainForm;
}

}  // namespace

Search::Search() : Form("Search") {
    SetCaption("Detailed Search Form");
    SetNum("Width", 10320);
    SetNum("Height", 6690);
    createControls();
    wireEvents();
}

Search::~Search() = default;

void Search::createControls() {
    // The fields on the left, the operators and the joiners in the middle, the sort on the
    // right; the value, the preview and the three commands below. Each group of options
    // stands in its frame, places within the frame.
    const double rowStep = 270, firstRow = 270, columnStep = 1740;
    addControl(*this, "Frame1", ControlKind::Frame, -1, {120, 120, 3720, 4440}, "WhereTo Search");
    addControl(*this, "Frame2", ControlKind::Frame, -1, {3960, 120, 2280, 2790},
               "Search Operators");
    addControl(*this, "Frame3", ControlKind::Frame, -1, {6360, 120, 3720, 4440}, "Sort Them By");
    for (int i = 1; i <= FieldCount; ++i) {
        const double column = (i - 1) / 15, row = (i - 1) % 15;
        const Box place{120 + column * columnStep, firstRow + row * rowStep, 1700, 255};
        addControl(*this, "optsrch", ControlKind::OptionButton, i, place).SetContainer("Frame1");
        addControl(*this, "optSort", ControlKind::OptionButton, i, place).SetContainer("Frame3");
    }
    for (int i = 0; i < static_cast<int>(Operators.size()); ++i)
        addControl(*this, "optOperator", ControlKind::OptionButton, i,
                   {120, firstRow + i * rowStep, 2040, 255}, Operators[i].caption)
            .SetContainer("Frame2");
    addControl(*this, "Check1", ControlKind::CheckBox, -1, {4080, 3030, 2160, 255},
               "Whole Words ONLY");
    addControl(*this, "chkReverse", ControlKind::CheckBox, -1, {4080, 3360, 2160, 255},
               "Reverse Order");
    const char* const joiners[] = {"And", "Or", "Then By"};
    for (int i = 0; i < 3; ++i)
        addControl(*this, "cmdAndOr", ControlKind::CommandButton, i,
                   {3960 + i * 770.0, 3780, 740, 375}, joiners[i]);
    addControl(*this, "txtSearch", ControlKind::TextBox, -1, {120, 4680, 9960, 315});
    addControl(*this, "Text1", ControlKind::TextBox, -1, {120, 5070, 9960, 660});
    addControl(*this, "cmdSrch", ControlKind::CommandButton, -1, {6000, 5820, 1320, 360}, "Search");
    addControl(*this, "cmdStartOver", ControlKind::CommandButton, -1, {7380, 5820, 1320, 360},
               "Start Over");
    // Escape leaves the form as Cancel does. Enter stays the value box's own.
    addControl(*this, "cmdCancel", ControlKind::CommandButton, -1, {8760, 5820, 1320, 360},
               "Cancel")
        .SetProperty("Cancel", Variant(true));
    addControl(*this, "Data1", ControlKind::DataControl, -1, {120, 5790, 1200, 300}, "Data1")
        .SetVisible(false);
    Data1 = CreateDataControl();
    Data1->SetConnect("Access 2000;");
    Data1->SetRecordSource("Products");
}

void Search::wireEvents() {
    On("optsrch", "Click", [this](EventArgs& e) { optsrch_Click(e.Index); });
    On("optOperator", "Click", [this](EventArgs& e) { optOperator_Click(e.Index); });
    On("optSort", "Click", [this](EventArgs& e) { optSort_Click(e.Index); });
    OnClick("Check1", &Search::Check1_Click);
    OnClick("chkReverse", &Search::chkReverse_Click);
    On("cmdAndOr", "Click", [this](EventArgs& e) { cmdAndOr_Click(e.Index); });
    On("txtSearch", "Change", [this](EventArgs&) { txtSearch_Change(); });
    On("txtSearch", "KeyPress", [this](EventArgs& e) { txtSearch_KeyPress(e.KeyAscii); });
    OnClick("cmdSrch", &Search::cmdSrch_Click);
    OnClick("cmdCancel", &Search::cmdCancel_Click);
    OnClick("cmdStartOver", &Search::cmdStartOver_Click);
}

void Search::clearPieces(Trap& on) {
    Module& m = Mod();
    on([&] { SelectedField = 0; });
    on([&] { m.SearchClose = Variant(""); });
    on([&] { m.SearchOpen = Variant(""); });
    on([&] { m.SearchOperator = Variant(""); });
    on([&] { m.SearchCriteria = Variant(""); });
    on([&] { m.SearchField = Variant(""); });
    on([&] { BooleanField = false; });
    on([&] { ThenBy = false; });
}

void Search::rewritePreview(Trap& on) {
    Module& m = Mod();
    on([&] {
        (*this)("Text1").SetText(textOf(m.SearchAccum) + textOf(m.SearchField) +
                                 textOf(m.SearchOperator) + textOf(m.SearchOpen) +
                                 (*this)("txtSearch").Text() + textOf(m.SearchClose) +
                                 " Sorted by " + textOf(m.SearchOrder));
    });
}

void Search::Form_Load() {
    Trap on = reportTo("(Form) Search::Sub Form_Load");
    Module& m = Mod();
    Runtime& rt = Runtime::Current();
    on([&] { Data1->SetDatabaseName(m.DBName); });
    on([&] { Data1->Refresh(); });
    on([&] { Data1->SetRecordSource("Products"); });
    on([&] { rt.LetEventsRun(); });
    clearPieces(on);
    for (int i = 1; i <= FieldCount; ++i) {
        std::string caption;
        if (i == 1)
            on([&] { caption = "Suppliers Name"; });
        else if (i == 17)
            on([&] { caption = "Picture Path"; });
        else
            on([&] { caption = mainForm()("Label3", i).Caption(); });
        on([&] { (*this)("optsrch", i).SetCaption(caption); });
        on([&] { (*this)("optsrch", i).SetProperty("ToolTipText", Variant(caption)); });
        on([&] { (*this)("optSort", i).SetCaption(caption); });
        on([&] { (*this)("optSort", i).SetProperty("ToolTipText", Variant(caption)); });
    }
    on([&] { rt.SetMousePointer(vbDefaultPointer); });
    on([&] { (*this)("chkReverse").SetValue(Variant::Integer(m.ReverseOrder ? vbChecked : 0)); });
    on([&] { chkReverse_Click(); });
    on([&] { optsrch_Click(1); });
    on([&] { (*this)("optOperator", 0).SetValue(Variant(true)); });
    on([&] { optOperator_Click(0); });
    on([&] { (*this)("optOperator", NullOperator).SetValue(Variant(false)); });
    on([&] { (*this)("optSort", 2).SetValue(Variant(true)); });
    on([&] { optSort_Click(2); });
    on([&] { m.SearchAccum = Variant(""); });
    on([&] { (*this)("txtSearch").SetText(""); });
    // The criteria were cleared above: an earlier search is not carried into the form.
    on([&] { (*this)("Text1").SetText(textOf(m.SearchCriteria)); });
}

void Search::optsrch_Click(int Index) {
    Trap on = reportTo("(Form) Search::Sub optsrch_Click");
    Module& m = Mod();
    Control& txtSearch = (*this)("txtSearch");
    Control& Check1 = (*this)("Check1");
    on([&] { m.SearchField = Variant(Data1->Recordset().FieldName(Index)); });
    on([&] { BooleanField = false; });
    on([&] { SelectedField = static_cast<std::int16_t>(Index); });
    if (when(on, [&] { return isBooleanField(Index); })) {
        on([&] { m.SearchOpen = Variant(""); });
        on([&] { m.SearchClose = Variant(""); });
        on([&] { BooleanField = true; });
        on([&] { txtSearch.SetText("True"); });
        on([&] { txtSearch.SetEnabled(false); });
        on([&] { Check1.SetEnabled(false); });
        for (int i = 0; i <= NullOperator; ++i)
            if (i != 1 && i != 6) on([&] { (*this)("optOperator", i).SetEnabled(false); });
        on([&] { (*this)("optOperator", 1).SetValue(Variant(true)); });
    } else {
        on([&] { Check1.SetEnabled(true); });
        on([&] { txtSearch.SetEnabled(true); });
        for (int i = 0; i <= NullOperator; ++i)
            on([&] { (*this)("optOperator", i).SetEnabled(true); });
    }
    rewritePreview(on);
}

void Search::optOperator_Click(int Index) {
    Trap on = reportTo("(Form) Search::Sub optOperator_Click");
    Module& m = Mod();
    Operator op{};
    on([&] { op = Operators.at(static_cast<std::size_t>(Index)); });
    if (when(on, [&] { return Index == NullOperator; })) {
        // The operator that stands loses its last character: " like " reads " like".
        on([&] {
            std::string standing = textOf(m.SearchOperator);
            m.SearchOperator = Variant(Left(standing, Len(standing) - 1));
        });
        on([&] { m.SearchOpen = Variant(""); });
        on([&] { m.SearchClose = Variant(""); });
        on([&] { (*this)("txtSearch").SetText(" Null "); });
    } else {
        on([&] { m.SearchOperator = Variant(op.text); });
        if (when(on, [&] { return !op.byField; })) {
            on([&] { m.SearchOpen = Variant(op.open); });
            on([&] { m.SearchClose = Variant(op.close); });
        } else {
            switch (classOf(SelectedField)) {
                case FieldClass::Text:
                    on([&] { m.SearchOpen = Variant("'"); });
                    on([&] { m.SearchClose = Variant("'"); });
                    break;
                case FieldClass::Number:
                case FieldClass::YesNo:
                    on([&] { m.SearchOpen = Variant(""); });
                    on([&] { m.SearchClose = Variant(""); });
                    break;
                case FieldClass::None:
                    break;  // left as they were
            }
        }
    }
    rewritePreview(on);
}

void Search::optSort_Click(int Index) {
    Trap on = reportTo("(Form) Search::Sub optSort_Click");
    Module& m = Mod();
    if (when(on, [&] { return !ThenBy; }))
        on([&] { m.SearchOrder = Variant(Data1->Recordset().FieldName(Index)); });
    else
        on([&] {
            m.SearchOrder =
                Variant(textOf(m.SearchOrder) + "," + Data1->Recordset().FieldName(Index));
        });
    rewritePreview(on);
}

void Search::Check1_Click() {
    Trap on = reportTo("(Form) Search::Sub Check1_Click");
    Control& txtSearch = (*this)("txtSearch");
    if (when(on, [&] { return CDbl((*this)("Check1").Value()) == vbChecked; }))
        on([&] { txtSearch.SetText(" " + txtSearch.Text() + " "); });
    else
        on([&] { txtSearch.SetText(Trim(txtSearch.Text())); });
}

void Search::chkReverse_Click() {
    Trap on = reportTo("(Form) Search::Sub chkReverse_Click");
    on([&] { Mod().ReverseOrder = CBool((*this)("chkReverse").Value()); });
}

void Search::cmdAndOr_Click(int Index) {
    Trap on = reportTo("(Form) Search::Sub cmdAndOr_Click");
    Module& m = Mod();
    Control& txtSearch = (*this)("txtSearch");
    // Whole words: one more pair of blanks at each click.
    if (when(on, [&] { return CDbl((*this)("Check1").Value()) == vbChecked; }))
        on([&] { txtSearch.SetText(" " + txtSearch.Text() + " "); });
    auto condition = [&] {
        return textOf(m.SearchAccum) + textOf(m.SearchField) + textOf(m.SearchOperator) +
               textOf(m.SearchOpen) + txtSearch.Text() + textOf(m.SearchClose);
    };
    if (Index == 0) {
        on([&] { m.SearchAccum = Variant(condition() + " and "); });
    } else if (Index == 1) {
        on([&] { m.SearchAccum = Variant(condition() + " or "); });
    } else if (Index == 2) {
        on([&] { ThenBy = true; });
        return;
    }
    on([&] { (*this)("optOperator", NullOperator).SetValue(Variant(false)); });
    on([&] { txtSearch.SetText(""); });
    on([&] { txtSearch.SetFocus(); });
    // The accumulated conditions changed, even where the value box was empty already.
    rewritePreview(on);
}

void Search::txtSearch_Change() {
    Trap on = reportTo("(Form) Search::Sub txtSearch_Change");
    rewritePreview(on);
}

void Search::txtSearch_KeyPress(int& KeyAscii) {
    Trap on = reportTo("(Form) Search::Sub txtSearch_KeyPress");
    if (when(on, [&] { return KeyAscii == vbKeyReturn; })) on([&] { cmdSrch_Click(); });
}

void Search::cmdSrch_Click() {
    Trap on = reportTo("(Form) Search::Sub cmdSrch_Click");
    Module& m = Mod();
    Control& Text1 = (*this)("Text1");
    // What stands before " Sorted by" counts, hand edits included. Without it the cut
    // fails and SearchCriteria stays as it was.
    on([&] {
        m.SearchCriteria = Variant(Left(Text1.Text(), InStr(Text1.Text(), " Sorted by") - 1));
    });
    if (when(on, [&] { return m.ReverseOrder; }))
        on([&] { m.SearchOrder = Variant(textOf(m.SearchOrder) + " Desc"); });
    on([&] { m.SearchFormOpen = Variant(false); });
    on([&] { Runtime::Current().Unload(*this); });
}

void Search::cmdCancel_Click() {
    Trap on = reportTo("(Form) Search::Sub cmdCancel_Click");
    Module& m = Mod();
    on([&] { m.SearchFormOpen = Variant(false); });
    on([&] { m.SearchCriteria = Variant(""); });
    on([&] { Runtime::Current().Unload(*this); });
}

void Search::cmdStartOver_Click() {
    Trap on = reportTo("(Form) Search::Sub cmdStartOver_Click");
    Module& m = Mod();
    on([&] { (*this)("Text1").SetText(textOf(m.SearchCriteria)); });
    clearPieces(on);
    on([&] { optsrch_Click(SelectedField); });
    on([&] { (*this)("optOperator", 0).SetValue(Variant(true)); });
    on([&] { optOperator_Click(0); });
    on([&] { (*this)("optSort", 2).SetValue(Variant(true)); });
    on([&] { optSort_Click(2); });
    on([&] { m.SearchAccum = Variant(""); });
    on([&] { (*this)("txtSearch").SetText(""); });
    rewritePreview(on);
}
