#include "store/cursor.h"

#include <algorithm>
#include <bit>
#include <cctype>

#include "base/convert.h"
#include "base/dates.h"
#include "base/fold.h"
#include "base/strings.h"
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
                               [&](const ColumnInfo& c) { return equalFolded(c.name, name); });
        if (it == all.end()) throw VbError(vberr::ItemNotFound);
        chosen.push_back(*it);
        all.erase(it);
    }
    shown = static_cast<int>(chosen.size());
    if (!st.where.empty() || !st.orderBy.empty())
        chosen.insert(chosen.end(), all.begin(), all.end());
    return chosen;
}

std::vector<std::string> namesOf(const RowTable& t) {
    std::vector<std::string> names;
    for (int c = 0; c < t.columnCount(); ++c)
        names.push_back(t.column(c).name);
    return names;
}

// Nulls first, then text ignoring case or numbers by value.
int compareRows(const RowTable& t, int a, int b, int column) {
    bool na = t.isNull(a, column), nb = t.isNull(b, column);
    if (na || nb) return na == nb ? 0 : (na ? -1 : 1);
    if (t.column(column).kind == ColumnKind::Text)
        return compareFolded(t.text(a, column), t.text(b, column));
    double x = t.number(a, column), y = t.number(b, column);
    return x < y ? -1 : (x > y ? 1 : 0);
}

// The first eight letters of a text folded, packed so that numbers order as the texts do
// where they differ; equal numbers leave the order to the whole texts.
std::uint64_t foldedPrefix(std::string_view text) {
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < 8; ++i)
        prefix = prefix << 8 | (i < text.size() ? foldChar(text[i]) : 0);
    return prefix;
}

void sortRows(std::vector<int>& rows, const RowTable& t, const std::vector<SortKey>& keys) {
    if (keys.empty()) return;
    auto before = [&](int a, int b) {
        for (const auto& k : keys) {
            int c = compareRows(t, a, b, k.column);
            if (c != 0) return k.descending ? c > 0 : c < 0;
        }
        return false;
    };
    const SortKey& first = keys.front();
    if (t.column(first.column).kind != ColumnKind::Text) {
        std::stable_sort(rows.begin(), rows.end(), before);
        return;
    }
    // A sort by a text compares the packed first letters, and the rows only where they agree.
    struct Keyed {
        bool null;
        std::uint64_t prefix;
        int row;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(rows.size());
    for (int row : rows)
        keyed.push_back(
            {t.isNull(row, first.column), foldedPrefix(t.text(row, first.column)), row});
    auto keyedBefore = [&](const Keyed& a, const Keyed& b) {
        if (a.null != b.null || a.prefix != b.prefix) {
            const bool less = a.null != b.null ? a.null : a.prefix < b.prefix;
            return first.descending ? !less : less;
        }
        return before(a.row, b.row);
    };
    // Products are often stored in the order they are listed by (added from a sorted file),
    // and then one look along them is all the sort needs.
    if (std::is_sorted(keyed.begin(), keyed.end(), keyedBefore)) return;
    std::stable_sort(keyed.begin(), keyed.end(), keyedBefore);
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = keyed[i].row;
}

// The kept rows are found by the table and its set of columns, whatever their order.
std::string keptKey(const std::string& table, const std::vector<ColumnInfo>& columns) {
    std::vector<std::string> names;
    for (const auto& c : columns)
        names.push_back(UCase(c.name));
    std::sort(names.begin(), names.end());
    std::string key = table;
    for (const auto& name : names)
        key += "\n" + name;
    return key;
}

// The rows of the table: copied from the ones the file keeps when it still holds exactly
// those, else read; what is read is kept for the next set.
std::shared_ptr<RowTable> loadRows(SqliteFile& file, std::vector<ColumnInfo> columns,
                                   const std::string& tableName, std::string& key,
                                   std::optional<SqliteFile::State>& exactAt, bool& kept) {
    key = keptKey(tableName, columns);
    // Taken before looking or reading: a commit by another connection meanwhile makes the
    // rows stale rather than unnoticed.
    const SqliteFile::State loadedAt = file.state();
    exactAt = loadedAt;
    if (auto kept = file.keptRows(key))
        if (auto copy = kept->reordered(columns))
            return std::make_shared<RowTable>(std::move(*copy));
    auto rows = std::make_shared<RowTable>(std::move(columns));
    RowTable& table = *rows;
    const int count = table.columnCount();
    table.reserve(static_cast<std::size_t>(file.rowCount(tableName)));
    file.scan(tableName, namesOf(table), [&](std::int64_t rowid, sqlite3_stmt* stmt) {
        int row = table.appendRow(rowid);
        for (int c = 0; c < count; ++c) {
            switch (SqliteFile::columnType(stmt, c + 1)) {
                case StoredValue::Type::Null:
                    break;
                case StoredValue::Type::Integer:
                    table.setStoredInteger(row, c, SqliteFile::columnInt(stmt, c + 1));
                    break;
                case StoredValue::Type::Real:
                    table.setStoredReal(row, c, SqliteFile::columnReal(stmt, c + 1));
                    break;
                case StoredValue::Type::Text:
                    table.setStoredText(row, c, SqliteFile::columnText(stmt, c + 1));
                    break;
            }
        }
    });
    table.shrink();
    file.keepRows(key, loadedAt, rows);
    kept = true;
    return rows;
}

}  // namespace

