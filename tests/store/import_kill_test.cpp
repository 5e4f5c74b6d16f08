// A headless import of a large text file, killed with SIGKILL while it runs: the catalogue
// stays whole and holds the records of the file's first lines, up to some line, and none
// after it.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>

#include "catalogue_fixture.h"
#include "store/scratch_folder.h"
#include "store/sqlite_file.h"

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

// Every third line names a product already in the catalogue, the others new ones; each
// line's name tells its number, so the records in the file tell which lines were run.
constexpr int Lines = 200000;
constexpr int Existing = Lines / 3 + 1;

std::string stockNoOfLine(int line) {
    char text[16];
    if (line % 3 == 0)
        std::snprintf(text, sizeof text, "E%06d", line / 3);
    else
        std::snprintf(text, sizeof text, "N%07d", line);
    return text;
}

void fillCatalogue(const TempCatalogue& cat) {
    // In WAL from the start, so that the test's reads never hold up the run's commits.
    cat.sql("PRAGMA journal_mode=WAL");
    cat.sql("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(Existing - 1) +
            ") INSERT INTO Products (PID, StockNo, ProdName) "
            "SELECT i + 1, printf('E%06d', i), 'Old ' || i FROM n");
}

void writeImportFile(const std::string& path) {
    std::ofstream out(path, std::ios::binary);
    for (int line = 0; line < Lines; ++line)
        out << stockNoOfLine(line) << ",Item " << line << "\r\n";
}

// The user of the import, up to the totals page that the kill comes before.
void writeScript(const std::string& path, const std::string& catalogue,
                 const std::string& importFile) {
    std::ofstream out(path);
    out << "program-folder empty-catalogue\n"
        << "setting \"Settings\" \"DBName\" \"" << catalogue << "\"\n"
        << "setting \"Options\" \"Show Tips at Startup\" \"0\"\n"
        << "start\n"
        << "click Products.cmdAddAll\n"
        << "link \"TextFiles\"\n"
        << "answer msgbox \"To EDIT The Existing Items ONLY*\" No\n"
        << "answer open \"" << importFile << "\"\n"
        << "link \"GF-1\"\n"
        << "answer inputbox \"Type in the key/keys to use as seperators*\" \",\"\n"
        << "answer inputbox \"The Data Shows There Are 2 Items On Each Line.*\" \"0\"\n"
        << "drag Products.Label2(0) Products.Label1(2)\n"
        << "drag Products.Label2(1) Products.Label1(3)\n"
        << "click Products.Command24\n"
        << "answer inputbox \"Would You Like To Put A Note For This?*\" \"K - \"\n"
        << "expect pane \"*Total Checked*\"\n"
        << "link \"CONTINUE\"\n";
}

// The lines whose records are in the file: the number in each imported name.
std::set<int> linesInFile(const std::string& catalogue) {
    std::set<int> lines;
    auto file = SqliteFile::open(catalogue);
    for (const auto& v :
         file->firstColumn("SELECT StockNo || ' ' || substr(ProdName, 6) FROM Products "
                           "WHERE ProdName LIKE 'Item %'")) {
        const auto blank = v.text.find(' ');
        const int line = std::stoi(v.text.substr(blank + 1));
        EXPECT_EQ(v.text.substr(0, blank), stockNoOfLine(line)) << "a record of another line";
        lines.insert(line);
    }
    return lines;
}

// Starts the session runner on the script and kills it once the file holds the first of
// the run's records. False when the runner ended by itself first.
bool importUntilKilled(const std::string& script, const std::string& catalogue) {
    const pid_t pid = fork();
    if (pid == 0) {
        execl(SESSION_RUNNER, SESSION_RUNNER, "--in-process", script.c_str(), nullptr);
        _exit(127);
    }
    // A loaded machine or a sanitizer build may take long to get there; never for ever.
    const auto giveUp = Clock::now() + std::chrono::minutes(5);
    bool killed = false;
    while (!killed && Clock::now() < giveUp) {
        int status = 0;
        if (waitpid(pid, &status, WNOHANG) == pid) {
            ADD_FAILURE() << "the import ended by itself, status " << status;
            return false;
        }
        if (!linesInFile(catalogue).empty()) {
            kill(pid, SIGKILL);
            killed = true;
        } else {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
    if (!killed) kill(pid, SIGKILL);
    int status = 0;
    waitpid(pid, &status, 0);
    // The runner's own program folder, named by its process.
    const std::string own = "catsession" + std::to_string(pid) + "x0";
    std::error_code ec;
    fs::remove_all(scratchFolder() / own, ec);
    fs::remove_all(fs::path("/tmp") / own, ec);
    EXPECT_TRUE(killed) << "no record of the run reached the file in time";
    return killed && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

TEST(ImportKilled, TheCatalogueStaysWholeAndHoldsTheFirstLinesOfTheRun) {
    TempCatalogue cat;
    fillCatalogue(cat);
    const std::string importFile = cat.folder() + "/items.txt";
    const std::string script = cat.folder() + "/import.session";
    writeImportFile(importFile);
    writeScript(script, cat.path(), importFile);

    ASSERT_TRUE(importUntilKilled(script, cat.path()));

    ASSERT_EQ(SqliteFile::open(cat.path())->firstColumnJoined("PRAGMA integrity_check"), "ok");
    const std::set<int> lines = linesInFile(cat.path());
    ASSERT_FALSE(lines.empty());
    const int run = static_cast<int>(lines.size());
    EXPECT_LT(run, Lines) << "the kill came after the run's end";
    // A prefix: lines 0 to run - 1, with nothing missing and nothing after.
    EXPECT_EQ(*lines.begin(), 0);
    EXPECT_EQ(*lines.rbegin(), run - 1) << "records past a line that is missing";
    // The edited products are still there, the added ones are the new lines of the run.
    int added = 0;
    for (int line = 0; line < run; ++line)
        added += line % 3 != 0;
    EXPECT_EQ(cat.query("SELECT count(*) FROM Products"), std::to_string(Existing + added));
    EXPECT_EQ(cat.query("SELECT count(*) FROM Products WHERE Notes LIKE 'K - %This Item%'"),
              std::to_string(run));
}

}  // namespace
