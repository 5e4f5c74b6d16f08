#include <gtest/gtest.h>

#include "base/convert.h"
#include "catalogue_fixture.h"
#include "vb_expect.h"

namespace {

// Three products whose stock numbers sort differently by case, one with gaps.
const char* kThree =
    "INSERT INTO Products (StockNo, ProdName, Category, PageNo, Cost1, Notes, Picture) VALUES "
    "('b200', 'Brush', 'Paint', '2', 4.5, NULL, '/pics/b.jpg'),"
    "('A100', 'Apple', 'Fruit', '1', 2.5, 'note', NULL),"
    "('C300', '', 'Paint', 'A2', 0, '', '/pics/c.jpg');";

struct Three : ::testing::Test {
    TempCatalogue cat;
    std::unique_ptr<Connection> conn;
    std::unique_ptr<Recordset> rs;
    int moves = 0;
    void SetUp() override {
        cat.sql(kThree);
        conn = cat.connect();
        rs = CreateRecordset();
        rs->MoveComplete = [this] { ++moves; };
        rs->Open(StatementA, *conn);
    }
    std::string stock() { return CStr(rs->Fields("StockNo").Value()); }
};

TEST(EmptyCatalogue, BofAndEofAreBothTrueAndCountIsZero) {
    TempCatalogue cat;
    auto conn = cat.connect();
    auto rs = cat.open(StatementA, *conn);
    EXPECT_TRUE(rs->Bof());
    EXPECT_TRUE(rs->Eof());
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_VBERROR(rs->MoveFirst(), 3021);
    EXPECT_VBERROR(rs->Fields(1).Value(), 3021);
}

TEST_F(Three, OpeningRaisesTheMoveEventOnTheFirstRow) {
    EXPECT_EQ(moves, 1);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(stock(), "A100");
}

TEST_F(Three, FieldsByPositionFollowTheStatementOrder) {
    EXPECT_EQ(rs->FieldName(0), "PID");
    EXPECT_EQ(rs->FieldName(19), "Picture");
    EXPECT_EQ(rs->FieldName(27), "StockNo");
    EXPECT_EQ(CStr(rs->Fields(22).Value()), "Apple");
    EXPECT_EQ(rs->FieldIndex("stockno"), 27);
    EXPECT_VBERROR(rs->Fields("NoSuchColumn"), 3265);
    EXPECT_VBERROR(rs->Fields(31).Value(), 3265);
}

TEST_F(Three, OrderByStockNumberIgnoresCase) {
    std::string order;
    while (!rs->Eof()) {
        order += stock() + " ";
        rs->MoveNext();
    }
    EXPECT_EQ(order, "A100 b200 C300 ");
}

TEST_F(Three, NullIsToldFromEmptyText) {
    EXPECT_TRUE(rs->Fields("Picture").Value().IsNull());  // no picture
    EXPECT_FALSE(rs->Fields("Notes").Value().IsNull());
    rs->MoveLast();
    EXPECT_FALSE(rs->Fields("ProdName").Value().IsNull());
    EXPECT_EQ(rs->Fields("ProdName").Value(), Variant(""));
}

TEST_F(Three, ColumnsComeBackInTheirKinds) {
    EXPECT_EQ(rs->Fields("Cost1").Value().Type(), VarType::Currency);
    EXPECT_EQ(CStr(rs->Fields("Cost1").Value()), "2.5");
    EXPECT_EQ(rs->Fields("Disco").Value(), Variant(false));  // the default of a yes/no
    EXPECT_EQ(rs->Fields("PID").Value().Type(), VarType::Long);
    EXPECT_EQ(rs->Fields("PageNo").Value(), Variant("1"));
}

TEST_F(Three, MovesRunToTheEndsAndRaiseTheEventEachTime) {
    rs->MoveNext();
    rs->MoveNext();
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    rs->MoveNext();
    EXPECT_TRUE(rs->Eof());
    EXPECT_EQ(rs->AbsolutePosition(), ado::adPosEOF);
    EXPECT_VBERROR(rs->MoveNext(), 3021);
    rs->MoveFirst();
    rs->MovePrevious();
    EXPECT_TRUE(rs->Bof());
    EXPECT_EQ(rs->AbsolutePosition(), ado::adPosBOF);
    EXPECT_VBERROR(rs->MovePrevious(), 3021);
    EXPECT_EQ(moves, 1 + 5);
}

TEST_F(Three, AbsolutePositionAndBookmarkMoveThere) {
    rs->SetAbsolutePosition(3);
    EXPECT_EQ(stock(), "C300");
    Variant mark = rs->Bookmark();
    rs->MoveFirst();
    rs->SetBookmark(mark);
    EXPECT_EQ(stock(), "C300");
    EXPECT_VBERROR(rs->SetAbsolutePosition(4), 3001);
    EXPECT_VBERROR(rs->SetAbsolutePosition(0), 3001);
}

TEST_F(Three, FindRunsForwardFromTheCurrentRow) {
    rs->Find("StockNo = 'C300'");
    EXPECT_EQ(stock(), "C300");
    rs->Find("StockNo = 'A100'");  // behind: runs off the end
    EXPECT_TRUE(rs->Eof());
    EXPECT_EQ(rs->AbsolutePosition(), ado::adPosEOF);
}

TEST_F(Three, FindStaysOnAMatchAndSkipsWhenAsked) {
    rs->Find("[StockNo] like '*0*'");
    EXPECT_EQ(stock(), "A100");
    rs->Find("[StockNo] like '*0*'", 1);
    EXPECT_EQ(stock(), "b200");
}

TEST_F(Three, FindOnAQuotedKeyComparesAsANumber) {
    rs->MoveLast();
    Variant pid = rs->Fields("PID").Value();
    rs->MoveFirst();
    rs->Find("[PID] = '" + CStr(pid) + "'");
    EXPECT_EQ(stock(), "C300");
}

TEST_F(Three, FindWithAnApostropheFailsAndTheRowStays) {
    rs->MoveNext();
    int before = moves;
    EXPECT_VBERROR(rs->Find("StockNo = 'O'Brien'"), 3001);
    EXPECT_EQ(stock(), "b200");
    EXPECT_EQ(moves, before);
}

TEST_F(Three, FindTakesOneConditionOnly) {
    EXPECT_VBERROR(rs->Find("StockNo = 'A100' and PageNo = '1'"), 3001);
}

TEST_F(Three, FilterNarrowsTheCountAndEmptyLiftsIt) {
    rs->SetFilter("[Category] = 'paint'");
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(stock(), "b200");
    rs->SetFilter("");
    EXPECT_EQ(rs->RecordCount(), 3);
}

TEST_F(Three, FilterOnAPageNumberWithLettersTreatsItAsText) {
    rs->SetFilter("[PageNo] = 'A2'");
    EXPECT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(Val(CStr(rs->Fields("PageNo").Value())), 0);
}

TEST_F(Three, FilterNullTestsFindMissingValues) {
    rs->SetFilter("[Picture] = Null");
    EXPECT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(stock(), "A100");
    rs->SetFilter("[Picture] <> Null");
    EXPECT_EQ(rs->RecordCount(), 2);
}

TEST_F(Three, ABrokenFilterFailsAndLiftsTheFilter) {
    rs->SetFilter("[Category] = 'Paint'");
    EXPECT_VBERROR(rs->SetFilter("[Category] = 'Paint"), 3001);
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(rs->Filter(), "");
    rs->SetFilter("[Category] = 'Paint'");
    EXPECT_VBERROR(rs->SetFilter("[Colour] = 'red'"), 3265);
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(rs->Filter(), "");
}

TEST_F(Three, SortTakesSeveralColumnsAndDesc) {
    rs->SetSort("Category, StockNo Desc");
    std::string order;
    for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext())
        order += stock() + " ";
    EXPECT_EQ(order, "A100 C300 b200 ");
    rs->SetSort("Cost1 Desc");
    EXPECT_EQ(stock(), "b200");
}

