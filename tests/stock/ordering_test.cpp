// Order Item and Order Done on the main form: the questions, the money of a line, the
// running totals of the order and what changes on the product.
#include <gtest/gtest.h>

#include <functional>

#include "base/clock.h"
#include "base/dates.h"
#include "stock/frm_orders.h"
#include "stock_fixture.h"

namespace {

struct OrderItem : StockTest {
    FixedClock clock{DateSerial(2004, 3, 7)};
    // What the user does on frmOrders while Order Item waits: Update unless told otherwise.
    std::function<void(Form&)> onLine = [](Form& f) { f("cmdUpdate").Raise("Click"); };
    bool stuck = false;

    OrderItem() {
        setClock(&clock);
        ui.onWait = [this] {
            Form* f = rt->Loaded("frmOrders");
            if (!f || stuck) {
                stuck = true;
                throw ProgramEnded{};
            }
            onLine(*f);
        };
    }
    ~OrderItem() override { setClock(nullptr); }

    void catalogue() {
        cat.sql(
            "INSERT INTO Supplier (SID, Name, Discounts, OtherChgs, Ship1, Ship3, TaxRate) "
            "VALUES (1, 'Acme', '10', '2', 5, 8, 0.05);");
        addProduct("S1", "", "ProdName, Packaging, Cost1, OnOrder, Notes",
                   "'Bead', 'Bag', 12.5, 1, 'Old.'");
        addProduct("S2", "", "ProdName, Cost1, OnOrder", "'Pot', 0.1, 0");
        start();
    }
    // One Order Item click with these answers: number (when asked), quantity, shipping.
    void orderItem(std::vector<std::string> answers) {
        ui.inputAnswers.assign(answers.begin(), answers.end());
        try {
            form()("Command1").Raise("Click");
        } catch (const ProgramEnded&) {
        }
    }
    std::string line(const std::string& column) {
        return cat.query("SELECT [" + column + "] FROM Orders");
    }
    std::string total(int i) { return textOf(Mod().OrderTotals.at(i)); }
};

TEST_F(OrderItem, ALineTakesTheProductAndTheSuppliersTerms) {
    catalogue();
    orderItem({"A100", "4", "3"});
    EXPECT_EQ(ui.boxes[0].prompt, "Enter The Order Number/ID Below");
    EXPECT_EQ(ui.boxes[0].title, "Order Number/ID");
    EXPECT_EQ(ui.boxes[1].prompt, "Order How Many?");
    EXPECT_EQ(ui.boxes[2].title, "How Many?");
    EXPECT_NE(ui.boxes[2].prompt.find("4 = Other Method 2\r\n\r\nOther = Enter Your Own Number:"),
              std::string::npos);
    EXPECT_EQ(line("Order ID"), "A100");
    EXPECT_EQ(line("ProductOrderID"), "S1");
    EXPECT_EQ(line("Description"), "Bead");
    EXPECT_EQ(line("Packing"), "Bag");
    EXPECT_EQ(line("NumberOrdered"), "4");
    EXPECT_EQ(line("TotalItems"), "4");
    EXPECT_EQ(line("WtPrice"), "12.5");
    EXPECT_EQ(line("Cost"), "50");
    EXPECT_EQ(line("Discount"), "5");
    EXPECT_EQ(line("Fees"), "2");
    EXPECT_EQ(line("Shipping"), "4");
    EXPECT_EQ(cat.query("SELECT [Date Ordered] FROM Orders"), CStr(Variant::Double(clock.Date())));
}

TEST_F(OrderItem, UpdateRaisesOnOrderAndNotesTheOrder) {
    catalogue();
    orderItem({"A100", "4", "3"});
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(0));
    EXPECT_EQ(cat.query("SELECT OnOrder FROM Products WHERE StockNo = 'S1'"), "5");
    EXPECT_EQ(form()("txtFields", 12).Text(),
              "Old.03/07/04 - Ordered 4 Items. Order Number: A100\r\n");
    EXPECT_TRUE(form()("Command2").Visible());
    EXPECT_FALSE(form()("cmdAdd").Visible());
    EXPECT_EQ(textOf(Mod().PassedKey), "A100");
    EXPECT_EQ(rt->Loaded("frmOrders"), nullptr);
}

