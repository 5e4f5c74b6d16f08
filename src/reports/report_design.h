#pragma once

#include <string>
#include <string_view>
#include <vector>

// A report file of the `reports` folder, read into what it asks for: one table (and at most
// one other joined to it by a key), a selection, a sort, one grouping, the columns with
// their captions, masks and widths, the totals, and the page's header and footer.
// docs/REPORTS.md describes the file.

// One printed column: a column of the table (or of the joined one, "Products.Supplier"),
// or the product of several ("Number*Cost").
struct ReportColumn {
    std::vector<std::string> factors;
    std::string caption;
    int width = 10;      // in characters
    std::string mask;    // a display mask (base/format.h), "" for the plain text
    bool sum = false;    // totalled per group and for the report
    bool right = false;  // numbers stand to the right
};

struct ReportSortKey {
    std::string column;
    bool descending = false;
};

struct ReportDesign {
    std::string title;
    std::string table;
    std::string where;                        // criteria in the store's dialect, "" for every row
    std::string joinTable, joinFrom, joinTo;  // joinFrom of the table = joinTo of joinTable
    std::vector<ReportSortKey> sort;
    std::string group, groupCaption;  // "" for no grouping
    std::string countCaption;         // "" for no counts in the total lines
    int lines = 40;                   // body lines on a page
    std::vector<std::string> header;  // lines under the title on every page
    std::string footer = "Page {page} of {pages}";
    std::vector<ReportColumn> columns;
};

// The most body lines a page holds; `lines` is kept within 1 and this.
inline constexpr int MaxReportLines = 50;

// Reads a report file. A missing file is fault 53; a file that is not a report (empty, an
// unknown word, a bad number, no table or no column) is fault 5 with the line it stopped at.
ReportDesign readReportDesign(const std::string& path);
ReportDesign parseReportDesign(std::string_view text);
