// store-bench: times the record store on a generated catalogue of 100,000 products.
//
//   store-bench [OUTPUT_FOLDER] [ROWS]
//
// Builds OUTPUT_FOLDER/bench.mde (default: a folder under the system temp folder) from
// data/schema.sql, fills Products with ROWS generated products (default 100,000, fixed
// seed), then times what the product forms do: opening the two product record sets,
// filter and sort in memory, finds by stock number on a record set and on a data control,
// and one durable write per row; then the program's own start on it, and the detailed
// search form opened and cancelled ten times, with the resident memory before and after.
// The sqlite3 shell, when present, does the same reads for comparison. See
// docs/PERFORMANCE.md.

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "base/variant.h"
#include "base/vb_error.h"
#include "product_catalogue.h"
#include "records/product_statements.h"
#include "records/store.h"
#include "resident_memory.h"
#include "search_form_cycles.h"
#include "store/sqlite_file.h"
#include "store/sqlite_recordset.h"

namespace {

using Clock = std::chrono::steady_clock;

double msBetween(Clock::time_point a, Clock::time_point b) {
    return std::chrono::duration<double, std::milli>(b - a).count();
}

const char* const kFilter = "StockNo like '*AB*' and Cost1 > 5";
const char* const kFilterSort = "Category, StockNo";
const char* const kTwoColumnSort = "Category, PageNo Desc";
const char* const kShellSelectAll = "SELECT * FROM Products";
const char* const kShellWhere =
    "SELECT * FROM Products WHERE StockNo LIKE '%AB%' AND Cost1 > 5 ORDER BY Category, StockNo";

constexpr int kRuns = 3;
constexpr int kFinds = 10000;
constexpr int kSearchFormCycles = 10;

// The stored size of every cell of Products: the bytes of a text, 8 for a number, 0 for Null.
struct RawSize {
    std::int64_t total = 0;
    std::int64_t text = 0;
    std::int64_t cells = 0;
    std::int64_t nulls = 0;
};

RawSize rawSize(SqliteFile& file) {
    std::string total, text, nulls;
    auto columns = file.tableColumns("Products");
    for (const auto& c : columns) {
        const std::string q = quoteName(c.name);
        if (!total.empty()) {
            total += '+';
            text += '+';
            nulls += '+';
        }
        total += "CASE WHEN " + q + " IS NULL THEN 0 WHEN typeof(" + q +
                 ") IN ('integer','real') THEN 8 ELSE length(CAST(" + q + " AS BLOB)) END";
        text +=
            "CASE WHEN typeof(" + q + ")='text' THEN length(CAST(" + q + " AS BLOB)) ELSE 0 END";
        nulls += "(" + q + " IS NULL)";
    }
    RawSize s;
    s.total = file.firstColumn("SELECT sum(" + total + ") FROM Products")[0].i;
    s.text = file.firstColumn("SELECT sum(" + text + ") FROM Products")[0].i;
    s.nulls = file.firstColumn("SELECT sum(" + nulls + ") FROM Products")[0].i;
    s.cells = file.firstColumn("SELECT count(*) FROM Products")[0].i *
              static_cast<std::int64_t>(columns.size());
    return s;
}

struct Row {
    std::string what;
    std::string measured;
    std::string detail;
    std::string target;
    std::string verdict;
};

std::string fixed(double v, int decimals = 1) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*f", decimals, v);
    return buf;
}

std::string ms(double v) {
    return fixed(v, v < 10 ? 2 : 1) + " ms";
}
std::string mib(double bytes) {
    return fixed(bytes / (1024.0 * 1024.0), 1) + " MiB";
}
std::string verdict(bool met) {
    return met ? "met" : "MISSED";
}

std::string shellQuote(const std::string& s) {
    std::string out = "'";
    for (char c : s) {
        if (c == '\'')
            out += "'\\''";
        else
            out += c;
    }
    return out + "'";
}

bool haveShell() {
    return std::system("sqlite3 -version > /dev/null 2>&1") == 0;
}

// One run of the sqlite3 shell; -1 when it failed.
double shellRun(const std::string& path, const std::string& sql) {
    const std::string command = "sqlite3 " + shellQuote(path) + " \"" + sql + "\" > /dev/null";
    auto t0 = Clock::now();
    int rc = std::system(command.c_str());
    auto t1 = Clock::now();
    return rc == 0 ? msBetween(t0, t1) : -1;
}