// Products given by their stock numbers and names; the names in the order a sort gives.
class SortByText : public ::testing::Test {
  protected:
    void fill(const std::string& rows) {
        cat.sql("INSERT INTO Products (StockNo, ProdName) VALUES " + rows);
        conn = cat.connect();
        rs = cat.open(StatementA, *conn);
    }
    std::string order(const std::string& sort) {
        rs->SetSort(sort);
        std::string names;
        for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext())
            names += CStr(rs->Fields("ProdName").Value());
        return names;
    }
    TempCatalogue cat;
    std::unique_ptr<Connection> conn;
    std::unique_ptr<Recordset> rs;
};

TEST_F(SortByText, TextsAlikeInTheirFirstLettersAndNullsSortAsWholeTextsIgnoringCase) {
    fill(
        "('ABCDEFGHZ', '1'), ('abcdefgha', '2'), (NULL, '3'), ('ABCDEFGH', '4'), ('abc', '5'), "
        "('ABCDEFGHA', '6'), ('', '7'), ('b', '8')");
    // Equal texts keep the order they were read in, either way.
    EXPECT_EQ(order("StockNo"), "37542618");
    EXPECT_EQ(order("StockNo Desc"), "81264573");
    EXPECT_EQ(order("StockNo, ProdName Desc"), "37546218");
}

