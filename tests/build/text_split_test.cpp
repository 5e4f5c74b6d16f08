// Splitting a source line into items, and the guess of its separator.
#include <gtest/gtest.h>

#include <deque>

#include "base/trap.h"
#include "build/text_split.h"

namespace {

// A split with a trap that counts its faults and the lines that follow in the file.
struct Splitter {
    SlotArray slots;
    std::deque<std::string> following;
    std::vector<int> faults;
    Trap on{"test", [this](const std::string&) { faults.push_back(Err().Number); }};

    int split(const std::string& line, const std::string& separator, int linesPerItem = 0) {
        return splitItems(
            line, separator, linesPerItem, slots,
            [this](std::string& next) {
                if (following.empty()) throw VbError(vberr::InputPastEndOfFile);
                next = following.front();
                following.pop_front();
            },
            on);
    }
};

TEST(SeparatorGuess, CommasInTheFirstHalfAreOffered) {
    auto guess = guessSeparator("a,b,c,d");
    ASSERT_TRUE(guess);
    EXPECT_EQ(guess->name, "COMMAS");
    EXPECT_EQ(guess->separator, ",");
}

TEST(SeparatorGuess, ACommaPastTheMiddleIsNotOffered) {
    EXPECT_FALSE(guessSeparator("abcdef,gh"));
}

TEST(SeparatorGuess, ACommaExactlyAtTheHalfIsAcceptedButNotOffered) {
    EXPECT_FALSE(guessSeparator("abc,defg"));
    EXPECT_TRUE(guessSeparator("ab,cdefg"));
}

TEST(SeparatorGuess, TwoBlanksComeBeforeCommasAndBracketsLast) {
    EXPECT_EQ(guessSeparator("a  b,c,d,e")->name, "SPACES");
    EXPECT_EQ(guessSeparator("a\tb\tc")->name, "TABS");
    EXPECT_EQ(guessSeparator("[A][B][C]")->name, "BRACKETS");
}

TEST(SeparatorGuess, AnEmptyLineOffersNothing) {
    EXPECT_FALSE(guessSeparator(""));
}

TEST(SplitItems, BracketsSplitOnTheClosingOneAlone) {
    Splitter s;
    EXPECT_EQ(s.split("[A][B][C]", "]"), 3);
    EXPECT_EQ(s.slots[0], "[A");
    EXPECT_EQ(s.slots[1], "[B");
    EXPECT_EQ(s.slots[2], "[C");
    EXPECT_EQ(s.slots[3], "");
}

TEST(SplitItems, TwoBlanksMakeARunOfBlanksOneSeparatorAndLeaveOneBlankInFront) {
    Splitter s;
    EXPECT_EQ(s.split("one  two   three", "  "), 2);
    EXPECT_EQ(s.slots[0], "one");
    EXPECT_EQ(s.slots[1], " two");
    EXPECT_EQ(s.slots[2], " three");
}

TEST(SplitItems, QuotesProtectNothing) {
    Splitter s;
    EXPECT_EQ(s.split("\"a,b\",c", ","), 2);
    EXPECT_EQ(s.slots[0], "\"a");
    EXPECT_EQ(s.slots[1], "b\"");
    EXPECT_EQ(s.slots[2], "c");
}

TEST(SplitItems, ASecondSeparatorCharacterStaysAtTheHeadOfTheNextItem) {
    Splitter s;
    EXPECT_EQ(s.split("a;;b;;c", ";;"), 2);
    EXPECT_EQ(s.slots[1], ";b");
    EXPECT_EQ(s.slots[2], ";c");
}

TEST(SplitItems, AMultiByteSeparatorIsDroppedAsOneCharacter) {
    Splitter s;
    EXPECT_EQ(s.split("a\xC2\xA7"
                      "b",
                      "\xC2\xA7"),
              1);
    EXPECT_EQ(s.slots[1], "b");
}

TEST(SplitItems, MoreThan31ItemsFaultAtSlot31AndOverwriteNothing) {
    Splitter s;
    std::string line;
    for (int i = 0; i < 40; ++i)
        line += (i ? "," : "") + std::to_string(i);
    s.slots.fill("old");
    const int last = s.split(line, ",");
    EXPECT_EQ(last, 31);
    EXPECT_EQ(s.slots[30], "30");
    ASSERT_FALSE(s.faults.empty());
    for (int f : s.faults)
        EXPECT_EQ(f, 9);
}

TEST(SplitItems, SlotsAboveTheLastItemKeepWhatTheyHeld) {
    Splitter s;
    s.split("a,b,c,d", ",");
    s.split("x,y", ",");
    EXPECT_EQ(s.slots[1], "y");
    EXPECT_EQ(s.slots[2], "c");
    EXPECT_EQ(s.slots[3], "d");
}

TEST(SplitItems, OneItemPerLineReadsTheFollowingLines) {
    Splitter s;
    s.following = {"second", "third", "fourth"};
    EXPECT_EQ(s.split("first", "nl", 3), 2);
    EXPECT_EQ(s.slots[0], "first");
    EXPECT_EQ(s.slots[2], "third");
    EXPECT_EQ(s.following.size(), 1u);
}

TEST(SplitItems, PastTheEndOfFileTheLastPieceRepeats) {
    Splitter s;
    s.following = {"b"};
    EXPECT_EQ(s.split("a", "nl", 4), 3);
    EXPECT_EQ(s.slots[1], "b");
    EXPECT_EQ(s.slots[2], "b");
    EXPECT_EQ(s.slots[3], "b");
    EXPECT_EQ(s.faults, (std::vector<int>{62, 62}));
}

TEST(SplitItems, AnEmptyLineIsOneEmptyItem) {
    Splitter s;
    s.slots.fill("old");
    EXPECT_EQ(s.split("", ","), 0);
    EXPECT_EQ(s.slots[0], "");
    EXPECT_EQ(s.slots[1], "old");
}

TEST(SplitItems, AnEmptySeparatorTakesOneCharacterAtATime) {
    Splitter s;
    EXPECT_EQ(s.split("abc", ""), 3);
    EXPECT_EQ(s.slots[0], "");
    EXPECT_EQ(s.slots[3], "");
}

TEST(SplitItems, ATwoMegabyteLineSplitsWhole) {
    Splitter s;
    std::string line(2 * 1024 * 1024, 'x');
    for (std::size_t at = 100000; at < line.size(); at += 100000)
        line[at] = ',';
    const int last = s.split(line, ",");
    EXPECT_EQ(last, 20);
    EXPECT_EQ(s.slots[0].size(), 100000u);
    EXPECT_TRUE(s.faults.empty());
}

TEST(SplitItems, BinaryBytesAreItemsLikeAnyOther) {
    Splitter s;
    const std::string line("\x01\xff,\x00\xfe", 5);
    EXPECT_EQ(s.split(line, ","), 1);
    EXPECT_EQ(s.slots[1], std::string("\x00\xfe", 2));
}

}  // namespace
