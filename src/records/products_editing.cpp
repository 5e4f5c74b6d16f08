// Adding, changing, saving, cancelling and deleting the current product. The fields are
// bound to adoPrimaryRS: typing into a box changes the row's pending edit and moving off the
// row saves it; the buttons here only frame that.
#include "base/convert.h"
#include "base/strings.h"
#include "build/bulk.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/record_buttons.h"
#include "shell/when.h"

namespace {

constexpr int adStatusCancel = 4;

}  // namespace

void Products::SetButtons(bool bVal) {
    Trap on = reportTo("(Form) Products::Sub SetButtons");
    setRecordButtons(*this, on, bVal,
                     {"cmdAdd", "cmdEdit", "cmdDelete", "cmdClose", "cmdRefresh", "Command16"});
}

void Products::cmdAdd_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdAdd_Click");
    if (when(on, [&] { return (*this)("cmdShowPic").Caption() != "View Mode"; }))
        on([&] { cmdShowPic_Click(); });
    if (when(on, [&] { return !(adoPrimaryRS->Bof() && adoPrimaryRS->Eof()); }))
        on([&] { mvBookMark = adoPrimaryRS->Bookmark(); });
    on([&] { mbAddNewFlag = true; });
    on([&] { adoPrimaryRS->AddNew(); });
    on([&] { SetButtons(false); });
}

void Products::cmdEdit_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdEdit_Click");
    if (when(on, [&] { return (*this)("cmdShowPic").Caption() != "View Mode"; }))
        on([&] { cmdShowPic_Click(); });
    on([&] { mbEditFlag = true; });
    on([&] { SetButtons(false); });
}

void Products::cmdUpdate_Click() {
    const std::string tag = "(Form) Products::Sub cmdUpdate_Click";
    Runtime& rt = Runtime::Current();
    Trap on = Trap::Handled([&](int number) {
        Errhandler(tag);
        if (number != vberr::ObjectOpen) return Trap::Resume::Next;
        rt.SetMousePointer(vb::vbNormal);
        cmdCancel_Click();
        return Trap::Resume::Exit;
    });
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    on([&] { rt.LetEventsRun(); });
    on([&] { adoPrimaryRS->UpdateBatch(ado::adAffectAll); });
    // A new row stands at the end until the reopen below puts it in StockNo order.
    if (when(on, [&] { return mbAddNewFlag; })) on([&] { adoPrimaryRS->MoveLast(); });
    on([&] { mbEditFlag = false; });
    on([&] { mbAddNewFlag = false; });
    on([&] { SetButtons(true); });
    on([&] { mbDataChanged = false; });
    on([&] { adoPrimaryRS->Close(); });
    on([&] { adoPrimaryRS->Open(); });
    on([&] { cmdRefresh_Click(); });
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}

void Products::cmdCancel_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdCancel_Click");
    on([&] { SetButtons(true); });
    on([&] { mbEditFlag = false; });
    on([&] { mbAddNewFlag = false; });
    on([&] { adoPrimaryRS->CancelUpdate(); });
    if (when(on, [&] { return CDbl(mvBookMark) > 0; }))
        on([&] { adoPrimaryRS->SetBookmark(mvBookMark); });
    else
        on([&] { adoPrimaryRS->MoveFirst(); });
    on([&] { mbDataChanged = false; });
}

void Products::cmdDelete_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdDelete_Click");
    on([&] { adoPrimaryRS->Delete(ado::adAffectCurrent); });
    on([&] { adoPrimaryRS->MoveNext(); });
    if (when(on, [&] { return adoPrimaryRS->Eof(); })) on([&] { adoPrimaryRS->MoveLast(); });
}

void Products::cmdRefresh_Click() {
    const std::string tag = "(Form) Products::Sub cmdRefresh_Click";
    Runtime& rt = Runtime::Current();
    Trap on = Trap::Handled([&](int number) {
        if (number != vberr::ObjectClosed) {
            Errhandler(tag);
            return Trap::Resume::Next;
        }
        adoPrimaryRS->Open();
        rt.SetMousePointer(vb::vbNormal);
        return Trap::Resume::Again;
    });
    on([&] { rt.SetMousePointer(vb::vbHourglass); });
    on([&] { rt.LetEventsRun(); });
    on([&] { rt.LetEventsRun(); });
    on([&] { adoPrimaryRS->Requery(ado::adCmdUnknown); });
    // A hidden grid's record set stays as it was.
    if (when(on, [&] { return (*this)("grddatagrid").Visible(); }))
        on([&] { adoprimaryrs2->Requery(ado::adCmdUnknown); });
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}

