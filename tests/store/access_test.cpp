// A real Access file read through a data control: its tables, fields and rows, and the
// files that are no Access database.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "access_sample.h"
#include "base/convert.h"
#include "catalogue_fixture.h"
#include "records/store.h"
#include "store/sqlite_file.h"
#include "vb_expect.h"

namespace fs = std::filesystem;

namespace {

struct AccessSource : ::testing::Test {
    TempCatalogue cat;
    std::string path = cat.folder() + "users.mdb";
    std::unique_ptr<DataControl> data = CreateDataControl();

    void SetUp() override { fs::copy_file(accessSample(), path); }
    void open(const std::string& source) {
        data->SetDatabaseName(path);
        data->SetRecordSource(source);
        data->Refresh();
    }
    DaoRecordset& rs() { return data->Recordset(); }
    std::vector<std::string> tables() {
        std::vector<std::string> names;
        for (int n = 0; n < data->TableCount(); ++n)
            names.push_back(data->TableName(n));
        return names;
    }
};

TEST_F(AccessSource, ListsEveryTableSystemTablesIncludedInAlphabeticalOrder) {
    data->SetDatabaseName(path);
    const auto names = tables();
    ASSERT_EQ(names.size(), 10u);
    EXPECT_EQ(names.front(), "MSysAccessStorage");
    EXPECT_EQ(names.back(), "Users");
    EXPECT_VBERROR(data->TableName(10), vberr::SubscriptOutOfRange);
}

TEST_F(AccessSource, ReadsTheFieldsByOrdinalWithTheirNames) {
    open("Users");
    ASSERT_EQ(rs().FieldCount(), 5);
    EXPECT_EQ(rs().FieldName(0), "UserId");
    EXPECT_EQ(rs().FieldName(4), "UserMarried");
    EXPECT_EQ(rs().FieldIndex("username"), 1);
    EXPECT_VBERROR(rs().FieldName(5), vberr::ItemNotFound);
}

TEST_F(AccessSource, ReadsEveryRowWithItsKindOfValue) {
    open("[users]");
    rs().MoveLast();
    rs().MoveFirst();
    EXPECT_EQ(rs().RecordCount(), 3);
    EXPECT_EQ(rs().GetValue(0), Variant::Long(1));
    EXPECT_EQ(CStr(rs().GetValue(1)), "Nuintun");
    // A date as text in the short date form, a yes/no as True or False.
    EXPECT_EQ(rs().GetValue(3).Type(), VarType::Date);
    EXPECT_EQ(CStr(rs().GetValue(3)), "1/25/1989");
    EXPECT_EQ(CStr(rs().GetValue(4)), "True");
    rs().MoveNext();
    EXPECT_EQ(CStr(rs().GetValue(4)), "False");
    rs().MoveNext();
    EXPECT_EQ(CStr(rs().GetValue(1)), "\u5f20\u4e09");
    rs().MoveNext();
    EXPECT_TRUE(rs().Eof());
    EXPECT_VBERROR(rs().GetValue(0), vberr::NoCurrentRecord);
    EXPECT_VBERROR(rs().MoveNext(), vberr::NoCurrentRecord);
}

TEST_F(AccessSource, FindFirstLooksThroughTheRows) {
    open("Users");
    rs().FindFirst("[UserName] = 'angela'");
    EXPECT_FALSE(rs().NoMatch());
    EXPECT_EQ(CStr(rs().GetValue(0)), "2");
    rs().FindFirst("UserSex = 'None'");
    EXPECT_TRUE(rs().NoMatch());
    EXPECT_EQ(CStr(rs().GetValue(0)), "2");
    EXPECT_VBERROR(rs().FindFirst("Nobody = 1"), vberr::UnknownField);
}

TEST_F(AccessSource, IsNeverWritten) {
    const auto before = fs::last_write_time(path);
    const auto size = fs::file_size(path);
    open("Users");
    EXPECT_VBERROR(rs().Edit(), vberr::DatabaseReadOnly);
    EXPECT_VBERROR(rs().AddNew(), vberr::DatabaseReadOnly);
    EXPECT_VBERROR(rs().SetValue(1, Variant("x")), vberr::DatabaseReadOnly);
    EXPECT_VBERROR(rs().Delete(), vberr::DatabaseReadOnly);
    EXPECT_VBERROR(rs().Update(), vberr::DatabaseReadOnly);
    EXPECT_EQ(CStr(rs().GetValue(1)), "Nuintun");
    EXPECT_EQ(fs::last_write_time(path), before);
    EXPECT_EQ(fs::file_size(path), size);
}

TEST_F(AccessSource, AnUnknownTableOrASelectWithACriteriaFails) {
    data->SetDatabaseName(path);
    data->SetRecordSource("Orders");
    EXPECT_VBERROR(data->Refresh(), 3078);
    EXPECT_VBERROR(data->Recordset(), vberr::ObjectNotSet);
    data->SetRecordSource("select * from Users where UserId = 1");
    EXPECT_VBERROR(data->Refresh(), 3251);
    data->SetRecordSource("select * from Users");
    data->Refresh();
    EXPECT_EQ(rs().RecordCount(), 3);
}

TEST_F(AccessSource, AnEmptyRecordSourceStillListsTheTables) {
    data->SetDatabaseName(path);
    EXPECT_VBERROR(data->Refresh(), vberr::SyntaxErrorInExpression);
    EXPECT_EQ(data->TableCount(), 10);
}

TEST_F(AccessSource, OnlySystemTablesAreListedAsSuch) {
    writeSystemTablesOnly(path);
    data->SetDatabaseName(path);
    for (const auto& name : tables())
        EXPECT_EQ(name.rfind("MSys", 0), 0u) << name;
}

// The same control goes back to a catalogue file when its name says so.
TEST_F(AccessSource, TheSameControlReadsACatalogueFileAfterwards) {
    open("Users");
    cat.sql("INSERT INTO Products (StockNo) VALUES ('A1')");
    data->SetDatabaseName(cat.path());
    data->SetRecordSource("Products");
    data->Refresh();
    EXPECT_EQ(rs().RecordCount(), 1);
    EXPECT_EQ(rs().FieldName(2), "StockNo");
}

TEST_F(AccessSource, TellingACatalogueFromAnAccessFileKeepsTheLocksOfTheProgram) {
    // The program holds the catalogue, its log in WAL.
    auto file = SqliteFile::open(cat.path(), SqliteFile::Use::Catalogue);
    file->execScript("INSERT INTO Products (StockNo) VALUES ('A1')");
    data->SetDatabaseName(cat.path());
    data->SetRecordSource("Products");
    data->Refresh();
    // Another program that opens and closes the file thinks itself the last one only when
    // this one's locks were lost; it then folds the log into the file and deletes it.
    ASSERT_EQ(
        std::system(
            ("sqlite3 '" + cat.path() + "' 'SELECT count(*) FROM Products' > /dev/null").c_str()),
        0);
    EXPECT_TRUE(fs::exists(cat.path() + "-wal"));
    EXPECT_EQ(rs().RecordCount(), 1);
}

struct NoAccessFile : AccessSource {
    void write(const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }
    // Opening fails as a file that is no database does, or as a table the file's catalogue
    // no longer names; the list of tables fails so too, or lists what the catalogue names.
    void failsAsNoDatabase() {
        data->SetDatabaseName(path);
        data->SetRecordSource("Users");
        try {
            data->Refresh();
            ADD_FAILURE() << "a damaged file opened";
        } catch (const VbError& e) {
            EXPECT_TRUE(e.Number() == vberr::NotADatabase || e.Number() == 3078) << e.Number();
        }
        try {
            tables();
        } catch (const VbError& e) {
            EXPECT_EQ(e.Number(), vberr::NotADatabase);
        }
    }
};

TEST_F(NoAccessFile, ATextFileNamedAsADatabase) {
    fs::remove(path);
    write("Code,Name\r\nA1,Apple\r\n");
    data->SetDatabaseName(path);
    EXPECT_VBERROR(data->Refresh(), vberr::NotADatabase);
    EXPECT_VBERROR(data->TableCount(), vberr::NotADatabase);
}

TEST_F(NoAccessFile, AJetHeadAndNothingBehindIt) {
    std::ifstream in(accessSample(), std::ios::binary);
    std::string head(2048, '\0');
    in.read(head.data(), 2048);
    fs::remove(path);
    write(head);
    failsAsNoDatabase();
}

TEST_F(NoAccessFile, AFileCutShortAtAnyPage) {
    std::ifstream in(accessSample(), std::ios::binary);
    std::ostringstream whole;
    whole << in.rdbuf();
    for (std::size_t length : {4096u, 20000u, 40000u, 100000u}) {
        SCOPED_TRACE(length);
        fs::remove(path);
        write(whole.str().substr(0, length));
        failsAsNoDatabase();
    }
}

TEST_F(NoAccessFile, AMissingFile) {
    fs::remove(path);
    data->SetDatabaseName(path);
    data->SetRecordSource("Users");
    EXPECT_VBERROR(data->Refresh(), 3024);
}

}  // namespace
