#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/trap.h"
#include "store/criteria.h"
#include "store/row_table.h"
#include "store/sqlite_file.h"
#include "store/statement.h"
#include "store/write_rules.h"

// The engine under both kinds of record set: the rows of one statement held in memory, a
// view of them (filtered and sorted), a position in that view and the pending edit of the
// current row, written through to the file on update.
class Cursor {
  public:
    // Loads the statement's rows. Criteria faults come as 3001/3265.
    Cursor(std::shared_ptr<SqliteFile> file, const SelectStatement& statement);
    // The names of the statement's own columns, with the faults opening would give, without
    // reading a row.
    static std::vector<std::string> fieldNames(SqliteFile& file, const SelectStatement& statement);

    const RowTable& table() const { return *table_; }
    int fieldCount() const { return shown_; }  // the statement's own columns
    long count() const { return static_cast<long>(view_.size()) - gap_; }

    // Position: -1 before the first row (BOF), count() past the last (EOF).
    long position() const { return pos_; }
    bool bof() const { return pos_ < 0 || count() == 0; }
    bool eof() const { return pos_ >= count() || count() == 0; }
    bool hasCurrent() const { return pos_ >= 0 && pos_ < count() && !currentDeleted_; }
    void moveTo(long position);  // clamps to -1..count()
    // The next move forward lands on the row behind a deleted current row.
    void moveNext();
    // The current row was deleted and no move has happened since.
    bool currentDeleted() const { return currentDeleted_; }
    int currentRow() const;             // 3021 when there is none
    long positionOfRow(int row) const;  // -1 when the row is not in the view

    int columnIndex(std::string_view name) const;  // 3265 when unknown
    Variant value(int column) const;
    // As value; a column the view does not show is given back as a fault, not thrown.
    Fault tryValue(int column, Variant& v) const;
    void setValue(int column, const Variant& v);  // starts an edit of the current row
    // As setValue; a value the column refuses is given back as a fault, thrown or not.
    Fault trySetValue(int column, const Variant& v);

    enum class Edit { None, InProgress, Add };
    Edit editMode() const { return edit_; }
    void beginEdit();
    void addNew();
    void update();
    void cancelUpdate();
    void deleteCurrent();
    // Reads the current row again from the file: what other record sets stored shows; a
    // pending change stays on top. A row added and not stored has nothing to read.
    void resync();

    // A text refused on parsing or on any row fails and changes nothing.
    void setFilter(const std::string& criteria);
    const std::string& filterText() const { return filterText_; }
    void setSort(const std::string& columns);
    const std::string& sortText() const { return sortText_; }

    // The first row from `from` on (forward) or back (backward) that meets the criteria;
    // -1 when none. A "column = value" text is answered from an index, not by a scan.
    long find(const Criteria& criteria, long from, bool forward);
    long find(std::string_view criteriaText, long from, bool forward, bool singleOnly);

  private:
    void setFitted(int column, Variant fitted);
    std::vector<int> rowsThrough(const std::optional<Criteria>& filter) const;
    void applyFilter();
    void applySort();
    void viewChanged();
    // Erases the rows deleted at the position from the view and the lists under it.
    void closeGap();
    long findEqual(int column, const Variant& value, long from, bool forward);
    // The hash under which an index of finds keeps a cell (text folded, numbers as such).
    std::uint64_t cellHash(int row, int column) const;
    // Keeps the indexes of finds right for the row at position p: before its value in a
    // column changes (unlink) and after (link), so a run of saves builds no index again.
    void unlinkFromIndex(int column, long p);
    void linkIntoIndex(int column, long p);

    // The table about to change in memory: the file no longer keeps it for other sets.
    RowTable& changing();
    // Around a write through this set: whether the rows still equal the file's before it,
    // and, when they do after it too, the rows kept again for other sets.
    bool exactBeforeWrite();
    void keepAfterWrite(bool exact);

    std::shared_ptr<SqliteFile> file_;
    std::string tableName_;
    int shown_ = 0;
    std::string keptKey_;
    // Whether the rows (less the deleted ones and a row being added) are exactly what the
    // file holds, and as of which state of the file.
    std::optional<SqliteFile::State> exactAt_;
    bool kept_ = false;                // the file keeps this very table for other sets
    std::shared_ptr<RowTable> table_;  // kept for other sets while it equals the file
    std::vector<int> base_;            // the statement's rows in its order
    std::vector<int> filtered_;        // base_ through the filter
    std::vector<int> view_;            // filtered_ through the sort
    long pos_ = -1;
    bool currentDeleted_ = false;
    // Rows deleted at the position one after another, still in view_ at pos_ and behind it
    // (and in base_ and filtered_) until the position moves: a run of deletions erases
    // them once, not one by one.
    long gap_ = 0;

    std::string filterText_, sortText_;
    std::optional<Criteria> filter_;
    std::vector<SortKey> sort_;

    Edit edit_ = Edit::None;
    std::vector<std::pair<int, Variant>> pending_;
    std::vector<StoredValue> addedRow_;  // an added row as the file holds it, room reused
    // How the table takes writes, read at the first one: what a write left in the file
    // then needs no reading back.
    std::optional<std::optional<WriteRules>> writeRules_;
    const std::optional<WriteRules>& writeRules();
    long positionBeforeAdd_ = -1;

    // Positions in the view by value of one column: a flat hash table whose chains run in
    // view order, built on the first find by that column and dropped when the view or the
    // column changes.
    struct Index {
        std::vector<long> head;  // by hash slot: the first position, -1 for none
        std::vector<long> next;  // by position: the next position in the same slot
    };
    std::unordered_map<int, Index> indexes_;
};
