#include <gtest/gtest.h>

#include "search_fixture.h"

namespace {

struct SearchForm : SearchTest {
    void startWithFour() {
        cat.sql(
            "INSERT INTO Products (StockNo, ProdName, ProdDesc, Category, PageNo, Cost1, Retail, "
            "Disco, Supplier) VALUES "
            "('AB-1', 'Red Bead', 'Zebra', 'Beads', '1', 3, 8, -1, 'Acme'),"
            "('xab2', 'Blue Bead', 'Apple', 'Beads', '2', 6, 12, 0, 'Acme'),"
            "('CD3', 'Paint Pot', 'Mango', 'Paint', '10', 5.5, 8.5, 0, NULL),"
            "('EF4', 'Brush', 'Banana', NULL, NULL, 7, 8, 0, 'Bolt');");
        start();
    }
    // Opens the form by itself, lets `body` act as the user inside it, and closes it with
    // Cancel when the body left it open.
    void withForm(std::function<void()> body) {
        then([this, body] {
            body();
            if (rt->Loaded("Search")) click("cmdCancel");
        });
        rt->Show(rt->Get("Search"), vb::vbModal);
        EXPECT_FALSE(stuck);
    }
    // The rows the main record set shows for a criteria text.
    std::string filtered(const std::string& criteria) {
        f().adoPrimaryRS->SetFilter(criteria);
        f().adoPrimaryRS->SetSort("StockNo");
        return rows();
    }
    std::string m(const Variant& v) { return textOf(v); }
};

TEST_F(SearchForm, OpensWithItsCaptionAndAnEmptyPreview) {
    startWithFour();
    withForm([this] {
        EXPECT_EQ(searchForm().Caption(), "Detailed Search Form");
        EXPECT_EQ(preview(), "");
        EXPECT_EQ(on("txtSearch").Text(), "");
        EXPECT_EQ(m(Mod().SearchField), "Supplier");
        EXPECT_EQ(m(Mod().SearchOperator), " like ");
        EXPECT_EQ(m(Mod().SearchOpen), "'*");
        EXPECT_EQ(m(Mod().SearchClose), "*'");
        EXPECT_EQ(m(Mod().SearchOrder), "StockNo");
        EXPECT_EQ(m(Mod().SearchAccum), "");
        EXPECT_TRUE(CBool(on("optOperator", 0).Value()));
        EXPECT_FALSE(CBool(on("optOperator", 7).Value()));
        EXPECT_TRUE(CBool(on("optSort", 2).Value()));
        EXPECT_EQ(searchForm().SelectedField, 1);
    });
}

TEST_F(SearchForm, FieldCaptionsComeFromTheMainFormsLabels) {
    startWithFour();
    f()("Label3", 4).SetCaption("Details:");
    withForm([this] {
        EXPECT_EQ(on("optsrch", 1).Caption(), "Suppliers Name");
        EXPECT_EQ(on("optsrch", 17).Caption(), "Picture Path");
        EXPECT_EQ(on("optsrch", 2).Caption(), "Stock #:");
        EXPECT_EQ(on("optsrch", 4).Caption(), "Details:");
        EXPECT_EQ(on("optsrch", 21).Caption(), "Discontinued:");
        EXPECT_EQ(on("optSort", 30).Caption(), "Taxable:");
        EXPECT_EQ(on("optSort", 17).Caption(), "Picture Path");
        for (int i = 1; i <= 30; ++i) {
            EXPECT_EQ(textOf(on("optsrch", i).Property("ToolTipText")), on("optsrch", i).Caption());
            EXPECT_EQ(textOf(on("optSort", i).Property("ToolTipText")), on("optSort", i).Caption());
        }
    });
}

TEST_F(SearchForm, NineOperatorsWithTheirCaptions) {
    startWithFour();
    const char* const captions[] = {"Like / Contains",
                                    "Equals (=)",
                                    "More Than (>)",
                                    "Less Than (<)",
                                    "Equal Or Greater (=>)",
                                    "Equal Or Less (=<)",
                                    "Does Not Equal (<>)",
                                    "Empty Values (NULL)",
                                    "Starts With"};
    withForm([&] {
        for (int i = 0; i < 9; ++i)
            EXPECT_EQ(on("optOperator", i).Caption(), captions[i]);
        EXPECT_EQ(on("cmdAndOr", 0).Caption(), "And");
        EXPECT_EQ(on("cmdAndOr", 1).Caption(), "Or");
        EXPECT_EQ(on("cmdAndOr", 2).Caption(), "Then By");
        EXPECT_EQ(on("Check1").Caption(), "Whole Words ONLY");
        EXPECT_EQ(on("chkReverse").Caption(), "Reverse Order");
        EXPECT_EQ(on("cmdSrch").Caption(), "Search");
        EXPECT_EQ(on("cmdCancel").Caption(), "Cancel");
        EXPECT_EQ(on("cmdStartOver").Caption(), "Start Over");
    });
}

TEST_F(SearchForm, StockNumberLikeABSortedByDescription) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("optOperator", 0);
        on("txtSearch").SetText("AB");
        click("optSort", 4);
        EXPECT_EQ(preview(), "StockNo like '*AB*' Sorted by ProdDesc");
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "StockNo like '*AB*'");
    EXPECT_EQ(m(Mod().SearchOrder), "ProdDesc");
    EXPECT_EQ(Mod().SearchFormOpen, Variant(false));
    EXPECT_EQ(rt->Loaded("Search"), nullptr);
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "AB-1 xab2 ");
}

