// A record set opened, requeried or refreshed on an unchanged file takes the rows another set
// of the same connection already read; any write since, from anywhere, makes them read again.
#include <gtest/gtest.h>

#include <cstdlib>

#include "base/convert.h"
#include "catalogue_fixture.h"
#include "vb_expect.h"

namespace {

struct KeptRows : ::testing::Test {
    TempCatalogue cat;
    std::unique_ptr<Connection> conn;
    std::unique_ptr<Recordset> a;
    void SetUp() override {
        cat.sql(
            "INSERT INTO Products (StockNo, ProdName, Cost1, Notes) VALUES ('B2', 'Bead', 1.5, "
            "NULL), ('A1', 'Apple', 2, 'ripe'), ('C3', 'Cup', NULL, '');");
        conn = cat.connect();
        a = cat.open(StatementA, *conn);
    }
    // Every row of a set: each field by name, and the row's bookmark.
    static std::string rowsOf(Recordset& rs) {
        std::string all;
        rs.MoveFirst();
        for (; !rs.Eof(); rs.MoveNext()) {
            all += CStr(rs.Bookmark()) + ":";
            for (const char* name : {"PID", "StockNo", "ProdName", "Cost1", "Notes", "Retail"}) {
                const Variant v = rs.Fields(name).Value();
                all += (v.IsNull() ? "Null" : CStr(v)) + ",";
            }
            all += ";";
        }
        return all;
    }
    std::string names(Recordset& rs) {
        std::string all;
        rs.MoveFirst();
        for (; !rs.Eof(); rs.MoveNext())
            all += CStr(rs.Fields("ProdName").Value()) + "|";
        return all;
    }
};

TEST_F(KeptRows, ASecondSetInAnotherColumnOrderReadsWhatTheFirstReads) {
    auto b = cat.open(StatementB, *conn);
    EXPECT_EQ(rowsOf(*b), rowsOf(*a));
    EXPECT_EQ(rowsOf(*a),
              "2:2,A1,Apple,2,ripe,Null,;1:1,B2,Bead,1.5,Null,Null,;3:3,C3,Cup,Null,,Null,;");
    EXPECT_EQ(b->FieldName(0), "StockNo");
}

TEST_F(KeptRows, ARequeryAfterAnotherConnectionOfTheProgramWroteSeesTheWrite) {
    cat.sql("UPDATE Products SET ProdName = 'Acorn' WHERE StockNo = 'A1'");
    a->Requery(0);
    EXPECT_EQ(names(*a), "Acorn|Bead|Cup|");
}

TEST_F(KeptRows, ARequeryAfterAnotherProgramWroteSeesTheWrite) {
    ASSERT_EQ(std::system(("sqlite3 '" + cat.path() +
                           "' \"INSERT INTO Products (StockNo, ProdName) VALUES ('D4', 'Dish')\"")
                              .c_str()),
              0);
    a->Requery(0);
    EXPECT_EQ(names(*a), "Apple|Bead|Cup|Dish|");
}

TEST_F(KeptRows, ASetOpenedAfterAWriteThroughAnotherSetOfTheConnectionSeesIt) {
    a->MoveFirst();
    a->Fields("ProdName").SetValue(Variant("Apricot"));
    a->MoveNext();
    auto b = cat.open(StatementB, *conn);
    EXPECT_EQ(names(*b), "Apricot|Bead|Cup|");
    b->MoveLast();
    b->Delete(0);
    a->Requery(0);
    EXPECT_EQ(names(*a), "Apricot|Bead|");
}

TEST_F(KeptRows, ARowAddedAndNotStoredIsNotInAnotherSet) {
    a->AddNew();
    a->Fields("StockNo").SetValue(Variant("Z9"));
    auto b = cat.open(StatementB, *conn);
    EXPECT_EQ(b->RecordCount(), 3);
    a->CancelUpdate();
    auto c = cat.open(StatementA, *conn);
    EXPECT_EQ(rowsOf(*c), rowsOf(*b));
}

TEST_F(KeptRows, ARowReadAgainFromTheFileIsNotHandedToTheNextSet) {
    auto b = cat.open(StatementB, *conn);
    cat.sql("UPDATE Products SET ProdName = 'Bell' WHERE StockNo = 'B2'");
    b->MoveFirst();
    b->MoveNext();
    b->Resync(0);
    EXPECT_EQ(CStr(b->Fields("ProdName").Value()), "Bell");
    a->Requery(0);
    EXPECT_EQ(names(*a), "Apple|Bell|Cup|");
}

TEST_F(KeptRows, AResyncWithNothingWrittenKeepsTheRowAndTheNextSetReadsTheSame) {
    a->MoveFirst();
    a->MoveNext();
    a->Resync(0);
    EXPECT_EQ(CStr(a->Fields("ProdName").Value()), "Bead");
    auto b = cat.open(StatementB, *conn);
    EXPECT_EQ(rowsOf(*b), rowsOf(*a));
    // A write from another connection since is read again.
    cat.sql("UPDATE Products SET ProdName = 'Bowl' WHERE StockNo = 'B2'");
    a->MoveFirst();
    a->MoveNext();
    a->Resync(0);
    EXPECT_EQ(CStr(a->Fields("ProdName").Value()), "Bowl");
}

TEST_F(KeptRows, AResyncOfARowTheSetDeletedHasNoCurrentRecord) {
    a->MoveFirst();
    a->Delete(0);
    EXPECT_VBERROR(a->Resync(0), 3021);
}

// A data control on the catalogue's products, refreshed.
std::unique_ptr<DataControl> productsOf(const TempCatalogue& cat) {
    auto data = CreateDataControl();
    data->SetDatabaseName(cat.path());
    data->SetRecordSource("Products");
    data->Refresh();
    return data;
}

TEST(KeptRowsOfADataControl, ARefreshSeesWritesOfItsOwnAndOfOtherConnections) {
    TempCatalogue cat;
    cat.sql("INSERT INTO Products (StockNo, ProdName) VALUES ('A1', 'Apple'), ('B2', 'Bead')");
    auto data = productsOf(cat);
    EXPECT_EQ(data->Recordset().RecordCount(), 2);
    data->Refresh();
    EXPECT_EQ(data->Recordset().RecordCount(), 2);
    data->Recordset().AddNew();
    data->Recordset().SetValue("StockNo", Variant("C3"));
    data->Recordset().Update();
    data->Refresh();
    EXPECT_EQ(data->Recordset().RecordCount(), 3);
    auto conn = cat.connect();
    auto rs = cat.open(StatementA, *conn);
    rs->MoveFirst();
    rs->Delete(0);
    data->Refresh();
    EXPECT_EQ(data->Recordset().RecordCount(), 2);
    data->Recordset().MoveFirst();
    EXPECT_EQ(CStr(data->Recordset().GetValue("StockNo")), "B2");
}

TEST(KeptRowsOfADataControl, TheFormsSetsTakeTheRowsItReadUntilAnyConnectionWrites) {
    TempCatalogue cat;
    cat.sql("INSERT INTO Products (StockNo, ProdName) VALUES ('A1', 'Apple'), ('B2', 'Bead')");
    auto data = productsOf(cat);
    EXPECT_EQ(data->Recordset().RecordCount(), 2);
    auto conn = cat.connect();
    auto a = cat.open(StatementA, *conn);
    EXPECT_EQ(a->RecordCount(), 2);
    cat.sql("UPDATE Products SET ProdName = 'Acorn' WHERE StockNo = 'A1'");
    auto b = cat.open(StatementB, *conn);
    b->MoveFirst();
    EXPECT_EQ(CStr(b->Fields("ProdName").Value()), "Acorn");
}

TEST(KeptRowsOfADataControl, AConnectionInTheMiddleOfAGroupSeesItsOwnWritesNotAnotherSetsRows) {
    TempCatalogue cat;
    cat.sql("INSERT INTO Products (StockNo, ProdName) VALUES ('A1', 'Apple')");
    auto conn = cat.connect();
    auto a = cat.open(StatementA, *conn);
    auto data = productsOf(cat);
    WriteGroup group(*data);
    data->Recordset().AddNew();
    data->Recordset().SetValue("StockNo", Variant("B2"));
    data->Recordset().Update();
    data->Refresh();
    EXPECT_EQ(data->Recordset().RecordCount(), 2);
    group.End();
    a->Requery(0);
    EXPECT_EQ(a->RecordCount(), 2);
}

TEST_F(KeptRows, AfterARunOfWritesThroughADataControlAnotherSetShowsWhatTheFileHolds) {
    auto data = productsOf(cat);
    {
        WriteGroup group(*data);
        DaoRecordset& rs = data->Recordset();
        rs.FindFirst("[StockNo] = 'A1'");
        rs.Edit();
        rs.SetValue("ProdName", Variant("Acorn"));
        rs.SetValue("Cost1", Variant("2.25"));
        rs.Update();
        rs.AddNew();
        rs.SetValue("StockNo", Variant("D4"));
        rs.SetValue("Notes", Variant("new"));
        rs.Update();
        rs.FindFirst("[StockNo] = 'B2'");
        rs.Delete();
    }
    auto b = cat.open(StatementB, *conn);
    EXPECT_EQ(rowsOf(*b),
              "1:2,A1,Acorn,2.25,ripe,Null,;2:3,C3,Cup,Null,,Null,;3:4,D4,Null,Null,new,Null,;");
    EXPECT_EQ(cat.query("SELECT PID || StockNo || ifnull(ProdName, '-') FROM Products ORDER BY "
                        "StockNo"),
              "2A1Acorn|3C3Cup|4D4-");
    data->Refresh();
    data->Recordset().MoveLast();
    EXPECT_EQ(CStr(data->Recordset().GetValue("StockNo")), "D4");
    EXPECT_EQ(data->Recordset().RecordCount(), 3);
}

TEST(KeptRowsOfADataControl, AValueTheFileStoresOtherwiseIsReadAsTheFileHoldsIt) {
    TempCatalogue cat;
    // A column of no type the program knows is read as text; the file keeps a text that
    // looks like a number as the number.
    cat.sql(
        "CREATE TABLE Odd (ID INTEGER PRIMARY KEY, Amount MEMO); INSERT INTO Odd (Amount) "
        "VALUES ('x')");
    auto data = CreateDataControl();
    data->SetDatabaseName(cat.path());
    data->SetRecordSource("Odd");
    data->Refresh();
    data->Recordset().Edit();
    data->Recordset().SetValue("Amount", Variant("1.50"));
    data->Recordset().Update();
    EXPECT_EQ(CStr(data->Recordset().GetValue("Amount")), "1.50");
    data->Refresh();
    EXPECT_EQ(CStr(data->Recordset().GetValue("Amount")), "1.5");
}

}  // namespace