void Products::cmdReset_Click() {
    Trap ignore = Trap::Ignoring();
    ignore([&] { (*this)("txtSrch").SetText(""); });
    // With an empty box the search lifts the filter.
    ignore([&] { cmdSearch_Click(); });
    ignore([&] { Runtime::Current().LetEventsRun(); });
}

void Products::cmdEditRec_Click() {
    Trap on = reportTo("(Form) Products::Sub cmdEditRec_Click");
    Module& m = Mod();
    if (when(on, [&] { return (*this)("cmdShowPic").Caption() != "View Mode"; })) {
        on([&] { m.BulkEditMode = true; });
        on([&] { bulk->GetFiles(); });
        while (when(on, [&] { return m.BulkEditMode; }))
            on([&] { Runtime::Current().WaitForUser(); });
        on([&] { ReBuildDB(); });
    }
}

void Products::Command3_Click() {
    Trap on = reportTo("(Form) Products::Sub Command3_Click");
    on([&] { ExportMode = true; });
    on([&] { (*this)("cmdSelectAll").SetVisible(true); });
    on([&] { (*this)("cmdUnSelect").SetVisible(true); });
    on([&] { bulk->GetFiles(); });
}

void Products::Command16_Click() {
    Trap on = reportTo("(Form) Products::Sub Command16_Click");
    Control& Command16 = (*this)("Command16");
    if (when(on, [&] { return Command16.Caption() == "Show Help"; })) {
        on([&] { Mod().HelpShowing = Variant(true); });
        on([&] { Command16.SetCaption("Hide Help"); });
        on([&] { ShowPicture(); });
    } else {
        on([&] { Mod().HelpShowing = Variant(false); });
        on([&] { Command16.SetCaption("Show Help"); });
        on([&] { ShowPicture(); });
    }
}

void Products::adoPrimaryRS_WillChangeRecord(int& adStatus) {
    Trap on = reportTo("(Form) Products::Sub adoPrimaryRS_WillChangeRecord");
    bool bCancel = false;
    if (when(on, [&] { return bCancel; })) on([&] { adStatus = adStatusCancel; });
}

void Products::txtFields_DblClick(int Index) {
    Trap ignore = Trap::Ignoring();
    Runtime& rt = Runtime::Current();
    if (when(ignore, [&] {
            return MsgBox("Hide This Text Box?", vb::vbYesNo + vb::vbQuestion) == vb::vbYes;
        })) {
        ignore(
            [&] { rt.SaveSetting("Settings", numbered("HideText", Index), CStr(Variant(false))); });
        ignore([&] { (*this)("txtFields", Index).SetVisible(false); });
    } else {
        ignore(
            [&] { rt.SaveSetting("Settings", numbered("HideText", Index), CStr(Variant(true))); });
        ignore([&] { (*this)("txtFields", Index).SetVisible(true); });
    }
}

void Products::wireEditing() {
    OnClick("cmdAdd", &Products::cmdAdd_Click);
    OnClick("cmdEdit", &Products::cmdEdit_Click);
    OnClick("cmdUpdate", &Products::cmdUpdate_Click);
    OnClick("cmdCancel", &Products::cmdCancel_Click);
    OnClick("cmdDelete", &Products::cmdDelete_Click);
    OnClick("cmdRefresh", &Products::cmdRefresh_Click);
    OnClick("cmdReset", &Products::cmdReset_Click);
    OnClick("cmdEditRec", &Products::cmdEditRec_Click);
    OnClick("Command3", &Products::Command3_Click);
    OnClick("Command16", &Products::Command16_Click);
    OnClick("mnuRestore", &Products::mnuRestore_Click);
    OnClick("mnuRestoreLabels", &Products::mnuRestoreLabels_Click);
    On("txtFields", "DblClick", [this](EventArgs& e) { txtFields_DblClick(e.Index); });
    On("Label3", "DblClick", [this](EventArgs& e) { Label3_DblClick(e.Index); });
}