RowTable& Cursor::changing() {
    if (kept_) file_->forgetRows(table_.get());
    kept_ = false;
    return *table_;
}

Cursor::Cursor(std::shared_ptr<SqliteFile> file, const SelectStatement& statement)
    : file_(std::move(file)),
      table_(loadRows(*file_, loadedColumns(*file_, statement, tableName_, shown_), tableName_,
                      keptKey_, exactAt_, kept_)) {
    std::optional<Criteria> where;
    if (!statement.where.empty()) where = Criteria::parse(statement.where, *table_);
    base_.reserve(table_->rowCount());
    for (int row = 0; row < table_->rowCount(); ++row)
        if (!where || where->matches(*table_, row)) base_.push_back(row);
    if (!statement.orderBy.empty())
        sortRows(base_, *table_, parseSortList(statement.orderBy, *table_));
    applyFilter();
}

std::vector<int> Cursor::rowsThrough(const std::optional<Criteria>& filter) const {
    if (!filter) return base_;
    std::vector<int> rows;
    for (int row : base_)
        if (filter->matches(*table_, row)) rows.push_back(row);
    return rows;
}

std::vector<std::string> Cursor::fieldNames(SqliteFile& file, const SelectStatement& statement) {
    std::string tableName;
    int shown = 0;
    const RowTable columns(loadedColumns(file, statement, tableName, shown));
    if (!statement.where.empty()) Criteria::parse(statement.where, columns);
    if (!statement.orderBy.empty()) parseSortList(statement.orderBy, columns);
    std::vector<std::string> names = namesOf(columns);
    names.resize(shown);
    return names;
}

void Cursor::applyFilter() {
    filtered_ = rowsThrough(filter_);
    applySort();
}

void Cursor::applySort() {
    view_ = filtered_;
    sortRows(view_, *table_, sort_);
    viewChanged();
    moveTo(view_.empty() ? -1 : 0);
}

void Cursor::viewChanged() {
    indexes_.clear();
}

void Cursor::closeGap() {
    if (gap_ == 0) return;
    view_.erase(view_.begin() + pos_, view_.begin() + pos_ + gap_);
    gap_ = 0;
    std::erase_if(filtered_, [&](int row) { return table_->deleted(row); });
    std::erase_if(base_, [&](int row) { return table_->deleted(row); });
}

void Cursor::moveTo(long position) {
    closeGap();
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
    return view_[pos_ + gap_];
}

long Cursor::positionOfRow(int row) const {
    auto it = std::find(view_.begin(), view_.end(), row);
    const long p = it == view_.end() ? -1 : static_cast<long>(it - view_.begin());
    if (p < pos_ || gap_ == 0) return p;
    return p < pos_ + gap_ ? -1 : p - gap_;
}

int Cursor::columnIndex(std::string_view name) const {
    int c = table_->columnOf(name);
    if (c < 0 || c >= shown_) throw VbError(vberr::ItemNotFound);
    return c;
}

Variant Cursor::value(int column) const {
    if (column < 0 || column >= shown_) throw VbError(vberr::ItemNotFound);
    int row = currentRow();
    for (const auto& [c, v] : pending_)
        if (c == column) return v;
    return table_->get(row, column);
}

