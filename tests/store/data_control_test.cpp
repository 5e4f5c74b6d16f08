#include <gtest/gtest.h>

#include "base/convert.h"
#include "catalogue_fixture.h"
#include "vb_expect.h"

namespace {

struct Data2 : ::testing::Test {
    TempCatalogue cat;
    std::unique_ptr<DataControl> data = CreateDataControl();
    void SetUp() override {
        cat.sql(
            "INSERT INTO Products (StockNo, ProdName, Supplier) VALUES ('B2', 'Bead', 'Acme'),"
            "('A1', 'Apple', 'Bolt'), ('C3', 'Cup', 'Acme');");
        data->SetDatabaseName(cat.path());
        data->SetRecordSource("Products");
        data->Refresh();
    }
    DaoRecordset& rs() { return data->Recordset(); }
};

TEST_F(Data2, ATableByNameShowsItsStoredColumnOrder) {
    EXPECT_EQ(rs().FieldName(0), "PID");
    EXPECT_EQ(rs().FieldName(1), "Supplier");
    EXPECT_EQ(rs().FieldName(2), "StockNo");
    EXPECT_EQ(rs().FieldName(17), "Picture");
    EXPECT_EQ(rs().FieldName(29), "Notes");
    EXPECT_EQ(rs().FieldCount(), 31);
    EXPECT_EQ(data->Connect(), "Access 2000;");
}

TEST_F(Data2, FindFirstSetsNoMatch) {
    rs().FindFirst("[StockNo]='C3'");
    EXPECT_FALSE(rs().NoMatch());
    EXPECT_EQ(CStr(rs().GetValue("ProdName")), "Cup");
    rs().FindFirst("StockNo = 'Z9'");
    EXPECT_TRUE(rs().NoMatch());
    EXPECT_EQ(CStr(rs().GetValue("ProdName")), "Cup");
}

// The finds of an import: each record is looked up by stock number, then edited or added.
TEST_F(Data2, FindFirstSeesEverySavedAndAddedStockNumber) {
    rs().FindFirst("[StockNo] = 'B2'");
    rs().Edit();
    rs().SetValue("StockNo", Variant("B9"));
    rs().Update();
    rs().FindFirst("[StockNo] = 'B2'");
    EXPECT_TRUE(rs().NoMatch());
    for (const char* added : {"D4", "B2", "A1"}) {
        rs().AddNew();
        rs().SetValue("StockNo", Variant(added));
        rs().SetValue("ProdName", Variant(std::string("new ") + added));
        rs().Update();
    }
    rs().AddNew();
    rs().SetValue("StockNo", Variant("E5"));
    rs().CancelUpdate();
    rs().FindFirst("[StockNo] = 'E5'");
    EXPECT_TRUE(rs().NoMatch());
    rs().FindFirst("[StockNo] = 'B9'");
    EXPECT_EQ(CStr(rs().GetValue("ProdName")), "Bead");
    rs().FindFirst("[StockNo] = 'b2'");
    EXPECT_EQ(CStr(rs().GetValue("ProdName")), "new B2");
    // The first of two in view order.
    rs().FindFirst("[StockNo] = 'A1'");
    EXPECT_EQ(CStr(rs().GetValue("ProdName")), "Apple");
    rs().FindNext("[StockNo] = 'A1'");
    EXPECT_EQ(CStr(rs().GetValue("ProdName")), "new A1");
    rs().FindFirst("[StockNo] = 'D4'");
    EXPECT_FALSE(rs().NoMatch());
    // Many more rows than the index was made for.
    for (int i = 0; i < 40; ++i) {
        rs().FindFirst("[StockNo] = 'N" + std::to_string(i) + "'");
        ASSERT_TRUE(rs().NoMatch());
        rs().AddNew();
        rs().SetValue("StockNo", Variant("N" + std::to_string(i)));
        rs().Update();
    }
    for (int i = 0; i < 40; ++i) {
        rs().FindFirst("[StockNo] = 'N" + std::to_string(i) + "'");
        EXPECT_FALSE(rs().NoMatch()) << i;
    }
}

TEST_F(Data2, FindFirstTakesJoinedConditions) {
    rs().FindFirst("Supplier = 'Acme' and StockNo <> 'B2'");
    EXPECT_EQ(CStr(rs().GetValue(2)), "C3");
}

TEST_F(Data2, BrokenCriteriaAreFaultsInTheOlderNumbers) {
    EXPECT_VBERROR(rs().FindFirst("StockNo = 'O'Brien'"), 3077);
    EXPECT_VBERROR(rs().FindFirst("Colour = 'red'"), 3070);
}

TEST_F(Data2, AFieldReadGivesBackAMissingFieldAsAFault) {
    rs().MoveFirst();
    Variant value("untouched");
    EXPECT_EQ(rs().TryGetValue(rs().FieldCount(), value).number, 3265);
    EXPECT_EQ(rs().TryGetValue(-1, value).number, 3265);
    EXPECT_EQ(CStr(value), "untouched");
    EXPECT_VBERROR(rs().GetValue(rs().FieldCount()), 3265);
    const int stockNo = rs().FieldIndex("StockNo");
    EXPECT_EQ(rs().TryGetValue(stockNo, value).number, 0);
    EXPECT_EQ(CStr(value), CStr(rs().GetValue(stockNo)));
}

TEST_F(Data2, AFieldWriteNeedsEditFirst) {
    EXPECT_VBERROR(rs().SetValue("Notes", Variant("x")), 3020);
    rs().Edit();
    rs().SetValue("Notes", Variant("x"));
    rs().Update();
    EXPECT_EQ(cat.query("select Notes from Products where StockNo = 'B2'"), "x");
}

TEST_F(Data2, AMoveDiscardsAnEditThatWasNotUpdated) {
    rs().Edit();
    rs().SetValue("Notes", Variant("lost"));
    rs().MoveNext();
    EXPECT_EQ(cat.query("select count(*) from Products where Notes = 'lost'"), "0");
}

TEST_F(Data2, AfterAddingTheFormerRecordStaysCurrent) {
    rs().MoveLast();
    rs().AddNew();
    rs().SetValue("StockNo", Variant("D4"));
    rs().Update();
    EXPECT_EQ(CStr(rs().GetValue("StockNo")), "C3");
    EXPECT_EQ(rs().RecordCount(), 4);
    EXPECT_EQ(cat.query("select count(*) from Products where StockNo = 'D4'"), "1");
}

TEST_F(Data2, DeleteThenMoveNext) {
    rs().Delete();
    rs().MoveNext();
    EXPECT_EQ(CStr(rs().GetValue("StockNo")), "A1");
    EXPECT_EQ(cat.query("select count(*) from Products"), "2");
}

TEST_F(Data2, ASelectWithWhereNarrowsTheRows) {
    data->SetRecordSource("select * from [products] where StockNo like '*1*' or Supplier = 'Acme'");
    data->Refresh();
    EXPECT_EQ(rs().RecordCount(), 3);
    data->SetRecordSource("Select * From Products Where Supplier = 'Bolt'");
    data->Refresh();
    EXPECT_EQ(rs().RecordCount(), 1);
    EXPECT_EQ(CStr(rs().GetValue("StockNo")), "A1");
}

TEST_F(Data2, ABrokenWhereFailsOnRefresh) {
    data->SetRecordSource("select * from [products] where StockNo = 'x");
    EXPECT_VBERROR(data->Refresh(), 3075);
    EXPECT_VBERROR(data->Recordset(), 91);
}

TEST_F(Data2, ChosenColumnsAreTheFieldsInTheStatementsOrder) {
    data->SetRecordSource("select ProdName, stockno from Products where Supplier = 'Acme'");
    data->Refresh();
    EXPECT_EQ(rs().FieldCount(), 2);
    EXPECT_EQ(rs().FieldName(0), "ProdName");
    EXPECT_EQ(rs().FieldName(1), "StockNo");
    EXPECT_VBERROR(rs().FieldName(2), 3265);
    EXPECT_EQ(CStr(rs().GetValue(1)), "B2");
}

TEST_F(Data2, AnUnknownSortColumnFailsOnRefresh) {
    data->SetRecordSource("select * from Products order by Colour");
    EXPECT_VBERROR(data->Refresh(), 3061);
    EXPECT_VBERROR(data->Recordset(), 91);
}

TEST_F(Data2, AnUnknownTableFails) {
    data->SetRecordSource("Nothing");
    EXPECT_VBERROR(data->Refresh(), 3078);
}

TEST_F(Data2, TheDatabaseListsItsTables) {
    std::string names;
    for (int i = 0; i < data->TableCount(); ++i)
        names += data->TableName(i) + " ";
    EXPECT_EQ(names, "Category Inventory Invoice Orders Products Sales Setup Supplier ");
}

TEST(DataControl, HasNoRecordSetBeforeRefresh) {
    auto data = CreateDataControl();
    EXPECT_VBERROR(data->Recordset(), 91);
}

}  // namespace
