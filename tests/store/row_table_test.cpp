// The rows of a set in memory: cells in blocks of rows, texts in pieces, copies sharing both.
#include "store/row_table.h"

#include <gtest/gtest.h>

namespace {

RowTable twoColumns() {
    return RowTable({{"Name", ColumnKind::Text}, {"Count", ColumnKind::Long}});
}

std::string textFor(int row) {
    return "item " + std::to_string(row) + std::string(static_cast<std::size_t>(row % 150), 'x');
}

TEST(RowTable, ManyTextsAndOneLongerThanAPieceReadBackAsWritten) {
    RowTable t = twoColumns();
    const int rows = 5000;
    for (int row = 0; row < rows; ++row) {
        t.appendRow(row + 1);
        t.setStoredText(row, 0, row == 1234 ? std::string(100000, 'L') : textFor(row));
    }
    for (int row = 0; row < rows; ++row)
        ASSERT_EQ(t.text(row, 0), row == 1234 ? std::string(100000, 'L') : textFor(row)) << row;
}

TEST(RowTable, AddedRowsAreNullPastEveryBlockAndTakeNoRoomUntilWritten) {
    RowTable t = twoColumns();
    for (int row = 0; row < 3000; ++row)
        t.appendRow(row + 1);
    const std::size_t empty = t.memoryBytes();
    for (int row = 0; row < 3000; ++row) {
        ASSERT_TRUE(t.isNull(row, 0));
        ASSERT_TRUE(t.isNull(row, 1));
    }
    t.setStoredInteger(2500, 1, 7);
    EXPECT_GT(t.memoryBytes(), empty);
    EXPECT_FALSE(t.isNull(2500, 1));
    EXPECT_TRUE(t.isNull(2499, 1));
    EXPECT_TRUE(t.isNull(2500, 0));
    EXPECT_EQ(t.get(2500, 1).Number(), 7);
}

TEST(RowTable, ACopyAndItsTableChangeApartThoughTheyShareBlocksAndTexts) {
    RowTable t = twoColumns();
    for (int row = 0; row < 2100; ++row) {
        t.appendRow(row + 1);
        t.setStoredText(row, 0, textFor(row));
        t.setStoredInteger(row, 1, row);
    }
    std::optional<RowTable> copy =
        t.reordered({{"Count", ColumnKind::Long}, {"Name", ColumnKind::Text}});
    ASSERT_TRUE(copy);
    copy->set(5, 0, Variant::Long(-5));
    copy->set(5, 1, Variant("changed"));
    const int added = copy->appendRow(5000);
    copy->set(added, 1, Variant("new"));
    t.set(6, 0, Variant("changed too"));
    EXPECT_EQ(t.get(5, 1).Number(), 5);
    EXPECT_EQ(t.text(5, 0), textFor(5));
    EXPECT_EQ(copy->get(5, 0).Number(), -5);
    EXPECT_EQ(copy->text(5, 1), "changed");
    EXPECT_EQ(copy->text(6, 1), textFor(6));
    EXPECT_EQ(t.text(6, 0), "changed too");
    EXPECT_EQ(copy->text(added, 1), "new");
    EXPECT_EQ(t.rowCount(), 2100);
    EXPECT_EQ(copy->rowCount(), 2101);
    for (int row = 7; row < 2100; ++row)
        ASSERT_EQ(copy->text(row, 1), t.text(row, 0));
}

}  // namespace
