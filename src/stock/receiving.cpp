// Receiving on frmOrders: the lines of an order become stock. The product's Inventory
// rises and its OnOrder falls, the product gets a dated note, and the stock in hand gets a
// row, or more on the row it has.
#include "base/clock.h"
#include "base/convert.h"
#include "base/format.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"
#include "shell/when.h"
#include "stock/frm_orders.h"

namespace {

enum Box { OrderId = 0, DateReceived = 4, Description = 5, NumberOrdered = 6, StockNo = 8 };
enum Computed { NetCostEach = 10, WtPrice = 11 };
constexpr const char* ReceiveAll = "Receive";
constexpr const char* LineByLine = "R-Update";

// A stored count less a quantity typed as text; Null stays Null.
Variant less(const Variant& count, const std::string& quantity) {
    if (count.IsNull()) return Variant::Null();
    return Variant::Double(CDbl(count) - CDbl(Variant(quantity)));
}

}  // namespace

bool frmOrders::bookLine(Trap& on) {
    auto text = [&](int box) { return (*this)("txtFields", box).Text(); };
    std::string Qty, Stock;
    on([&] { Qty = text(NumberOrdered); });
    on([&] { Stock = text(StockNo); });
    Recordset& products = *adoprimaryrs2;
    Recordset& stock = *adoprimaryrs3;
    // Stock numbers go into the criteria as they stand, searched from the current row on.
    // Criteria that the store refuses (an apostrophe in the number) leave the record set
    // where it was: the row there is another product's, so it is left alone.
    if (on([&] { products.Find("stockno = '" + Stock + "'", 0, ado::adSearchForward); })) {
        on([&] {
            products.Fields("Inventory")
                .SetValue(::Add(products.Fields("Inventory").Value(), Variant(Qty)));
        });
        on([&] {
            products.Fields("OnOrder").SetValue(less(products.Fields("OnOrder").Value(), Qty));
        });
        on([&] {
            products.Fields("Notes").SetValue(
                ::Add(products.Fields("Notes").Value(),
                      Variant(Format(Variant(text(DateReceived)), "MM/DD/YY") + " - Received Item" +
                              vb::vbCrLf)));
        });
    }
    const bool searched =
        on([&] { stock.Find("[Product Id] = '" + Stock + "'", 0, ado::adSearchForward); });
    if (!searched || when(on, [&] { return stock.AbsolutePosition() < 0; })) {
        on([&] { stock.AddNew(); });
        on([&] { stock.Fields("Product Id").SetValue(Variant(Stock)); });
        on([&] { stock.Fields("Number").SetValue(Variant(Qty)); });
        on([&] { stock.Fields("Description").SetValue(Variant(text(Description))); });
        on([&] { stock.Fields("Wholesale").SetValue(Variant(text(WtPrice))); });
        on([&] { stock.Fields("Retail").SetValue(products.Fields("Retail").Value()); });
        on([&] { stock.Fields("Date in").SetValue(Variant(text(DateReceived))); });
        // The masked net cost each, as the orders form shows it; the store reads the number.
        on([&] { stock.Fields("cost").SetValue(Variant(text(NetCostEach))); });
        on([&] { stock.Update(); });
        return false;
    }
    // A later delivery adds to the row and keeps the cost of the first.
    on([&] {
        stock.Fields("Number").SetValue(::Add(stock.Fields("Number").Value(), Variant(Qty)));
    });
    return true;
}

void frmOrders::Command2_Click() {
    Trap on = reportTo(tag("Command2_Click"));
    Runtime& rt = Runtime::Current();
    Control& Command2 = (*this)("Command2");
    auto allToFirst = [&] {
        on([&] { adoPrimaryRS->MoveFirst(); });
        on([&] { adoprimaryrs2->MoveFirst(); });
        on([&] { adoprimaryrs3->MoveFirst(); });
    };
    if (when(on, [&] { return adoPrimaryRS->RecordCount() < 1; })) return;
    if (when(on, [&] { return Command2.Caption() == LineByLine; })) {
        const bool found = bookLine(on);
        if (found) {
            on([&] { adoprimaryrs3->MoveNext(); });
            on([&] { adoprimaryrs3->MoveFirst(); });
        }
        if (when(on, [&] {
                return MsgBox("Manually Receive More Items?", vb::vbYesNo + vb::vbQuestion) ==
                       vb::vbNo;
            })) {
            on([&] { Command2.SetCaption(ReceiveAll); });
            allToFirst();
        }
        return;
    }
    std::string order;
    on([&] { order = CStr(adoPrimaryRS->Fields("Order ID").Value()); });
    if (when(on, [&] {
            return MsgBox("Receive ALL Items For This Invoice: " + order,
                          vb::vbYesNo + vb::vbQuestion, "Receive Order") == vb::vbNo;
        })) {
        on([&] {
            MsgBox(std::string("Enter The Date Received And Other Information For Each Item") +
                   vb::vbCrLf + "Then Click 'R-Update' Button");
        });
        on([&] { Command2.SetCaption(LineByLine); });
        return;
    }
    // The date is taken as typed: a cancelled box gives an empty date.
    std::string ReceivedOn;
    on([&] {
        ReceivedOn = rt.ui().InputBox("Enter Date Received Below.", "Date Received",
                                      Format(Variant::Date(theClock().Date()), "MM/DD/YYYY"));
    });
    // Refused criteria lift the filter: the set would then hold every order's lines.
    if (!on([&] { adoPrimaryRS->SetFilter("[order id] = '" + order + "'"); })) return;
    on([&] { adoPrimaryRS->MoveFirst(); });
    for (bool more = false; on([&] { more = !adoPrimaryRS->Eof(); }) && more;) {
        on([&] { (*this)("txtFields", DateReceived).SetText(ReceivedOn); });
        bookLine(on);
        // The move stores Date Received; each search starts from the top again.
        on([&] { adoPrimaryRS->MoveNext(); });
        on([&] { adoprimaryrs2->MoveFirst(); });
        on([&] { adoprimaryrs3->MoveFirst(); });
        on([&] { rt.LetEventsRun(); });
    }
    allToFirst();
}