TEST_F(SearchForm, TwoConditionsJoinedByAnd) {
    startWithFour();
    withForm([this] {
        click("optsrch", 7);
        click("optOperator", 2);
        on("txtSearch").SetText("5");
        click("cmdAndOr", 0);
        EXPECT_EQ(m(Mod().SearchAccum), "Cost1 > 5 and ");
        EXPECT_EQ(on("txtSearch").Text(), "");
        click("optsrch", 12);
        click("optOperator", 3);
        on("txtSearch").SetText("9");
        EXPECT_EQ(preview(), "Cost1 > 5 and Retail < 9 Sorted by StockNo");
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "Cost1 > 5 and Retail < 9");
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "CD3 EF4 ");
}

TEST_F(SearchForm, OrJoinsTheConditions) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("optOperator", 1);
        on("txtSearch").SetText("CD3");
        click("cmdAndOr", 1);
        on("txtSearch").SetText("EF4");
        EXPECT_EQ(preview(), "StockNo = 'CD3' or StockNo = 'EF4' Sorted by StockNo");
        click("cmdSrch");
    });
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "CD3 EF4 ");
}

TEST_F(SearchForm, AYesNoFieldTakesTrueWithEqualsOrDoesNotEqualOnly) {
    startWithFour();
    withForm([this] {
        click("optsrch", 21);
        EXPECT_TRUE(searchForm().BooleanField);
        EXPECT_EQ(on("txtSearch").Text(), "True");
        EXPECT_FALSE(on("txtSearch").Enabled());
        EXPECT_FALSE(on("Check1").Enabled());
        for (int i : {0, 2, 3, 4, 5, 7})
            EXPECT_FALSE(on("optOperator", i).Enabled()) << i;
        for (int i : {1, 6, 8})
            EXPECT_TRUE(on("optOperator", i).Enabled()) << i;
        EXPECT_TRUE(CBool(on("optOperator", 1).Value()));
        EXPECT_FALSE(CBool(on("optOperator", 0).Value()));
        EXPECT_EQ(preview(), "Disco = True Sorted by StockNo");
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "Disco = True");
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "AB-1 ");
}

TEST_F(SearchForm, DoesNotEqualOnAYesNoField) {
    startWithFour();
    withForm([this] {
        click("optsrch", 21);
        click("optOperator", 6);
        EXPECT_EQ(preview(), "Disco <> True Sorted by StockNo");
        click("cmdSrch");
    });
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "CD3 EF4 xab2 ");
}

TEST_F(SearchForm, LeavingAYesNoFieldEnablesTheValueAgainAndKeepsTheOperator) {
    startWithFour();
    withForm([this] {
        click("optsrch", 21);
        click("optsrch", 3);
        EXPECT_FALSE(searchForm().BooleanField);
        EXPECT_TRUE(on("txtSearch").Enabled());
        EXPECT_TRUE(on("Check1").Enabled());
        for (int i = 0; i <= 7; ++i)
            EXPECT_TRUE(on("optOperator", i).Enabled()) << i;
        EXPECT_EQ(preview(), "ProdName = True Sorted by StockNo");
    });
}

TEST_F(SearchForm, OrderableIsYesNoToTheFieldClick) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("optOperator", 1);
        EXPECT_EQ(m(Mod().SearchOpen), "'");
        click("optsrch", 22);
        EXPECT_TRUE(searchForm().BooleanField);
        EXPECT_FALSE(on("txtSearch").Enabled());
        EXPECT_EQ(preview(), "Orderable = True Sorted by StockNo");
    });
}

