#include "store/cursor.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/convert.h"
#include "base/vb_error.h"

namespace {

// The chosen columns first; when the where or order by part may name others, every other
// column of the table follows, loaded but not shown as a field.
std::vector<ColumnInfo> loadedColumns(SqliteFile& file, const SelectStatement& st,
                                      std::string& tableName, int& shown) {
    std::vector<ColumnInfo> all = file.tableColumns(st.table, &tableName);
    shown = static_cast<int>(all.size());
    if (st.columns.empty()) return all;
    std::vector<ColumnInfo> chosen;
    for (const auto& name : st.columns) {
        auto it = std::find_if(all.begin(), all.end(),
                               [&](const ColumnInfo& c) { return compareFolded(c.name, name) == 0; });
        if (it == all.end()) throw VbError(vberr::ItemNotFound);
        chosen.push_back(*it);
        all.erase(it);
    }
    shown = static_cast<int>(chosen.size());
    if (!st.where.empty() || !st.orderBy.empty()) chosen.insert(chosen.end(), all.begin(), all.end());
    return chosen;
}

std::vector<std::string> namesOf(const RowTable& t) {
    std::vector<std::string> names;
    for (int c = 0; c < t.columnCount(); ++c) names.push_back(t.column(c).name);
    return names;
}

// Nulls first, then text ignoring case or numbers by value.
int compareRows(const RowTable& t, int a, int b, int column) {
    bool na = t.isNull(a, column), nb = t.isNull(b, column);
    if (na || nb) return na == nb ? 0 : (na ? -1 : 1);
    if (t.column(column).kind == ColumnKind::Text) return compareFolded(t.text(a, column), t.text(b, column));
    double x = t.number(a, column), y = t.number(b, column);
    return x < y ? -1 : (x > y ? 1 : 0);
}

void sortRows(std::vector<int>& rows, const RowTable& t, const std::vector<SortKey>& keys) {
    if (keys.empty()) return;
    std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
        for (const auto& k : keys) {
            int c = compareRows(t, a, b, k.column);
            if (c != 0) return k.descending ? c > 0 : c < 0;
        }
        return false;
    });
}

}  // namespace

Cursor::Cursor(std::shared_ptr<SqliteFile> file, const SelectStatement& statement)
    : file_(std::move(file)), table_(loadedColumns(*file_, statement, tableName_, shown_)) {
    const int columns = table_.columnCount();
    file_->scan(tableName_, namesOf(table_), [&](std::int64_t rowid, sqlite3_stmt* stmt) {
        int row = table_.appendRow(rowid);
        for (int c = 0; c < columns; ++c) table_.setStored(row, c, SqliteFile::column(stmt, c + 1));
    });
    std::optional<Criteria> where;
    if (!statement.where.empty()) where = Criteria::parse(statement.where, table_);
    base_.reserve(table_.rowCount());
    for (int row = 0; row < table_.rowCount(); ++row)
        if (!where || where->matches(table_, row)) base_.push_back(row);
    if (!statement.orderBy.empty()) sortRows(base_, table_, parseSortList(statement.orderBy, table_));
    rebuildView();
}

void Cursor::rebuildView() {
    if (filter_) {
        view_.clear();
        for (int row : base_)
            if (filter_->matches(table_, row)) view_.push_back(row);
    } else {
        view_ = base_;
    }
    sortRows(view_, table_, sort_);
    viewChanged();
    moveTo(view_.empty() ? -1 : 0);
}

void Cursor::viewChanged() { indexes_.clear(); }

void Cursor::moveTo(long position) {
    pos_ = std::clamp(position, -1L, count());
    currentDeleted_ = false;
}

void Cursor::moveNext() {
    if (currentDeleted_) {
        // The deleted row is gone from the view; its successor already stands at pos_.
        currentDeleted_ = false;
        return;
    }
    moveTo(pos_ + 1);
}

int Cursor::currentRow() const {
    if (!hasCurrent()) throw VbError(vberr::NoCurrentRecord);
    return view_[pos_];
}

long Cursor::positionOfRow(int row) const {
    auto it = std::find(view_.begin(), view_.end(), row);
    return it == view_.end() ? -1 : static_cast<long>(it - view_.begin());
}

int Cursor::columnIndex(std::string_view name) const {
    for (int c = 0; c < shown_; ++c)
        if (compareFolded(table_.column(c).name, name) == 0) return c;
    throw VbError(vberr::ItemNotFound);
}

Variant Cursor::value(int column) const {
    if (column < 0 || column >= shown_) throw VbError(vberr::ItemNotFound);
    int row = currentRow();
    for (const auto& [c, v] : pending_)
        if (c == column) return v;
    return table_.get(row, column);
}

void Cursor::setValue(int column, const Variant& v) {
    if (column < 0 || column >= shown_) throw VbError(vberr::ItemNotFound);
    currentRow();
    Variant fitted = coerceTo(table_.column(column).kind, v);
    if (edit_ == Edit::None) edit_ = Edit::InProgress;
    for (auto& [c, pending] : pending_)
        if (c == column) {
            pending = std::move(fitted);
            return;
        }
    pending_.emplace_back(column, std::move(fitted));
}

