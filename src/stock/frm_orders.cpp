#include "stock/frm_orders.h"

#include "base/convert.h"
#include "base/format.h"
#include "forms/runtime.h"
#include "records/store.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/when.h"
#include "stock/money.h"

namespace {

enum Box {
    Cost = 2,
    NumberOrdered = 6,
    NetCostEach = 10,
    Discount = 12,
    NetCost = 13,
    Fees = 14,
    Shipping = 15
};

constexpr const char* Mask = "$#,###.##";

}  // namespace

frmOrders::frmOrders()
    : OrderRecordForm("frmOrders", "Orders",
                      "select [Order ID],[Back Ordered],[Cost],[Date Ordered],[Date Received],"
                      "[Description],[NumberOrdered],[Packing],[ProductOrderID],[TotalItems],"
                      "[WtPrice],[Discount],[Shipping],[Fees] from [Orders] Order by [Order "
                      "ID],[ProductOrderID]",
                      {{0, "Order ID", "Order ID:"},
                       {1, "Back Ordered", "Back Ordered:"},
                       {2, "Cost", "Total Gross Cost:"},
                       {3, "Date Ordered", "Date Ordered:"},
                       {4, "Date Received", "Date Received:"},
                       {5, "Description", "Name:"},
                       {6, "NumberOrdered", "# Ordered:"},
                       {7, "Packing", "Packing:"},
                       {8, "ProductOrderID", "Stock No.:"},
                       {9, "TotalItems", "Total Items:"},
                       {10, nullptr, "Net Cost Each:"},
                       {11, "WtPrice", "Gross Cost Each:"},
                       {12, "Discount", "Discounts:"},
                       {13, nullptr, "Net Cost:"},
                       {14, "Fees", "Misc. Fee's:"},
                       {15, "Shipping", "Shipping:"}},
                      "View Invoice", "frmInvoice") {
    addExtra("Command2", ControlKind::CommandButton, 3, "Receive");
    OnClick("Command2", &frmOrders::Command2_Click);
    On("txtFields", "Change", [this](EventArgs& e) { txtFields_Change(e.Index); });
}

// The record sets go before the connection they were opened on.
frmOrders::~frmOrders() {
    adoprimaryrs3.reset();
    adoprimaryrs2.reset();
}

std::string frmOrders::tag(std::string_view procedure) const {
    // The search and the view of the invoice report under one name; two keep their spelling.
    if (procedure == "cmdSearch_Click" || procedure == "Command1_Click")
        return "(Form) frmOrders::Sub cmdsrch_click";
    if (procedure == "Form_Activate") return "(Form) frmOrders::Sub form_activate";
    if (procedure == "Command2_Click") return "(Form) frmOrders::Sub command2_click";
    return OrderRecordForm::tag(procedure);
}

void frmOrders::afterLoad(Trap& on) {
    on([&] { adoprimaryrs2 = CreateRecordset(); });
    on([&] {
        adoprimaryrs2->Open(
            "select [StockNo],[Inventory],[Notes],[OnOrder],[Retail] from [Products] order by "
            "[StockNo]",
            connection(), ado::adOpenStatic, ado::adLockOptimistic);
    });
    on([&] { adoprimaryrs3 = CreateRecordset(); });
    on([&] {
        adoprimaryrs3->Open(
            "select [Product Id],[Number],[Description],[Wholesale],[Retail],[Date in],[Date "
            "Sold],[cost] from [Inventory] order by [Product Id]",
            connection(), ado::adOpenStatic, ado::adLockOptimistic);
    });
}

