// Adding a folder: every matching file under the chosen folder becomes an item keyed by its
// upper-case name; known files are edited, moved ones noted.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "base/clock.h"
#include "base/dates.h"
#include "build/bulk.h"
#include "build/run_steps.h"
#include "folder_fixture.h"
#include "forms/runtime.h"
#include "shell/errhandler.h"

namespace fs = std::filesystem;

namespace {

constexpr int JpgFilter = 2, AllFilesFilter = 15;

struct AddFolder : FolderTest {
    // Adds the folder of the program folder's `relative` with the filter chosen.
    Products& addFolder(const std::string& relative, int filter = JpgFilter) {
        Products& p = Mod().MainForm ? form() : start();
        continueAtOnce(p);
        ui.openAnswer = appDir() + relative + "/Click [Open] Button Or Any File Above";
        ui.openFilter = filter;
        link(p, "Folder");
        return p;
    }
    std::string rows(const std::string& column) const {
        return cat.query("SELECT " + column + " FROM Products ORDER BY StockNo");
    }
    std::string totals(int checked, int added, int moved, int edited) const {
        return "<p align=center><font size=6 font color=blue>Task Completed<br><br>"
               "<p align=center><font size=5 font color=Black>Total Files Checked: " +
               std::to_string(checked) +
               "<br><br><p>"
               "<p align=center><font size=4 font color=Green>New Files Added : " +
               std::to_string(added) +
               "<p align=center><font size=4 font color=red>File Locations Moved : " +
               std::to_string(moved) +
               "<p align=center><font size=4 font color=blue> Old Files Edited: " +
               std::to_string(edited) +
               "<br><br><p><br><p align=center><font size=3 font color=red><a "
               "href='CONTINUE'>Click Here To Continue</a>";
    }
    std::string shownPage() const { return pageAtWait; }
};

TEST_F(AddFolder, EachFileBecomesAnItemKeyedByItsUpperCaseName) {
    const std::string lamp = file("pics/lamp.jpg");
    const std::string chair = file("pics/sub/Chair.JPG");
    file("pics/notes.txt");
    Products& p = addFolder("pics");
    EXPECT_EQ(rows("StockNo"), "CHAIR.JPG|LAMP.JPG");
    EXPECT_EQ(rows("ProdName"), "Chair|lamp");
    EXPECT_EQ(rows("ProdDesc"), "Folder Path: " + appDir() + "pics/sub/CHAIR.JPG|Folder Path: " +
                                    appDir() + "pics/LAMP.JPG");
    EXPECT_EQ(rows("PageNo"), "SUB|PICS");
    EXPECT_EQ(rows("Picture"), chair + "|" + lamp);
    EXPECT_EQ(rows("Category"), "JPG|JPG");
    EXPECT_EQ(rows("Cost1 || Cost5 || Retail"), "000|000");
    EXPECT_EQ(rows("Notes"), noteDate() + " Added From Folder: SUB\r\n\r\n|" + noteDate() +
                                 " Added From Folder: PICS\r\n\r\n");
    EXPECT_EQ(shownPage(), totals(2, 1 + 1, 0, 0));
    EXPECT_EQ(waits, 1);
    EXPECT_FALSE(Runtime::Current().Loaded("WinSeek"));
    EXPECT_EQ(ui.openShown.FileName, "Click [Open] Button Or Any File Above");
    EXPECT_FALSE(p.ContinueFlag);
}

TEST_F(AddFolder, EachFileOfSeveralFoldersTakesTheTextsOfItsOwnFolder) {
    for (const char* name : {"a1", "a2", "a3"})
        file(std::string("pics/alpha/") + name + ".jpg");
    for (const char* name : {"b1", "b2"})
        file(std::string("pics/Beta's/") + name + ".jpg");
    file("pics/top.jpg");
    addFolder("pics");
    EXPECT_EQ(rows("StockNo"), "A1.JPG|A2.JPG|A3.JPG|B1.JPG|B2.JPG|TOP.JPG");
    EXPECT_EQ(rows("PageNo"), "ALPHA|ALPHA|ALPHA|BETAS|BETAS|PICS");
    const std::string alpha = "Folder Path: " + appDir() + "pics/alpha/";
    const std::string beta = "Folder Path: " + appDir() + "pics/Beta's/";
    EXPECT_EQ(rows("ProdDesc"), alpha + "A1.JPG|" + alpha + "A2.JPG|" + alpha + "A3.JPG|" + beta +
                                    "B1.JPG|" + beta + "B2.JPG|Folder Path: " + appDir() +
                                    "pics/TOP.JPG");
    EXPECT_EQ(rows("Notes"), noteDate() + " Added From Folder: ALPHA\r\n\r\n|" + noteDate() +
                                 " Added From Folder: ALPHA\r\n\r\n|" + noteDate() +
                                 " Added From Folder: ALPHA\r\n\r\n|" + noteDate() +
                                 " Added From Folder: BETAS\r\n\r\n|" + noteDate() +
                                 " Added From Folder: BETAS\r\n\r\n|" + noteDate() +
                                 " Added From Folder: PICS\r\n\r\n");
}

// Notes are dated with today as the clock has it at each record: a run that goes past
// midnight dates the records after it with the new day.
TEST(NoteDate, FollowsTheClockFromOneDayToTheNext) {
    FixedClock fixed(DateSerial(2024, 12, 31) + 0.999);
    setClock(&fixed);
    EXPECT_EQ(noteDate(), "12/31/24");
    EXPECT_EQ(noteDate(), "12/31/24");
    fixed.set(DateSerial(2025, 1, 1) + 0.001);
    EXPECT_EQ(noteDate(), "01/01/25");
    fixed.set(DateSerial(2024, 12, 31));
    EXPECT_EQ(noteDate(), "12/31/24");
    setClock(nullptr);
}

TEST_F(AddFolder, TheDialogOffersEveryKindAndTheChosenOneSetsThePattern) {
    file("docs/a.txt");
    file("docs/b.doc");
    file("docs/c.jpg");
    addFolder("docs", 9);
    EXPECT_EQ(ui.openShown.Filter.substr(0, 80),
              "All Supported Pictures|*.avi;*.jpg;*.gif;*.bmp;*.ico;*.dib;*.wmf;*.emf|JPG's|*.j");
    EXPECT_NE(ui.openShown.Filter.find("|ALL Supported Files|*.avi;*.jpg;*.gif;*.bmp;*.ico;*.dib;"
                                       "*.wmf;*.emf;*.txt;*.doc;*.*ht*;*.avi;*.mp3;*.wav;*.wma;"
                                       "*.exe|ALL Files|*.*"),
              std::string::npos);
    EXPECT_EQ(rows("StockNo"), "A.TXT|B.DOC");
    EXPECT_EQ(textOf(form()("File1").Property("Pattern")), "*.txt;*.doc");
}

TEST_F(AddFolder, TheFirstFileInANewDatabaseHasNoRecordToStandOnAndFailsItsTestsSilently) {
    file("pics/a.jpg");
    file("pics/b.jpg");
    addFolder("pics");
    EXPECT_TRUE(ui.boxes.empty());
    // The number given to the first is 0, which leaves the key to the store's counter.
    EXPECT_EQ(cat.query("SELECT PID FROM Products ORDER BY PID"), "1|2");
    EXPECT_EQ(rows("StockNo"), "A.JPG|B.JPG");
}

TEST_F(AddFolder, TwoFilesOfOneNameShareOneRecordThatTakesTheLastSeen) {
    file("pics/a/x.jpg");
    const std::string second = file("pics/b/x.jpg");
    // Folders are walked last first: b, then a.
    addFolder("pics");
    EXPECT_EQ(rows("StockNo"), "X.JPG");
    EXPECT_EQ(rows("Picture"), appDir() + "pics/a/x.jpg");
    EXPECT_EQ(rows("PageNo"), "A");
    EXPECT_EQ(rows("Notes"), noteDate() + " Added From Folder: B\r\n\r\n" + noteDate() +
                                 " Edited From Folder: A\r\n\r\n");
    EXPECT_EQ(shownPage(), totals(2, 1, 0, 1));
    EXPECT_TRUE(fs::exists(second));
}

TEST_F(AddFolder, AMovedFileKeepsItsStockNumberAndIsNotedOnlyWhenTheOldPathIsGone) {
    file("pics/old/m.jpg");
    file("pics/old/k.jpg");
    addFolder("pics");
    const std::string ids = cat.query("SELECT PID FROM Products ORDER BY StockNo");
    fs::create_directories(appDir() + "pics/new");
    fs::rename(appDir() + "pics/old/m.jpg", appDir() + "pics/new/m.jpg");
    fs::copy_file(appDir() + "pics/old/k.jpg", appDir() + "pics/new/k.jpg");
    addFolder("pics");
    EXPECT_EQ(cat.query("SELECT PID FROM Products ORDER BY StockNo"), ids);
    EXPECT_EQ(cat.query("SELECT Notes FROM Products WHERE StockNo = 'M.JPG'"),
              noteDate() + " Added From Folder: OLD\r\n\r\n" + noteDate() +
                  " Moved From OLD To NEW\r\n\r\n");
    EXPECT_EQ(cat.query("SELECT Picture FROM Products WHERE StockNo = 'M.JPG'"),
              appDir() + "pics/new/m.jpg");
    // k.jpg is in both folders (old walked first); its old path still exists, so it is only
    // edited, twice.
    EXPECT_EQ(cat.query("SELECT Notes FROM Products WHERE StockNo = 'K.JPG'"),
              noteDate() + " Added From Folder: OLD\r\n\r\n" + noteDate() +
                  " Edited From Folder: OLD\r\n\r\n" + noteDate() +
                  " Edited From Folder: NEW\r\n\r\n");
    EXPECT_EQ(shownPage(), totals(3, 0, 1, 3));
}

TEST_F(AddFolder, AShortNameWithoutExtensionGivesAnEmptyItemName) {
    file("misc/ab");
    addFolder("misc", AllFilesFilter);
    EXPECT_EQ(rows("StockNo"), "AB");
    EXPECT_EQ(rows("ProdName"), "");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(AddFolder, RunningTwiceAddsNothingAndEditsEveryFile) {
    file("pics/a.jpg");
    file("pics/s/b.jpg");
    addFolder("pics");
    addFolder("pics");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "2");
    EXPECT_EQ(shownPage(), totals(2, 0, 0, 2));
    EXPECT_EQ(cat.query("SELECT Notes FROM Products WHERE StockNo = 'A.JPG'"),
              noteDate() + " Added From Folder: PICS\r\n\r\n" + noteDate() +
                  " Edited From Folder: PICS\r\n\r\n");
}

TEST_F(AddFolder, TheTotalsPageComesWhenAnotherReaderFindsEveryRecordTheRunWrote) {
    // More files than one group of writes holds, so that the run commits in the middle
    // and at its end.
    constexpr int Files = 2500;
    for (int i = 0; i < Files; ++i)
        file("pics/f" + std::to_string(i) + ".jpg");
    Products& p = start();
    continueAtOnce(p);
    std::string atTotals;
    ui.onWait = [&] {
        atTotals = cat.query("SELECT COUNT(*) FROM Products");
        p.ContinueFlag = true;
    };
    ui.openAnswer = appDir() + "pics/f0.jpg";
    ui.openFilter = JpgFilter;
    link(p, "Folder");
    EXPECT_EQ(atTotals, std::to_string(Files));
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products WHERE Notes LIKE '%Added From Folder%'"),
              std::to_string(Files));
}

