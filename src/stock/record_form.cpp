// The record form: one table shown a row at a time through bound boxes, with the buttons
// that add, edit, store, cancel, delete, requery and move.
#include "stock/record_form.h"

#include <algorithm>

#include "base/convert.h"
#include "forms/placement.h"
#include "forms/runtime.h"
#include "records/store.h"
#include "shell/browse_keys.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/record_buttons.h"
#include "shell/when.h"

namespace {

constexpr std::int16_t vbTrue = -1;

// The buttons that need a current record.
const char* const RecordButtons[] = {"cmdEdit", "cmdDelete",   "cmdFirst",
                                     "cmdLast", "cmdPrevious", "cmdNext"};

// The boxes stand in two columns of this many rows at most.
constexpr int RowsPerColumn = 12;
constexpr double RowStep = 340, LabelWidth = 1800, BoxWidth = 3000, ColumnWidth = 4980,
                 ButtonWidth = 1095, ButtonHeight = 300;

std::string position(long n) {
    return CStr(Variant(static_cast<int>(n)));
}

}  // namespace

RecordForm::RecordForm(std::string name, std::string caption, std::string selectText,
                       std::vector<RecordBox> boxes)
    : Form(std::move(name)), selectText_(std::move(selectText)), boxes_(std::move(boxes)) {
    SetCaption(caption);
    SetProperty("KeyPreview", Variant(true));
    createControls();
    wireEvents();
    // A change typed into a bound box goes into the row's pending edit.
    Observe([this](Form&, Control* c, std::string_view property) {
        if (c) binding_.Changed(*c, property);
    });
}

// The record set goes before the connection it was opened on.
RecordForm::~RecordForm() {
    adoPrimaryRS.reset();
}

void RecordForm::createControls() {
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        const double left = 120 + static_cast<double>(i / RowsPerColumn) * ColumnWidth;
        const double top = 120 + static_cast<double>(i % RowsPerColumn) * RowStep;
        const RecordBox& b = boxes_[i];
        addControl(*this, "lblLabels", ControlKind::Label, b.index, {left, top, LabelWidth, 255},
                   b.label);
        addControl(*this, "txtFields", ControlKind::TextBox, b.index,
                   {left + LabelWidth + 60, top, BoxWidth, 285});
    }
    const double buttonsTop = extraTop() + RowStep + 60;
    const char* const commands[][2] = {{"cmdAdd", "&Add"},
                                       {"cmdEdit", "&Edit"},
                                       {"cmdDelete", "&Delete"},
                                       {"cmdRefresh", "&Refresh"},
                                       {"cmdClose", "&Close"}};
    for (int i = 0; i < 5; ++i)
        addControl(*this, commands[i][0], ControlKind::CommandButton, -1,
                   {120 + i * (ButtonWidth + 60), buttonsTop, ButtonWidth, ButtonHeight},
                   commands[i][1]);
    // Update and Cancel take the places of Add and Edit while a row is pending.
    addControl(*this, "cmdUpdate", ControlKind::CommandButton, -1,
               {120, buttonsTop, ButtonWidth, ButtonHeight}, "&Update")
        .SetVisible(false);
    addControl(*this, "cmdCancel", ControlKind::CommandButton, -1,
               {120 + ButtonWidth + 60, buttonsTop, ButtonWidth, ButtonHeight}, "&Cancel")
        .SetVisible(false);
    const double moveTop = buttonsTop + ButtonHeight + 60;
    addControl(*this, "cmdFirst", ControlKind::CommandButton, -1, {120, moveTop, 345, ButtonHeight},
               "|<");
    addControl(*this, "cmdPrevious", ControlKind::CommandButton, -1,
               {465, moveTop, 345, ButtonHeight}, "<");
    addControl(*this, "lblStatus", ControlKind::Label, -1, {870, moveTop, 3600, ButtonHeight});
    addControl(*this, "cmdNext", ControlKind::CommandButton, -1, {4530, moveTop, 345, ButtonHeight},
               ">");
    addControl(*this, "cmdLast", ControlKind::CommandButton, -1, {4875, moveTop, 345, ButtonHeight},
               ">|");
    // Wide enough for the row of five buttons, and for the columns of boxes.
    const double buttonsWidth = 240 + 5 * ButtonWidth + 4 * 60;
    const double columns = static_cast<double>((boxes_.size() + RowsPerColumn - 1) / RowsPerColumn);
    SetNum("Width", std::max(buttonsWidth, 240 + ColumnWidth * columns));
    SetNum("Height", moveTop + ButtonHeight + 600);
}

double RecordForm::extraTop() const {
    const int rows = std::min(static_cast<int>(boxes_.size()), RowsPerColumn);
    return 120 + rows * RowStep + 60;
}