Fault Cursor::tryValue(int column, Variant& v) const {
    if (column < 0 || column >= shown_) return {vberr::ItemNotFound};
    v = value(column);
    return {};
}

void Cursor::setValue(int column, const Variant& v) {
    if (column < 0 || column >= shown_) throw VbError(vberr::ItemNotFound);
    currentRow();
    setFitted(column, coerceTo(table_->column(column).kind, v));
}

Fault Cursor::trySetValue(int column, const Variant& v) {
    try {
        if (column < 0 || column >= shown_) return {vberr::ItemNotFound};
        currentRow();
        std::optional<Variant> fitted = fitTo(table_->column(column).kind, v);
        if (!fitted) return {vberr::WrongType};
        setFitted(column, std::move(*fitted));
        return {};
    } catch (const VbError& e) {
        return {e.Number()};
    }
}

void Cursor::setFitted(int column, Variant fitted) {
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
    closeGap();
    positionBeforeAdd_ = pos_;
    int row = changing().appendRow(0);
    base_.push_back(row);
    filtered_.push_back(row);
    view_.push_back(row);
    // The new row holds nothing yet, so it stands in no chain of an index.
    for (auto& [column, index] : indexes_)
        index.next.push_back(-1);
    moveTo(count() - 1);
    edit_ = Edit::Add;
    pending_.clear();
}

const std::optional<WriteRules>& Cursor::writeRules() {
    if (!writeRules_) {
        // An engine that cannot tell them (an older SQLite) leaves every write read back.
        try {
            writeRules_ = file_->writeRules(tableName_, namesOf(*table_));
        } catch (const VbError&) {
            writeRules_.emplace();
        }
    }
    return *writeRules_;
}

void Cursor::update() {
    if (edit_ == Edit::None) return;
    closeGap();
    int row = view_[pos_];
    std::vector<std::string> names;
    std::vector<int> columns;
    std::vector<StoredValue> values;
    names.reserve(pending_.size());
    columns.reserve(pending_.size());
    values.reserve(pending_.size());
    for (const auto& [c, v] : pending_) {
        names.push_back(table_->column(c).name);
        columns.push_back(c);
        values.push_back(toStored(table_->column(c).kind, v));
    }
    bool exact = exactBeforeWrite();
    const std::optional<WriteRules>& rules = writeRules();
    if (edit_ == Edit::Add) {
        // The row as the file now holds it: the file fills in the key and the defaults. When
        // the table's rules tell what it made of each value, the row is not read back.
        std::int64_t rowid = 0;
        if (rules && rules->added(columns, values, addedRow_)) {
            rowid = file_->insert(tableName_, names, std::move(values));
            for (int c = 0; c < table_->columnCount(); ++c) {
                if (rules->columns[c].key) addedRow_[c].i = rowid;
                changing().setStored(row, c, addedRow_[c]);
            }
        } else {
            rowid = file_->insert(tableName_, names, std::move(values), namesOf(*table_),
                                  [&](sqlite3_stmt* stmt) {
                                      for (int c = 0; c < table_->columnCount(); ++c)
                                          changing().setStored(row, c, SqliteFile::column(stmt, c));
                                  });
        }
        changing().setRowid(row, rowid);
        std::vector<int> indexed;
        for (const auto& entry : indexes_)
            indexed.push_back(entry.first);
        for (int column : indexed)
            linkIntoIndex(column, count() - 1);
    } else {
        // What the file made of each value (a column's type may turn a text into a number)
        // tells whether the rows in memory still equal the file's.
        std::optional<std::vector<StoredValue>> stored;
        if (rules) stored = rules->updated(columns, values);
        if (stored) {
            file_->update(tableName_, table_->rowid(row), names, std::move(values));
        } else {
            stored.emplace();
            file_->update(tableName_, table_->rowid(row), names, std::move(values), names,
                          [&](sqlite3_stmt* stmt) {
                              for (std::size_t i = 0; i < names.size(); ++i)
                                  stored->push_back(SqliteFile::column(stmt, static_cast<int>(i)));
                          });
        }
        for (std::size_t i = 0; i < pending_.size(); ++i) {
            const auto& [c, v] = pending_[i];
            unlinkFromIndex(c, pos_);
            changing().set(row, c, v);
            linkIntoIndex(c, pos_);
            exact = exact && i < stored->size() && table_->holdsStored(row, c, (*stored)[i]);
        }
    }
    edit_ = Edit::None;
    pending_.clear();
    keepAfterWrite(exact);
}

