#include "stock/frm_invoice.h"

#include "base/convert.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/when.h"
#include "stock/money.h"

frmInvoice::frmInvoice()
    : OrderRecordForm("frmInvoice", "Invoices",
                      "select [Order ID],Discount,[Grand Total],Shipping,[Sub Total],[Sub "
                      "Total2],Tax,[Total Order] from Invoice Order by [Order ID]",
                      {{0, "Order ID", "Invoice #:"},
                       {1, "Discount", "Discount:"},
                       {2, "Grand Total", "Grand Total:"},
                       {3, "Shipping", "Shipping:"},
                       {4, "Sub Total", "Sub Total:"},
                       {5, "Sub Total2", "Other Fee's:"},
                       {6, "Tax", "Tax:"},
                       {7, "Total Order", "Total Order:"}},
                      "View Items", "frmOrders") {}

std::string frmInvoice::tag(std::string_view procedure) const {
    if (procedure == "cmdSearch_Click") return "(Form) frmInvoice::Sub cmdsrch_click";
    if (procedure == "Command1_Click") return "(Form) frmInvoice::Sub command1_click";
    return OrderRecordForm::tag(procedure);
}

void frmInvoice::Form_Activate() {
    Trap on = reportTo(tag("Form_Activate"));
    Module& m = Mod();
    // A viewed order is found from the current row on, so an earlier row is not.
    if (when(on, [&] { return textOf(m.ViewOrderKey) != ""; })) {
        on([&] { adoPrimaryRS->Find(textOf(m.ViewOrderKey), 0, ado::adSearchForward); });
        on([&] { m.ViewOrderKey = Variant(""); });
        return;
    }
    // An ended order: its totals start a new row, which reaches the table at Update.
    if (when(on, [&] { return stageIs(m.OrderOpen, 7); })) {
        on([&] { cmdAdd_Click(); });
        for (int i = 0; i <= 7; ++i) {
            on([&] { (*this)("txtFields", i).SetText(textOf(m.OrderTotals.at(i))); });
            on([&] { m.OrderTotals.at(i) = Variant(""); });
        }
    }
    on([&] { m.OrderOpen = Variant(""); });
    on([&] { Runtime::Current().SetMousePointer(vb::vbNormal); });
}
