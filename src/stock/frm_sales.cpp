#include "stock/frm_sales.h"

#include "base/clock.h"
#include "base/convert.h"
#include "base/format.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/when.h"
#include "stock/money.h"

namespace {

enum Box {
    StockNo = 0,
    Cost = 1,
    DateSold = 2,
    Expenses = 3,
    NumberSold = 4,
    PriceSold = 5,
    NetProfit = 7
};

}  // namespace

frmSales::frmSales()
    : RecordForm("frmSales", "Sales",
                 "select [Sales Product ID],Cost,[Date Sold],Expenses,[Number Sold],[Price "
                 "Sold],[Where Sold] from Sales Order by [Sales Product ID]",
                 {{0, "Sales Product ID", "Stock No.:"},
                  {1, "Cost", "Cost:"},
                  {2, "Date Sold", "Date Sold:"},
                  {3, "Expenses", "Expenses:"},
                  {4, "Number Sold", "Number Sold:"},
                  {5, "Price Sold", "Total Price Sold For:"},
                  {6, "Where Sold", "Where Sold:"},
                  {7, nullptr, "Net Profit:"}}) {
    On("txtFields", "Change", [this](EventArgs& e) { txtFields_Change(e.Index); });
}

void frmSales::Form_Activate() {
    Trap on = reportTo(tag("Form_Activate"));
    Module& m = Mod();
    auto box = [&](int index) -> Control& { return (*this)("txtFields", index); };
    on([&] { Runtime::Current().SetMousePointer(vb::vbNormal); });
    // Free-standing, every visit starts at the first row.
    if (when(on, [&] { return !m.SaleMode; })) {
        on([&] { adoPrimaryRS->MoveFirst(); });
        return;
    }
    // In sale mode every activation starts the row again, until Update ends the mode.
    on([&] { cmdAdd_Click(); });
    on([&] { box(StockNo).SetText(textOf(m.PassedKey)); });
    on([&] { box(NumberSold).SetText(CStr(Variant::Integer(m.SaleQty))); });
    on([&] { box(DateSold).SetText(Format(Variant::Date(theClock().Date()), "MM/DD/YYYY")); });
    // The cost of all the goods sold, not of each.
    on([&] { box(Cost).SetText(CStr(moneyTimes(m.SalePrice, m.SaleQty))); });
    on([&] { m.SoldQty = m.SaleQty; });
}

void frmSales::showNetProfit(Trap& on) {
    auto text = [&](int index) { return (*this)("txtFields", index).Text(); };
    on([&] {
        (*this)("txtFields", NetProfit)
            .SetText(Format(moneyLess(moneyLess(money(text(PriceSold)), money(text(Cost))),
                                      money(text(Expenses))),
                            "$#,###.##"));
    });
}

void frmSales::txtFields_Change(int /*Index*/) {
    if (refilling()) return;
    // A blank term keeps the last figure shown.
    Trap ignore = Trap::Ignoring();
    showNetProfit(ignore);
}

void frmSales::SetButtons(bool bVal) {
    RecordForm::SetButtons(bVal);
    Trap on = reportTo(tag("SetButtons"));
    if (when(on, [&] { return Mod().SaleMode; })) showNetProfit(on);
}

void frmSales::afterUpdate(Trap& on) {
    Module& m = Mod();
    // The sale is over; SoldQty stays for Products to take off.
    on([&] { m.SaleQty = 0; });
    on([&] { m.SalePrice = Variant::Integer(0); });
    on([&] { m.SaleMode = false; });
}

void frmSales::cmdDelete_Click() {
    RecordForm::cmdDelete_Click();
    Trap on = reportTo(tag("cmdDelete_Click"));
    // Nothing is given back to the stock in hand or to the product.
    on([&] { (*this)("txtFields", NetProfit).SetText(""); });
}