TEST_F(SortByText, RowsStoredInOrderStayAndTextsEqualButForCaseKeepTheirStoredOrder) {
    fill("(NULL, '1'), ('a1', '2'), ('A1', '3'), ('a2', '4'), ('B', '5')");
    EXPECT_EQ(order("StockNo"), "12345");
    EXPECT_EQ(order("StockNo Desc"), "54231");
    // One row out of place among rows in order.
    cat.sql("UPDATE Products SET StockNo = 'a0' WHERE ProdName = '4'");
    rs->Requery();
    EXPECT_EQ(order("StockNo"), "14235");
}

TEST_F(Three, SortStaysWhenTheFilterChanges) {
    rs->SetSort("StockNo Desc");
    rs->SetFilter("[Category] = 'Paint'");
    EXPECT_EQ(stock(), "C300");
}

TEST_F(Three, MovingOffAnEditedRowSavesIt) {
    rs->Fields("ProdName").SetValue("Green Apple");
    EXPECT_EQ(rs->EditMode(), ado::adEditInProgress);
    rs->MoveNext();
    EXPECT_EQ(cat.query("select ProdName from Products where StockNo = 'A100'"), "Green Apple");
}

TEST_F(Three, CancelUpdateDiscardsTheEdit) {
    rs->Fields("ProdName").SetValue("Pear");
    rs->CancelUpdate();
    EXPECT_EQ(CStr(rs->Fields("ProdName").Value()), "Apple");
    rs->MoveNext();
    EXPECT_EQ(cat.query("select ProdName from Products where StockNo = 'A100'"), "Apple");
}

TEST_F(Three, TextThatIsNoNumberIsRefusedByANumberColumn) {
    EXPECT_VBERROR(rs->Fields("Cost1").SetValue("abc"), 3421);
    EXPECT_EQ(CStr(rs->Fields("Cost1").Value()), "2.5");
    EXPECT_EQ(rs->EditMode(), ado::adEditNone);
    rs->Fields("Cost1").SetValue("$1,234.50");
    rs->Update();
    EXPECT_EQ(cat.query("select Cost1 from Products where StockNo = 'A100'"), "1234.5");
}

TEST_F(Three, AddNewAndUpdateInsertARowWithItsKeyAndDefaults) {
    rs->AddNew();
    EXPECT_EQ(rs->RecordCount(), 4);
    rs->Fields("StockNo").SetValue("D400");
    rs->Update();
    EXPECT_FALSE(rs->Fields("PID").Value().IsNull());
    EXPECT_EQ(rs->Fields("Inventory").Value(), Variant::Long(0));
    EXPECT_EQ(cat.query("select StockNo from Products where StockNo = 'D400'"), "D400");
}

TEST_F(Three, AddNewThenCancelLeavesNothing) {
    rs->MoveNext();
    rs->AddNew();
    rs->Fields("StockNo").SetValue("D400");
    rs->CancelUpdate();
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(stock(), "b200");
    EXPECT_EQ(cat.query("select count(*) from Products"), "3");
}

TEST_F(Three, DeleteRemovesTheRowAndTheNextMoveLandsOnItsSuccessor) {
    rs->MoveNext();
    rs->Delete();
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_VBERROR(rs->Fields("StockNo").Value(), 3021);
    rs->MoveNext();
    EXPECT_EQ(stock(), "C300");
    EXPECT_EQ(cat.query("select StockNo from Products order by StockNo"), "A100|C300");
}

