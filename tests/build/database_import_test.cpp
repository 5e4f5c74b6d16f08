// The import from another database, on catalogue-format SQLite sources and on a real
// Access file: the table list, the board's source items, the records the run reads, and the
// sources that hold nothing to import.
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>

#include "access_sample.h"
#include "build/bulk.h"
#include "forms/user_input.h"
#include "program_fixture.h"
#include "records/pane.h"
#include "store/sqlite_file.h"

namespace fs = std::filesystem;

namespace {

const std::string Headings =
    "<font size=2 color=blue><center>The Tables In This Database File Are Below <br> (The First "
    "line is written in red for easy identification.)</center><br><font color=green><center><br>"
    "Click On The Line You Want To Start Getting The Data From</center><br><br>";

struct DatabaseImport : ProgramTest {
    // What the user does in each wait of the import, in turn.
    std::deque<std::function<void(Products&)>> steps;
    // The pane at each wait.
    std::vector<std::string> pages;

    std::string sqliteSource(const std::string& script) {
        const std::string path = appDir() + "source.mde";
        SqliteFile::create(path)->execScript(script);
        return path;
    }
    void link(Products& p, const std::string& word) {
        bool cancel = false;
        p.Wb1().BeforeNavigate2("about:blank" + word, cancel);
    }
    void drag(Products& p, int source, int target) {
        Control& to = p("Label1", target);
        UserInput::Drag(p("Label2", source), to, 10, 10);
    }
    void table(int n) {
        steps.push_back([this, n](Products& p) { link(p, "GF-" + std::to_string(n)); });
    }
    // Drops source items on boxes (source, box pairs), one wait each, then Done.
    void place(std::initializer_list<std::pair<int, int>> drops) {
        for (auto [source, box] : drops)
            steps.push_back([this, source, box](Products& p) { drag(p, source, box); });
        steps.push_back([](Products& p) { UserInput::Click(p("Command24")); });
    }
    void clickContinue() {
        steps.push_back([this](Products& p) { link(p, "CONTINUE"); });
    }
    // Runs the import of `path` to its end; a wait with no step left fails the test and
    // cancels, so that no test hangs.
    Products& importFrom(const std::string& path) {
        Products& p = start();
        ui.openAnswer = path;
        ui.onWait = [&] {
            pages.push_back(ui.pane().DocumentText());
            if (steps.empty()) {
                ADD_FAILURE() << "a wait with nothing left to do:\n" << ui.pane().DocumentText();
                p.bulk->CancelFlag = true;
                p.ContinueFlag = true;
                return;
            }
            auto step = steps.front();
            steps.pop_front();
            step(p);
        };
        link(p, "DBFiles");
        EXPECT_TRUE(steps.empty());
        return p;
    }
    std::string products(const std::string& column) {
        return cat.query("SELECT " + column + " FROM Products ORDER BY PID");
    }
    bool told(const std::string& prompt) const {
        for (const auto& box : ui.boxes)
            if (box.prompt == prompt) return true;
        return false;
    }
};

const char* const Stock =
    "CREATE TABLE MSysObjects (Id LONG);"
    "CREATE TABLE Stock (Code TEXT, Name TEXT, Special YESNO, Arrived DATETIME, Cost MONEY);"
    "INSERT INTO Stock VALUES ('A1', 'Apple', -1, 32167, 2.5);"
    "INSERT INTO Stock VALUES (NULL, 'Nameless', 0, NULL, 1);"
    "INSERT INTO Stock VALUES ('B2', 'Bean', 0, 32167.5, NULL);";

// Table 0 is a system table: the red colour is switched on before it all the same, and it
// colours the first listed name.
TEST_F(DatabaseImport, TheListLeavesOutSystemTablesButKeepsTheirNumbers) {
    table(1);
    place({{0, 2}, {1, 3}});
    clickContinue();
    importFrom(sqliteSource(Stock));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages[0], Headings +
                            "<font size=2 font color=red><font color=blue><a href='GF-1'>Line "
                            "#1</a><br>Stock<br><br>");
}

