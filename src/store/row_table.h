#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/variant.h"
#include "store/sqlite_file.h"

// The rows of one opened statement, kept column by column: eight bytes a cell plus the
// text itself, so that a set of 100,000 products stays close to the size of its data.
// Rows are never moved or removed while the set is open: a row's index is its bookmark.
// A column keeps its cells in blocks of rows, so that adding rows never moves the ones
// already there. A copy shares the columns with the table it was made from until either
// changes one, and then still shares the blocks that neither has changed.
class RowTable {
  public:
    explicit RowTable(std::vector<ColumnInfo> columns);

    int columnCount() const { return static_cast<int>(columns_.size()); }
    const ColumnInfo& column(int c) const { return columns_[c]->info; }
    int rowCount() const { return rows_; }
    // The column of that name, ignoring case; -1 when none.
    int columnOf(std::string_view name) const;
    void reserve(std::size_t rows);
    void shrink();
    // A copy of the rows not deleted, with these columns in this order, as a fresh read of
    // the same rows gives them; nothing when the columns are not exactly this table's, of
    // the same kinds, or the rows are not in the order of their keys.
    std::optional<RowTable> reordered(const std::vector<ColumnInfo>& columns) const;
    // The cell holds what reading the stored value gives.
    bool holdsStored(int row, int c, const StoredValue& v) const;

    int appendRow(std::int64_t rowid);  // all cells Null
    std::int64_t rowid(int row) const { return rowids_[row]; }
    void setRowid(int row, std::int64_t rowid) { rowids_[row] = rowid; }
    bool deleted(int row) const { return deleted_[row]; }
    void markDeleted(int row) { deleted_[row] = true; }

    bool isNull(int row, int c) const { return columns_[c]->isNull(row); }
    // VbError 6 for a cell whose stored value the column's kind cannot hold.
    Variant get(int row, int c) const;
    // The cell's text without making a Variant: the hot path of criteria and sorting.
    std::string_view text(int row, int c) const;
    // Numeric kinds; Money in units. A cell too large to hold reads as the largest value of
    // its sign, so that it still sorts and compares.
    double number(int row, int c) const;

    // Stores a value already made to fit the column (see coerceTo).
    void set(int row, int c, const Variant& v);
    // Stores a value read from the file, written there by any program: one that the
    // column's kind cannot hold (Cost1 = 1e300, a Long of 1e20) is kept as an overflowed
    // cell, never cast.
    void setStored(int row, int c, const StoredValue& v);
    void setStoredInteger(int row, int c, std::int64_t i);
    void setStoredReal(int row, int c, double r);
    void setStoredText(int row, int c, std::string_view text);

    std::size_t memoryBytes() const;

  private:
    static constexpr int BlockShift = 10;
    static constexpr int BlockRows = 1 << BlockShift;
    struct Block {
        Block();
        std::uint64_t cells[BlockRows] = {};  // text: offset << 32 | length; else the bits
        std::uint64_t nulls[BlockRows / 64];  // a bit a row, set for Null
    };
    struct Column {
        ColumnInfo info;
        std::vector<std::shared_ptr<Block>> blocks;  // rows beyond the table's are Null
        // Text columns: the texts in pieces that are only ever added to, so that a copy of
        // the column shares them. A cell: piece << 48 | offset in the piece << 32 | length.
        std::vector<std::shared_ptr<std::string>> arena;
        std::unordered_set<int> overflowed;  // rows whose stored value did not fit
        std::uint64_t cell(int row) const {
            return blocks[row >> BlockShift]->cells[row & (BlockRows - 1)];
        }
        bool isNull(int row) const {
            const int r = row & (BlockRows - 1);
            return blocks[row >> BlockShift]->nulls[r >> 6] >> (r & 63) & 1;
        }
        // Writes one cell, its block no longer shared with another column.
        void put(int row, std::uint64_t bits, bool null);
        std::string_view textOf(std::uint64_t cell) const {
            return std::string_view(*arena[cell >> 48])
                .substr(cell >> 32 & 0xffffu, cell & 0xffffffffu);
        }
    };
    // Until a cell of it is written, a column's new block is this one block of Nulls that
    // every column shares: a column of Nulls takes no room of its own.
    static const std::shared_ptr<Block>& nullBlock();
    // The column to change, no longer shared with another table.
    Column& own(int c);
    static void setText(Column& col, int row, std::string_view s);
    static void setOverflowed(Column& col, int row, bool negative);
    static void setWhole(Column& col, int row, std::int64_t value);
    // A value read from the file into a cell, as setStored and the others describe.
    static void storeValue(Column& col, int row, const StoredValue& v);
    static void storeInteger(Column& col, int row, std::int64_t i);
    static void storeReal(Column& col, int row, double r);
    static void storeText(Column& col, int row, std::string_view text);
    // Rows added by appendRow so far; every column holds blocks for them.
    int rows_ = 0;

    std::vector<std::shared_ptr<Column>> columns_;
    std::vector<std::int64_t> rowids_;
    std::vector<bool> deleted_;
};

// Makes a value fit a column of the given kind, as a write through a field does: a text that
// is not a number written to a number column fails with 3421 and nothing is written.
Variant coerceTo(ColumnKind kind, const Variant& v);
// The same without throwing for the key, which takes no value (the store assigns it):
// nothing then. Other refusals still throw.
std::optional<Variant> fitTo(ColumnKind kind, const Variant& v);
// A fitted value as the file keeps it.
StoredValue toStored(ColumnKind kind, const Variant& v);
