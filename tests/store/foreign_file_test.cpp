#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/convert.h"
#include "catalogue_fixture.h"
#include "store/sqlite_file.h"
#include "vb_expect.h"

namespace {

std::string bytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

bool exists(const std::string& path) {
    return std::filesystem::exists(path);
}

// A file that is not a catalogue, beside a real one.
struct ForeignFile : ::testing::Test {
    TempCatalogue cat;
    std::string path = cat.folder() + "foreign.mde";

    void write(const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }
    void database(const std::string& script) { SqliteFile::create(path)->execScript(script); }

    // Opening the file as the catalogue and through a data control leaves it as it was,
    // with no log files beside it; the connection's fault, 0 for none. A connection that
    // opens refuses the product list with `listFault`.
    int openLeavesItAlone(int listFault = 0) {
        const std::string before = bytesOf(path);
        int fault = 0;
        auto conn = CreateConnection();
        try {
            conn->Open(connectionText(path));
            auto rs = CreateRecordset();
            EXPECT_VBERROR(rs->Open(StatementA, *conn), listFault);
        } catch (const VbError& e) {
            fault = e.Number();
        }
        auto data = CreateDataControl();
        data->SetDatabaseName(path);
        try {
            data->TableCount();
        } catch (const VbError&) {
        }
        EXPECT_EQ(bytesOf(path), before);
        EXPECT_FALSE(exists(path + "-wal"));
        EXPECT_FALSE(exists(path + "-shm"));
        EXPECT_FALSE(exists(path + "-journal"));
        return fault;
    }
};

TEST_F(ForeignFile, AnEmptyFileIsNoDatabaseAndStaysEmpty) {
    write("");
    EXPECT_EQ(openLeavesItAlone(), 3343);
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
}

TEST_F(ForeignFile, TextAndPicturesAreNoDatabase) {
    write("Dear customer,\nthis is a letter.\n");
    EXPECT_EQ(openLeavesItAlone(), 3343);
    write(std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) + std::string(200, '\x07'));
    EXPECT_EQ(openLeavesItAlone(), 3343);
}

TEST_F(ForeignFile, ADatabaseOfAnotherShapeOpensButIsNeverWritten) {
    database("CREATE TABLE Customers (Name TEXT); INSERT INTO Customers VALUES ('Ann');");
    EXPECT_EQ(openLeavesItAlone(3078), 0);
    database("CREATE TABLE Products (StockNo TEXT, ProdName TEXT);");
    EXPECT_EQ(openLeavesItAlone(3265), 0);
}

TEST_F(ForeignFile, ASourceDatabaseOfAnImportIsReadAndNeverWritten) {
    database("CREATE TABLE Stock (Code TEXT, Price REAL); INSERT INTO Stock VALUES ('Q1', 2.5);");
    const std::string before = bytesOf(path);
    auto data = CreateDataControl();
    data->SetDatabaseName(path);
    data->SetRecordSource("Stock");
    data->Refresh();
    EXPECT_EQ(CStr(data->Recordset().GetValue(0)), "Q1");
    data->Recordset().Edit();
    data->Recordset().SetValue(0, Variant("Q2"));
    EXPECT_VBERROR(data->Recordset().Update(), 3027);
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_FALSE(exists(path + "-wal"));
}

TEST_F(ForeignFile, TheCatalogueInUseKeepsItsLogInWalMode) {
    auto conn = cat.connect();
    EXPECT_EQ(SqliteFile::open(cat.path())->firstColumnJoined("PRAGMA journal_mode"), "wal");
}

// Another program's lock, held here by a second handle on the same file.
struct Locked : ::testing::Test {
    TempCatalogue cat;
    std::unique_ptr<Connection> conn;
    std::unique_ptr<Recordset> rs;
    std::shared_ptr<SqliteFile> other;
    void SetUp() override {
        cat.sql(
            "INSERT INTO Products (StockNo, Notes) VALUES ('A1', 'a'), ('B2', 'b'), ('C3', 'c')");
        conn = cat.connect();
        rs = cat.open(StatementA, *conn);
        other = SqliteFile::open(cat.path());
    }
    std::string stock() { return CStr(rs->Fields("StockNo").Value()); }
};

TEST_F(Locked, ASaveFailsAsLockedAndTheUserMovesOn) {
    other->execScript("BEGIN IMMEDIATE; UPDATE Products SET Notes = 'theirs' WHERE StockNo = 'C3'");
    rs->Fields("Notes").SetValue(Variant("mine"));
    EXPECT_VBERROR(rs->MoveNext(), 3218);
    EXPECT_EQ(stock(), "B2");
    EXPECT_EQ(rs->EditMode(), ado::adEditNone);
    rs->MoveNext();
    EXPECT_EQ(stock(), "C3");
    other->execScript("COMMIT");
    EXPECT_EQ(cat.query("SELECT Notes FROM Products ORDER BY StockNo"), "a|b|theirs");
    rs->Fields("Notes").SetValue(Variant("mine"));
    rs->MovePrevious();
    EXPECT_EQ(cat.query("SELECT Notes FROM Products ORDER BY StockNo"), "a|b|mine");
}

TEST(LockedFile, AFileHeldExclusivelyByAnotherProgramIsInUse) {
    TempCatalogue cat;
    auto other = SqliteFile::open(cat.path());
    other->execScript("BEGIN EXCLUSIVE; UPDATE Products SET Notes = 'theirs'");
    auto conn = CreateConnection();
    EXPECT_VBERROR(conn->Open(connectionText(cat.path())), 3045);
    other->execScript("COMMIT");
    conn->Open(connectionText(cat.path()));
    EXPECT_EQ(conn->State(), ado::adStateOpen);
}

}  // namespace