Control& RecordForm::addExtra(const std::string& name, ControlKind kind, int slot,
                              const std::string& caption) {
    return addControl(*this, name, kind, -1,
                      {120 + slot * (ButtonWidth + 60), extraTop(), ButtonWidth, ButtonHeight},
                      caption);
}

void RecordForm::wireEvents() {
    OnClick("cmdAdd", &RecordForm::cmdAdd_Click);
    OnClick("cmdEdit", &RecordForm::cmdEdit_Click);
    OnClick("cmdUpdate", &RecordForm::cmdUpdate_Click);
    OnClick("cmdCancel", &RecordForm::cmdCancel_Click);
    OnClick("cmdDelete", &RecordForm::cmdDelete_Click);
    OnClick("cmdRefresh", &RecordForm::cmdRefresh_Click);
    OnClick("cmdClose", &RecordForm::cmdClose_Click);
    OnClick("cmdFirst", &RecordForm::cmdFirst_Click);
    OnClick("cmdLast", &RecordForm::cmdLast_Click);
    OnClick("cmdNext", &RecordForm::cmdNext_Click);
    OnClick("cmdPrevious", &RecordForm::cmdPrevious_Click);
}

std::string RecordForm::tag(std::string_view procedure) const {
    return "(Form) " + Name() + "::Sub " + std::string(procedure);
}

void RecordForm::bindBoxes() {
    binding_.Clear();
    for (const RecordBox& b : boxes_)
        if (b.column)
            binding_.Bind((*this)("txtFields", b.index), *adoPrimaryRS,
                          adoPrimaryRS->FieldIndex(b.column));
    // A box shows its column as soon as it is bound.
    showRow();
}

void RecordForm::showRow() {
    refilling_ = true;
    binding_.Refresh();
    refilling_ = false;
    rowShown();
}

void RecordForm::Form_Load() {
    Trap on = reportTo(tag("Form_Load"));
    Runtime& rt = Runtime::Current();
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    on([&] { SetNum("Left", 0); });
    on([&] { SetNum("Top", 0); });
    on([&] { conn_ = CreateConnection(); });
    on([&] { conn_->SetCursorLocation(ado::adUseClient); });
    on([&] { conn_->Open(connectionText(Mod().DBName), "", ""); });
    on([&] {
        adoPrimaryRS = CreateRecordset();
        // The bound boxes follow the row first, then the form's handler runs.
        adoPrimaryRS->MoveComplete = [this] {
            showRow();
            adoPrimaryRS_MoveComplete();
        };
        adoPrimaryRS->WillChangeRecord = [this] {
            int adStatus = 1;
            adoPrimaryRS_WillChangeRecord(adStatus);
        };
    });
    on([&] { adoPrimaryRS->Open(selectText_, *conn_, ado::adOpenStatic, ado::adLockOptimistic); });
    on([&] { bindBoxes(); });
    on([&] { ChangedFlag = 0; });
    afterLoad(on);
}

void RecordForm::Form_Activate() {
    Trap on = reportTo(tag("Form_Activate"));
    on([&] { Runtime::Current().SetMousePointer(vb::vbNormal); });
}

void RecordForm::Form_Unload(int& /*Cancel*/) {
    Trap on = reportTo(tag("Form_Unload"));
    on([&] { Runtime::Current().SetMousePointer(vb::vbNormal); });
}

void RecordForm::Form_KeyDown(int& KeyCode, int Shift) {
    Trap on = reportTo(tag("Form_KeyDown"));
    if (EditFlag || AddFlag) return;
    browseKey(KeyCode, Shift, on,
              {[&] { cmdClose_Click(); }, [&] { cmdFirst_Click(); }, [&] { cmdLast_Click(); },
               [&] { cmdPrevious_Click(); }, [&] { cmdNext_Click(); }});
}

void RecordForm::adoPrimaryRS_MoveComplete() {
    Trap on = reportTo(tag("adoPrimaryRS_MoveComplete"));
    Control& lblStatus = (*this)("lblStatus");
    if (when(on, [&] { return adoPrimaryRS->RecordCount() == 0; })) {
        on([&] { lblStatus.SetCaption("NO CURRENT RECORDS"); });
        for (const char* button : RecordButtons)
            on([&] { (*this)(button).SetEnabled(false); });
    } else {
        on([&] {
            lblStatus.SetCaption("Record: " + position(adoPrimaryRS->AbsolutePosition()) +
                                 "  of  " + position(adoPrimaryRS->RecordCount()));
        });
        for (const char* button : RecordButtons)
            on([&] { (*this)(button).SetEnabled(true); });
    }
}