TEST_F(DatabaseImport, TheFieldNamesAreTheSourceItemsOfTheBoard) {
    table(1);
    steps.push_back([](Products& p) {
        EXPECT_TRUE(p("Frame11").Visible());
        EXPECT_EQ(p("Label2", 0).Caption(), "Code");
        EXPECT_EQ(p("Label2", 4).Caption(), "Cost");
        EXPECT_FALSE(p("Label2", 5).Visible());
        EXPECT_EQ(p.bulk->SourceItems[3], "Arrived");
        EXPECT_EQ(p.bulk->AddedSlots, -7);
        UserInput::Click(p("Command25"));
    });
    clickContinue();
    Products& p = importFrom(sqliteSource(Stock));
    EXPECT_EQ(p.bulk->TotalChecked, 0);
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
}

// A null in the key field leaves the item "" and the record is skipped; a yes/no arrives as
// "True" or "False", a date as text in the short date form.
TEST_F(DatabaseImport, ARecordIsReadFieldByFieldAsText) {
    table(1);
    place({{0, 2}, {1, 3}, {2, 19}, {3, 4}, {4, 12}});
    clickContinue();
    Products& p = importFrom(sqliteSource(Stock));
    EXPECT_EQ(p.bulk->TotalChecked, 3);
    EXPECT_EQ(p.bulk->TotalAdded, 2);
    EXPECT_EQ(products("StockNo"), "A1|B2");
    EXPECT_EQ(products("ProdName"), "Apple|Bean");
    EXPECT_EQ(products("OnSpecial"), "-1|0");
    EXPECT_EQ(products("ProdDesc"), "1/25/1988|1/25/1988 12:00:00 PM");
    EXPECT_EQ(products("Retail"), "2.5|Null");
    // No note is asked: the notes hold only the words of the run.
    EXPECT_EQ(products("Notes"), " - Added This Item\r\n| - Added This Item\r\n");
    EXPECT_FALSE(
        told("Would You Like To Put A Note For This?\r\nEnter It In The Text Box "
             "Below, Or Use The One Already In There"));
    EXPECT_EQ(p.ImportKind, 0);
}

TEST_F(DatabaseImport, AYesNoFieldPassesTheTestsOfTheTextItems) {
    addProduct("A1", "", "OnSpecial", "0");
    ui.msgBoxAnswer = vb::vbNo;  // add and edit
    table(1);
    place({{0, 2}, {2, 19}});
    clickContinue();
    Products& p = importFrom(sqliteSource(Stock));
    EXPECT_EQ(products("StockNo"), "A1|B2");
    EXPECT_EQ(products("OnSpecial"), "-1|0");
    // True and False both read as 0, so the change leaves no note.
    EXPECT_EQ(p.bulk->TotalEdited, 0);
    EXPECT_NE(cat.query("SELECT Notes FROM Products WHERE StockNo = 'A1'").find("No Changes Made"),
              std::string::npos);
}

TEST_F(DatabaseImport, AnEmptyTableIsToldAndNothingIsImported) {
    table(0);
    place({{0, 2}});
    clickContinue();
    Products& p = importFrom(sqliteSource("CREATE TABLE Stock (Code TEXT, Name TEXT);"));
    EXPECT_TRUE(told("This DataBase Does Not Have Any Data In It"));
    EXPECT_EQ(p.bulk->TotalChecked, 0);
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
    EXPECT_EQ(p.ImportKind, 0);
}

// Fields past the 31 slots raise a silent fault each: their boxes show what the failed
// read left, and what is placed from them never reaches a record.
TEST_F(DatabaseImport, ATableOfFortyFieldsShowsThirtyOneNamedItems) {
    std::string columns, values;
    for (int i = 0; i < 40; ++i) {
        columns += (i ? ", F" : "F") + std::to_string(i) + " TEXT";
        values += (i ? ", 'v" : "'v") + std::to_string(i) + "'";
    }
    table(0);
    steps.push_back([this](Products& p) {
        EXPECT_EQ(p("Label2", 30).Caption(), "F30");
        EXPECT_TRUE(p("Label2", 39).Visible());
        EXPECT_NE(p("Label2", 31).Caption(), "F31");
        EXPECT_FALSE(p("Label2", 40).Visible());
        drag(p, 0, 2);
    });
    place({{30, 3}, {35, 4}});
    clickContinue();
    Products& p = importFrom(sqliteSource("CREATE TABLE Wide (" + columns + ");" +
                                          "INSERT INTO Wide VALUES (" + values + ");"));
    EXPECT_EQ(p.bulk->TotalAdded, 1);
    EXPECT_EQ(products("StockNo"), "v0");
    EXPECT_EQ(products("ProdName"), "v30");
    EXPECT_EQ(products("ProdDesc"), "Null");
}

