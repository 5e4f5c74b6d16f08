// Selling from the stock in hand and the sales it records: the quantity leaves the stock in
// hand at once and the product when `Products` is next activated.
#include <gtest/gtest.h>

#include "base/clock.h"
#include "base/dates.h"
#include "stock_fixture.h"

namespace {

struct Selling : StockTest {
    FixedClock clock{DateSerial(2004, 3, 7)};
    Selling() { setClock(&clock); }
    ~Selling() override { setClock(nullptr); }

    void inHand() {
        addProduct("S1", "", "Inventory, NoSold", "8, 1");
        cat.sql(
            "INSERT INTO Inventory ([Product Id], Cost, Number) VALUES ('S1', 20, 5), ('S2', 3, "
            "1);");
    }
    RecordForm& sell(const std::string& answer) {
        RecordForm& f = open("frmInventory");
        ui.inputAnswer = answer;
        click(f, "cmdSales");
        return f;
    }
    std::string number(const std::string& id) {
        return cat.query("SELECT Number FROM Inventory WHERE [Product Id] = '" + id + "'");
    }
    std::string notice() { return ui.boxes.size() > 1 ? ui.boxes[1].prompt : ""; }
};

TEST_F(Selling, SellingAllThatIsInHandLeavesTheRowWithNone) {
    inHand();
    sell("5");
    EXPECT_EQ(ui.boxes.at(0).prompt, "Enter How Many You Sold Below");
    EXPECT_EQ(ui.boxes.at(0).title, "Sold Item");
    EXPECT_EQ(number("S1"), "0");
    EXPECT_TRUE(Mod().SaleMode);
    EXPECT_EQ(Mod().SaleQty, 5);
    EXPECT_EQ(textOf(Mod().PassedKey), "S1");
    EXPECT_EQ(textOf(Mod().SalePrice), "20");
    EXPECT_NE(rt->Loaded("frmSales"), nullptr);
}

TEST_F(Selling, SellingMoreThanIsInHandIsRefused) {
    inHand();
    RecordForm& f = sell("6");
    EXPECT_EQ(notice(), "6 - Is Not A valid Number... You Only Show 5 Items In Your Inventory");
    EXPECT_EQ(ui.boxes.at(1).buttons, vb::vbCritical);
    EXPECT_EQ(number("S1"), "5");
    EXPECT_EQ(box(f, 5), "5");
    EXPECT_EQ(rt->Loaded("frmSales"), nullptr);
}

TEST_F(Selling, ANegativeSaleIsRefusedToo) {
    inHand();
    sell("-1");
    EXPECT_EQ(notice(), "-1 - Is Not A valid Number... You Only Show 5 Items In Your Inventory");
    EXPECT_EQ(number("S1"), "5");
}

TEST_F(Selling, HalvesOfAQuantityGoToTheEvenNeighbour) {
    inHand();
    sell("2.5");
    EXPECT_EQ(number("S1"), "3");
}

TEST_F(Selling, ACancelledBoxSellsNothingButStillOpensTheSale) {
    inHand();
    sell("");
    EXPECT_EQ(number("S1"), "5");
    EXPECT_EQ(Mod().SaleQty, 0);
    RecordForm& sales = loaded("frmSales");
    EXPECT_EQ(box(sales, 4), "0");
    EXPECT_EQ(Mod().SoldQty, 0);
}

TEST_F(Selling, AQuantityBeyondSixteenBitsSellsNothing) {
    inHand();
    sell("40000");
    EXPECT_EQ(number("S1"), "5");
    EXPECT_EQ(Mod().SaleQty, 0);
    // The only fault is that of the new sale's blank price, at its SetButtons.
    EXPECT_EQ(reports, std::vector<std::string>{"13 (Form) frmSales::Sub SetButtons"});
}

TEST_F(Selling, OnAnEmptyTableTheSaleGoesOnWithEmptyBoxes) {
    start();
    form()("mnuDatafrmInventory").Raise("Click");
    RecordForm& f = loaded("frmInventory");
    EXPECT_TRUE(f("cmdSales").Enabled());
    ui.inputAnswer = "1";
    click(f, "cmdSales");
    EXPECT_EQ(ui.boxes.size(), 1u);
    EXPECT_TRUE(Mod().SaleMode);
    EXPECT_EQ(textOf(Mod().PassedKey), "");
}

TEST_F(Selling, TheSaleStartsARowOfTheWholeCost) {
    inHand();
    sell("3");
    RecordForm& sales = loaded("frmSales");
    EXPECT_EQ(sales.AddFlag, -1);
    EXPECT_EQ(box(sales, 0), "S1");
    EXPECT_EQ(box(sales, 1), "60");
    EXPECT_EQ(box(sales, 2), "03/07/2004");
    EXPECT_EQ(box(sales, 4), "3");
    EXPECT_EQ(Mod().SoldQty, 3);
}

TEST_F(Selling, UpdateEndsTheSaleAndProductsTakesItOffWhenActivated) {
    inHand();
    sell("3");
    RecordForm& sales = loaded("frmSales");
    type(sales, 5, "100");
    click(sales, "cmdUpdate");
    EXPECT_EQ(cat.query("SELECT [Sales Product ID] || ' ' || Cost || ' ' || [Number Sold] || ' ' "
                        "|| [Price Sold] FROM Sales"),
              "S1 60 3 100");
    EXPECT_FALSE(Mod().SaleMode);
    EXPECT_EQ(Mod().SaleQty, 0);
    EXPECT_EQ(Mod().SalePrice, Variant::Integer(0));
    EXPECT_EQ(Mod().SoldQty, 3);
    rt->Activate(form());
    EXPECT_EQ(cat.query("SELECT Inventory || ' ' || NoSold FROM Products"), "5 4");
    EXPECT_EQ(Mod().SoldQty, 0);
}

TEST_F(Selling, CancelInSaleModeStillTakesTheQuantityOffTheProduct) {
    inHand();
    sell("2");
    click(loaded("frmSales"), "cmdCancel");
    EXPECT_TRUE(Mod().SaleMode);
    rt->Activate(form());
    EXPECT_EQ(cat.query("SELECT Inventory || ' ' || NoSold FROM Products"), "6 3");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Sales"), "0");
}

TEST_F(Selling, AStockNumberWithAnApostropheLeavesEveryProductsCountersAlone) {
    addProduct("S1", "", "Inventory, NoSold", "8, 1");
    addProduct("T''1", "", "Inventory, NoSold", "4, 0");
    cat.sql("INSERT INTO Inventory ([Product Id], Cost, Number) VALUES ('T''1', 2, 3);");
    sell("1");
    click(loaded("frmSales"), "cmdUpdate");
    EXPECT_EQ(number("T''1"), "2");
    rt->Activate(form());
    // The sale form's own reports of its blank price come first.
    EXPECT_EQ(reports.back(), "3001 (Form) Products::Sub Form_Activate");
    EXPECT_EQ(cat.query("SELECT Inventory || ' ' || NoSold FROM Products ORDER BY StockNo"),
              "8 1|4 0");
    EXPECT_EQ(Mod().SoldQty, 0);
}

TEST_F(Selling, TheSaleComesOffTheCountAsStoredNotAsTheMainFormReadIt) {
    inHand();
    start();
    // Stored after the main form read the product, as a receiving run stores it.
    cat.sql("UPDATE Products SET Inventory = 20, OnOrder = 0;");
    form()("mnuDatafrmInventory").Raise("Click");
    ui.inputAnswer = "3";
    click(loaded("frmInventory"), "cmdSales");
    click(loaded("frmSales"), "cmdUpdate");
    rt->Activate(form());
    EXPECT_EQ(cat.query("SELECT Inventory || ' ' || NoSold || ' ' || OnOrder FROM Products"),
              "17 4 0");
    EXPECT_EQ(form()("txtFields", 8).Text(), "17");
    EXPECT_EQ(form()("txtFields", 13).Text(), "0");
}

TEST_F(Selling, EveryActivationInSaleModeStartsTheRowAgain) {
    inHand();
    sell("2");
    RecordForm& sales = loaded("frmSales");
    type(sales, 6, "Fair");
    click(sales, "cmdCancel");
    rt->Activate(sales);
    EXPECT_EQ(sales.AddFlag, -1);
    EXPECT_EQ(box(sales, 6), "");
    EXPECT_EQ(box(sales, 1), "40");
}

// The sales form by itself.

struct Sales : StockTest {
    RecordForm& twoSales() {
        cat.sql(
            "INSERT INTO Sales ([Sales Product ID], Cost, Expenses, [Price Sold]) VALUES "
            "('S1', 60, 5, 100), ('S2', 10, 0, NULL);");
        return open("frmSales");
    }
};

TEST_F(Sales, NetProfitIsThePriceLessCostAndExpenses) {
    RecordForm& f = twoSales();
    EXPECT_EQ(box(f, 7), "$35.");
    click(f, "cmdEdit");
    type(f, 3, "$5.50");
    EXPECT_EQ(box(f, 7), "$34.5");
    // Text where a figure belongs is passed over: the profit stays.
    type(f, 5, "ten");
    EXPECT_EQ(box(f, 7), "$34.5");
    EXPECT_TRUE(reports.empty());
}

TEST_F(Sales, ARowWithNoPriceShowsTheProfitOfTheRowBefore) {
    RecordForm& f = twoSales();
    click(f, "cmdNext");
    EXPECT_EQ(box(f, 0), "S2");
    EXPECT_EQ(box(f, 7), "$35.");
}

TEST_F(Sales, EachVisitStartsAtTheFirstRow) {
    RecordForm& f = twoSales();
    click(f, "cmdLast");
    rt->Activate(f);
    EXPECT_EQ(box(f, 0), "S1");
}

TEST_F(Sales, DeletingASaleGivesNothingBack) {
    addProduct("S1", "", "Inventory, NoSold", "8, 1");
    RecordForm& f = twoSales();
    click(f, "cmdDelete");
    EXPECT_EQ(box(f, 7), "");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Sales"), "1");
    EXPECT_EQ(cat.query("SELECT Inventory || ' ' || NoSold FROM Products"), "8 1");
}

}  // namespace