void frmOrders::Form_Activate() {
    Trap on = reportTo(tag("Form_Activate"));
    Module& m = Mod();
    Runtime& rt = Runtime::Current();
    // A viewed order: the filter is set again at every activation until the key is cleared.
    if (when(on, [&] { return textOf(m.ViewOrderKey) != ""; })) {
        on([&] { rt.SetMousePointer(vb::vbHourglass); });
        on([&] { adoPrimaryRS->SetFilter(textOf(m.ViewOrderKey)); });
        on([&] { rt.SetMousePointer(vb::vbNormal); });
        return;
    }
    auto startLine = [&] {
        on([&] { cmdAdd_Click(); });
        on([&] { m.OrderOpen = Variant::Integer(7); });
    };
    if (when(on, [&] { return adoPrimaryRS->RecordCount() >= 1; })) {
        if (when(on, [&] { return CBool(m.NewOrder) && stageIs(m.OrderOpen, 1); })) {
            on([&] {
                adoPrimaryRS->Find("[Order ID] = '" + textOf(m.PassedKey) + "'", 0,
                                   ado::adSearchForward);
            });
            if (when(on, [&] { return adoPrimaryRS->AbsolutePosition() != ado::adPosEOF; })) {
                on([&] {
                    MsgBox("That Order Number Already Exists, Please Choose A Different One!",
                           vb::vbExclamation);
                });
                on([&] { m.PassedKey = Variant(""); });
                on([&] { m.OrderOpen = Variant::Integer(2); });
                on([&] {
                    if (Form* supplier = rt.Loaded("frmSupplier")) rt.Unload(*supplier);
                });
                on([&] { rt.Unload(*this); });
                return;
            }
            startLine();
        }
        if (when(on, [&] { return !CBool(m.NewOrder) && stageIs(m.OrderOpen, 1); })) startLine();
    } else if (when(on, [&] { return stageIs(m.OrderOpen, 1); })) {
        startLine();
    }
    on([&] { rt.SetMousePointer(vb::vbNormal); });
}

void frmOrders::txtFields_Change(int /*Index*/) {
    if (refilling()) return;
    // Each reading is strict: a blank term or no quantity leaves the box as it was.
    Trap ignore = Trap::Ignoring();
    auto text = [&](int box) { return (*this)("txtFields", box).Text(); };
    auto quantity = [&] { return CDbl(Variant(text(NumberOrdered))); };
    // The fee is spread over the units; shipping and discount are whole-line amounts.
    ignore([&] {
        Variant net = ::Add(::Add(moneyOver(money(text(Fees)), quantity()), money(text(Shipping))),
                            money(text(Cost)));
        (*this)("txtFields", NetCost).SetText(Format(moneyLess(net, money(text(Discount))), Mask));
    });
    ignore([&] {
        (*this)("txtFields", NetCostEach)
            .SetText(Format(moneyOver(money(text(NetCost)), quantity()), Mask));
    });
}

void frmOrders::closeOrderLine(Trap& on) {
    Runtime& rt = Runtime::Current();
    on([&] {
        if (Form* supplier = rt.Loaded("frmSupplier")) rt.Unload(*supplier);
    });
    on([&] { rt.LetEventsRun(); });
    on([&] { rt.Unload(*this); });
    on([&] { rt.LetEventsRun(); });
}

void frmOrders::afterUpdate(Trap& on) {
    Module& m = Mod();
    if (when(on, [&] { return stageIs(m.OrderOpen, 2); })) {
        on([&] { m.OrderOpen = Variant::Integer(3); });
        on([&] { m.SalePrice = Variant::Double(Val((*this)("txtFields", NumberOrdered).Text())); });
        closeOrderLine(on);
    }
}

void frmOrders::cmdCancel_Click() {
    OrderRecordForm::cmdCancel_Click();
    Trap on = reportTo(tag("cmdCancel_Click"));
    Module& m = Mod();
    if (when(on, [&] { return stageIs(m.OrderOpen, 2); })) {
        on([&] { m.OrderOpen = Variant::Integer(0); });
        closeOrderLine(on);
    }
}

void frmOrders::cmdDelete_Click() {
    OrderRecordForm::cmdDelete_Click();
    Trap on = reportTo(tag("cmdDelete_Click"));
    // Nothing is given back: the product's OnOrder and the invoice stay.
    on([&] { (*this)("txtFields", NetCost).SetText(""); });
    on([&] { (*this)("txtFields", NetCostEach).SetText(""); });
}
