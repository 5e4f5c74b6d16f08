// Ordering from the main form. The order in hand lives in the shared variables: its number
// in `PassedKey`, its running totals in `OrderTotals`, and the stage of the hand-over between
// the forms in `OrderOpen`.
#include "stock/ordering.h"

#include <cstdint>
#include <string>

#include "base/clock.h"
#include "base/convert.h"
#include "base/format.h"
#include "base/strings.h"
#include "forms/runtime.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"
#include "stock/money.h"

namespace {

constexpr const char* Mask = "$#,###.##";
// Where the web page button goes for a supplier that has none of its own: the program's own
// pages, its help set, which are there without a network.
constexpr const char* OwnWebSite = "Help/index.htm";
// The boxes of a line on frmOrders and of the supplier on frmSupplier.
enum OrderBox {
    OrderId = 0,
    Cost = 2,
    DateOrdered = 3,
    Description = 5,
    NumberOrdered = 6,
    Packing = 7,
    ProductOrderId = 8,
    TotalItems = 9,
    WtPrice = 11,
    Discount = 12,
    Fees = 14,
    Shipping = 15
};
enum SupplierField {
    Discounts = 5,
    OtherChgs = 10,
    URL = 18,
    UserName = 20,
    PassWord = 21,
    TaxRate = 22
};
// Products' boxes.
constexpr int NotesBox = 12, OnOrderBox = 13, StockNoBox = 27, SupplierNameBox = 28;

const std::string ShippingQuestion =
    std::string("What Shipping Method For This Order?") + vb::vbCrLf + vb::vbCrLf +
    "1 = Regular Mail" + vb::vbCrLf + "2 = UPS" + vb::vbCrLf + "3 = Other Method 1" + vb::vbCrLf +
    "4 = Other Method 2" + vb::vbCrLf + vb::vbCrLf + "Other = Enter Your Own Number:" + vb::vbCrLf +
    "For Set Amounts Use The Dollar ($) Sign" + vb::vbCrLf +
    "For Percentages (%) Use Whole Numebrs Like 5 For 5%";

// The prefix reading of a value as it reads as text.
Variant prefix(const Variant& v) {
    return Variant::Double(Val(CStr(v)));
}

// The buttons that change records hide while an order is open.
void showRecordButtons(Products& P, Trap& on, bool visible) {
    for (const char* name : {"cmdEditRec", "cmdDAll", "cmdAdd", "cmdEdit", "cmdDelete"})
        on([&] { P(name).SetVisible(visible); });
}

}  // namespace

Ordering::Ordering(Products& form) : ProductsPart(form) {
    OnClick("Command1", &Ordering::Command1_Click);
    OnClick("Command2", &Ordering::Command2_Click);
    P.On("cmdSup", "Click", [this](EventArgs& e) { cmdSup_Click(e.Index); });
}

