#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/variant.h"

struct sqlite3;
struct sqlite3_stmt;
class RowTable;
struct WriteRules;

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
    // Whether SQLite reads the file as a database. The file is read through SQLite alone:
    // closing a descriptor of our own on it would end every lock that this process's
    // connections hold on the file.
    static bool isDatabase(const std::string& path);
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
    // A query read a row at a time, for readings too long to hold; a query the file refuses
    // is fault 3146. Its texts may sort through the collation LISTED: as compareListed
    // orders them (base/convert.h).
    struct Finalizer {
        void operator()(sqlite3_stmt* s) const;
    };
    using Query = std::unique_ptr<sqlite3_stmt, Finalizer>;
    Query query(const std::string& sql);
    // Moves the query to its next row; false past the last.
    bool step(sqlite3_stmt* query);

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

    // Writes through: each call is its own durable change, or, inside a group of writes,
    // part of the group's next commit. `returning` names columns whose values, as the file
    // now holds them, are given to `returned` (column 0 the first named) in the same
    // statement.
    // The values are kept for the group, so they are taken, not copied.
    using Returned = std::function<void(sqlite3_stmt* stmt)>;
    std::int64_t insert(const std::string& table, const std::vector<std::string>& columns,
                        std::vector<StoredValue> values,
                        const std::vector<std::string>& returning = {},
                        const Returned& returned = {});
    void update(const std::string& table, std::int64_t rowid,
                const std::vector<std::string>& columns, std::vector<StoredValue> values,
                const std::vector<std::string>& returning = {}, const Returned& returned = {});
    void remove(const std::string& table, std::int64_t rowid);
    // How the table takes writes to these columns, so that a write need not read back what
    // it wrote; nothing when that is not plain to tell (triggers, generated columns, a strict
    // table, a column it does not have).
    std::optional<WriteRules> writeRules(const std::string& table,
                                         const std::vector<std::string>& columns);

    // A long run of writes (an import) is committed a group at a time: every GroupSpan of
    // writing or GroupRows writes, whichever comes first, and at endGroup. The file thus
    // always holds the writes of the run up to some point, and at most one group is lost
    // when the process is killed. Groups nest; the outermost end commits. Closing the file
    // commits an open group too.
    static constexpr std::chrono::milliseconds GroupSpan{100};
    static constexpr int GroupRows = 2000;
    void beginGroup();
    void endGroup();

    // Tables of rows loaded from a file, kept for the next record set of any connection of
    // the program that loads the same columns of that file: a requery, a refresh or a second
    // set on an unchanged file then copies the rows instead of reading them. A kept table is
    // given out only while the file holds exactly what it held when the table was loaded:
    // the loading connection has written nothing since, and no other connection (of this
    // program or another) has committed since, as the loading connection's data version
    // tells; and the asking connection has no writes of its own not yet committed. The
    // state is to be taken before the rows are read.
    struct State {
        std::int64_t dataVersion = -1;
        std::uint64_t writes = 0;
        bool operator==(const State&) const = default;
    };
    State state();
    void keepRows(const std::string& key, State loadedAt, std::shared_ptr<RowTable> rows);
    // The kept table for `key` when it is still what the file holds; null otherwise.
    std::shared_ptr<RowTable> keptRows(const std::string& key);
    // A table about to change in memory is no longer kept.
    void forgetRows(const RowTable* rows);

  private:
    SqliteFile(sqlite3* db, std::string path);
    bool isCatalogue();
    sqlite3_stmt* prepare(const std::string& sql);
    // A statement kept prepared for its text, reset and cleared when the lease ends.
    class Lease;
    Lease cached(const std::string& sql);
    // A write statement's text, kept shared by the group's writes that use it.
    using Text = std::shared_ptr<const std::string>;
    // Where a write's rowid is bound: before the values (an insert's key, Null until the file
    // gives it), after them (the row an update or a delete names), or nowhere.
    enum class RowidAt : std::uint8_t { None, First, Last };
    struct Written {
        Text sql;
        std::vector<StoredValue> values;
        RowidAt rowidAt = RowidAt::None;
        std::optional<std::int64_t> rowid;  // Null when not given
    };
    // The text of an insert into or an update of these columns, made once for each shape: a
    // run of writes repeats the same few.
    enum class Shape : std::uint8_t { Insert, Update };
    const Text& writeText(Shape shape, const std::string& table,
                          const std::vector<std::string>& columns,
                          const std::vector<std::string>& returning);
    // Runs one write statement, inside the open group when there is one.
    void write(Written written, const Returned& returned = {});
    static void bindWrite(sqlite3_stmt* s, RowidAt rowidAt,
                          const std::optional<std::int64_t>& rowid, const StoredValue* values,
                          std::size_t count);
    // False when the file refused and the group is still open, to be tried again later.
    bool commitGroup();
    // The group's transaction was rolled back by the engine (a full disk, an I/O fault):
    // its writes are made again one by one, so that none the program was told of is lost.
    void replayGroup();
    [[noreturn]] void fail(int fallbackNumber);
    [[noreturn]] static void throwFor(int code, const std::string& message, int fallbackNumber);

    struct KeptText {
        Shape shape;
        std::string table;
        std::vector<std::string> columns, returning;
        Text sql;
    };

    sqlite3* db_;
    std::string path_;
    std::unordered_map<std::string, std::unique_ptr<sqlite3_stmt, Finalizer>> statements_;
    std::vector<KeptText> writeTexts_;
    int groupDepth_ = 0;
    bool groupOpen_ = false;  // the group's transaction has begun
    // The data version read while the group's transaction holds the write lock: no other
    // connection can commit then, so it holds until the group ends (-1 when not read yet).
    std::int64_t versionInGroup_ = -1;
    std::chrono::steady_clock::time_point groupStarted_;
    // A write of the group as it is kept, to be made again: its values in groupValues_.
    struct KeptWrite {
        Text sql;
        std::size_t first = 0, count = 0;
        RowidAt rowidAt = RowidAt::None;
        std::optional<std::int64_t> rowid;
    };
    std::vector<KeptWrite> groupWrites_;
    // The values of the group's writes, copied into room that the next group of the run
    // reuses: freed a group at a time, the memory would go back to the system and be taken
    // again page by page. Let go when the outermost group ends.
    std::vector<StoredValue> groupValues_;
    std::size_t groupValuesUsed_ = 0;
    // Every write through this connection counts, refused ones too.
    std::uint64_t writes_ = 0;
    std::string keptPrefix_;  // the file's real path, under which its tables are kept
    // Drops the tables this connection loaded.
    void forgetOwnRows();
};

// "[name]" as SQLite quotes a name with blanks.
std::string quoteName(const std::string& name);
