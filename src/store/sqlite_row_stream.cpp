#include "store/sqlite_row_stream.h"

#include <algorithm>

#include "base/fold.h"
#include "base/vb_error.h"
#include "records/store.h"
#include "store/sqlite_connection.h"

namespace {

// Rows read into memory at once: enough to keep the criteria's work in large steps, few
// enough to stay small.
constexpr int BatchRows = 256;

const ColumnInfo& columnOf(const std::vector<ColumnInfo>& columns, std::string_view name) {
    auto it = std::find_if(columns.begin(), columns.end(),
                           [&](const ColumnInfo& c) { return equalFolded(c.name, name); });
    if (it == columns.end()) throw VbError(vberr::ItemNotFound);
    return *it;
}

// The statement of a query: its columns with what each reads, the join and the order.
class QueryText {
  public:
    QueryText(SqliteFile& file, const RowQuery& q) : q_(q) {
        main_ = file.tableColumns(q.table, &table_);
        if (!q.joinTable.empty()) joined_ = file.tableColumns(q.joinTable, &joinTable_);
    }

    // Every column of the table, which criteria may name.
    void readWholeTable(std::vector<ColumnInfo>& read) {
        for (const ColumnInfo& c : main_)
            add({"m." + quoteName(c.name), c}, read);
    }
    // A column of the table, or of the joined one as "Table.Column"; its place in `read`.
    int read(const std::string& name, std::vector<ColumnInfo>& read) {
        add(resolve(name), read);
        return static_cast<int>(read.size()) - 1;
    }
    void orderBy(const RowQuery::Key& key) {
        // No value and an empty text are alike nothing, which NULL sorts first.
        order_ += "nullif(" + resolve(key.column).expression + ",'') COLLATE LISTED" +
                  (key.descending ? " DESC," : ",");
    }

    std::string text() const {
        std::string sql = "SELECT " + (select_.empty() ? std::string("m.rowid") : select_) +
                          " FROM " + quoteName(table_) + " AS m";
        if (!q_.joinTable.empty()) {
            // The first row of each key, a key being its text ignoring case.
            const ColumnInfo& to = columnOf(joined_, q_.joinTo);
            const ColumnInfo& from = columnOf(main_, q_.joinFrom);
            sql += " LEFT JOIN (SELECT min(rowid) AS [ first], ifnull(" + quoteName(to.name) +
                   ",'') COLLATE NOCASE AS [ key]" + joinedColumns_ + " FROM " +
                   quoteName(joinTable_) + " GROUP BY [ key]) AS j ON j.[ key] = ifnull(m." +
                   quoteName(from.name) + ",'') COLLATE NOCASE";
        }
        return sql + " ORDER BY " + order_ + "m.rowid";
    }

  private:
    struct Resolved {
        std::string expression;
        ColumnInfo info;
    };
    Resolved resolve(const std::string& name) {
        const std::string prefix = q_.joinTable + ".";
        if (!q_.joinTable.empty() && name.size() > prefix.size() &&
            equalFolded(std::string_view(name).substr(0, prefix.size()), prefix)) {
            const ColumnInfo& c = columnOf(joined_, std::string_view(name).substr(prefix.size()));
            const std::string alias = quoteName(" " + c.name);
            if (joinedColumns_.find("," + quoteName(c.name) + " AS " + alias) == std::string::npos)
                joinedColumns_ += "," + quoteName(c.name) + " AS " + alias;
            return {"j." + alias, {name, c.kind}};
        }
        const ColumnInfo& c = columnOf(main_, name);
        return {"m." + quoteName(c.name), c};
    }
    void add(const Resolved& r, std::vector<ColumnInfo>& read) {
        select_ += (select_.empty() ? "" : ",") + r.expression;
        read.push_back(r.info);
    }

    const RowQuery& q_;
    std::vector<ColumnInfo> main_, joined_;
    std::string table_, joinTable_;
    std::string select_, joinedColumns_, order_;
};

}  // namespace

std::unique_ptr<RowStream> CreateRowStream() {
    return std::make_unique<SqliteRowStream>();
}

void SqliteRowStream::Open(const RowQuery& q, Connection& conn) {
    auto* sqlite = dynamic_cast<SqliteConnection*>(&conn);
    if (!sqlite) throw VbError(vberr::ConnectionClosed);
    file_ = sqlite->file();
    QueryText text(*file_, q);
    read_.clear();
    asked_.clear();
    if (!q.where.empty()) text.readWholeTable(read_);
    for (const std::string& name : q.columns)
        asked_.push_back(text.read(name, read_));
    for (const RowQuery::Key& key : q.order)
        text.orderBy(key);
    const std::string sql = text.text();
    batch_.emplace(read_);
    where_.reset();
    if (!q.where.empty()) where_ = Criteria::parse(q.where, *batch_);
    query_ = file_->query(sql);
    rows_.clear();
    next_ = 0;
    ended_ = false;
}

bool SqliteRowStream::readBatch() {
    rows_.clear();
    next_ = 0;
    while (rows_.empty() && !ended_) {
        batch_.emplace(read_);
        RowTable& batch = *batch_;
        const int count = batch.columnCount();
        for (int n = 0; n < BatchRows; ++n) {
            if (!file_->step(query_.get())) {
                ended_ = true;
                break;
            }
            const int row = batch.appendRow(0);
            for (int c = 0; c < count; ++c)
                batch.setStored(row, c, SqliteFile::column(query_.get(), c));
            if (!where_ || where_->matches(batch, row)) rows_.push_back(row);
        }
    }
    return !rows_.empty();
}

bool SqliteRowStream::Next() {
    if (!query_) throw VbError(vberr::ObjectClosed);
    if (next_ + 1 < rows_.size()) {
        ++next_;
        return true;
    }
    return readBatch();
}

Variant SqliteRowStream::GetValue(int index) const {
    if (rows_.empty() || next_ >= rows_.size()) throw VbError(vberr::NoCurrentRecord);
    return batch_->get(rows_[next_], asked_.at(static_cast<std::size_t>(index)));
}