void Ordering::Command1_Click() {
    Trap on = reportTo("(Form) Products::Sub Command1_Click");
    Module& m = Mod();
    Runtime& rt = Runtime::Current();
    std::int16_t HowMany = 0;
    Variant ShipChoice;
    int DollarAt = 0;
    std::string answer;
    on([&] { m.ViewOrderKey = Variant(""); });
    Form* orders = nullptr;
    Form* supplier = nullptr;
    // A refused order number sends the user back to the question of the number.
    do {
        if (when(on, [&] { return textOf(m.PassedKey) == ""; })) {
            on([&] {
                answer = rt.ui().InputBox("Enter The Order Number/ID Below", "Order Number/ID", "");
            });
            if (when(on, [&] { return answer.empty(); })) return;
            on([&] { m.PassedKey = Variant(answer); });
            on([&] { m.NewOrder = Variant::Integer(-1); });
        } else {
            on([&] { m.NewOrder = Variant::Integer(0); });
        }
        on([&] { answer = rt.ui().InputBox("Order How Many?", "How Many?", ""); });
        // The number typed above stays in PassedKey: the next click does not ask for it.
        if (when(on, [&] { return answer.empty(); })) return;
        on([&] { HowMany = CInt(Variant(answer)); });
        on([&] { ShipChoice = Variant(rt.ui().InputBox(ShippingQuestion, "How Many?", "")); });
        // Empty is no number here; "$5" is one.
        if (when(on, [&] { return textOf(ShipChoice).empty() || !IsNumeric(ShipChoice); })) return;
        on([&] { DollarAt = InStr(textOf(ShipChoice), "$"); });
        // 1 to 4 pick the supplier's Ship1 to Ship4, the boxes 13 to 16.
        if (when(on, [&] { return DollarAt < 1 && CDbl(ShipChoice) > 0 && CDbl(ShipChoice) < 5; }))
            on([&] { ShipChoice = Variant::Double(CDbl(ShipChoice) + 12); });
        on([&] { P("Command2").SetVisible(true); });
        showRecordButtons(P, on, false);
        on([&] { m.OrderOpen = Variant::Integer(1); });
        on([&] {
            supplier = &rt.Get("frmSupplier");
            rt.Load(*supplier);
        });
        on([&] {
            orders = &rt.Get("frmOrders");
            rt.Load(*orders);
        });
        on([&] { rt.SetMousePointer(vb::vbNormal); });
        if (!when(on, [&] { return stageIs(m.OrderOpen, 2); })) break;
        on([&] { m.PassedKey = Variant(""); });
        on([&] { HowMany = 0; });
        on([&] { DollarAt = 0; });
        on([&] { P("Command2").SetVisible(false); });
    } while (true);
    if (!orders || !supplier) return;
    auto line = [&](int box) -> Control& { return (*orders)("txtFields", box); };
    auto sup = [&](int box) { return (*supplier)("txtFields", box).Text(); };
    auto product = [&](const char* column) { return P.adoPrimaryRS->Fields(column).Value(); };
    on([&] { (*orders)("cmdAdd").Raise("Click"); });
    on([&] { line(NumberOrdered).SetText(CStr(Variant::Integer(HowMany))); });
    on([&] { line(OrderId).SetText(textOf(m.PassedKey)); });
    on([&] { line(ProductOrderId).SetText(P("txtFields", StockNoBox).Text()); });
    on([&] { line(Description).SetText(CStr(product("ProdName"))); });
    on([&] { line(Packing).SetText(CStr(product("Packaging"))); });
    on([&] { line(DateOrdered).SetText(Format(Variant::Date(theClock().Date()), "Short Date")); });
    on([&] {
        line(Cost).SetText(
            CStr(moneyTimes(product("Cost1"), CDbl(Variant(line(NumberOrdered).Text())))));
    });
    on([&] { line(TotalItems).SetText(line(NumberOrdered).Text()); });
    on([&] { line(WtPrice).SetText(CStr(product("Cost1"))); });
    // The supplier's discount is a whole percentage of the line's cost.
    on([&] {
        line(Discount).SetText(
            CStr(moneyTimes(money(line(Cost).Text()), CDbl(Variant(sup(Discounts))) * 0.01)));
    });
    // The supplier's fee goes in full on every line.
    on([&] { line(Fees).SetText(sup(OtherChgs)); });
    on([&] { m.OrderTaxRate = Variant::Single(static_cast<float>(CDbl(Variant(sup(TaxRate))))); });
    if (when(on, [&] { return DollarAt >= 1; })) {
        on([&] { line(Shipping).SetText(textOf(ShipChoice)); });
    } else if (when(on, [&] { return CDbl(ShipChoice) > 12 && CDbl(ShipChoice) < 17; })) {
        on([&] {
            const double rate = CDbl(Variant(sup(CInt(ShipChoice))));
            line(Shipping).SetText(CStr(moneyTimes(money(line(Cost).Text()), rate * 0.01)));
        });
    } else {
        on([&] {
            line(Shipping).SetText(
                CStr(moneyTimes(money(line(Cost).Text()), CDbl(ShipChoice) * 0.01)));
        });
    }
    addToTotals(on, *orders);
    on([&] { m.OrderOpen = Variant::Integer(2); });
    on([&] { rt.Show(*orders); });
    // Only Update (3) and Cancel (0) on frmOrders end the wait.
    while (when(on, [&] { return stageIs(m.OrderOpen, 2); }))
        on([&] { rt.WaitForUser(); });
    if (when(on, [&] { return stageIs(m.OrderOpen, 3); })) {
        Control& onOrder = P("txtFields", OnOrderBox);
        Control& notes = P("txtFields", NotesBox);
        // Receiving may have lowered the count since the form read it.
        P.showStoredRow(on);
        on([&] {
            onOrder.SetText(CStr(::Add(Variant::Double(Val(onOrder.Text())), m.SalePrice)));
        });
        // The step away and back stores the new count; from the last product the step
        // away is backwards, so that the note below goes to the product ordered.
        if (when(on, [&] {
                return !P.adoPrimaryRS->Eof() &&
                       P.adoPrimaryRS->AbsolutePosition() < P.adoPrimaryRS->RecordCount();
            })) {
            on([&] { P.cmdNext_Click(); });
            on([&] { P.cmdPrevious_Click(); });
        } else {
            on([&] { P.cmdPrevious_Click(); });
            on([&] { P.cmdNext_Click(); });
        }
        // The note reaches the row at the next move of the products.
        on([&] {
            notes.SetText(notes.Text() + Format(Variant::Date(theClock().Date()), "MM/DD/YY") +
                          " - Ordered " + CStr(Variant::Integer(HowMany)) +
                          " Items. Order Number: " + textOf(m.PassedKey) + vb::vbCrLf);
        });
    }
    on([&] { m.OrderOpen = Variant::Integer(0); });
}

