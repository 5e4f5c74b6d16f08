#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "records/row_stream.h"
#include "store/criteria.h"
#include "store/row_table.h"
#include "store/sqlite_file.h"

// A reading of rows on the SQLite store: the file reads, joins and sorts, spilling a long
// sort to its temporary files rather than holding it; the criteria, in the store's own
// dialect, are met here on a small batch of rows at a time.
class SqliteRowStream : public RowStream {
  public:
    void Open(const RowQuery& query, Connection& conn) override;
    bool Next() override;
    Variant GetValue(int index) const override;

  private:
    // Reads rows until some meet the criteria; false when none is left.
    bool readBatch();

    std::shared_ptr<SqliteFile> file_;
    SqliteFile::Query query_;
    std::vector<ColumnInfo> read_;  // the columns the query reads, in its order
    std::vector<int> asked_;        // per column asked for, its place in read_
    std::optional<Criteria> where_;
    std::optional<RowTable> batch_;
    std::vector<int> rows_;  // the batch's rows that meet the criteria
    std::size_t next_ = 0;
    bool ended_ = false;
};