TEST_F(OrderItem, ShippingByTheSuppliersRateByPercentOrInDollars) {
    const std::pair<const char*, const char*> answers[] = {
        {"3", "4"}, {"15", "4"}, {"5", "2.5"}, {"$5", "$5"}, {"0", "0"}, {"-3", "-1.5"}};
    catalogue();
    for (const auto& [answer, shipping] : answers) {
        onLine = [&](Form& f) {
            EXPECT_EQ(f("txtFields", 15).Text(), shipping) << answer;
            f("cmdCancel").Raise("Click");
        };
        orderItem({"A100", "4", answer});
        Mod().PassedKey = Variant("");
    }
}

TEST_F(OrderItem, AShippingAnswerThatIsNoNumberEndsTheClickSilently) {
    catalogue();
    orderItem({"A100", "4", "fast"});
    EXPECT_EQ(rt->Loaded("frmOrders"), nullptr);
    EXPECT_FALSE(form()("Command2").Visible());
    EXPECT_EQ(textOf(Mod().PassedKey), "A100");
    orderItem({"4", ""});
    EXPECT_EQ(ui.boxes.size(), 5u);
    EXPECT_TRUE(reports.empty());
}

TEST_F(OrderItem, AnEmptyOrderNumberEndsTheClickWithNothingChanged) {
    catalogue();
    orderItem({""});
    EXPECT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(textOf(Mod().PassedKey), "");
    EXPECT_TRUE(Mod().NewOrder.IsEmpty());
}

TEST_F(OrderItem, AQuantityBeyondSixteenBitsIsReportedAndOrdersNone) {
    catalogue();
    orderItem({"A100", "40000", "0"});
    EXPECT_EQ(reports.at(0), "6 (Form) Products::Sub Command1_Click");
    EXPECT_EQ(line("NumberOrdered"), "0");
}

TEST_F(OrderItem, HalvesOfAQuantityGoToTheEvenNeighbour) {
    catalogue();
    orderItem({"A100", "2.5", "0"});
    EXPECT_EQ(line("NumberOrdered"), "2");
}

TEST_F(OrderItem, ADiscountBlankOrInWordsIsReportedAndTheLineGoesOn) {
    catalogue();
    for (const char* discounts : {"NULL", "'ten'"}) {
        reports.clear();
        cat.sql(std::string("DELETE FROM Orders; UPDATE Supplier SET Discounts = ") + discounts);
        Mod().PassedKey = Variant("");
        orderItem({"A100", "4", "0"});
        EXPECT_EQ(reports.at(0), "13 (Form) Products::Sub Command1_Click") << discounts;
        EXPECT_EQ(line("Discount"), "Null") << discounts;
        EXPECT_EQ(line("Fees"), "2") << discounts;
    }
    EXPECT_EQ(cat.query("SELECT OnOrder FROM Products WHERE StockNo = 'S1'"), "9");
}

TEST_F(OrderItem, AFeeWrittenWithWordsCountsItsLeadingNumberInTheTotals) {
    catalogue();
    cat.sql("UPDATE Supplier SET OtherChgs = '12.50 each';");
    onLine = [](Form& f) {
        EXPECT_EQ(f("txtFields", 14).Text(), "12.50 each");
        f("cmdCancel").Raise("Click");
    };
    orderItem({"A100", "4", "0"});
    EXPECT_EQ(total(5), "12.5");
}

TEST_F(OrderItem, TotalsOfTheFirstLine) {
    catalogue();
    orderItem({"A100", "4", "3"});
    EXPECT_EQ(total(0), "A100");
    EXPECT_EQ(total(1), "5");
    EXPECT_EQ(total(7), "50");
    EXPECT_EQ(total(3), "4");
    EXPECT_EQ(total(4), "45");
    EXPECT_EQ(total(5), "2");
    EXPECT_EQ(total(6), "$2.25");
    EXPECT_EQ(total(2), "53.25");
}

TEST_F(OrderItem, TheSecondLinesTaxIsOnBothSubTotalsAndReplacesTheFirst) {
    catalogue();
    orderItem({"A100", "4", "0"});
    cat.sql("UPDATE Supplier SET TaxRate = 0.1;");
    form().cmdNext_Click();
    orderItem({"10", "0"});
    EXPECT_EQ(ui.boxes.size(), 5u);
    EXPECT_EQ(total(4), "45.9");
    EXPECT_EQ(total(6), "$4.59");
}

TEST_F(OrderItem, DollarShippingOnTheFirstLineAddsNothingAndOnALaterLineItsAmount) {
    catalogue();
    orderItem({"A100", "4", "$5"});
    EXPECT_EQ(total(3), "0");
    orderItem({"4", "$5"});
    EXPECT_EQ(total(3), "5");
}

