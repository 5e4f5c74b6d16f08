// The orders form: its computed costs, the search by order number, the view of one order's
// lines, and its role as the second half of Order Item.
#include <gtest/gtest.h>

#include "stock/frm_orders.h"
#include "stock_fixture.h"

namespace {

struct Orders : StockTest {
    void threeLines() {
        cat.sql(
            "INSERT INTO Orders ([Order ID], ProductOrderID, NumberOrdered, Cost, Fees, "
            "Shipping, Discount) VALUES "
            "('A100', 'S1', 4, 100, 10, 6, 5), ('A100', 'S2', 0, 10, 1, 1, 0), "
            "('B200', 'S1', 2, 20, 0, 0, 0), ('A100', 'S3', 1, 1, 0, 0, 0);");
    }
    frmOrders& orders() { return static_cast<frmOrders&>(loaded("frmOrders")); }
    // Order Item has loaded the supplier and this form and shows it for the new line.
    frmOrders& openForALine(const std::string& key, bool newOrder) {
        start();
        Module& m = Mod();
        m.PassedKey = Variant(key);
        m.NewOrder = Variant(newOrder);
        m.OrderOpen = Variant::Integer(1);
        rt->Load(rt->Get("frmSupplier"));
        rt->Show(rt->Get("frmOrders"));
        return static_cast<frmOrders&>(rt->Get("frmOrders"));
    }
};

TEST_F(Orders, NetCostSpreadsTheFeeAndTheMaskRoundsTheCostEach) {
    threeLines();
    RecordForm& f = open("frmOrders");
    EXPECT_EQ(box(f, 8), "S1");
    EXPECT_EQ(box(f, 13), "$103.5");
    EXPECT_EQ(box(f, 10), "$25.88");
}

TEST_F(Orders, ShippingTypedWithADollarSignIsReadAsItsNumber) {
    threeLines();
    RecordForm& f = open("frmOrders");
    click(f, "cmdEdit");
    type(f, 15, "$16");
    EXPECT_EQ(box(f, 13), "$113.5");
    type(f, 12, "five");
    EXPECT_EQ(box(f, 13), "$113.5");
    EXPECT_TRUE(reports.empty());
}

TEST_F(Orders, ALineWithNothingOrderedKeepsTheCostsOfTheRowBefore) {
    threeLines();
    RecordForm& f = open("frmOrders");
    click(f, "cmdNext");
    EXPECT_EQ(box(f, 8), "S2");
    EXPECT_EQ(box(f, 6), "0");
    EXPECT_EQ(box(f, 13), "$103.5");
    EXPECT_EQ(box(f, 10), "$25.88");
    EXPECT_TRUE(reports.empty());
}

TEST_F(Orders, SearchFindsTheFirstLineOfAnOrder) {
    threeLines();
    RecordForm& f = open("frmOrders");
    EXPECT_EQ(f("txtSrch").Text(), "Order ID");
    f("txtSrch").SetText("b2");
    EventArgs enter;
    enter.KeyAscii = 13;
    f("txtSrch").Raise("KeyPress", enter);
    EXPECT_EQ(box(f, 0), "B200");
    EXPECT_EQ(status(f), "Record: 4  of  4");
}

TEST_F(Orders, SearchThatMatchesNothingShowsTheFirstRowAndNoMatchesFound) {
    threeLines();
    RecordForm& f = open("frmOrders");
    click(f, "cmdLast");
    f("txtSrch").SetText("Z9");
    click(f, "cmdSearch");
    EXPECT_EQ(box(f, 0), "A100");
    EXPECT_EQ(box(f, 8), "S1");
    EXPECT_EQ(status(f), "No Matches Found");
}

TEST_F(Orders, SearchTextWithAQuoteMarkIsReportedAndTheRowStays) {
    threeLines();
    RecordForm& f = open("frmOrders");
    f("txtSrch").SetText("O'B");
    click(f, "cmdSearch");
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_NE(reports[0].find(" (Form) frmOrders::Sub cmdsrch_click"), std::string::npos);
    EXPECT_EQ(box(f, 8), "S1");
    EXPECT_EQ(status(f), "Record: 1  of  4");
}

TEST_F(Orders, ViewItemsShowsOnlyThatOrdersLinesAtEveryActivation) {
    threeLines();
    RecordForm& invoice = open("frmInvoice");
    cat.sql("INSERT INTO Invoice ([Order ID]) VALUES ('A100');");
    click(invoice, "cmdRefresh");
    click(invoice, "Command1");
    RecordForm& f = orders();
    EXPECT_EQ(textOf(Mod().ViewOrderKey), "[order id] = 'A100'");
    EXPECT_EQ(status(f), "Record: 1  of  3");
    f.adoPrimaryRS->SetFilter("");
    rt->Activate(f);
    EXPECT_EQ(f.adoPrimaryRS->RecordCount(), 3);
    click(f, "cmdRefresh");
    EXPECT_EQ(f.adoPrimaryRS->RecordCount(), 3);
}

TEST_F(Orders, AnOrderNumberWithAnApostropheBreaksTheViewedFilter) {
    cat.sql(
        "INSERT INTO Orders ([Order ID], ProductOrderID) VALUES ('O''Brien', 'S1'), ('B2', "
        "'S2'); INSERT INTO Invoice ([Order ID]) VALUES ('O''Brien');");
    RecordForm& invoice = open("frmInvoice");
    EXPECT_EQ(box(invoice, 0), "O'Brien");
    click(invoice, "Command1");
    EXPECT_EQ(textOf(Mod().ViewOrderKey), "[order id] = 'O'Brien'");
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_NE(reports[0].find(" (Form) frmOrders::Sub form_activate"), std::string::npos);
    EXPECT_EQ(orders().adoPrimaryRS->RecordCount(), 2);
}

TEST_F(Orders, UpdateInTheFreeStandingRoleChangesNoCounter) {
    addProduct("S1", "", "OnOrder, Inventory", "0, 0");
    threeLines();
    RecordForm& f = open("frmOrders");
    click(f, "cmdEdit");
    type(f, 6, "9");
    click(f, "cmdUpdate");
    EXPECT_EQ(cat.query("SELECT NumberOrdered FROM Orders WHERE [Order ID] = 'A100' AND "
                        "ProductOrderID = 'S1'"),
              "9");
    EXPECT_EQ(cat.query("SELECT OnOrder FROM Products"), "0");
    EXPECT_NE(rt->Loaded("frmOrders"), nullptr);
    EXPECT_TRUE(Mod().OrderOpen.IsEmpty());
}

TEST_F(Orders, DeleteEmptiesTheComputedBoxesAndGivesNothingBack) {
    addProduct("S1", "", "OnOrder", "4");
    threeLines();
    RecordForm& f = open("frmOrders");
    click(f, "cmdDelete");
    EXPECT_EQ(box(f, 13), "");
    EXPECT_EQ(box(f, 10), "");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Orders"), "3");
    EXPECT_EQ(cat.query("SELECT OnOrder FROM Products"), "4");
}

// The second half of Order Item.

TEST_F(Orders, ANewOrderNumberStartsTheLineInAddMode) {
    threeLines();
    frmOrders& f = openForALine("C300", true);
    EXPECT_EQ(status(f), "Add record");
    EXPECT_EQ(f.AddFlag, -1);
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(7));
}