void Cursor::beginEdit() {
    currentRow();
    if (edit_ == Edit::None) edit_ = Edit::InProgress;
}

void Cursor::addNew() {
    positionBeforeAdd_ = pos_;
    int row = table_.appendRow(0);
    base_.push_back(row);
    view_.push_back(row);
    viewChanged();
    moveTo(count() - 1);
    edit_ = Edit::Add;
    pending_.clear();
}

void Cursor::update() {
    if (edit_ == Edit::None) return;
    int row = view_[pos_];
    std::vector<std::string> names;
    std::vector<StoredValue> values;
    for (const auto& [c, v] : pending_) {
        names.push_back(table_.column(c).name);
        values.push_back(toStored(table_.column(c).kind, v));
    }
    if (edit_ == Edit::Add) {
        std::int64_t rowid = file_->insert(tableName_, names, values);
        table_.setRowid(row, rowid);
        // Read the row back: the file fills in the key and the defaults.
        file_->readRow(tableName_, namesOf(table_), rowid, [&](sqlite3_stmt* stmt) {
            for (int c = 0; c < table_.columnCount(); ++c)
                table_.setStored(row, c, SqliteFile::column(stmt, c));
        });
    } else {
        file_->update(tableName_, table_.rowid(row), names, values);
        for (const auto& [c, v] : pending_) table_.set(row, c, v);
    }
    edit_ = Edit::None;
    pending_.clear();
    viewChanged();
}

void Cursor::cancelUpdate() {
    if (edit_ == Edit::Add) {
        int row = view_.back();
        table_.markDeleted(row);
        view_.pop_back();
        base_.pop_back();
        viewChanged();
        edit_ = Edit::None;
        pending_.clear();
        moveTo(positionBeforeAdd_);
        return;
    }
    edit_ = Edit::None;
    pending_.clear();
}

void Cursor::deleteCurrent() {
    if (edit_ == Edit::Add) {
        cancelUpdate();
        return;
    }
    int row = currentRow();
    edit_ = Edit::None;
    pending_.clear();
    file_->remove(tableName_, table_.rowid(row));
    table_.markDeleted(row);
    view_.erase(view_.begin() + pos_);
    base_.erase(std::find(base_.begin(), base_.end(), row));
    viewChanged();
    currentDeleted_ = true;
}

void Cursor::setFilter(const std::string& criteria) {
    if (criteria.empty()) {
        filter_.reset();
    } else {
        filter_ = Criteria::parse(criteria, table_);
    }
    filterText_ = criteria;
    rebuildView();
}

void Cursor::setSort(const std::string& columns) {
    sort_ = parseSortList(columns, table_);
    sortText_ = columns;
    rebuildView();
}

std::string Cursor::indexKey(int column, const Variant& value) const {
    if (table_.column(column).kind == ColumnKind::Text) return foldCase(CStr(value));
    double d = table_.column(column).kind == ColumnKind::Date ? value.Number() : CDbl(value);
    if (d == 0) d = 0;  // one key for 0 and -0
    std::string key(sizeof d, '\0');
    std::memcpy(key.data(), &d, sizeof d);
    return key;
}

std::string Cursor::indexKeyOfRow(int column, int row) const {
    if (table_.column(column).kind == ColumnKind::Text) return foldCase(table_.text(row, column));
    double d = table_.number(row, column);
    if (d == 0) d = 0;
    std::string key(sizeof d, '\0');
    std::memcpy(key.data(), &d, sizeof d);
    return key;
}

long Cursor::find(const Criteria& criteria, long from, bool forward) {
    int column = -1;
    Variant wanted;
    if (criteria.isColumnEquals(column, wanted)) {
        auto& byValue = indexes_[column];
        if (byValue.empty()) {
            for (long p = 0; p < count(); ++p)
                if (!table_.isNull(view_[p], column))
                    byValue[indexKeyOfRow(column, view_[p])].push_back(p);
            byValue.emplace(std::string("\x01no rows"), std::vector<long>{});  // built, even if empty
        }
        auto it = byValue.find(indexKey(column, wanted));
        if (it == byValue.end()) return -1;
        const auto& positions = it->second;
        if (forward) {
            auto p = std::lower_bound(positions.begin(), positions.end(), from);
            return p == positions.end() ? -1 : *p;
        }
        auto p = std::upper_bound(positions.begin(), positions.end(), from);
        return p == positions.begin() ? -1 : *(p - 1);
    }
    if (forward) {
        for (long p = std::max(from, 0L); p < count(); ++p)
            if (criteria.matches(table_, view_[p])) return p;
    } else {
        for (long p = std::min(from, count() - 1); p >= 0; --p)
            if (criteria.matches(table_, view_[p])) return p;
    }
    return -1;
}

long Cursor::find(std::string_view criteriaText, long from, bool forward, bool singleOnly) {
    Criteria criteria = Criteria::parse(criteriaText, table_);
    if (singleOnly && !criteria.isSingleCondition()) throw VbError(vberr::BadArguments);
    return find(criteria, from, forward);
}