// Every field of every row, with its kind, as the set gives it.
std::string typedRows(DaoRecordset& rs) {
    std::string all;
    rs.MoveFirst();
    for (; !rs.Eof(); rs.MoveNext()) {
        for (int i = 0; i < rs.FieldCount(); ++i) {
            const Variant v = rs.GetValue(i);
            all += std::to_string(static_cast<int>(v.Type())) + ":" +
                   (v.IsNull() ? "Null" : CStr(v)) + ",";
        }
        all += ";";
    }
    return all;
}

TEST(KeptRowsOfADataControl, RowsWrittenWithoutReadingThemBackAreWhatAFreshReadGives) {
    TempCatalogue cat;
    cat.sql(
        "CREATE TABLE Kinds (ID INTEGER PRIMARY KEY, Name TEXT DEFAULT 'none', Amount MONEY, "
        "Ratio DOUBLE DEFAULT 2, Count LONG DEFAULT -3, Yes YESNO DEFAULT 0, Day DATETIME, "
        "Memo LONGTEXT DEFAULT NULL); INSERT INTO Kinds (Name, Amount) VALUES ('first', 1.25)");
    auto data = CreateDataControl();
    data->SetDatabaseName(cat.path());
    data->SetRecordSource("Kinds");
    data->Refresh();
    DaoRecordset& rs = data->Recordset();
    {
        WriteGroup group(*data);
        rs.AddNew();
        rs.SetValue("Amount", Variant("5"));
        rs.SetValue("Ratio", Variant(7));
        rs.SetValue("Day", Variant("2024-03-01"));
        rs.Update();
        rs.AddNew();
        rs.SetValue("Name", Variant("third"));
        rs.SetValue("Yes", Variant(true));
        rs.SetValue("Count", Variant("12"));
        rs.SetValue("Amount", Variant(-0.0));
        rs.Update();
        rs.MoveFirst();
        rs.Edit();
        rs.SetValue("Amount", Variant("3.0"));
        rs.SetValue("Ratio", Variant("0.5"));
        rs.SetValue("Memo", Variant("a note"));
        rs.Update();
    }
    const std::string kept = typedRows(rs);
    // Another program's write makes the next refresh read every row from the file.
    ASSERT_EQ(std::system(("sqlite3 '" + cat.path() + "' \"CREATE TABLE Other (A)\"").c_str()), 0);
    data->Refresh();
    EXPECT_EQ(typedRows(data->Recordset()), kept);
    EXPECT_EQ(cat.query("SELECT typeof(Amount) || typeof(Ratio) || Count || Name FROM Kinds"),
              "integerreal-3first|integerreal-3none|integerreal12third");
}