TEST_F(Orders, AnOrderNumberThatExistsIsRefusedAndBothFormsGo) {
    threeLines();
    openForALine("B200", true);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].prompt,
              "That Order Number Already Exists, Please Choose A Different One!");
    EXPECT_EQ(ui.boxes[0].buttons, vb::vbExclamation);
    EXPECT_EQ(textOf(Mod().PassedKey), "");
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(2));
    EXPECT_EQ(rt->Loaded("frmOrders"), nullptr);
    EXPECT_EQ(rt->Loaded("frmSupplier"), nullptr);
}

TEST_F(Orders, AnOpenOrderAddsALineWithoutAskingAboutTheNumber) {
    threeLines();
    frmOrders& f = openForALine("B200", false);
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(f.AddFlag, -1);
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(7));
}

TEST_F(Orders, AnEmptyTableStartsTheLineToo) {
    frmOrders& f = openForALine("C300", true);
    EXPECT_EQ(f.AddFlag, -1);
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(7));
}

TEST_F(Orders, UpdateOfALineOnScreenHandsOverTheQuantityAndClosesBothForms) {
    frmOrders& f = openForALine("C300", true);
    Mod().OrderOpen = Variant::Integer(2);
    type(f, 0, "C300");
    type(f, 6, "12");
    click(f, "cmdUpdate");
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(3));
    EXPECT_EQ(Mod().SalePrice, Variant::Double(12));
    EXPECT_EQ(cat.query("SELECT NumberOrdered FROM Orders"), "12");
    EXPECT_EQ(rt->Loaded("frmOrders"), nullptr);
    EXPECT_EQ(rt->Loaded("frmSupplier"), nullptr);
}

TEST_F(Orders, TheQuantityHandedOverIsTheOneStored) {
    // The box shows what was stored by the time it is read: a quantity the column refuses
    // is no quantity.
    const std::pair<const char*, double> typed[] = {{"12.50 each", 0}, {"$5", 5}, {"", 0}};
    start();
    for (const auto& [text, quantity] : typed) {
        Mod().OrderOpen = Variant::Integer(1);
        rt->Show(rt->Get("frmOrders"));
        Mod().OrderOpen = Variant::Integer(2);
        RecordForm& f = orders();
        type(f, 6, text);
        click(f, "cmdUpdate");
        EXPECT_EQ(Mod().SalePrice, Variant::Double(quantity)) << text;
    }
}

TEST_F(Orders, CancelOfALineOnScreenEndsTheRunAndStoresNothing) {
    frmOrders& f = openForALine("C300", true);
    Mod().OrderOpen = Variant::Integer(2);
    type(f, 0, "C300");
    click(f, "cmdCancel");
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(0));
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Orders"), "0");
    EXPECT_EQ(rt->Loaded("frmOrders"), nullptr);
    EXPECT_EQ(rt->Loaded("frmSupplier"), nullptr);
}

}  // namespace
