// The placement file of an import: 38 lines written beside the source, read back by value.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/trap.h"
#include "build/placement_file.h"

namespace fs = std::filesystem;

namespace {

struct Placements {
    std::string SavedSupplier, Separator;
    std::int16_t LinesPerItem = 0, SkipLines = 0, AddedSlots = 0;
    bool SkipDiscontinued = false;
    std::int16_t KeyItem = 0;
    SlotArray FieldPlacement;
    PlacementFields fields() {
        return {SavedSupplier, Separator,        LinesPerItem, SkipLines,
                AddedSlots,    SkipDiscontinued, KeyItem,      FieldPlacement};
    }
};

class PlacementFile : public ::testing::Test {
  protected:
    PlacementFile() {
        folder = fs::temp_directory_path() /
                 ("placement_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                  "_" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::create_directories(folder);
        path = (folder / "items.dat").string();
    }
    ~PlacementFile() override { fs::remove_all(folder); }

    void writeText(const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
    std::string readText() {
        std::ifstream in(path, std::ios::binary);
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }
    void read(Placements& p) { readPlacementFile(path, p.fields(), on); }

    fs::path folder;
    std::string path;
    std::vector<int> faults;
    Trap on{"test", [this](const std::string&) { faults.push_back(Err().Number); }};
};

Placements sample() {
    Placements p;
    p.SavedSupplier = "Acme";
    p.Separator = "\t";
    p.LinesPerItem = 0;
    p.SkipLines = 1;
    p.AddedSlots = -7;
    p.SkipDiscontinued = true;
    p.KeyItem = 0;
    p.FieldPlacement[2] = "FI-0";
    p.FieldPlacement[3] = "AI-Shirt";
    p.FieldPlacement[12] = "FI-2";
    return p;
}

TEST_F(PlacementFile, IsWrittenAs38LinesWithNumbersInTheirPrintForm) {
    Placements p = sample();
    writePlacementFile(path, p.fields(), on);
    std::string expected =
        "Acme\r\n\t\r\n 0 \r\n 1 \r\n-7 \r\nTrue\r\n 0 \r\n\r\n\r\nFI-0\r\nAI-Shirt\r\n";
    for (int i = 4; i <= 11; ++i)
        expected += "\r\n";
    expected += "FI-2\r\n";
    for (int i = 13; i <= 30; ++i)
        expected += "\r\n";
    EXPECT_EQ(readText(), expected);
    EXPECT_TRUE(faults.empty());
}

TEST_F(PlacementFile, ReadsBackWhatWasWritten) {
    Placements p = sample();
    writePlacementFile(path, p.fields(), on);
    Placements back;
    read(back);
    EXPECT_EQ(back.SavedSupplier, "Acme");
    EXPECT_EQ(back.Separator, "\t");
    EXPECT_EQ(back.SkipLines, 1);
    EXPECT_EQ(back.AddedSlots, -7);
    EXPECT_TRUE(back.SkipDiscontinued);
    EXPECT_EQ(back.KeyItem, 0);
    EXPECT_EQ(back.FieldPlacement, p.FieldPlacement);
    EXPECT_TRUE(faults.empty());
}

TEST_F(PlacementFile, LettersStandForTheUsualSeparators) {
    for (auto [letter, separator] : {std::pair{"T", "\t"}, {"C", ","}, {"S", "  "}, {"nl", "nl"}}) {
        writeText(std::string("\n") + letter + "\n");
        Placements p;
        read(p);
        EXPECT_EQ(p.Separator, separator) << letter;
    }
}

TEST_F(PlacementFile, AShortFileLeavesTheFieldsItDoesNotReach) {
    writeText("Acme\n,\n 2 \n");
    Placements p;
    p.SkipLines = 9;
    p.FieldPlacement[5] = "FI-1";
    read(p);
    EXPECT_EQ(p.Separator, ",");
    EXPECT_EQ(p.LinesPerItem, 2);
    EXPECT_EQ(p.SkipLines, 9);
    EXPECT_EQ(p.FieldPlacement[5], "FI-1");
    ASSERT_FALSE(faults.empty());
    EXPECT_EQ(faults.front(), 62);
}

TEST_F(PlacementFile, LinesBeyondThe38thAreNotRead) {
    Placements p = sample();
    writePlacementFile(path, p.fields(), on);
    std::ofstream(path, std::ios::app | std::ios::binary) << "extra\r\nmore\r\n";
    Placements back;
    read(back);
    EXPECT_EQ(back.FieldPlacement, p.FieldPlacement);
    EXPECT_TRUE(faults.empty());
}

TEST_F(PlacementFile, JunkInANumberLineLeavesThatField) {
    writeText("\n,\nabc\n 3 \n99999\nmaybe\n 4 \n");
    Placements p;
    p.LinesPerItem = 5;
    p.AddedSlots = 6;
    read(p);
    EXPECT_EQ(p.LinesPerItem, 5);
    EXPECT_EQ(p.SkipLines, 3);
    EXPECT_EQ(p.AddedSlots, 6);
    EXPECT_FALSE(p.SkipDiscontinued);
    EXPECT_EQ(p.KeyItem, 4);
    EXPECT_EQ(faults.front(), 13);
}

TEST_F(PlacementFile, BinaryBytesAreReadAsText) {
    writeText(std::string("\x00\xff\x01\r\n\r\r\n", 7));
    Placements p;
    read(p);
    EXPECT_EQ(p.SavedSupplier, std::string("\x00\xff\x01", 3));
    EXPECT_EQ(p.Separator, "");
}

TEST_F(PlacementFile, AMissingFileChangesNothing) {
    Placements p = sample();
    path = (folder / "none.dat").string();
    read(p);
    EXPECT_EQ(p.SavedSupplier, "Acme");
    EXPECT_EQ(faults.front(), 53);
}

}  // namespace
