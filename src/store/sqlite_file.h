#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/variant.h"

struct sqlite3;
struct sqlite3_stmt;

// What a column holds, from its declared type in the file.
enum class ColumnKind : std::uint8_t { Counter, Text, Long, Double, Money, YesNo, Date };

struct ColumnInfo {
    std::string name;
    ColumnKind kind = ColumnKind::Text;
};

// A value as the file stores it: null, whole number, real or text.
struct StoredValue {
    enum class Type : std::uint8_t { Null, Integer, Real, Text } type = Type::Null;
    std::int64_t i = 0;
    double r = 0;
    std::string text;
};

// One open SQLite catalogue file. The only code that speaks SQLite; everything above
// sees tables, columns and rows by rowid.
class SqliteFile {
  public:
    // How a file is opened once it is known to be a catalogue: as the catalogue in use,
    // whose log is switched to WAL, or only as it stands (a data control's file).
    enum class Use { Catalogue, AsItStands };
    // Opens an existing file. Nothing is written to it before its Products table is
    // found with the catalogue's columns: until then it is read only, and a database
    // that is no catalogue stays read only. 3024 when it is missing, 3343 when it is no
    // database, 3045 when another program holds it locked.
    static std::shared_ptr<SqliteFile> open(const std::string& path, Use use = Use::AsItStands);
    // Makes a new, empty database file, replacing any file of that name.
    static std::shared_ptr<SqliteFile> create(const std::string& path);
    ~SqliteFile();
    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;

    const std::string& path() const { return path_; }

    // Runs a script of statements, as the catalogue builder and tests do.
    void execScript(const std::string& sql);

    // The first column of every row a query gives, for checks and tests.
    std::vector<StoredValue> firstColumn(const std::string& sql);
    // The same values as text joined with "|", a Null as "Null".
    std::string firstColumnJoined(const std::string& sql);

    std::vector<std::string> tableNames();
    std::int64_t rowCount(const std::string& table);
    // The table's columns in stored order, with the real spelling of the table's name;
    // 3078 when there is no such table.
    std::vector<ColumnInfo> tableColumns(const std::string& table, std::string* realName = nullptr);

    // Reads the named columns of every row, in rowid order; `row` is called once a row with
    // its rowid and one value per column.
    void scan(const std::string& table, const std::vector<std::string>& columns,
              const std::function<void(std::int64_t rowid, sqlite3_stmt* stmt)>& row);
    // Reads the named columns of one row.
    void readRow(const std::string& table, const std::vector<std::string>& columns,
                 std::int64_t rowid, const std::function<void(sqlite3_stmt* stmt)>& row);
    // Reading one column of the row being scanned.
    static StoredValue column(sqlite3_stmt* stmt, int index);
    static StoredValue::Type columnType(sqlite3_stmt* stmt, int index);
    static bool columnIsNull(sqlite3_stmt* stmt, int index);
    static std::int64_t columnInt(sqlite3_stmt* stmt, int index);
    static double columnReal(sqlite3_stmt* stmt, int index);
    static std::string_view columnText(sqlite3_stmt* stmt, int index);

    // Writes through: each call is its own durable change.
    std::int64_t insert(const std::string& table, const std::vector<std::string>& columns,
                        const std::vector<StoredValue>& values);
    void update(const std::string& table, std::int64_t rowid,
                const std::vector<std::string>& columns, const std::vector<StoredValue>& values);
    void remove(const std::string& table, std::int64_t rowid);

  private:
    SqliteFile(sqlite3* db, std::string path) : db_(db), path_(std::move(path)) {}
    bool isCatalogue();
    sqlite3_stmt* prepare(const std::string& sql);
    // A write statement prepared once per text and kept for the next write of its shape;
    // `run` binds and steps it, and it is reset for the next use whatever happens.
    void runWrite(const std::string& sql, const std::function<void(sqlite3_stmt*)>& run);
    [[noreturn]] void fail(int fallbackNumber);

    sqlite3* db_;
    std::string path_;
    std::unordered_map<std::string, sqlite3_stmt*> writes_;
};

// "[name]" as SQLite quotes a name with blanks.
std::string quoteName(const std::string& name);