// The way out of a list with no table to click: a link of its own, which leads to the totals
// with nothing imported.
TEST_F(DatabaseImport, ADatabaseOfSystemTablesOnlyShowsTheHeadingsAndAWayOut) {
    clickContinue();
    clickContinue();
    Products& p =
        importFrom(sqliteSource("CREATE TABLE MSysObjects (Id LONG);"
                                "CREATE TABLE MSysACEs (Id LONG);"
                                "INSERT INTO MSysObjects VALUES (1);"));
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].rfind(Headings + "<font size=2 font color=red><font color=blue>", 0), 0u);
    EXPECT_EQ(pages[0].find("GF-"), std::string::npos);
    EXPECT_NE(pages[0].find("<a href='CONTINUE'>"), std::string::npos);
    EXPECT_NE(pages[1].find("Total Checked: 0<br>Total Added: 0"), std::string::npos);
    EXPECT_FALSE(p("Frame11").Visible());
    EXPECT_EQ(p.ImportKind, 0);
}

TEST_F(DatabaseImport, AnAccessFileOfSystemTablesOnlyShowsTheHeadingsAndAWayOut) {
    const std::string path = appDir() + "system.mdb";
    writeSystemTablesOnly(path);
    clickContinue();
    clickContinue();
    importFrom(path);
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].rfind(Headings + "<font size=2 font color=red><font color=blue>", 0), 0u);
    EXPECT_EQ(pages[0].find("GF-"), std::string::npos);
}

TEST_F(DatabaseImport, AFileThatIsNoDatabaseListsNothingAndChangesNothing) {
    addProduct("A1");
    const std::string path = appDir() + "notes.mdb";
    std::ofstream(path, std::ios::binary) << "Code,Name\r\nA1,Apple\r\n";
    ui.msgBoxAnswer = vb::vbNo;
    clickContinue();
    clickContinue();
    Products& p = importFrom(path);
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].find("GF-"), std::string::npos);
    EXPECT_EQ(cat.query("SELECT StockNo || '|' || IFNULL(Notes, '') FROM Products"), "A1|");
    EXPECT_EQ(p.ImportKind, 0);
    EXPECT_FALSE(fs::exists(appDir() + "notes.dat"));
}

TEST_F(DatabaseImport, ACancelledDialogEndsOnTheTotals) {
    clickContinue();
    Products& p = importFrom("");
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_NE(pages[0].find("Total Checked: 0"), std::string::npos);
    EXPECT_EQ(p.ImportKind, 0);
}

// After a database import a text import runs as ever.
TEST_F(DatabaseImport, ATextImportRunsAfterIt) {
    clickContinue();
    Products& p = importFrom("");
    std::ofstream(appDir() + "items.txt", std::ios::binary) << "A1,Apple\r\n";
    ui.openAnswer = appDir() + "items.txt";
    ui.msgBoxAnswer = vb::vbYes;
    ui.inputAnswer = "0";
    table(1);  // the first line of the text file
    place({{0, 2}});
    clickContinue();
    link(p, "TextFiles");
    EXPECT_TRUE(steps.empty());
    EXPECT_EQ(products("StockNo"), "A1");
}

TEST_F(DatabaseImport, TheRealAccessFileImportsItsUsers) {
    const std::string path = appDir() + "users.mdb";
    fs::copy_file(accessSample(), path);
    table(9);
    place({{0, 2}, {1, 3}, {3, 4}, {4, 22}});
    clickContinue();
    Products& p = importFrom(path);
    EXPECT_EQ(p.bulk->TotalAdded, 3);
    EXPECT_EQ(products("ProdDesc"), "1/25/1989|12/18/1988|12/18/1986");
    EXPECT_EQ(products("Orderable"), "-1|0|-1");
    EXPECT_TRUE(fs::exists(appDir() + "users.dat"));
}

}  // namespace
