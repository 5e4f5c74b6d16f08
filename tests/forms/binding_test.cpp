#include <gtest/gtest.h>

#include "base/convert.h"
#include "forms/binding.h"
#include "forms/form.h"
#include "store/catalogue_fixture.h"

namespace {

constexpr int Cost1 = 2, OnSpecial = 14, ProdName = 22, StockNo = 27;

// Boxes on a form bound to the product form's record set, as the main form binds them.
struct BindingTest : ::testing::Test {
    TempCatalogue cat;
    std::unique_ptr<Connection> conn;
    std::unique_ptr<Recordset> rs;
    Form form{"frmTest"};
    Binding binding;

    void SetUp() override {
        cat.sql(
            "INSERT INTO Products (StockNo, ProdName, Cost1, OnSpecial) VALUES "
            "('A1', 'Apple', 2.5, -1), ('B2', 'Bean', NULL, 0);");
        conn = cat.connect();
        rs = cat.open(StatementA, *conn);
        rs->MoveComplete = [this] { binding.Refresh(); };
        form.Observe([this](Form&, Control* c, std::string_view p) {
            if (c) binding.Changed(*c, p);
        });
        binding.Bind(form.Add("txtFields", ControlKind::TextBox, ProdName), *rs, ProdName);
        binding.Bind(form.Add("txtFields", ControlKind::TextBox, Cost1), *rs, Cost1);
        binding.Bind(form.Add("txtFields", ControlKind::TextBox, StockNo), *rs, StockNo);
        binding.Bind(form.Add("chkFields", ControlKind::CheckBox, OnSpecial), *rs, OnSpecial);
        binding.Refresh();
    }
    std::string text(int i) { return form("txtFields", i).Text(); }
};

}  // namespace

TEST_F(BindingTest, BoxesShowTheCurrentRowAfterEveryMove) {
    EXPECT_EQ(text(ProdName), "Apple");
    EXPECT_EQ(text(Cost1), "2.5");
    EXPECT_EQ(CDbl(form("chkFields", OnSpecial).Value()), 1);
    rs->MoveNext();
    EXPECT_EQ(text(ProdName), "Bean");
    EXPECT_EQ(text(Cost1), "");
    EXPECT_EQ(CDbl(form("chkFields", OnSpecial).Value()), 0);
    rs->MoveNext();  // past the end: empty boxes
    EXPECT_EQ(text(StockNo), "");
}

TEST_F(BindingTest, TypedChangeGoesIntoThePendingRowAndTheNextMoveSavesIt) {
    form("txtFields", ProdName).SetText("Apricot");
    EXPECT_EQ(CStr(rs->GetValue(ProdName)), "Apricot");
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'A1'"), "Apple");
    rs->MoveNext();
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'A1'"), "Apricot");
    EXPECT_EQ(text(ProdName), "Bean");
}

TEST_F(BindingTest, CheckBoxChangeGoesIntoTheRow) {
    form("chkFields", OnSpecial).SetValue(Variant::Integer(0));
    rs->MoveNext();
    EXPECT_EQ(cat.query("SELECT OnSpecial FROM Products WHERE StockNo = 'A1'"), "0");
}

TEST_F(BindingTest, RefusedValueLeavesTheRowSilently) {
    EXPECT_NO_THROW(form("txtFields", Cost1).SetText("abc"));
    EXPECT_EQ(text(Cost1), "abc");
    EXPECT_EQ(CDbl(rs->GetValue(Cost1)), 2.5);
    rs->MoveNext();
    rs->MovePrevious();
    EXPECT_EQ(text(Cost1), "2.5");
    EXPECT_EQ(cat.query("SELECT Cost1 FROM Products WHERE StockNo = 'A1'"), "2.5");
}

TEST_F(BindingTest, ShowingARowWritesNothingBack) {
    rs->MoveNext();
    rs->MovePrevious();
    EXPECT_EQ(rs->EditMode(), 0);
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products ORDER BY StockNo"), "Apple|Bean");
}