void RecordForm::adoPrimaryRS_WillChangeRecord(int& /*adStatus*/) {
    // Nothing is ever vetoed.
}

void RecordForm::SetButtons(bool bVal) {
    Trap on = reportTo(tag("SetButtons"));
    setRecordButtons(*this, on, bVal, {"cmdAdd", "cmdEdit", "cmdDelete", "cmdClose", "cmdRefresh"});
}

void RecordForm::cmdAdd_Click() {
    Trap on = reportTo(tag("cmdAdd_Click"));
    if (when(on, [&] { return !(adoPrimaryRS->Bof() && adoPrimaryRS->Eof()); }))
        on([&] { SavedBookmark = adoPrimaryRS->Bookmark(); });
    on([&] { adoPrimaryRS->AddNew(); });
    on([&] { (*this)("lblStatus").SetCaption("Add record"); });
    on([&] { AddFlag = vbTrue; });
    on([&] { SetButtons(false); });
}

void RecordForm::cmdEdit_Click() {
    Trap on = reportTo(tag("cmdEdit_Click"));
    on([&] { (*this)("lblStatus").SetCaption("Edit record"); });
    on([&] { EditFlag = vbTrue; });
    on([&] { SetButtons(false); });
}

void RecordForm::cmdUpdate_Click() {
    Trap on = reportTo(tag("cmdUpdate_Click"));
    // A row the store refuses stays pending, the form in its state, for the user to
    // correct or cancel.
    if (!on([&] { adoPrimaryRS->UpdateBatch(ado::adAffectAll); })) return;
    if (when(on, [&] { return AddFlag != 0; })) on([&] { adoPrimaryRS->MoveLast(); });
    on([&] { EditFlag = 0; });
    on([&] { AddFlag = 0; });
    on([&] { SetButtons(true); });
    on([&] { ChangedFlag = 0; });
    afterUpdate(on);
}

void RecordForm::cmdCancel_Click() {
    Trap on = reportTo(tag("cmdCancel_Click"));
    on([&] { SetButtons(true); });
    on([&] { EditFlag = 0; });
    on([&] { AddFlag = 0; });
    on([&] { adoPrimaryRS->CancelUpdate(); });
    if (when(on, [&] { return CDbl(SavedBookmark) > 0; }))
        on([&] { adoPrimaryRS->SetBookmark(SavedBookmark); });
    else
        on([&] { adoPrimaryRS->MoveFirst(); });
    on([&] { ChangedFlag = 0; });
}

void RecordForm::cmdDelete_Click() {
    Trap on = reportTo(tag("cmdDelete_Click"));
    on([&] { adoPrimaryRS->Delete(ado::adAffectCurrent); });
    on([&] { adoPrimaryRS->MoveNext(); });
    if (when(on, [&] { return adoPrimaryRS->Eof(); })) on([&] { adoPrimaryRS->MoveLast(); });
}

void RecordForm::cmdRefresh_Click() {
    Trap on = reportTo(tag("cmdRefresh_Click"));
    on([&] { adoPrimaryRS->Requery(ado::adCmdUnknown); });
}

void RecordForm::cmdClose_Click() {
    Trap on = reportTo(tag("cmdClose_Click"));
    on([&] { Runtime::Current().Unload(*this); });
}

void RecordForm::cmdFirst_Click() {
    Trap on = reportTo(tag("cmdFirst_Click"));
    on([&] { adoPrimaryRS->MoveFirst(); });
    on([&] { ChangedFlag = 0; });
}

void RecordForm::cmdLast_Click() {
    Trap on = reportTo(tag("cmdLast_Click"));
    on([&] { adoPrimaryRS->MoveLast(); });
    on([&] { ChangedFlag = 0; });
}

void RecordForm::cmdNext_Click() {
    Trap on = reportTo(tag("cmdNext_Click"));
    if (when(on, [&] { return !adoPrimaryRS->Eof(); })) on([&] { adoPrimaryRS->MoveNext(); });
    if (when(on, [&] { return adoPrimaryRS->Eof() && adoPrimaryRS->RecordCount() > 0; }))
        on([&] { adoPrimaryRS->MoveLast(); });
    on([&] { ChangedFlag = 0; });
}

void RecordForm::cmdPrevious_Click() {
    Trap on = reportTo(tag("cmdPrevious_Click"));
    if (when(on, [&] { return !adoPrimaryRS->Bof(); })) on([&] { adoPrimaryRS->MovePrevious(); });
    if (when(on, [&] { return adoPrimaryRS->Bof() && adoPrimaryRS->RecordCount() > 0; }))
        on([&] { adoPrimaryRS->MoveFirst(); });
    on([&] { ChangedFlag = 0; });
}