void Ordering::addToTotals(Trap& on, Form& orders) {
    Module& m = Mod();
    auto& t = m.OrderTotals;
    auto line = [&](int box) { return Variant(orders("txtFields", box).Text()); };
    if (when(on, [&] { return textOf(t[0]) == ""; })) on([&] { t[0] = m.PassedKey; });
    if (!when(on, [&] { return textOf(m.PassedKey) == textOf(t[0]); })) return;
    // Text added to an empty entry is joined, not summed: the first "$5" reads as 0.
    on([&] { t[1] = prefix(::Add(line(Discount), t[1])); });
    on([&] { t[7] = prefix(::Add(line(Cost), t[7])); });
    on([&] { t[3] = prefix(::Add(line(Shipping), t[3])); });
    on([&] { t[4] = prefix(Variant::Double(CDbl(t[7]) - CDbl(t[1]))); });
    on([&] { t[5] = prefix(::Add(line(Fees), t[5])); });
    if (when(on, [&] { return CDbl(m.OrderTaxRate) > 0; }))
        on([&] {
            t[6] = Variant(Format(Variant::Double(CDbl(m.OrderTaxRate) * CDbl(t[4])), Mask));
        });
    else
        on([&] { t[6] = Variant::Integer(0); });
    on([&] { t[2] = prefix(::Add(::Add(::Add(t[4], t[5]), t[6]), t[3])); });
}

void Ordering::Command2_Click() {
    Trap ignore = Trap::Ignoring();
    Module& m = Mod();
    Runtime& rt = Runtime::Current();
    ignore([&] { P("Command2").SetVisible(false); });
    ignore([&] { m.PassedKey = Variant(""); });
    ignore([&] { m.OrderOpen = Variant::Integer(7); });
    ignore([&] { m.NewOrder = Variant::Integer(0); });
    ignore([&] { rt.Show(rt.Get("frmInvoice")); });
    showRecordButtons(P, ignore, true);
}

void Ordering::cmdSup_Click(int Index) {
    Trap on = reportTo("(Form) Products::Sub cmdSup_Click");
    Module& m = Mod();
    Runtime& rt = Runtime::Current();
    on([&] {
        m.SearchCriteria = Variant("name = '" + P("txtFields", SupplierNameBox).Text() + "'");
    });
    if (Index == 0) {
        on([&] { rt.Show(rt.Get("frmSupplier")); });
        return;
    }
    Form* supplier = nullptr;
    on([&] {
        supplier = &rt.Get("frmSupplier");
        rt.Load(*supplier);
    });
    if (!supplier) return;
    auto sup = [&](int box) { return (*supplier)("txtFields", box).Text(); };
    if (when(on, [&] { return sup(URL) != ""; }))
        on([&] { m.LastUrl = sup(URL); });
    else
        on([&] { m.LastUrl = textOf(m.AppDir) + OwnWebSite; });
    on([&] { m.SupplierUser = sup(UserName); });
    on([&] { m.SupplierPassword = sup(PassWord); });
    on([&] { rt.Unload(*supplier); });
    // The item view's own navigation comes first and rewrites LastUrl once it completes,
    // so the supplier's address is kept aside for the pane.
    std::string address;
    on([&] { address = m.LastUrl; });
    on([&] { P("cmdShowPic").Raise("Click"); });
    on([&] { P.Wb1().Navigate2(address); });
}