bool Cursor::exactBeforeWrite() {
    if (exactAt_ && *exactAt_ == file_->state()) return true;
    exactAt_.reset();
    return false;
}

void Cursor::keepAfterWrite(bool exact) {
    if (!exact) {
        exactAt_.reset();
        return;
    }
    exactAt_ = file_->state();
    file_->keepRows(keptKey_, *exactAt_, table_);
    kept_ = true;
}

void Cursor::resync() {
    const int row = currentRow();
    if (edit_ == Edit::Add) return;
    // Nothing written since the rows were read: the row is already what the file holds, and
    // rewriting it would take the rows from the other sets that share them.
    if (exactBeforeWrite()) return;
    bool found = false;
    file_->readRow(tableName_, namesOf(*table_), table_->rowid(row), [&](sqlite3_stmt* stmt) {
        found = true;
        for (int c = 0; c < table_->columnCount(); ++c) {
            unlinkFromIndex(c, pos_);
            changing().setStored(row, c, SqliteFile::column(stmt, c));
            linkIntoIndex(c, pos_);
        }
    });
    // The other rows may be older than this one now.
    exactAt_.reset();
    // Deleted from the file by another record set.
    if (!found) throw VbError(vberr::NoCurrentRecord);
}

void Cursor::cancelUpdate() {
    if (edit_ == Edit::Add) {
        int row = view_.back();
        changing().markDeleted(row);
        view_.pop_back();
        filtered_.pop_back();
        base_.pop_back();
        for (auto& [column, index] : indexes_)
            index.next.pop_back();
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
    const bool exact = exactBeforeWrite();
    file_->remove(tableName_, table_->rowid(row));
    changing().markDeleted(row);
    keepAfterWrite(exact);
    ++gap_;
    viewChanged();
    currentDeleted_ = true;
}

void Cursor::setFilter(const std::string& criteria) {
    closeGap();
    std::optional<Criteria> filter;
    if (!criteria.empty()) filter = Criteria::parse(criteria, *table_);
    // Every row is tried before anything changes: a text refused on any row leaves the
    // view, the filter and the position as they were.
    std::vector<int> rows = rowsThrough(filter);
    filter_ = std::move(filter);
    filterText_ = criteria;
    filtered_ = std::move(rows);
    applySort();
}

void Cursor::setSort(const std::string& columns) {
    closeGap();
    sort_ = parseSortList(columns, *table_);
    sortText_ = columns;
    applySort();
}

namespace {

bool isTextColumn(const RowTable& t, int column) {
    return t.column(column).kind == ColumnKind::Text;
}

std::uint64_t hashNumber(double d) {
    if (d == 0) d = 0;  // one key for 0 and -0
    return std::bit_cast<std::uint64_t>(d) * 0x9E3779B97F4A7C15ull;
}

// "[StockNo] = 'AB12'" or "StockNo='AB12'": the shape of nearly every find the program
// makes, read without building a tree.
bool quickEquals(std::string_view text, std::string_view& name, std::string_view& value) {
    std::size_t i = 0;
    auto blanks = [&] {
        while (i < text.size() && text[i] == ' ')
            ++i;
    };
    blanks();
    if (i < text.size() && text[i] == '[') {
        std::size_t close = text.find(']', i);
        if (close == std::string_view::npos) return false;
        name = text.substr(i + 1, close - i - 1);
        i = close + 1;
    } else {
        std::size_t start = i;
        while (i < text.size() &&
               (std::isalnum(static_cast<unsigned char>(text[i])) || text[i] == '_'))
            ++i;
        name = text.substr(start, i - start);
    }
    if (name.empty()) return false;
    blanks();
    if (i >= text.size() || text[i] != '=') return false;
    ++i;
    blanks();
    if (i >= text.size() || text[i] != '\'') return false;
    std::size_t close = text.find('\'', i + 1);
    if (close == std::string_view::npos) return false;
    value = text.substr(i + 1, close - i - 1);
    i = close + 1;
    blanks();
    return i == text.size();
}

}  // namespace

std::uint64_t Cursor::cellHash(int row, int column) const {
    return isTextColumn(*table_, column) ? hashFolded(table_->text(row, column))
                                         : hashNumber(table_->number(row, column));
}

long Cursor::findEqual(int column, const Variant& wanted, long from, bool forward) {
    const bool text = isTextColumn(*table_, column);
    double number = 0;
    if (!text) {
        try {
            number = table_->column(column).kind == ColumnKind::Date ? CDate(wanted) : CDbl(wanted);
        } catch (const VbError&) {
            throw VbError(vberr::BadArguments);
        }
    }
    const std::string needle = text ? CStr(wanted) : std::string();
    auto isMatch = [&](long p) {
        int row = view_[p];
        if (table_->isNull(row, column)) return false;
        return text ? equalFolded(table_->text(row, column), needle)
                    : table_->number(row, column) == number;
    };

    Index& index = indexes_[column];
    if (index.head.empty()) {
        std::size_t slots = 16;
        while (slots < 2 * view_.size())
            slots *= 2;
        index.head.assign(slots, -1);
        index.next.assign(view_.size(), -1);
        // Filled from the back, so that each chain runs in view order.
        for (long p = count() - 1; p >= 0; --p) {
            if (table_->isNull(view_[p], column)) continue;
            std::size_t slot = cellHash(view_[p], column) & (slots - 1);
            index.next[p] = index.head[slot];
            index.head[slot] = p;
        }
    }
    std::uint64_t hash = text ? hashFolded(needle) : hashNumber(number);
    long found = -1;
    for (long p = index.head[hash & (index.head.size() - 1)]; p >= 0; p = index.next[p]) {
        if (forward && p < from) continue;
        if (!forward && p > from) break;
        if (!isMatch(p)) continue;
        found = p;
        if (forward) break;
    }
    return found;
}

long Cursor::find(const Criteria& criteria, long from, bool forward) {
    closeGap();
    int column = -1;
    Variant wanted;
    if (criteria.isColumnEquals(column, wanted)) return findEqual(column, wanted, from, forward);
    if (forward) {
        for (long p = std::max(from, 0L); p < count(); ++p)
            if (criteria.matches(*table_, view_[p])) return p;
    } else {
        for (long p = std::min(from, count() - 1); p >= 0; --p)
            if (criteria.matches(*table_, view_[p])) return p;
    }
    return -1;
}

long Cursor::find(std::string_view criteriaText, long from, bool forward, bool singleOnly) {
    closeGap();
    std::string_view name, value;
    if (quickEquals(criteriaText, name, value)) {
        int column = table_->columnOf(name);
        if (column < 0) throw VbError(vberr::ItemNotFound);
        return findEqual(column, Variant(value), from, forward);
    }
    Criteria criteria = Criteria::parse(criteriaText, *table_);
    if (singleOnly && !criteria.isSingleCondition()) throw VbError(vberr::BadArguments);
    return find(criteria, from, forward);
}

void Cursor::unlinkFromIndex(int column, long p) {
    auto it = indexes_.find(column);
    if (it == indexes_.end()) return;
    Index& index = it->second;
    const int row = view_[p];
    if (table_->isNull(row, column)) return;
    const std::uint64_t hash = cellHash(row, column);
    long* at = &index.head[hash & (index.head.size() - 1)];
    while (*at >= 0 && *at != p)
        at = &index.next[*at];
    if (*at == p) *at = index.next[p];
    index.next[p] = -1;
}

void Cursor::linkIntoIndex(int column, long p) {
    auto it = indexes_.find(column);
    if (it == indexes_.end()) return;
    Index& index = it->second;
    // Past twice the rows it was built for, the index is built afresh on the next find.
    if (view_.size() > index.head.size()) {
        indexes_.erase(it);
        return;
    }
    const int row = view_[p];
    if (table_->isNull(row, column)) return;
    const std::uint64_t hash = cellHash(row, column);
    // Each chain runs in view order.
    long* at = &index.head[hash & (index.head.size() - 1)];
    while (*at >= 0 && *at < p)
        at = &index.next[*at];
    index.next[p] = *at;
    *at = p;
}
