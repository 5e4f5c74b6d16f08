#include "stock/frm_inventory.h"

#include <cstdint>

#include "base/convert.h"
#include "forms/runtime.h"
#include "shell/module.h"
#include "shell/when.h"

namespace {

enum Box { ProductId = 0, Cost = 1, OnHand = 5 };

}  // namespace

frmInventory::frmInventory()
    : RecordForm("frmInventory", "Inventory",
                 "select [Product Id],Cost,[Date In],[Date Sold],Description,Number,Retail,"
                 "Wholesale from Inventory Order by [Product Id]",
                 {{0, "Product Id", "Stock No.:"},
                  {1, "Cost", "Actual Cost Each:"},
                  {2, "Date In", "Date In:"},
                  {3, "Date Sold", "Date Sold:"},
                  {4, "Description", "Description:"},
                  {5, "Number", "On Hand:"},
                  {6, "Retail", "Retail:"},
                  {7, "Wholesale", "Wholesale:"}}) {
    addExtra("cmdSales", ControlKind::CommandButton, 0, "Sold Item");
    OnClick("cmdSales", &frmInventory::cmdSales_Click);
}

void frmInventory::cmdSales_Click() {
    Trap ignore = Trap::Ignoring();
    Module& m = Mod();
    Runtime& rt = Runtime::Current();
    auto box = [&](int index) -> Control& { return (*this)("txtFields", index); };
    std::int16_t Qty = 0;
    bool isNumber = true;
    do {
        ignore([&] { m.SaleMode = false; });
        // A cancelled box or a text that is no number keeps the quantity it had.
        ignore([&] {
            Qty = CInt(Variant(rt.ui().InputBox("Enter How Many You Sold Below", "Sold Item", "")));
        });
        // The test is made on the number itself, so it always passes.
        ignore([&] { isNumber = IsNumeric(Variant::Integer(Qty)); });
        if (!isNumber) ignore([&] { MsgBox("You Must Enter A Number!"); });
    } while (!isNumber);
    // A box that holds no number lets the sale go on.
    bool refused = false;
    ignore([&] { refused = CDbl(Variant(box(OnHand).Text())) < Qty || Qty < 0; });
    if (refused) {
        ignore([&] {
            MsgBox(CStr(Variant::Integer(Qty)) + " - Is Not A valid Number... You Only Show " +
                       box(OnHand).Text() + " Items In Your Inventory",
                   vb::vbCritical);
        });
        return;
    }
    ignore([&] {
        box(OnHand).SetText(CStr(Variant::Double(CDbl(Variant(box(OnHand).Text())) - Qty)));
    });
    // The step away and back stores the new number.
    ignore([&] { adoPrimaryRS->MoveNext(); });
    ignore([&] { adoPrimaryRS->MovePrevious(); });
    ignore([&] { m.SaleMode = true; });
    ignore([&] { m.SaleQty = Qty; });
    ignore([&] { m.PassedKey = Variant(box(ProductId).Text()); });
    ignore([&] { m.SalePrice = Variant(box(Cost).Text()); });
    ignore([&] { rt.Show(rt.Get("frmSales")); });
}