TEST_F(SearchForm, OnOrderableEqualsLeavesTheQuotesAsTheyWere) {
    startWithFour();
    withForm([this] {
        click("optsrch", 22);
        click("optOperator", 8);
        click("optOperator", 1);
        EXPECT_EQ(m(Mod().SearchOpen), "'");
        EXPECT_EQ(m(Mod().SearchClose), "*'");
        EXPECT_EQ(preview(), "Orderable = 'True*' Sorted by StockNo");
    });
}

TEST_F(SearchForm, QuotesFollowTheClassOfTheField) {
    startWithFour();
    withForm([this] {
        click("optOperator", 1);
        click("optsrch", 5);
        click("optOperator", 1);
        on("txtSearch").SetText("10");
        EXPECT_EQ(preview(), "PageNo = '10' Sorted by StockNo");
        click("optsrch", 13);
        click("optOperator", 4);
        EXPECT_EQ(preview(), "Price >= 10 Sorted by StockNo");
        // Category counts as a number: no quotes round its value.
        click("optsrch", 18);
        click("optOperator", 1);
        on("txtSearch").SetText("Beads");
        EXPECT_EQ(preview(), "Category = Beads Sorted by StockNo");
        click("optsrch", 29);
        click("optOperator", 5);
        EXPECT_EQ(preview(), "Notes <= 'Beads' Sorted by StockNo");
    });
}

TEST_F(SearchForm, AFieldClickKeepsTheQuotesOfTheOperatorThatStands) {
    startWithFour();
    withForm([this] {
        click("optsrch", 7);
        click("optOperator", 1);
        click("optsrch", 2);
        on("txtSearch").SetText("CD3");
        EXPECT_EQ(preview(), "StockNo = CD3 Sorted by StockNo");
    });
}

TEST_F(SearchForm, StartsWithPutsTheStarBehindOnly) {
    startWithFour();
    withForm([this] {
        click("optsrch", 3);
        click("optOperator", 8);
        on("txtSearch").SetText("b");
        EXPECT_EQ(preview(), "ProdName like 'b*' Sorted by StockNo");
        click("cmdSrch");
    });
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "EF4 xab2 ");
}

TEST_F(SearchForm, EmptyValuesCutTheOperatorThatStands) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("optOperator", 7);
        EXPECT_EQ(on("txtSearch").Text(), " Null ");
        EXPECT_EQ(m(Mod().SearchOperator), " like");
        EXPECT_EQ(preview(), "StockNo like Null  Sorted by StockNo");
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "StockNo like Null ");
}

TEST_F(SearchForm, EmptyValuesFindTheProductsWithoutAValue) {
    startWithFour();
    withForm([this] {
        click("optsrch", 18);
        click("optOperator", 7);
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "Category like Null ");
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "EF4 ");
    withForm([this] {
        click("optsrch", 1);
        click("optOperator", 1);
        click("optOperator", 7);
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "Supplier = Null ");
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "CD3 ");
    withForm([this] {
        click("optsrch", 1);
        click("optOperator", 6);
        click("optOperator", 7);
        click("cmdSrch");
    });
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "AB-1 EF4 xab2 ");
}

TEST_F(SearchForm, EmptyValuesTwiceCutTheOperatorAgain) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("optOperator", 7);
        click("optOperator", 7);
        EXPECT_EQ(preview(), "StockNo lik Null  Sorted by StockNo");
    });
}

TEST_F(SearchForm, AnAndClickUnselectsEmptyValues) {
    startWithFour();
    withForm([this] {
        click("optsrch", 18);
        click("optOperator", 7);
        click("cmdAndOr", 0);
        EXPECT_FALSE(CBool(on("optOperator", 7).Value()));
        EXPECT_EQ(m(Mod().SearchAccum), "Category like Null  and ");
    });
}

TEST_F(SearchForm, WholeWordsPutsABlankEachSideAndEachJoinerClickAnotherPair) {
    startWithFour();
    withForm([this] {
        click("optsrch", 3);
        on("txtSearch").SetText("Bead");
        click("Check1");
        EXPECT_EQ(on("txtSearch").Text(), " Bead ");
        EXPECT_EQ(preview(), "ProdName like '* Bead *' Sorted by StockNo");
        click("cmdAndOr", 1);
        EXPECT_EQ(m(Mod().SearchAccum), "ProdName like '*  Bead  *' or ");
        on("txtSearch").SetText(" Pot ");
        click("Check1");
        EXPECT_EQ(on("txtSearch").Text(), "Pot");
    });
}