TEST_F(BindingTest, AMoveTellsTheObserversOfEveryBoxAndRaisesChangeOnlyWhereTheTextDiffers) {
    std::vector<std::string> heard;
    int changes = 0;
    form.Observe([&](Form&, Control* c, std::string_view p) {
        if (c) heard.push_back(c->Path() + "." + std::string(p));
    });
    form.On("txtFields", "Change", [&](EventArgs&) { ++changes; });
    rs->MoveFirst();  // the same row again: every box told, none changed
    EXPECT_EQ(heard.size(), 4u);
    EXPECT_EQ(changes, 0);
    heard.clear();
    rs->MoveNext();  // Bean: name, cost and stock number differ
    EXPECT_EQ(heard, (std::vector<std::string>{"txtFields(22).Text", "txtFields(2).Text",
                                               "txtFields(27).Text", "chkFields(14).Value"}));
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(text(ProdName), "Bean");
    EXPECT_EQ(text(Cost1), "");
}

// In a long run of moves the boxes wait to be used; what anybody reads is the same.
struct RowsAwaitedTest : BindingTest {
    std::vector<std::string> heard;

    void SetUp() override {
        BindingTest::SetUp();
        rs->MoveComplete = [this] { binding.Moved(); };
        form.Observe([this](Form&, Control* c, std::string_view p) {
            if (c) heard.push_back(c->Path() + "." + std::string(p));
        });
    }
};

TEST_F(RowsAwaitedTest, OutsideARunEveryMoveShowsEveryBox) {
    rs->MoveNext();
    EXPECT_EQ(heard.size(), 4u);
    EXPECT_EQ(text(ProdName), "Bean");
}

TEST_F(RowsAwaitedTest, InARunABoxIsShownItsRowAtItsNextUse) {
    const RowsAwaited run;
    rs->MoveNext();
    EXPECT_TRUE(heard.empty());
    EXPECT_EQ(text(ProdName), "Bean");
    EXPECT_EQ(heard, std::vector<std::string>{"txtFields(22).Text"});
    EXPECT_EQ(CDbl(form("chkFields", OnSpecial).Value()), 0);
    rs->MovePrevious();
    rs->MoveNext();
    rs->MovePrevious();
    EXPECT_EQ(text(Cost1), "2.5");
    EXPECT_EQ(text(ProdName), "Apple");
}

TEST_F(RowsAwaitedTest, TheRunsEndShowsEveryBoxStillWaiting) {
    {
        const RowsAwaited run;
        rs->MoveNext();
        EXPECT_EQ(text(ProdName), "Bean");
        heard.clear();
    }
    EXPECT_EQ(heard, (std::vector<std::string>{"txtFields(2).Text", "txtFields(27).Text",
                                               "chkFields(14).Value"}));
    heard.clear();
    RowsAwaited::showAll();  // nothing waits any more
    EXPECT_TRUE(heard.empty());
}

TEST_F(RowsAwaitedTest, ABoxWhoseChangeRunsAProcedureIsShownAtTheMove) {
    std::vector<std::string> changed;
    form.On("txtFields", "Change",
            [&](EventArgs& e) { changed.push_back(form("txtFields", e.Index).Text()); });
    const RowsAwaited run;
    rs->MoveNext();
    EXPECT_EQ(changed, (std::vector<std::string>{"Bean", "", "B2"}));
}

TEST_F(RowsAwaitedTest, AWriteToAWaitingBoxComesAfterItsRow) {
    const RowsAwaited run;
    rs->MoveNext();
    form("txtFields", Cost1).SetText("abc");  // refused by the row, kept by the box
    EXPECT_EQ(text(Cost1), "abc");
    EXPECT_TRUE(rs->GetValue(Cost1).IsNull());
    form("txtFields", ProdName).SetText("Broad bean");
    EXPECT_EQ(CStr(rs->GetValue(ProdName)), "Broad bean");
    RowsAwaited::showAll();
    EXPECT_EQ(text(Cost1), "abc");
    EXPECT_EQ(text(ProdName), "Broad bean");
}