template <class F>
double bestOf(int runs, F&& once) {
    double best = 1e300;
    for (int i = 0; i < runs; ++i)
        best = std::min(best, once());
    return best;
}

void check(bool ok, const std::string& what) {
    if (!ok) throw std::runtime_error("check failed: " + what);
}

int run(const std::string& folder, int rows) {
    std::filesystem::create_directories(folder);
    const std::string path = (std::filesystem::path(folder) / "bench.mde").string();
    std::vector<Row> table;
    std::cout << "store-bench: " << rows << " products in " << path << "\n" << std::flush;

    // 1. The catalogue.
    auto g0 = Clock::now();
    const std::vector<std::string> stockNos = generateCatalogue(path, folder + "/", rows);
    auto g1 = Clock::now();
    RawSize raw;
    {
        auto file = SqliteFile::open(path);
        raw = rawSize(*file);
    }
    const double fileBytes = static_cast<double>(std::filesystem::file_size(path));
    table.push_back({"generate catalogue (one transaction)", ms(msBetween(g0, g1)),
                     "file " + mib(fileBytes) + ", raw data " + mib(raw.total) + " (text " +
                         mib(raw.text) + ", " + std::to_string(raw.nulls) + " of " +
                         std::to_string(raw.cells) + " cells Null)",
                     "", ""});

    // 2a. Opening the two product record sets on one connection.
    auto conn = CreateConnection();
    conn->Open(connectionText(path));
    std::unique_ptr<Recordset> rsA, rsB;
    double bestA = 1e300, bestB = 1e300, bestBoth = 1e300;
    for (int i = 0; i < kRuns; ++i) {
        rsA.reset();
        rsB.reset();
        auto a = CreateRecordset();
        auto b = CreateRecordset();
        auto t0 = Clock::now();
        a->Open(StatementA, *conn);
        auto t1 = Clock::now();
        b->Open(StatementB, *conn);
        auto t2 = Clock::now();
        bestA = std::min(bestA, msBetween(t0, t1));
        bestB = std::min(bestB, msBetween(t1, t2));
        bestBoth = std::min(bestBoth, msBetween(t0, t2));
        rsA = std::move(a);
        rsB = std::move(b);
    }
    check(rsA->RecordCount() == rows && rsB->RecordCount() == rows, "record counts");
    const double memA = static_cast<double>(dynamic_cast<SqliteRecordset&>(*rsA).memoryBytes());
    const double memB = static_cast<double>(dynamic_cast<SqliteRecordset&>(*rsB).memoryBytes());
    const double rssOpen = residentMiB();
    table.push_back({"open statement A", ms(bestA),
                     "memory " + mib(memA) + " = " + fixed(memA / raw.total, 2) + " x raw", "",
                     ""});
    table.push_back({"open statement B", ms(bestB),
                     "memory " + mib(memB) + " = " + fixed(memB / raw.total, 2) + " x raw", "",
                     ""});

    // 2b. The sqlite3 shell doing the same reads.
    const bool shell = haveShell();
    double shellTwo = -1, shellWhere = -1, shellStart = -1;
    if (shell) {
        shellStart = bestOf(kRuns, [&] { return shellRun(path, "SELECT 1"); });
        shellTwo = bestOf(kRuns, [&] {
            return shellRun(path, kShellSelectAll) + shellRun(path, kShellSelectAll);
        });
        shellWhere = bestOf(kRuns, [&] { return shellRun(path, kShellWhere); });
    }
    table.push_back({"open A + B (both sets)", ms(bestBoth),
                     shell ? "shell: 2 x SELECT * " + ms(shellTwo) + ", ours/shell " +
                                 fixed(bestBoth / shellTwo, 2)
                           : "sqlite3 shell not found",
                     "ours/shell <= 1.0", shell ? verdict(bestBoth <= shellTwo) : "n/a"});

    // 2c. Filter with a like and an and, then sort, on the rows already in memory.
    double bestFilter = 1e300, bestSortAfter = 1e300, bestTogether = 1e300;
    long filtered = 0;
    for (int i = 0; i < kRuns; ++i) {
        rsA->SetFilter("");
        rsA->SetSort("");
        auto t0 = Clock::now();
        rsA->SetFilter(kFilter);
        auto t1 = Clock::now();
        rsA->SetSort(kFilterSort);
        auto t2 = Clock::now();
        bestFilter = std::min(bestFilter, msBetween(t0, t1));
        bestSortAfter = std::min(bestSortAfter, msBetween(t1, t2));
        bestTogether = std::min(bestTogether, msBetween(t0, t2));
        filtered = rsA->RecordCount();
    }
    {
        auto file = SqliteFile::open(path);
        auto n = file->firstColumn(
                         "SELECT count(*) FROM Products WHERE StockNo LIKE '%AB%' AND Cost1 > 5")[0]
                     .i;
        check(n == filtered,
              "filtered count " + std::to_string(filtered) + " vs " + std::to_string(n));
    }
    table.push_back({"SetFilter like + and", ms(bestFilter),
                     std::to_string(filtered) + " of " + std::to_string(rows) + " rows", "", ""});
    table.push_back({"SetSort Category, StockNo (filtered)", ms(bestSortAfter),
                     "sorts the " + std::to_string(filtered) + " filtered rows", "", ""});
    // The search's figure: a two-condition criteria text (a like and a number comparison)
    // filters every product of the record set, then the result is sorted; against the
    // shell's where + order by of the same rows, timed in this run.
    table.push_back(
        {"filter " + std::to_string(rows) + " by like + number, then sort", ms(bestTogether),
         shell ? "shell where + order by " + ms(shellWhere) + ", ours/shell " +
                     fixed(bestTogether / shellWhere, 3)
               : "sqlite3 shell not found",
         "ours/shell <= 0.5", shell ? verdict(bestTogether <= 0.5 * shellWhere) : "n/a"});

    // 2d. A sort on two columns alone.
    rsA->SetFilter("");
    const double bestSort = bestOf(kRuns, [&] {
        rsA->SetSort("");
        auto t0 = Clock::now();
        rsA->SetSort(kTwoColumnSort);
        return msBetween(t0, Clock::now());
    });
    table.push_back({"SetSort Category, PageNo Desc", ms(bestSort),
                     std::to_string(rsA->RecordCount()) + " rows", "", ""});
    rsA->SetSort("");

    // 2e. Finds by stock number on the record set, each from the first row.
    Random pickR(99);
    std::vector<std::string> wanted, criteria;
    for (int i = 0; i < kFinds; ++i) {
        wanted.push_back(stockNos[pickR.below(rows)]);
        criteria.push_back("[StockNo] = '" + wanted.back() + "'");
    }
    const int stockField = rsA->FieldIndex("StockNo");
    double findCold = 0, findBest = 1e300, bothBest = 1e300;
    for (int runNo = 0; runNo < kRuns; ++runNo) {
        double finds = 0, both = 0;
        for (int i = 0; i < kFinds; ++i) {
            auto t0 = Clock::now();
            rsA->SetAbsolutePosition(1);
            auto t1 = Clock::now();
            rsA->Find(criteria[i]);
            auto t2 = Clock::now();
            finds += msBetween(t1, t2);
            both += msBetween(t0, t2);
            check(!rsA->Eof() && rsA->Fields(stockField).Value().Str() == wanted[i], "find");
        }
        if (runNo == 0) findCold = finds;
        findBest = std::min(findBest, finds);
        bothBest = std::min(bothBest, both);
    }
    table.push_back({"10,000 Find [StockNo] = 'X'", ms(findBest),
                     "first run (builds the index) " + ms(findCold) +
                         "; with SetAbsolutePosition(1) " + ms(bothBest),
                     "< 10 ms", verdict(findBest < 10)});

    // 2f. FindFirst on a data control over the Products table.
    auto dc = CreateDataControl();
    dc->SetDatabaseName(path);
    dc->SetRecordSource("Products");
    auto r0 = Clock::now();
    dc->Refresh();
    const double refreshMs = msBetween(r0, Clock::now());
    DaoRecordset& dao = dc->Recordset();
    auto l0 = Clock::now();
    check(dao.RecordCount() == rows, "data control count");
    const double loadMs = msBetween(l0, Clock::now());
    std::vector<std::string> daoCriteria;
    for (const auto& s : wanted)
        daoCriteria.push_back("[StockNo]='" + s + "'");
    const int daoStockField = dao.FieldIndex("StockNo");
    double daoCold = 0, daoBest = 1e300;
    for (int runNo = 0; runNo < kRuns; ++runNo) {
        double finds = 0;
        for (int i = 0; i < kFinds; ++i) {
            auto t0 = Clock::now();
            dao.FindFirst(daoCriteria[i]);
            finds += msBetween(t0, Clock::now());
            check(!dao.NoMatch() && dao.GetValue(daoStockField).Str() == wanted[i], "FindFirst");
        }
        if (runNo == 0) daoCold = finds;
        daoBest = std::min(daoBest, finds);
    }
    table.push_back({"data control Refresh (Products)", ms(refreshMs),
                     "field names only; the rows load on first use: " + ms(loadMs), "", ""});
    table.push_back({"10,000 FindFirst [StockNo]='X'", ms(daoBest),
                     "first run (builds the index) " + ms(daoCold), "< 10 ms",
                     verdict(daoBest < 10)});

    // 2g. One durable write per row: set Notes, and the move saves the row.
    rsA->MoveFirst();
    long written = 0;
    auto u0 = Clock::now();
    while (!rsA->Eof()) {
        rsA->Fields("Notes").SetValue(Variant("bench note " + std::to_string(written)));
        rsA->MoveNext();
        ++written;
    }
    const double updateMs = msBetween(u0, Clock::now());
    {
        auto file = SqliteFile::open(path);
        auto n =
            file->firstColumn("SELECT count(*) FROM Products WHERE Notes LIKE 'bench note %'")[0].i;
        check(n == written, "written rows");
    }
    table.push_back({"100,000 single-row updates", ms(updateMs),
                     fixed(updateMs * 1000.0 / static_cast<double>(written), 1) + " us a row, " +
                         fixed(static_cast<double>(written) / (updateMs / 1000.0), 0) + " rows/s",
                     "", ""});

    // 3. The detailed search form, opened from the main form and cancelled, ten times.
    const SearchFormCycles cycles = runSearchFormCycles(folder + "/", path, kSearchFormCycles);
    const double grown = cycles.residentAfterMiB - cycles.residentBeforeMiB;
    table.push_back({"search form open + cancel", ms(cycles.msPerCycle),
                     std::to_string(kSearchFormCycles) + " times: resident " +
                         fixed(cycles.residentBeforeMiB) + " -> " + fixed(cycles.residentAfterMiB) +
                         " MiB",
                     "back within 5 MiB", verdict(grown <= 5.0)});

    // The table.
    std::size_t w0 = 0, w1 = 0, w2 = 0, w3 = 0;
    for (const auto& r : table) {
        w0 = std::max(w0, r.what.size());
        w1 = std::max(w1, r.measured.size());
        w2 = std::max(w2, r.detail.size());
        w3 = std::max(w3, r.target.size());
    }
    auto pad = [](const std::string& s, std::size_t w) {
        return s + std::string(w - s.size(), ' ');
    };
    std::cout << "\n";
    for (const auto& r : table)
        std::cout << pad(r.what, w0) << "  " << pad(r.measured, w1) << "  " << pad(r.detail, w2)
                  << "  " << pad(r.target, w3) << "  " << r.verdict << "\n";
    if (shell) std::cout << "\nsqlite3 shell start alone (SELECT 1): " << ms(shellStart) << "\n";
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::cout << "RSS with both sets open: " << fixed(rssOpen) << " MiB\n"
              << "peak RSS: " << fixed(usage.ru_maxrss / 1024.0) << " MiB\n";
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::string folder =
        argc > 1 ? argv[1] : (std::filesystem::temp_directory_path() / "store-bench").string();
    int rows = argc > 2 ? std::atoi(argv[2]) : 100000;
    if (rows < 1) {
        std::cerr << "usage: store-bench [OUTPUT_FOLDER] [ROWS]\n";
        return 2;
    }
    try {
        return run(folder, rows);
    } catch (const VbError& e) {
        std::cerr << "store-bench: error " << e.Number() << ": " << e.what() << "\n";
    } catch (const std::exception& e) {
        std::cerr << "store-bench: " << e.what() << "\n";
    }
    return 1;
}