TEST_F(AddFolder, ApostrophesAreTakenOutOfTheNamesAndThePath) {
    file("pics/O'Brien's lamp.jpg");
    file("pics/Joe's/cup.jpg");
    addFolder("pics");
    addFolder("pics");
    EXPECT_EQ(rows("StockNo"), "CUP.JPG|OBRIENS LAMP.JPG");
    EXPECT_EQ(rows("ProdName"), "cup|OBriens lamp");
    EXPECT_EQ(rows("PageNo"), "JOES|PICS");
    EXPECT_EQ(rows("Picture"),
              appDir() + "pics/Joes/cup.jpg|" + appDir() + "pics/OBriens lamp.jpg");
    // The stored path is not the file's, yet equal to the one made again: only edited.
    EXPECT_EQ(shownPage(), totals(2, 0, 0, 2));
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(AddFolder, NamesWithBlanksAndLettersBeyondAsciiKeepThem) {
    const std::string cafe = file("pics/Café crème/Tasse à thé.jpg");
    addFolder("pics");
    EXPECT_EQ(rows("StockNo"), "TASSE à THé.JPG");
    EXPECT_EQ(rows("ProdName"), "Tasse à thé");
    EXPECT_EQ(rows("PageNo"), "CAFé CRèME");
    EXPECT_EQ(rows("Picture"), cafe);
}

TEST_F(AddFolder, AnEmptyFolderAddsNothingAndStillEndsOnTheTotals) {
    folder("empty");
    addFolder("empty");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
    EXPECT_EQ(shownPage(), totals(0, 0, 0, 0));
    EXPECT_EQ(waits, 1);
}

TEST_F(AddFolder, ACancelledDialogGoesStraightToTheTotals) {
    file("pics/a.jpg");
    Products& p = start();
    continueAtOnce(p);
    link(p, "Folder");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
    EXPECT_EQ(shownPage(), totals(0, 0, 0, 0));
    EXPECT_EQ(waits, 1);
    EXPECT_FALSE(Runtime::Current().Loaded("WinSeek"));
}

TEST_F(AddFolder, ASymbolicLinkLoopIsWalkedOnce) {
    file("pics/a.jpg");
    file("pics/sub/b.jpg");
    fs::create_directory_symlink(".", appDir() + "pics/here");
    fs::create_directory_symlink("..", appDir() + "pics/sub/up");
    addFolder("pics");
    EXPECT_EQ(rows("StockNo"), "A.JPG|B.JPG");
    EXPECT_EQ(shownPage(), totals(2, 2, 0, 0));
}

TEST_F(AddFolder, AFolderRemovedDuringTheRunGivesPathNotFoundForEachFileLeft) {
    constexpr int Files = 12, Removed = 6;
    for (int i = 0; i < Files; ++i)
        file("pics/f" + std::to_string(10 + i) + ".jpg");
    Products& p = start();
    // The folder goes once the sixth file is written: the file list is pointed at it for
    // each of the six files left.
    p.Observe([&](Form&, Control* control, std::string_view property) {
        if (control && control->Name() == "lblStatus" && property == "Caption" &&
            control->Caption() ==
                "Checking: " + std::to_string(Removed) + " of " + std::to_string(Files))
            fs::remove_all(appDir() + "pics");
    });
    int pathNotFound = 0;
    setErrorTrace([&](const std::string& line) {
        if (line == "Error - 76\r\n  In  (Form) products::Sub Folders") ++pathNotFound;
    });
    addFolder("pics");
    setErrorTrace(nullptr);
    EXPECT_EQ(pathNotFound, Files - Removed);
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), std::to_string(Files));
    EXPECT_EQ(shownPage(), totals(Files, Files, 0, 0));
}

