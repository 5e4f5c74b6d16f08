#include "import_floor.h"

#include <sqlite3.h>

#include <fstream>
#include <sstream>
#include <unordered_map>

#include "processor_time.h"

namespace {

struct Db {
    sqlite3* db = nullptr;
    ~Db() { sqlite3_close(db); }
    void exec(const char* sql) const { sqlite3_exec(db, sql, nullptr, nullptr, nullptr); }
    sqlite3_stmt* prepare(const char* sql) const {
        sqlite3_stmt* s = nullptr;
        sqlite3_prepare_v2(db, sql, -1, &s, nullptr);
        return s;
    }
};

void bindText(sqlite3_stmt* s, int at, const std::string& text) {
    sqlite3_bind_text(s, at, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

}  // namespace

double importFloorSeconds(const std::string& catalogue, const std::string& importFile) {
    Db d;
    if (sqlite3_open(catalogue.c_str(), &d.db) != SQLITE_OK) return -1;
    const double cpu0 = processorSeconds();
    d.exec("PRAGMA journal_mode=WAL");
    d.exec("PRAGMA synchronous=NORMAL");

    std::unordered_map<std::string, sqlite3_int64> pidOf;
    sqlite3_int64 lastPid = 0;
    sqlite3_stmt* read = d.prepare("SELECT PID, StockNo FROM Products");
    while (sqlite3_step(read) == SQLITE_ROW) {
        lastPid = std::max(lastPid, sqlite3_column_int64(read, 0));
        pidOf.emplace(reinterpret_cast<const char*>(sqlite3_column_text(read, 1)),
                      sqlite3_column_int64(read, 0));
    }
    sqlite3_finalize(read);

    sqlite3_stmt* update = d.prepare(
        "UPDATE [Products] SET [StockNo]=?,[ProdName]=?,[Retail]=?,[Notes]=? WHERE rowid=?");
    sqlite3_stmt* insert = d.prepare(
        "INSERT INTO [Products] (rowid,[StockNo],[ProdName],[Retail],[Price],[Notes]) "
        "VALUES (?,?,?,?,?,?)");
    std::ifstream in(importFile, std::ios::binary);
    std::string line, stock, name, retail;
    int inGroup = 0;
    d.exec("BEGIN IMMEDIATE");
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        std::istringstream fields(line);
        std::getline(fields, stock, ',');
        std::getline(fields, name, ',');
        std::getline(fields, retail, ',');
        const double price = std::stod(retail);
        auto known = pidOf.find(stock);
        sqlite3_stmt* s = known != pidOf.end() ? update : insert;
        if (known != pidOf.end()) {
            bindText(s, 1, stock);
            bindText(s, 2, name);
            sqlite3_bind_double(s, 3, price);
            bindText(s, 4, "Imported 11/23/2026 - Edited This Item\r\n");
            sqlite3_bind_int64(s, 5, known->second);
        } else {
            sqlite3_bind_int64(s, 1, ++lastPid);
            bindText(s, 2, stock);
            bindText(s, 3, name);
            sqlite3_bind_double(s, 4, price);
            sqlite3_bind_double(s, 5, 0);
            bindText(s, 6, "Imported - Added This Item\r\n");
            pidOf.emplace(stock, lastPid);
        }
        sqlite3_step(s);
        sqlite3_reset(s);
        if (++inGroup == 2000) {
            d.exec("COMMIT");
            d.exec("BEGIN IMMEDIATE");
            inGroup = 0;
        }
    }
    d.exec("COMMIT");
    sqlite3_finalize(update);
    sqlite3_finalize(insert);
    return processorSeconds() - cpu0;
}
