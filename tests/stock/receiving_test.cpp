// Receive on the orders form: a whole order at once, or line by line under the user's hand.
#include <gtest/gtest.h>

#include "base/clock.h"
#include "base/dates.h"
#include "stock_fixture.h"

namespace {

struct Receiving : StockTest {
    FixedClock clock{DateSerial(2004, 3, 7)};
    Receiving() { setClock(&clock); }
    ~Receiving() override { setClock(nullptr); }

    void products() {
        addProduct("S1", "", "Inventory, OnOrder, Retail, Notes", "2, 5, 9.5, 'N.'");
        addProduct("S2", "", "Inventory, OnOrder, Retail, Notes", "0, 3, 4, ''");
    }
    // Lines with no fee, shipping or discount: the net cost each is Cost / NumberOrdered.
    void lines(const std::string& values) {
        cat.sql(
            "INSERT INTO Orders ([Order ID], ProductOrderID, NumberOrdered, Cost, WtPrice, "
            "Description, Fees, Shipping, Discount) SELECT *, 0, 0, 0 FROM (VALUES " +
            values + ");");
    }
    RecordForm& receiveAll(const std::string& date) {
        RecordForm& f = open("frmOrders");
        ui.msgBoxAnswer = vb::vbYes;
        ui.inputAnswer = date;
        click(f, "Command2");
        return f;
    }
    std::string product(const std::string& stockNo, const std::string& columns) {
        return cat.query("SELECT " + columns + " FROM Products WHERE StockNo = '" + stockNo + "'");
    }
    std::string inHand() {
        return cat.query(
            "SELECT [Product Id] || ' ' || Number || ' ' || IFNULL(Cost, 'Null') || ' ' || "
            "IFNULL(Retail, 'Null') FROM Inventory ORDER BY rowid");
    }
};

TEST_F(Receiving, ReceiveAllBooksEveryLineOfTheOrderOnTheDateGiven) {
    products();
    lines(
        "('A100', 'S1', 3, 30, 10, 'Bead'), ('A100', 'S2', 2, 5, 2.5, 'Pot'), "
        "('B200', 'S1', 1, 1, 1, 'Bead')");
    RecordForm& f = receiveAll("03/09/2004");
    ASSERT_GE(ui.boxes.size(), 2u);
    EXPECT_EQ(ui.boxes[0].prompt, "Receive ALL Items For This Invoice: A100");
    EXPECT_EQ(ui.boxes[0].title, "Receive Order");
    EXPECT_EQ(ui.boxes[0].buttons, vb::vbYesNo + vb::vbQuestion);
    EXPECT_EQ(ui.boxes[1].prompt, "Enter Date Received Below.");
    EXPECT_EQ(ui.inputDefaults.at(0), "03/07/2004");
    EXPECT_EQ(product("S1", "Inventory || ' ' || OnOrder || ' ' || Notes"),
              "5 2 N.03/09/04 - Received Item\r\n");
    EXPECT_EQ(product("S2", "Inventory || ' ' || OnOrder"), "2 1");
    EXPECT_EQ(inHand(), "S1 3 10 9.5|S2 2 2.5 4");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Orders WHERE [Date Received] IS NOT NULL"), "2");
    EXPECT_EQ(status(f), "Record: 1  of  2");
    EXPECT_EQ(f("Command2").Caption(), "Receive");
    EXPECT_TRUE(reports.empty());
}

TEST_F(Receiving, TwoLinesOfOneProductGiveTwoNotesAndOneRowWithTheSum) {
    products();
    lines(
        "('A100', 'S1', 3, 30, 10, 'Bead'), ('A100', 'S1', 4, 20, 5, 'Bead'), "
        "('A100', 'S2', 1, 8, 8, 'Pot')");
    receiveAll("03/09/2004");
    EXPECT_EQ(product("S1", "Inventory || ' ' || OnOrder"), "9 -2");
    EXPECT_EQ(product("S1", "Notes"), "N.03/09/04 - Received Item\r\n03/09/04 - Received Item\r\n");
    EXPECT_EQ(inHand(), "S1 7 10 9.5|S2 1 8 4");
}

TEST_F(Receiving, ACancelledDateEmptiesDateReceivedAndTheNotesCarryNoDate) {
    products();
    lines("('A100', 'S1', 3, 30, 10, 'Bead'), ('A100', 'S2', 2, 5, 2.5, 'Pot')");
    cat.sql("UPDATE Orders SET [Date Received] = 1;");
    receiveAll("");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Orders WHERE [Date Received] IS NULL"), "2");
    EXPECT_EQ(product("S2", "Notes"), " - Received Item\r\n");
}

TEST_F(Receiving, AnOrderOfOneLineRunsOnceAndTheCaptionStays) {
    products();
    lines("('A100', 'S2', 2, 5, 2.5, 'Pot')");
    RecordForm& f = receiveAll("03/09/2004");
    EXPECT_EQ(product("S2", "Inventory"), "2");
    EXPECT_EQ(f("Command2").Caption(), "Receive");
}

TEST_F(Receiving, NothingOrderedBooksANoteAndARowOfNone) {
    products();
    lines("('A100', 'S2', 0, 0, 2.5, 'Pot')");
    receiveAll("03/09/2004");
    EXPECT_EQ(product("S2", "Inventory || ' ' || OnOrder || ' ' || Notes"),
              "0 3 03/09/04 - Received Item\r\n");
    EXPECT_EQ(cat.query("SELECT Number FROM Inventory"), "0");
}

TEST_F(Receiving, AStockNumberThatLeftTheProductsIsReportedAndStillGetsARow) {
    products();
    lines("('A100', 'S9', 2, 5, 2.5, 'Gone')");
    receiveAll("03/09/2004");
    EXPECT_EQ(reports.size(), 4u);
    for (const auto& r : reports)
        EXPECT_NE(r.find(" (Form) frmOrders::Sub command2_click"), std::string::npos) << r;
    EXPECT_EQ(inHand(), "S9 2 2.5 Null");
}

TEST_F(Receiving, NoOnTheQuestionTurnsToLineByLine) {
    products();
    lines("('A100', 'S1', 3, 30, 10, 'Bead')");
    RecordForm& f = open("frmOrders");
    ui.msgBoxAnswer = vb::vbNo;
    click(f, "Command2");
    EXPECT_EQ(ui.boxes.at(1).prompt,
              "Enter The Date Received And Other Information For Each Item\r\nThen Click "
              "'R-Update' Button");
    EXPECT_EQ(f("Command2").Caption(), "R-Update");
    EXPECT_EQ(product("S1", "Inventory"), "2");
}

TEST_F(Receiving, LineByLineBooksTheCurrentLineAndAsksForMore) {
    products();
    lines("('A100', 'S1', 3, 30, 10, 'Bead'), ('A100', 'S2', 2, 5, 2.5, 'Pot')");
    RecordForm& f = open("frmOrders");
    f("Command2").SetCaption("R-Update");
    ui.msgBoxAnswer = vb::vbYes;
    type(f, 4, "03/10/2004");
    click(f, "Command2");
    EXPECT_EQ(ui.boxes.back().prompt, "Manually Receive More Items?");
    EXPECT_EQ(f("Command2").Caption(), "R-Update");
    click(f, "cmdNext");
    ui.msgBoxAnswer = vb::vbNo;
    click(f, "Command2");
    EXPECT_EQ(f("Command2").Caption(), "Receive");
    EXPECT_EQ(product("S1", "Inventory || ' ' || OnOrder"), "5 2");
    EXPECT_EQ(product("S2", "Inventory || ' ' || OnOrder"), "2 1");
    EXPECT_EQ(inHand(), "S1 3 10 9.5|S2 2 2.5 4");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Orders WHERE [Date Received] IS NOT NULL"), "1");
}

TEST_F(Receiving, LineByLineDoesNotFindAProductBeforeTheLastOne) {
    products();
    lines("('A100', 'S1', 3, 30, 10, 'Bead'), ('A100', 'S2', 2, 5, 2.5, 'Pot')");
    RecordForm& f = open("frmOrders");
    f("Command2").SetCaption("R-Update");
    ui.msgBoxAnswer = vb::vbYes;
    click(f, "cmdNext");
    click(f, "Command2");
    click(f, "cmdPrevious");
    click(f, "Command2");
    EXPECT_EQ(product("S1", "Inventory || ' ' || OnOrder"), "2 5");
    EXPECT_FALSE(reports.empty());
    EXPECT_EQ(reports[0].substr(reports[0].find(' ') + 1), "(Form) frmOrders::Sub command2_click");
}

TEST_F(Receiving, LineByLineAfterANewRowMakesASecondRowForAnEarlierProduct) {
    products();
    cat.sql("INSERT INTO Inventory ([Product Id], Number) VALUES ('S1', 1);");
    lines("('A100', 'S1', 3, 30, 10, 'Bead'), ('A100', 'S2', 2, 5, 2.5, 'Pot')");
    RecordForm& f = open("frmOrders");
    f("Command2").SetCaption("R-Update");
    ui.msgBoxAnswer = vb::vbYes;
    click(f, "cmdNext");
    click(f, "Command2");
    click(f, "cmdPrevious");
    click(f, "Command2");
    EXPECT_EQ(cat.query("SELECT [Product Id] || ' ' || Number FROM Inventory ORDER BY rowid"),
              "S1 1|S2 2|S1 3");
}

TEST_F(Receiving, AnOrderReceivedTwiceIsBookedTwice) {
    products();
    lines("('A100', 'S1', 3, 30, 10, 'Bead')");
    RecordForm& f = receiveAll("03/09/2004");
    ui.inputAnswer = "03/10/2004";
    click(f, "Command2");
    // Nothing stops the second run: OnOrder goes below nought.
    EXPECT_EQ(product("S1", "Inventory || ' ' || OnOrder"), "8 -1");
    EXPECT_EQ(inHand(), "S1 6 10 9.5");
    EXPECT_EQ(product("S2", "Inventory || ' ' || OnOrder"), "0 3");
    EXPECT_TRUE(reports.empty());
}

TEST_F(Receiving, AnOrderNumberWithAnApostropheIsReportedAndNothingIsBooked) {
    products();
    lines("('B200', 'S2', 2, 5, 2.5, 'Pot'), ('O''Neil', 'S1', 3, 30, 10, 'Bead')");
    RecordForm& f = open("frmOrders");
    click(f, "cmdNext");
    ui.msgBoxAnswer = vb::vbYes;
    ui.inputAnswer = "03/09/2004";
    click(f, "Command2");
    EXPECT_EQ(ui.boxes.at(0).prompt, "Receive ALL Items For This Invoice: O'Neil");
    EXPECT_EQ(reports, std::vector<std::string>{"3001 (Form) frmOrders::Sub command2_click"});
    // The other order's line is not booked with it.
    EXPECT_EQ(product("S1", "Inventory || ' ' || OnOrder"), "2 5");
    EXPECT_EQ(product("S2", "Inventory || ' ' || OnOrder"), "0 3");
    EXPECT_EQ(inHand(), "");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Orders WHERE [Date Received] IS NOT NULL"), "0");
}

TEST_F(Receiving, AStockNumberWithAnApostropheTouchesNoOtherProductAndGetsARow) {
    products();
    addProduct("T''1", "", "Inventory, OnOrder", "0, 2");
    cat.sql("INSERT INTO Inventory ([Product Id], Number) VALUES ('S1', 1);");
    lines("('A100', 'T''1', 2, 5, 2.5, 'Tin')");
    receiveAll("03/09/2004");
    EXPECT_EQ(reports, (std::vector<std::string>{"3001 (Form) frmOrders::Sub command2_click",
                                                 "3001 (Form) frmOrders::Sub command2_click"}));
    EXPECT_EQ(product("S1", "Inventory || ' ' || OnOrder || ' ' || Notes"), "2 5 N.");
    EXPECT_EQ(product("T''1", "Inventory || ' ' || OnOrder"), "0 2");
    EXPECT_EQ(cat.query("SELECT [Product Id] || ' ' || Number FROM Inventory ORDER BY rowid"),
              "S1 1|T'1 2");
}

TEST_F(Receiving, AnEmptyOrdersTableDoesNothing) {
    products();
    RecordForm& f = open("frmOrders");
    click(f, "Command2");
    EXPECT_TRUE(ui.boxes.empty());
}

}  // namespace
