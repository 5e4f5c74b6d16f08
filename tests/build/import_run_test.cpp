// The run of an import on a source file that is gone by the time the run reads it, and the
// records of a run that is left before the end of its file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "build/bulk.h"
#include "program_fixture.h"
#include "records/pane.h"

namespace fs = std::filesystem;

namespace {

struct ImportRun : ProgramTest {
    void writeFile(const std::string& name, const std::string& text) {
        std::ofstream(appDir() + name, std::ios::binary) << text;
    }
    // Placements for "stock number,name" lines: item 0 the stock number, item 1 the name.
    void writePlacements(const std::string& name) {
        std::string text = "\r\n,\r\n 0 \r\n 0 \r\n 0 \r\nFalse\r\n 0 \r\n\r\n\r\nFI-0\r\nFI-1\r\n";
        for (int i = 4; i <= 30; ++i)
            text += "\r\n";
        writeFile(name, text);
    }
    void importTextFile(Products& p) {
        bool cancel = false;
        p.Wb1().BeforeNavigate2("about:blankTextFiles", cancel);
    }
    // A file of `lines` new stock numbers, with its placements, ready to import.
    Products& startWithLines(int lines) {
        std::string text;
        for (int i = 0; i < lines; ++i)
            text += "S" + std::to_string(i) + ",Item\r\n";
        writeFile("items.txt", text);
        writePlacements("items.dat");
        Products& p = start();
        ui.openAnswer = appDir() + "items.txt";
        ui.inputAnswer = "N - ";
        return p;
    }
    // The records in the file, as another program reading it sees them.
    std::string recordsInFile() { return cat.query("SELECT COUNT(*) FROM Products"); }
};

TEST_F(ImportRun, ASourceDeletedBeforeTheRunIsToldAndTheRunEndsOnEmptyTotals) {
    writeFile("items.txt", "A1,Apple\r\nB2,Bean\r\n");
    writePlacements("items.dat");
    Products& p = start();
    ui.openAnswer = appDir() + "items.txt";
    ui.inputAnswer = "N - ";
    ui.onInput = [&](const std::string& prompt) {
        if (prompt.rfind("Would You Like To Put A Note", 0) == 0)
            fs::remove(appDir() + "items.txt");
    };
    int waits = 0;
    ui.onWait = [&] {
        ++waits;
        p.ContinueFlag = true;
    };
    importTextFile(p);
    ASSERT_FALSE(ui.boxes.empty());
    bool told = false;
    for (const auto& box : ui.boxes)
        told = told || box.prompt.rfind("Can't Find The File!", 0) == 0;
    EXPECT_TRUE(told);
    EXPECT_EQ(waits, 1);
    EXPECT_EQ(p.bulk->TotalChecked, 0);
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
    EXPECT_EQ(p.ImportKind, 0);
}

TEST_F(ImportRun, TheSameSourceImportsWhileItIsThere) {
    writeFile("items.txt", "A1,Apple\r\nB2,Bean\r\n");
    writePlacements("items.dat");
    Products& p = start();
    ui.openAnswer = appDir() + "items.txt";
    ui.inputAnswer = "N - ";
    ui.onWait = [&] { p.ContinueFlag = true; };
    importTextFile(p);
    EXPECT_EQ(p.bulk->TotalAdded, 2);
    EXPECT_EQ(cat.query("SELECT StockNo || ProdName FROM Products ORDER BY PID"), "A1Apple|B2Bean");
}

TEST_F(ImportRun, ACancelledRunHasEveryRecordItWroteInTheFileByTheTotalsPage) {
    Products& p = startWithLines(5000);
    ui.onLetEventsRun = [&] {
        if (p.bulk->TotalChecked == 3000) p.bulk->CancelFlag = true;
    };
    std::string atTotals;
    ui.onWait = [&] {
        atTotals = recordsInFile();
        p.ContinueFlag = true;
    };
    importTextFile(p);
    EXPECT_EQ(p.bulk->TotalAdded, 3000);
    EXPECT_EQ(atTotals, "3000");
}

TEST_F(ImportRun, TheProgramEndedInTheMiddleOfARunLeavesEveryRecordItWroteInTheFile) {
    Products& p = startWithLines(5000);
    ui.onLetEventsRun = [&] {
        if (p.bulk->TotalChecked == 3000) Runtime::Current().End();
    };
    EXPECT_THROW(importTextFile(p), ProgramEnded);
    EXPECT_EQ(p.bulk->TotalAdded, 3000);
    EXPECT_EQ(recordsInFile(), "3000");
}

}  // namespace
