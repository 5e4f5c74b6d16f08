#include <gtest/gtest.h>

#include "search_fixture.h"

namespace {

struct QuickSearch : SearchTest {
    // Five products; in stock number order A1, C3, D123, X12B, Z9.
    void startWithFive() {
        addProduct("X12B", "", "Cost1", "4");
        addProduct("A1", "", "Cost1", "2");
        addProduct("D123", "", "Cost1", "8");
        addProduct("C3", "", "Cost1", "6");
        addProduct("Z9", "", "Cost1", "9");
        start();
    }
    void typeAndEnter(const std::string& text) {
        f()("txtSrch").SetText(text);
        int key = 13;
        f().txtSrch_KeyPress(key);
    }
    void goTo(int position) { f().adoPrimaryRS->SetAbsolutePosition(position); }
    // A detailed search for stock numbers holding `text`, read and continued.
    void detailedSearch(const std::string& text) {
        then([this, text] {
            click("optsrch", 2);
            on("txtSearch").SetText(text);
            click("cmdSrch");
        });
        thenContinue();
        f().cmdDetSearch_Click();
    }
};

TEST_F(QuickSearch, TwelveAndEnterFindsTheFirstStockNumberHoldingItFromTheCurrentRecordOn) {
    startWithFive();
    EXPECT_EQ(stockNo(), "A1");
    typeAndEnter("12");
    EXPECT_EQ(stockNo(), "D123");
    EXPECT_EQ(status(), "Record: 3  of  5");
    goTo(4);
    typeAndEnter("12");
    EXPECT_EQ(stockNo(), "X12B");
}

TEST_F(QuickSearch, RepeatingTheSearchStaysOnTheRecordFound) {
    startWithFive();
    typeAndEnter("12");
    typeAndEnter("12");
    EXPECT_EQ(stockNo(), "D123");
    f()("txtSrch").SetText("12");
    f().cmdSearch_Click();
    EXPECT_EQ(stockNo(), "D123");
}

TEST_F(QuickSearch, NothingFoundFromHereOnGoesToTheFirstRecordWithoutAMessage) {
    startWithFive();
    goTo(5);
    typeAndEnter("12");
    EXPECT_EQ(stockNo(), "A1");
    EXPECT_EQ(status(), "Record: 1  of  5");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(QuickSearch, MatchingIgnoresCaseAndLeavesTheFilterAlone) {
    addProduct("ab-7");
    addProduct("QQ1");
    start();
    typeAndEnter("AB");
    EXPECT_EQ(stockNo(), "ab-7");
    EXPECT_EQ(f().adoPrimaryRS->Filter(), "");
    EXPECT_EQ(count(), 2);
}

TEST_F(QuickSearch, TextWithAnApostropheMakesTheFindFailAndNothingMoves) {
    startWithFive();
    goTo(2);
    typeAndEnter("O'B");
    EXPECT_EQ(stockNo(), "C3");
    EXPECT_EQ(status(), "Record: 2  of  5");
    EXPECT_EQ(count(), 5);
}

TEST_F(QuickSearch, OtherKeysInTheBoxDoNotSearch) {
    startWithFive();
    f()("txtSrch").SetText("12");
    int key = 'x';
    f().txtSrch_KeyPress(key);
    EXPECT_EQ(stockNo(), "A1");
    EXPECT_EQ(key, 'x');
}

TEST_F(QuickSearch, EnterIsNotEaten) {
    startWithFive();
    f()("txtSrch").SetText("12");
    int key = 13;
    f().txtSrch_KeyPress(key);
    EXPECT_EQ(key, 13);
}

TEST_F(QuickSearch, FocusSelectsTheWholeTextOfTheBox) {
    startWithFive();
    f()("txtSrch").SetText("Bead 12");
    f()("txtSrch").Raise("GotFocus");
    EXPECT_EQ(f()("txtSrch").Property("SelStart"), Variant(0));
    EXPECT_EQ(f()("txtSrch").Property("SelLength"), Variant(7));
}

TEST_F(QuickSearch, DetailedSearchReportsTheCountInTheStatusLineAndThePane) {
    startWithFive();
    Variant criteriaInWait, statusInWait, pageInWait;
    then([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("12");
        click("cmdSrch");
    });
    then([&] {
        statusInWait = Variant(status());
        pageInWait = Variant(paneText());
        EXPECT_EQ(ui.pane().LocationURL(), "about:blank");
        ui.pane().UserNavigate("about:blankCONTINUE");
    });
    f().cmdDetSearch_Click();
    EXPECT_FALSE(stuck);
    EXPECT_EQ(var(statusInWait), "2 - Matches Found");
    EXPECT_EQ(var(pageInWait),
              "<font size=4><center>2 Items Found Matching Your Search!<br>StockNo like '*12*'"
              "<br></center><br><p align=center><font size=3 font color=red><a "
              "href='CONTINUE'>Click Here To Continue</a>");
    EXPECT_EQ(rows(), "D123 X12B ");
    EXPECT_FALSE(f().ContinueFlag);
    EXPECT_FALSE(f().Searching);
    EXPECT_EQ(rt->MousePointer(), 0);
}

TEST_F(QuickSearch, TheSortIsAppliedOnlyAfterTheUserHasReadTheCount) {
    startWithFive();
    std::string sortInWait = "unread";
    bool searchingInWait = false;
    then([this] {
        click("optsrch", 7);  // Cost1
        click("optOperator", 2);
        on("txtSearch").SetText("3");
        click("chkReverse");
        click("optSort", 7);
        click("cmdSrch");
    });
    then([&] {
        sortInWait = f().adoPrimaryRS->Sort();
        searchingInWait = f().Searching;
        ui.pane().UserNavigate("about:blankCONTINUE");
    });
    f().cmdDetSearch_Click();
    EXPECT_EQ(sortInWait, "");
    EXPECT_TRUE(searchingInWait);
    EXPECT_EQ(f().adoPrimaryRS->Sort(), "Cost1 Desc");
    EXPECT_EQ(rows(), "Z9 D123 C3 X12B ");
}

TEST_F(QuickSearch, TheSortStaysInForceAfterTheFilterIsLifted) {
    startWithFive();
    then([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("1");
        click("chkReverse");
        click("cmdSrch");
    });
    thenContinue();
    f().cmdDetSearch_Click();
    EXPECT_EQ(rows(), "X12B D123 A1 ");
    typeAndEnter("");
    EXPECT_FALSE(stuck);
    EXPECT_EQ(f().adoPrimaryRS->Filter(), "");
    EXPECT_EQ(count(), 5);
    EXPECT_EQ(var(Mod().SearchOrder), "StockNo Desc");
    EXPECT_EQ(rows(), "Z9 X12B D123 C3 A1 ");
}

TEST_F(QuickSearch, ClearingTheBoxAndPressingEnterLiftsAFilterSetThroughTheSearchForm) {
    startWithFive();
    detailedSearch("12");
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(status(), "Record: 1  of  2");
    typeAndEnter("");
    EXPECT_FALSE(stuck);
    EXPECT_EQ(var(Mod().SearchCriteria), "");
    EXPECT_EQ(count(), 5);
    EXPECT_EQ(status(), "Record: 1  of  5");
    EXPECT_EQ(rt->MousePointer(), 0);
}

TEST_F(QuickSearch, DetailedSearchWithNoMatchesShowsThePaneMessageAndReturnsAllRecords) {
    startWithFive();
    Variant statusInWait, pageInWait;
    then([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("QQ");
        click("cmdSrch");
    });
    then([&] {
        statusInWait = Variant(status());
        pageInWait = Variant(paneText());
        ui.pane().UserNavigate("about:blankCONTINUE");
    });
    f().cmdDetSearch_Click();
    EXPECT_FALSE(stuck);
    EXPECT_EQ(var(statusInWait), "No Matches Found");
    EXPECT_EQ(var(pageInWait),
              "<font size=4><center>No Items Found Matching Your Search!<br>StockNo like "
              "'*QQ*'<br></center><br><p align=center><font size=3 font color=red><a "
              "href='CONTINUE'>Click Here To Continue</a>");
    EXPECT_EQ(var(Mod().SearchCriteria), "");
    EXPECT_EQ(count(), 5);
    EXPECT_EQ(status(), "Record: 1  of  5");
}

TEST_F(QuickSearch, NoMatchesWithTextInTheBoxKeepsTheEmptySet) {
    startWithFive();
    f()("txtSrch").SetText("12");
    detailedSearch("QQ");
    EXPECT_FALSE(stuck);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(status(), "NO CURRENT RECORDS");
    EXPECT_EQ(var(Mod().SearchCriteria), "StockNo like '*QQ*'");
    // The searching flag stays set on this road.
    EXPECT_TRUE(f().Searching);
}

TEST_F(QuickSearch, ACriteriaTextTheStoreRefusesIsReportedAsTheCountOfTheUnfilteredSet) {
    startWithFive();
    Variant statusInWait;
    then([this] {
        on("Text1").SetText("StockNo like 'A1 Sorted by StockNo");
        click("cmdSrch");
    });
    then([&] {
        statusInWait = Variant(status());
        ui.pane().UserNavigate("about:blankCONTINUE");
    });
    f().cmdDetSearch_Click();
    EXPECT_FALSE(stuck);
    EXPECT_EQ(var(statusInWait), "5 - Matches Found");
    EXPECT_EQ(count(), 5);
}

TEST_F(QuickSearch, CancelOnTheFormLiftsTheFilterInForce) {
    startWithFive();
    detailedSearch("12");
    EXPECT_EQ(count(), 2);
    then([this] { click("cmdCancel"); });
    f().cmdDetSearch_Click();
    EXPECT_FALSE(stuck);
    EXPECT_EQ(var(Mod().SearchCriteria), "");
    EXPECT_EQ(Mod().SearchFormOpen, Variant(false));
    EXPECT_EQ(count(), 5);
}

TEST_F(QuickSearch, TheSearchFormIsOpenWhileTheUserWorksOnIt) {
    startWithFive();
    Variant openInWait;
    then([&] {
        openInWait = Mod().SearchFormOpen;
        EXPECT_TRUE(searchForm().Visible());
        click("cmdCancel");
    });
    f().cmdDetSearch_Click();
    EXPECT_EQ(openInWait, Variant(true));
    EXPECT_EQ(rt->Loaded("Search"), nullptr);
}

TEST_F(QuickSearch, WithTheGridShownBothRecordSetsAreFilteredAndSorted) {
    startWithFive();
    f().cmdGrid_Click();
    then([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("1");
        click("chkReverse");
        click("cmdSrch");
    });
    thenContinue();
    f().cmdDetSearch_Click();
    EXPECT_EQ(f().adoprimaryrs2->RecordCount(), 3);
    EXPECT_EQ(f().adoprimaryrs2->Sort(), "StockNo Desc");
    typeAndEnter("");
    EXPECT_EQ(f().adoprimaryrs2->RecordCount(), 5);
}

TEST_F(QuickSearch, WithTheGridHiddenItsRecordSetIsLeftAlone) {
    startWithFive();
    detailedSearch("12");
    EXPECT_EQ(f().adoprimaryrs2->RecordCount(), 5);
    EXPECT_EQ(f().adoprimaryrs2->Filter(), "");
}

}  // namespace