TEST_F(AddFolder, TheNextRecordNumberOverflowingPast32767IsSteppedOverAndTheRunGoesOn) {
    cat.sql("INSERT INTO Products (PID, StockNo) VALUES (32766, 'TOP')");
    file("pics/a.jpg");
    file("pics/b.jpg");
    addFolder("pics");
    // For b the 16-bit number overflows (6, reported in silence); the key of every new row
    // is the store's own counter, so b is still stored.
    EXPECT_EQ(cat.query("SELECT PID || StockNo FROM Products ORDER BY PID"),
              "32766TOP|32767A.JPG|32768B.JPG");
    EXPECT_EQ(shownPage(), totals(2, 2, 0, 0));
    EXPECT_TRUE(ui.boxes.empty());
}

// Root reads every folder: the unreadable folder is read by another user, in a child.
void readAsAnotherUser() {
    if (geteuid() == 0 && seteuid(65534) != 0) _exit(3);
}

TEST_F(AddFolder, AFolderThatCannotBeReadListsNothingAndTheOthersAreAdded) {
    file("pics/a.jpg");
    file("pics/locked/b.jpg");
    for (const auto& entry : fs::recursive_directory_iterator(appDir()))
        chmod(entry.path().c_str(), entry.is_directory() ? 0777 : 0666);
    chmod(appDir().c_str(), 0777);
    chmod((appDir() + "pics/locked").c_str(), 0);
    Products& p = start();
    EXPECT_EXIT(
        {
            readAsAnotherUser();
            continueAtOnce(p);
            ui.openAnswer = appDir() + "pics/a.jpg";
            ui.openFilter = JpgFilter;
            link(p, "Folder");
            _exit(cat.query("SELECT StockNo FROM Products") == "A.JPG" ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    chmod((appDir() + "pics/locked").c_str(), 0755);
}

}  // namespace
