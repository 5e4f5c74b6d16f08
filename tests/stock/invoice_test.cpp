// The invoice form: a new row from the totals of an ended order, the search, and the jump
// to one order's lines and back.
#include <gtest/gtest.h>

#include "stock_fixture.h"

namespace {

struct Invoices : StockTest {
    void twoInvoices() {
        cat.sql(
            "INSERT INTO Invoice ([Order ID], Tax) VALUES ('A100', 1), ('B200', 2), ('A100', "
            "3);");
    }
    // Order Done: the totals of the open order, the stage, and the form shown.
    RecordForm& orderDone() {
        Mod().OrderOpen = Variant::Integer(7);
        form()("mnuDatafrmInvoice").Raise("Click");
        return loaded("frmInvoice");
    }
};

TEST_F(Invoices, AnEndedOrderStartsARowFromItsTotalsAndEmptiesThem) {
    start();
    const char* const totals[] = {"C300", "5", "98.5", "4", "95", "2", "$4.5", "100"};
    for (int i = 0; i < 8; ++i)
        Mod().OrderTotals.at(i) = Variant(totals[i]);
    Mod().OrderTotals.at(1) = Variant::Double(5);
    RecordForm& f = orderDone();
    EXPECT_EQ(status(f), "Add record");
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(box(f, i), totals[i]) << i;
        EXPECT_EQ(Mod().OrderTotals.at(i), Variant("")) << i;
    }
    EXPECT_EQ(Mod().OrderOpen, Variant(""));
    click(f, "cmdUpdate");
    EXPECT_EQ(cat.query("SELECT [Order ID] || ' ' || Tax || ' ' || [Grand Total] FROM Invoice"),
              "C300 4.5 98.5");
}

TEST_F(Invoices, OrderDoneWithNoLineMadeStartsAnEmptyRow) {
    twoInvoices();
    start();
    RecordForm& f = orderDone();
    EXPECT_EQ(f.AddFlag, -1);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(box(f, i), "") << i;
    click(f, "cmdCancel");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Invoice"), "3");
    EXPECT_EQ(box(f, 0), "A100");
}

TEST_F(Invoices, OrderDoneWhileTheFormIsOpenStartsTheRowOnlyWhenItIsActivated) {
    twoInvoices();
    RecordForm& f = open("frmInvoice");
    Mod().OrderTotals.at(0) = Variant("C300");
    Mod().OrderOpen = Variant::Integer(7);
    EXPECT_EQ(f.AddFlag, 0);
    rt->Activate(f);
    EXPECT_EQ(f.AddFlag, -1);
    EXPECT_EQ(box(f, 0), "C300");
}

TEST_F(Invoices, AVisitDuringAnOpenOrderClearsTheStage) {
    start();
    Mod().OrderOpen = Variant::Integer(2);
    Mod().PassedKey = Variant("C300");
    form()("mnuDatafrmInvoice").Raise("Click");
    RecordForm& f = loaded("frmInvoice");
    EXPECT_EQ(Mod().OrderOpen, Variant(""));
    EXPECT_EQ(f.AddFlag, 0);
    EXPECT_EQ(textOf(Mod().PassedKey), "C300");
}

TEST_F(Invoices, TwoOrdersWithOneNumberCannotBeToldApart) {
    twoInvoices();
    RecordForm& f = open("frmInvoice");
    f("txtSrch").SetText("A1");
    click(f, "cmdSearch");
    EXPECT_EQ(status(f), "Record: 1  of  3");
    EXPECT_EQ(box(f, 6), "1");
}

TEST_F(Invoices, SearchThatMatchesNothingShowsTheFirstRow) {
    twoInvoices();
    RecordForm& f = open("frmInvoice");
    click(f, "cmdLast");
    f("txtSrch").SetText("Z");
    click(f, "cmdSearch");
    EXPECT_EQ(status(f), "No Matches Found");
    EXPECT_EQ(box(f, 0), "A100");
}

TEST_F(Invoices, SearchTextWithAQuoteMarkReportsUnderTheSearchTag) {
    twoInvoices();
    RecordForm& f = open("frmInvoice");
    f("txtSrch").SetText("'");
    click(f, "cmdSearch");
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_NE(reports[0].find(" (Form) frmInvoice::Sub cmdsrch_click"), std::string::npos);
}

TEST_F(Invoices, ViewInvoiceFindsTheOrderFromTheCurrentRowOnAndClearsTheKey) {
    twoInvoices();
    cat.sql("INSERT INTO Orders ([Order ID]) VALUES ('B200');");
    RecordForm& orders = open("frmOrders");
    click(orders, "Command1");
    RecordForm& f = loaded("frmInvoice");
    EXPECT_EQ(box(f, 0), "B200");
    EXPECT_EQ(status(f), "Record: 3  of  3");
    EXPECT_EQ(textOf(Mod().ViewOrderKey), "");
}

TEST_F(Invoices, ViewInvoiceOfAnOrderWithNoInvoiceLeavesTheSetAtItsEnd) {
    twoInvoices();
    cat.sql("INSERT INTO Orders ([Order ID]) VALUES ('C300');");
    RecordForm& orders = open("frmOrders");
    click(orders, "Command1");
    RecordForm& f = loaded("frmInvoice");
    EXPECT_TRUE(f.adoPrimaryRS->Eof());
    EXPECT_EQ(status(f), "Record: -3  of  3");
}

TEST_F(Invoices, ViewItemsIsHiddenWhileARowIsPending) {
    twoInvoices();
    RecordForm& f = open("frmInvoice");
    EXPECT_EQ(f("Command1").Caption(), "View Items");
    click(f, "cmdEdit");
    EXPECT_FALSE(f("Command1").Visible());
    click(f, "cmdCancel");
    EXPECT_TRUE(f("Command1").Visible());
}

}  // namespace
