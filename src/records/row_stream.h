#pragma once

#include <string>
#include <vector>

#include "base/variant.h"

class Connection;

// What a reading of rows asks for: the rows of one table that meet the criteria, at most one
// other table joined to each, some columns, in an order.
struct RowQuery {
    std::string table;
    std::string where;  // criteria of the store's dialect over the table's columns, "" for all
    // The joined table's first row (in its stored order) whose joinTo equals the row's
    // joinFrom, ignoring case; no value counts as an empty text. Without one, its columns
    // read Null.
    std::string joinTable, joinFrom, joinTo;
    std::vector<std::string> columns;  // the table's, or the joined table's as "Table.Column"
    struct Key {
        std::string column;  // as in columns
        bool descending = false;
    };
    // Nothing first (no value or an empty text), then by value, texts that are numbers as
    // numbers ("2" before "10"), other texts ignoring case; descending turns it all round.
    // Rows that tie stay in the table's stored order.
    std::vector<Key> order;
};

// The rows of a query read once, forward, holding only a few at a time: for listings as long
// as the catalogue, whose memory must not grow with it.
class RowStream {
  public:
    virtual ~RowStream() = default;
    // An unknown table is fault 3078, an unknown column 3265, criteria the dialect refuses
    // 3001.
    virtual void Open(const RowQuery& query, Connection& conn) = 0;
    // Moves to the next row, the first on the first call; false when none is left.
    virtual bool Next() = 0;
    // The value of the query's column `index` in the current row.
    virtual Variant GetValue(int index) const = 0;
};