TEST_F(SearchForm, AnAndClickWithAnEmptyValueStoresAConditionWithAnEmptyValue) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("cmdAndOr", 0);
        EXPECT_EQ(m(Mod().SearchAccum), "StockNo like '**' and ");
        EXPECT_EQ(preview(), "StockNo like '**' and StockNo like '**' Sorted by StockNo");
        click("optsrch", 7);
        click("optOperator", 2);
        click("cmdAndOr", 0);
        EXPECT_EQ(m(Mod().SearchAccum), "StockNo like '**' and Cost1 >  and ");
        EXPECT_EQ(preview(), "StockNo like '**' and Cost1 >  and Cost1 >  Sorted by StockNo");
    });
}

TEST_F(SearchForm, AnOrClickRewritesThePreviewToo) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("cmdAndOr", 1);
        EXPECT_EQ(preview(), "StockNo like '**' or StockNo like '**' Sorted by StockNo");
    });
}

TEST_F(SearchForm, StartOverAfterAJoinerLeavesNoOldConditionInThePreview) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("cmdAndOr", 0);
        click("cmdStartOver");
        EXPECT_EQ(preview(), "PID like '**' Sorted by StockNo");
    });
}

TEST_F(SearchForm, SearchWithNoTextAndNoAndGivesAConditionWithNoValue) {
    startWithFour();
    withForm([this] {
        click("optsrch", 7);
        click("optOperator", 1);
        EXPECT_EQ(preview(), "Cost1 =  Sorted by StockNo");
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "Cost1 = ");
    // The store refuses it: the filter stays off.
    try {
        f().adoPrimaryRS->SetFilter(m(Mod().SearchCriteria));
        ADD_FAILURE() << "the filter took a condition with no value";
    } catch (const VbError&) {
    }
    EXPECT_EQ(count(), 4);
    withForm([this] {
        click("optsrch", 2);
        click("optOperator", 1);
        click("cmdSrch");
    });
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "");
}

TEST_F(SearchForm, ThenByAddsEachLaterSortColumn) {
    startWithFour();
    withForm([this] {
        click("optSort", 18);
        click("cmdAndOr", 2);
        EXPECT_TRUE(searchForm().ThenBy);
        click("optSort", 4);
        click("optSort", 2);
        EXPECT_EQ(m(Mod().SearchOrder), "Category,ProdDesc,StockNo");
        EXPECT_EQ(preview(), "Supplier like '**' Sorted by Category,ProdDesc,StockNo");
    });
}

TEST_F(SearchForm, ThenByKeepsTheValueAndTheConditions) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("AB");
        click("cmdAndOr", 2);
        EXPECT_EQ(on("txtSearch").Text(), "AB");
        EXPECT_EQ(m(Mod().SearchAccum), "");
    });
}

TEST_F(SearchForm, ReverseOrderReversesTheLastSortColumnOnly) {
    startWithFour();
    withForm([this] {
        click("optSort", 18);
        click("cmdAndOr", 2);
        click("optSort", 3);
        click("chkReverse");
        EXPECT_TRUE(Mod().ReverseOrder);
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchOrder), "Category,ProdName Desc");
    f().adoPrimaryRS->SetSort(m(Mod().SearchOrder));
    EXPECT_EQ(rows(), "EF4 AB-1 xab2 CD3 ");
}

TEST_F(SearchForm, ReverseOrderIsKeptForTheNextOpening) {
    startWithFour();
    withForm([this] {
        click("chkReverse");
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchOrder), "StockNo Desc");
    withForm([this] {
        EXPECT_EQ(CDbl(on("chkReverse").Value()), 1);
        EXPECT_TRUE(Mod().ReverseOrder);
        // Reopening takes the sort back to the stock number.
        EXPECT_EQ(m(Mod().SearchOrder), "StockNo");
        click("chkReverse");
        EXPECT_FALSE(Mod().ReverseOrder);
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchOrder), "StockNo");
    withForm([this] { EXPECT_EQ(CDbl(on("chkReverse").Value()), 0); });
}

TEST_F(SearchForm, AnEarlierSearchIsNotCarriedIntoTheForm) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("AB");
        click("cmdSrch");
    });
    withForm([this] {
        EXPECT_EQ(preview(), "");
        EXPECT_EQ(m(Mod().SearchCriteria), "");
        EXPECT_EQ(m(Mod().SearchField), "Supplier");
    });
}