TEST_F(Three, EveryBookmarkIsAbove0) {
    for (int i = 0; i < 3; ++i, rs->MoveNext())
        EXPECT_GT(CDbl(rs->Bookmark()), 0) << i;
}

TEST_F(Three, MoveNextAfterDeletingTheLastRowGoesPastTheEndWithAMove) {
    rs->MoveLast();
    rs->Delete();
    const int before = moves;
    rs->MoveNext();
    EXPECT_TRUE(rs->Eof());
    EXPECT_EQ(moves, before + 1);
    EXPECT_VBERROR(rs->MoveNext(), 3021);
    rs->MoveLast();
    EXPECT_EQ(stock(), "b200");
}

TEST(OneRow, MoveNextAfterDeletingTheOnlyRowLeavesAnEmptySetPastTheEnd) {
    TempCatalogue cat;
    cat.sql("INSERT INTO Products (StockNo) VALUES ('A1');");
    auto conn = cat.connect();
    auto rs = cat.open(StatementA, *conn);
    int moves = 0;
    rs->MoveComplete = [&] { ++moves; };
    rs->Delete();
    rs->MoveNext();
    EXPECT_EQ(moves, 1);
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_TRUE(rs->Eof());
    EXPECT_VBERROR(rs->MoveLast(), 3021);
}

TEST_F(Three, WillChangeIsRaisedBeforeAnUpdate) {
    int changes = 0;
    rs->WillChangeRecord = [&] { ++changes; };
    rs->Fields("Notes").SetValue("x");
    rs->Update();
    EXPECT_EQ(changes, 1);
}

TEST_F(Three, AnotherRecordSetSeesAChangeOnlyAfterRequery) {
    auto other = cat.open(StatementB, *conn);
    rs->Fields("ProdName").SetValue("Quince");
    rs->Update();
    EXPECT_EQ(CStr(other->Fields("ProdName").Value()), "Apple");
    other->Requery();
    EXPECT_EQ(CStr(other->Fields("ProdName").Value()), "Quince");
}

TEST_F(Three, ResyncReadsTheCurrentRowAgainAndKeepsItsPlaceAndAPendingChange) {
    auto other = cat.open(StatementB, *conn);
    rs->Fields("ProdName").SetValue("Quince");
    rs->Fields("Notes").SetValue("kept");
    rs->Update();
    other->Fields("Notes").SetValue("typed");
    const long at = other->AbsolutePosition();
    int moves = 0;
    other->MoveComplete = [&] { ++moves; };
    other->Resync();
    EXPECT_EQ(CStr(other->Fields("ProdName").Value()), "Quince");
    EXPECT_EQ(CStr(other->Fields("Notes").Value()), "typed");
    EXPECT_EQ(other->AbsolutePosition(), at);
    EXPECT_EQ(moves, 0);
    // A find by the new value finds the row.
    other->MoveLast();
    other->Find("ProdName = 'Quince'", 0, ado::adSearchBackward);
    EXPECT_EQ(other->AbsolutePosition(), at);
}

TEST_F(Three, ResyncOfARowDeletedElsewhereHasNoCurrentRecord) {
    auto other = cat.open(StatementB, *conn);
    rs->Delete();
    EXPECT_VBERROR(other->Resync(), 3021);
}

TEST_F(Three, RequeryKeepsFilterAndSort) {
    rs->SetFilter("[Category] = 'Paint'");
    rs->SetSort("StockNo Desc");
    cat.sql("INSERT INTO Products (StockNo, Category) VALUES ('Z9', 'Paint')");
    rs->Requery();
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(stock(), "Z9");
}

TEST_F(Three, AClosedSetRefusesAndAnOpenOneCannotOpenAgain) {
    EXPECT_VBERROR(rs->Open(StatementA, *conn), 3705);
    rs->Close();
    EXPECT_EQ(rs->State(), ado::adStateClosed);
    EXPECT_VBERROR(rs->MoveFirst(), 3704);
    EXPECT_VBERROR(rs->RecordCount(), 3704);
    rs->Open();  // the same statement again
    EXPECT_EQ(rs->RecordCount(), 3);
}

