#include "stock/order_record_form.h"

#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/when.h"

namespace {

constexpr int vbKeyReturn = 13;

}  // namespace

OrderRecordForm::OrderRecordForm(std::string name, std::string caption, std::string selectText,
                                 std::vector<RecordBox> boxes, std::string viewCaption,
                                 std::string companion)
    : RecordForm(std::move(name), std::move(caption), std::move(selectText), std::move(boxes)),
      companion_(std::move(companion)) {
    addExtra("txtSrch", ControlKind::TextBox, 0, "").SetText("Order ID");
    addExtra("cmdSearch", ControlKind::CommandButton, 1, "Search");
    addExtra("Command1", ControlKind::CommandButton, 2, viewCaption);
    OnClick("cmdSearch", &OrderRecordForm::cmdSearch_Click);
    OnClick("Command1", &OrderRecordForm::Command1_Click);
    On("txtSrch", "KeyPress", [this](EventArgs& e) { txtSrch_KeyPress(e.KeyAscii); });
}

void OrderRecordForm::SetButtons(bool bVal) {
    RecordForm::SetButtons(bVal);
    Trap on = reportTo(tag("SetButtons"));
    on([&] { (*this)("Command1").SetVisible(bVal); });
}

void OrderRecordForm::cmdSearch_Click() {
    Trap on = reportTo(tag("cmdSearch_Click"));
    on([&] { adoPrimaryRS->MoveFirst(); });
    // The order number goes into the criteria as typed: a quote mark breaks them.
    on([&] {
        adoPrimaryRS->Find("[order id] like '*" + (*this)("txtSrch").Text() + "*'", 0,
                           ado::adSearchForward);
    });
    if (when(on, [&] { return adoPrimaryRS->AbsolutePosition() == ado::adPosEOF; })) {
        on([&] { adoPrimaryRS->MoveFirst(); });
        on([&] { (*this)("lblStatus").SetCaption("No Matches Found"); });
    }
}

void OrderRecordForm::txtSrch_KeyPress(int& KeyAscii) {
    Trap ignore = Trap::Ignoring();
    if (when(ignore, [&] { return KeyAscii == vbKeyReturn; })) ignore([&] { cmdSearch_Click(); });
}

void OrderRecordForm::Command1_Click() {
    Trap on = reportTo(tag("Command1_Click"));
    Runtime& rt = Runtime::Current();
    on([&] {
        Mod().ViewOrderKey = Variant("[order id] = '" + (*this)("txtFields", 0).Text() + "'");
    });
    on([&] { rt.Show(rt.Get(companion_)); });
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}