TEST_F(SearchForm, TheUserMayEditThePreviewByHand) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("AB");
        on("Text1").SetText("[StockNo] = 'CD3' or Cost1 >= 7 Sorted by StockNo");
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "[StockNo] = 'CD3' or Cost1 >= 7");
    EXPECT_EQ(filtered(m(Mod().SearchCriteria)), "CD3 EF4 ");
}

TEST_F(SearchForm, WithoutSortedByTheCutFailsAndTheCriteriaStayAsTheyWere) {
    startWithFour();
    withForm([this] {
        on("Text1").SetText("StockNo = 'CD3'");
        click("cmdSrch");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "");
    EXPECT_EQ(Mod().SearchFormOpen, Variant(false));
    EXPECT_EQ(rt->Loaded("Search"), nullptr);
}

TEST_F(SearchForm, EnterInTheValueBoxSearches) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("CD");
        EventArgs key;
        key.KeyAscii = 13;
        on("txtSearch").Raise("KeyPress", key);
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "StockNo like '*CD*'");
    EXPECT_EQ(rt->Loaded("Search"), nullptr);
}

TEST_F(SearchForm, CancelClearsTheCriteriaAndClosesTheForm) {
    startWithFour();
    Mod().SearchCriteria = Variant("StockNo = 'CD3'");
    withForm([this] {
        click("optsrch", 2);
        on("txtSearch").SetText("AB");
        click("optSort", 3);
        click("cmdCancel");
    });
    EXPECT_EQ(m(Mod().SearchCriteria), "");
    EXPECT_EQ(Mod().SearchFormOpen, Variant(false));
    EXPECT_EQ(rt->Loaded("Search"), nullptr);
    // The sort chosen stays.
    EXPECT_EQ(m(Mod().SearchOrder), "ProdName");
}

TEST_F(SearchForm, StartOverBeginsAgainOnTheRecordNumberField) {
    startWithFour();
    withForm([this] {
        click("optsrch", 21);
        click("cmdAndOr", 0);
        click("optSort", 4);
        click("cmdAndOr", 2);
        click("optSort", 3);
        on("txtSearch").SetText("x");
        click("cmdStartOver");
        EXPECT_EQ(m(Mod().SearchAccum), "");
        EXPECT_EQ(m(Mod().SearchCriteria), "");
        EXPECT_EQ(m(Mod().SearchField), "PID");
        EXPECT_EQ(m(Mod().SearchOperator), " like ");
        EXPECT_EQ(m(Mod().SearchOrder), "StockNo");
        EXPECT_EQ(searchForm().SelectedField, 0);
        EXPECT_FALSE(searchForm().ThenBy);
        EXPECT_FALSE(searchForm().BooleanField);
        EXPECT_EQ(on("txtSearch").Text(), "");
        EXPECT_TRUE(on("txtSearch").Enabled());
        EXPECT_TRUE(on("Check1").Enabled());
        EXPECT_TRUE(CBool(on("optOperator", 0).Value()));
        EXPECT_TRUE(CBool(on("optSort", 2).Value()));
        EXPECT_EQ(preview(), "PID like '**' Sorted by StockNo");
        click("optSort", 3);
        EXPECT_EQ(m(Mod().SearchOrder), "ProdName");
    });
}

TEST_F(SearchForm, OptionButtonsOfOneArrayAreExclusive) {
    startWithFour();
    withForm([this] {
        click("optsrch", 2);
        click("optsrch", 3);
        EXPECT_FALSE(CBool(on("optsrch", 2).Value()));
        EXPECT_TRUE(CBool(on("optsrch", 3).Value()));
        // Another array keeps its own choice.
        EXPECT_TRUE(CBool(on("optSort", 2).Value()));
    });
}

TEST_F(SearchForm, EveryControlLiesInsideTheForm) {
    startWithFour();
    withForm([this] {
        Form& s = searchForm();
        for (const auto& c : s.Controls()) {
            if (!c->Visible()) continue;
            EXPECT_GE(c->Num("Left"), 0) << c->Path();
            EXPECT_GE(c->Num("Top"), 0) << c->Path();
            EXPECT_LE(c->Num("Left") + c->Num("Width"), s.Num("Width")) << c->Path();
            EXPECT_LE(c->Num("Top") + c->Num("Height"), s.Num("Height") - 400) << c->Path();
        }
    });
}

}  // namespace
