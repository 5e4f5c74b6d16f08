#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/row_table.h"

// A record source as the program writes it: a table name ("Products", "[Orders]") or
// "select <columns|*> from <table> [where <criteria>] [order by <columns>]".
struct SelectStatement {
    std::string table;
    std::vector<std::string> columns;  // empty for *
    std::string where;                 // criteria text, "" for none
    std::string orderBy;               // sort list, "" for none
};

// Fails with `errorNumber` when the text is no such statement.
SelectStatement parseSelect(std::string_view text, int errorNumber);

struct SortKey {
    int column = 0;
    bool descending = false;
};
// "PageNo", "Category, StockNo Desc", "[Order ID],[ProductOrderID]"; an unknown column
// fails with 3265, a malformed list with 3001.
std::vector<SortKey> parseSortList(std::string_view text, const RowTable& table);