TEST_F(OrderItem, AHundredLinesOfTenCentsTotalTenExactly) {
    catalogue();
    form().cmdNext_Click();
    cat.sql("UPDATE Supplier SET Discounts = '0', OtherChgs = '0', TaxRate = 0;");
    onLine = [](Form& f) { f("cmdCancel").Raise("Click"); };
    orderItem({"A100", "1", "0"});
    for (int i = 1; i < 100; ++i)
        orderItem({"1", "0"});
    EXPECT_EQ(total(7), "10");
    EXPECT_EQ(total(2), "10");
    EXPECT_EQ(total(6), "0");
}

TEST_F(OrderItem, CancelOfTheFirstLineKeepsTheOrderOpenAndItsFiguresInTheTotals) {
    catalogue();
    onLine = [](Form& f) { f("cmdCancel").Raise("Click"); };
    orderItem({"A100", "4", "3"});
    EXPECT_EQ(cat.query("SELECT OnOrder || Notes FROM Products WHERE StockNo = 'S1'"), "1Old.");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Orders"), "0");
    EXPECT_TRUE(form()("Command2").Visible());
    EXPECT_EQ(textOf(Mod().PassedKey), "A100");
    EXPECT_EQ(total(7), "50");
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(0));
}

TEST_F(OrderItem, ClosingTheLineByItsFrameLeavesTheWaitUnended) {
    catalogue();
    onLine = [this](Form& f) {
        rt->Unload(f);
        stuck = true;
    };
    orderItem({"A100", "4", "3"});
    EXPECT_TRUE(stuck);
    EXPECT_EQ(Mod().OrderOpen, Variant::Integer(2));
}

TEST_F(OrderItem, AnOrderNumberAlreadyUsedIsAcceptedAndTheLineJoinsThatOrder) {
    catalogue();
    cat.sql("INSERT INTO Orders ([Order ID], ProductOrderID) VALUES ('A100', 'S9');");
    orderItem({"A100", "4", "3"});
    EXPECT_TRUE(ui.boxes.size() == 3u);
    EXPECT_EQ(cat.query("SELECT ProductOrderID FROM Orders ORDER BY ProductOrderID"), "S1|S9");
}

TEST_F(OrderItem, OrderDoneStartsTheInvoiceFromTheTotals) {
    catalogue();
    orderItem({"A100", "4", "3"});
    form()("Command2").Raise("Click");
    RecordForm& invoice = loaded("frmInvoice");
    EXPECT_EQ(box(invoice, 0), "A100");
    EXPECT_EQ(box(invoice, 2), "53.25");
    EXPECT_EQ(box(invoice, 6), "$2.25");
    EXPECT_EQ(total(0), "");
    EXPECT_FALSE(form()("Command2").Visible());
    EXPECT_TRUE(form()("cmdAdd").Visible());
    EXPECT_EQ(textOf(Mod().PassedKey), "");
    click(invoice, "cmdUpdate");
    EXPECT_EQ(cat.query("SELECT [Order ID] || ' ' || Tax || ' ' || [Grand Total] FROM Invoice"),
              "A100 2.25 53.25");
}

TEST_F(OrderItem, TheSupplierButtonOpensTheProductsSupplier) {
    catalogue();
    cat.sql("INSERT INTO Supplier (SID, Name) VALUES (2, 'Bolt');");
    form()("txtFields", 28).SetText("Bolt");
    form()("cmdSup", 0).Raise("Click");
    EXPECT_EQ(textOf(Mod().SearchCriteria), "name = 'Bolt'");
    EXPECT_EQ(box(loaded("frmSupplier"), 8), "Bolt");
}

TEST_F(OrderItem, TheWebPageButtonGoesToTheSuppliersPageOrOurs) {
    catalogue();
    cat.sql("UPDATE Supplier SET URL = 'http://acme.example/', UserName = 'ann';");
    form()("txtFields", 28).SetText("Acme");
    form()("cmdSup", 1).Raise("Click");
    EXPECT_EQ(Mod().LastUrl, "http://acme.example/");
    EXPECT_EQ(Mod().SupplierUser, "ann");
    EXPECT_EQ(rt->Loaded("frmSupplier"), nullptr);
    EXPECT_EQ(ui.pane().LocationURL(), "http://acme.example/");
    form()("txtFields", 28).SetText("Nobody");
    form()("cmdSup", 1).Raise("Click");
    EXPECT_EQ(Mod().LastUrl, appDir() + "Help/index.htm");
    EXPECT_EQ(ui.pane().LocationURL(), appDir() + "Help/index.htm");
}

}  // namespace
