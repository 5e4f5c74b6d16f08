#include <gtest/gtest.h>

#include "base/convert.h"
#include "catalogue_fixture.h"
#include "vb_expect.h"

namespace {

// Filters on a small catalogue give the rows a user expects.
struct Criteria : ::testing::Test {
    TempCatalogue cat;
    std::unique_ptr<Connection> conn;
    std::unique_ptr<Recordset> rs;
    void SetUp() override {
        cat.sql(
            "INSERT INTO Products (StockNo, ProdName, Category, PageNo, Cost1, Retail, Disco, "
            "Supplier) VALUES "
            "('AB-1', 'Red Bead', 'Beads', '1', 3, 8, -1, 'Acme'),"
            "('xab2', 'Blue Bead', 'Beads', '2', 6, 12, 0, 'Acme'),"
            "('CD3', 'Paint Pot', 'Paint', '10', 5.5, 8.5, 0, NULL),"
            "('EF4', 'Brush', NULL, NULL, NULL, 20, 0, 'Bolt');");
        conn = cat.connect();
        rs = cat.open(StatementA, *conn);
    }
    std::string rows(const std::string& criteria) {
        rs->SetFilter(criteria);
        std::string out;
        for (; !rs->Eof(); rs->MoveNext())
            out += CStr(rs->Fields("StockNo").Value()) + " ";
        return out;
    }
};

TEST_F(Criteria, LikeWithAsterisksMatchesAnywhereIgnoringCase) {
    EXPECT_EQ(rows("StockNo like '*AB*'"), "AB-1 xab2 ");
    EXPECT_EQ(rows("[StockNo] like 'ab*'"), "AB-1 ");
}

TEST_F(Criteria, LikeKnowsOneCharacterDigitAndSets) {
    EXPECT_EQ(rows("StockNo like 'CD?'"), "CD3 ");
    EXPECT_EQ(rows("StockNo like '??#'"), "CD3 EF4 ");
    EXPECT_EQ(rows("StockNo like '[a-c]*'"), "AB-1 CD3 ");
}

TEST_F(Criteria, NumberComparisonsJoinWithAnd) {
    EXPECT_EQ(rows("Cost1 > 5 and Retail < 9"), "CD3 ");
}

TEST_F(Criteria, OrAndParenthesesGroup) {
    EXPECT_EQ(rows("(Category = 'Paint' or Supplier = 'Bolt') and Retail >= 8.5"), "CD3 EF4 ");
}

TEST_F(Criteria, YesNoComparesWithTrueAndFalse) {
    EXPECT_EQ(rows("Disco = True"), "AB-1 ");
    EXPECT_EQ(rows("[Disco] = False"), "CD3 EF4 xab2 ");
}

TEST_F(Criteria, LikeNullFindsMissingValues) {
    EXPECT_EQ(rows("Category like Null "), "EF4 ");
    EXPECT_EQ(rows("StockNo like Null "), "");
    EXPECT_EQ(rows("Supplier like Null  and Cost1 > 5"), "CD3 ");
}

TEST_F(Criteria, EqualsNullAndNotEqualsNullTestForMissingValues) {
    EXPECT_EQ(rows("[Category] = Null"), "EF4 ");
    EXPECT_EQ(rows("[PageNo] <> Null"), "AB-1 CD3 xab2 ");
}

TEST_F(Criteria, NotEqualSkipsMissingValues) {
    EXPECT_EQ(rows("[Category] <> 'Beads'"), "CD3 ");
}

TEST_F(Criteria, TextComparisonIgnoresCase) {
    EXPECT_EQ(rows("[ProdName] = 'RED BEAD'"), "AB-1 ");
}

TEST_F(Criteria, PageNumbersInQuotesCompareAsText) {
    EXPECT_EQ(rows("[PageNo] = '10'"), "CD3 ");
    EXPECT_EQ(rows("[PageNo] > '2'"), "");  // "10" sorts before "2" as text
}

TEST_F(Criteria, AQuotedNumberAgainstANumberColumnComparesAsANumber) {
    EXPECT_EQ(rows("Cost1 = '5.50'"), "CD3 ");
    EXPECT_VBERROR(rs->SetFilter("Cost1 = 'cheap'"), 3001);
}

TEST_F(Criteria, AValueOnTheLeftReadsTheOtherWayRound) {
    EXPECT_EQ(rows("5 < Cost1"), "CD3 xab2 ");
}

TEST_F(Criteria, BrokenTextsAreFaultsNotCrashes) {
    for (const char* broken :
         {"StockNo = 'AB", "StockNo =", "StockNo 'AB'", "(StockNo = 'AB'", "StockNo = 'AB' and",
          "[StockNo = 'AB'", "StockNo = 'O'Brien'", "StockNo ~ 'x'", "and or"})
        EXPECT_VBERROR(rs->SetFilter(broken), 3001);
    EXPECT_VBERROR(rs->SetFilter("Colour = 'red'"), 3265);
    EXPECT_EQ(rs->RecordCount(), 4);
}

TEST_F(Criteria, ADoubledQuoteStandsForOne) {
    cat.sql("INSERT INTO Products (StockNo, ProdName) VALUES ('Q1', 'Grandma''s Kit')");
    rs->Requery();
    EXPECT_EQ(rows("ProdName = 'Grandma''s Kit'"), "Q1 ");
}

// Notes holding numbers, a yes/no text and a word, for comparisons of a number or yes/no
// column with a text column.
struct MixedKinds : Criteria {
    void SetUp() override {
        Criteria::SetUp();
        cat.sql(
            "UPDATE Products SET Notes = '-1' WHERE StockNo = 'AB-1';"
            "UPDATE Products SET Notes = '6' WHERE StockNo = 'xab2';"
            "UPDATE Products SET Notes = ' 5.5 ' WHERE StockNo = 'CD3';");
        rs->Requery();
    }
    long position() { return rs->AbsolutePosition(); }
};

TEST_F(MixedKinds, ATextCellAgainstANumberColumnIsReadAsANumber) {
    EXPECT_EQ(rows("Disco = Notes"), "AB-1 ");
    EXPECT_EQ(rows("Cost1 = Notes"), "CD3 xab2 ");
    EXPECT_EQ(rows("[Notes] < Retail"), "AB-1 CD3 xab2 ");
    EXPECT_EQ(rows("Notes <> Cost1"), "AB-1 ");
}

TEST_F(MixedKinds, LikeBetweenColumnsOfDifferentKindsReadsEachAsText) {
    EXPECT_EQ(rows("Notes like Cost1"), "xab2 ");
    cat.sql("UPDATE Products SET Notes = 'tr*' WHERE StockNo = 'AB-1'");
    rs->Requery();
    EXPECT_EQ(rows("Disco like Notes"), "AB-1 ");
    EXPECT_EQ(rows("Cost1 like Retail"), "");
}

TEST_F(MixedKinds, AWordAgainstANumberColumnIsRefusedAndTheWholeSetShows) {
    cat.sql("UPDATE Products SET Notes = 'two' WHERE StockNo = 'EF4'");
    rs->SetFilter("Category = 'Beads'");
    ASSERT_EQ(rs->RecordCount(), 2);
    rs->Requery();  // the word arrives; the filter still holds
    EXPECT_VBERROR(rs->SetFilter("Cost1 = Notes or Disco = Notes"), 3001);
    // Never half filtered: the filter is lifted and every row counts.
    EXPECT_EQ(rs->Filter(), "");
    EXPECT_EQ(rs->RecordCount(), 4);
    EXPECT_EQ(position(), 1);
    EXPECT_VBERROR(rs->Find("Notes > Retail", 0, ado::adSearchForward), 3001);
    EXPECT_EQ(position(), 1);
}

TEST_F(MixedKinds, ARequeryWhoseFilterTheNewRowsRefuseKeepsTheRowsItHad) {
    rs->SetFilter("Cost1 = Notes");
    ASSERT_EQ(rs->RecordCount(), 2);
    cat.sql("UPDATE Products SET Notes = 'two' WHERE StockNo = 'AB-1'");
    EXPECT_VBERROR(rs->Requery(), 3001);
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(CStr(rs->Fields("StockNo").Value()), "CD3");
}

std::string repeated(const std::string& part, int times) {
    std::string out;
    for (int i = 0; i < times; ++i)
        out += part;
    return out;
}

TEST_F(Criteria, LongChainsOfOrAndNotAreReadWithoutLimit) {
    std::string chain = "StockNo = 'CD3'";
    for (int i = 0; i < 50000; ++i)
        chain += " or Cost1 = " + std::to_string(1000 + i);
    EXPECT_EQ(rows(chain), "CD3 ");
    EXPECT_EQ(rows(repeated("not ", 50000) + "Disco = True"), "AB-1 ");
    EXPECT_EQ(rows(repeated("not ", 50001) + "Disco = True"), "CD3 EF4 xab2 ");
    EXPECT_EQ(rows(repeated("Retail > 1 and ", 50000) + "Disco = True"), "AB-1 ");
}

TEST_F(Criteria, NestingUpToTwoHundredParenthesesIsRead) {
    EXPECT_EQ(rows(repeated("(", 200) + "Disco = True" + repeated(")", 200)), "AB-1 ");
    EXPECT_EQ(rows(repeated("(not ", 200) + "Disco = True" + repeated(")", 200)), "AB-1 ");
}

TEST_F(Criteria, DeeperNestingIsTooComplexNeverACrash) {
    rs->SetFilter("Category = 'Beads'");
    EXPECT_VBERROR(rs->SetFilter(repeated("(", 201) + "Disco = True" + repeated(")", 201)), 3360);
    EXPECT_VBERROR(rs->SetFilter(repeated("(", 100000)), 3360);
    EXPECT_EQ(rs->RecordCount(), 4);
    // What the quick search makes of a pasted "' or " and a run of parentheses.
    EXPECT_VBERROR(
        rs->Find("[StockNo] like '*' or " + repeated("(", 100000) + "*'", 0, ado::adSearchForward),
        3001);
    EXPECT_VBERROR(rs->Find("[StockNo] like '*' or " + repeated("(", 100000) + "Disco = True", 0,
                            ado::adSearchForward),
                   3360);
}

}  // namespace