TEST_F(Three, AWriteIsDurableWithoutAnyClose) {
    rs->Fields("Notes").SetValue("kept");
    rs->Update();
    auto again = cat.connect();
    auto fresh = cat.open("select Notes from Products where StockNo = 'A100'", *again);
    EXPECT_EQ(CStr(fresh->Fields(0).Value()), "kept");
}

TEST_F(Three, AnEmptiedNumberBoxStoresNull) {
    rs->Fields("Cost1").SetValue("");
    rs->Update();
    EXPECT_EQ(cat.query("select Cost1 from Products where StockNo = 'A100'"), "Null");
}

TEST(SampleCatalogue, HoldsAtLeastFortyProductsOverSeveralCategories) {
    TempCatalogue cat(true);
    auto conn = cat.connect();
    auto rs = cat.open(StatementA, *conn);
    EXPECT_GE(rs->RecordCount(), 40);
    EXPECT_GE(std::stoi(cat.query("select count(distinct Category) from Products")), 4);
    EXPECT_GE(std::stoi(cat.query("select count(*) from Supplier")), 2);
    EXPECT_EQ(cat.query("select count(*) from Setup"), "1");
}

}  // namespace

namespace {

TEST_F(Three, FindByAValueWrittenMomentsAgo) {
    rs->Find("[StockNo] = 'C300'");  // the first find builds the index
    rs->MoveFirst();
    rs->Fields("StockNo").SetValue("Z999");
    rs->Update();
    rs->Find("[StockNo] = 'z999'");
    EXPECT_EQ(stock(), "Z999");
    rs->MoveFirst();
    rs->Find("[StockNo] = 'A100'");
    EXPECT_TRUE(rs->Eof());
}

TEST_F(Three, FindByAValueSeveralRowsShareTakesTheNextFromHere) {
    rs->Find("Category = 'Paint'");
    EXPECT_EQ(stock(), "b200");
    rs->Find("Category = 'Paint'", 1);
    EXPECT_EQ(stock(), "C300");
    rs->Find("Category = 'Paint'", 1);
    EXPECT_TRUE(rs->Eof());
}

TEST_F(Three, FindBackwardRunsTowardsTheFirstRow) {
    rs->MoveLast();
    rs->Find("Category = 'Fruit'", 0, ado::adSearchBackward);
    EXPECT_EQ(stock(), "A100");
    rs->Find("Category = 'Paint'", 1, ado::adSearchBackward);
    EXPECT_TRUE(rs->Bof());
}

TEST_F(Three, FindFollowsTheViewAfterAFilter) {
    rs->Find("[StockNo] = 'C300'");
    rs->SetFilter("Category = 'Paint'");
    rs->Find("[StockNo] = 'C300'");
    EXPECT_EQ(rs->AbsolutePosition(), 2);
}

}  // namespace

namespace {

// Values another program wrote that the columns' kinds cannot hold.
TEST(ForeignValues, NumbersTooLargeForTheirColumnLoadAsOverflowedCells) {
    TempCatalogue cat;
    cat.sql(
        "INSERT INTO Products (StockNo, Cost1, Cost2, Inventory, OnOrder, NoSold) VALUES "
        "('A1', 1e300, -1e300, 1e20, 3000000000, '1e999'),"
        "('B2', 4, 5, 6, 7, 8);");
    auto conn = cat.connect();
    auto rs = cat.open(StatementA, *conn);
    ASSERT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(CStr(rs->Fields("StockNo").Value()), "A1");
    for (const char* column : {"Cost1", "Cost2", "Inventory", "OnOrder", "NoSold"}) {
        SCOPED_TRACE(column);
        EXPECT_VBERROR(rs->Fields(column).Value(), 6);
    }
    // The cells still sort and compare by their sign, and a written value replaces them.
    rs->SetSort("Cost1 Desc");
    EXPECT_EQ(CStr(rs->Fields("StockNo").Value()), "A1");
    rs->SetFilter("Cost2 < 0");
    EXPECT_EQ(rs->RecordCount(), 1);
    rs->Fields("Cost1").SetValue(Variant(2.5));
    EXPECT_EQ(CStr(rs->Fields("Cost1").Value()), "2.5");
    rs->MoveFirst();
    EXPECT_EQ(cat.query("SELECT Cost1 FROM Products WHERE StockNo = 'A1'"), "2.5");
}

}  // namespace
