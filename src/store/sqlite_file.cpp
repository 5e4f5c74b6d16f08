#include "store/sqlite_file.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>

#include "base/convert.h"
#include "base/fold.h"
#include "base/strings.h"
#include "base/vb_error.h"

namespace {

constexpr int CouldNotFindFile = 3024;
constexpr int CannotFindTable = 3078;
constexpr int StoreFailure = 3146;  // the driver's own failure, reported silently

// Statements are kept prepared per text: the program repeats the same few many times.
struct Finalizer {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};

ColumnKind kindOfDeclared(const std::string& declared, bool primaryKey) {
    std::string t = UCase(declared);
    if (primaryKey && t.find("INT") != std::string::npos) return ColumnKind::Counter;
    if (t.find("MONEY") != std::string::npos || t.find("CURRENCY") != std::string::npos)
        return ColumnKind::Money;
    if (t.find("YESNO") != std::string::npos || t.find("BOOL") != std::string::npos || t == "BIT")
        return ColumnKind::YesNo;
    if (t.find("DATE") != std::string::npos || t.find("TIME") != std::string::npos)
        return ColumnKind::Date;
    if (t.find("LONG") != std::string::npos && t.find("TEXT") == std::string::npos)
        return ColumnKind::Long;
    if (t.find("INT") != std::string::npos || t.find("COUNTER") != std::string::npos)
        return ColumnKind::Long;
    if (t.find("REAL") != std::string::npos || t.find("FLOA") != std::string::npos ||
        t.find("DOUB") != std::string::npos || t.find("NUM") != std::string::npos ||
        t.find("DEC") != std::string::npos || t.find("SINGLE") != std::string::npos)
        return ColumnKind::Double;
    return ColumnKind::Text;
}

void bind(sqlite3_stmt* s, int index, const StoredValue& v) {
    switch (v.type) {
        case StoredValue::Type::Null:
            sqlite3_bind_null(s, index);
            break;
        case StoredValue::Type::Integer:
            sqlite3_bind_int64(s, index, v.i);
            break;
        case StoredValue::Type::Real:
            sqlite3_bind_double(s, index, v.r);
            break;
        case StoredValue::Type::Text:
            sqlite3_bind_text(s, index, v.text.data(), static_cast<int>(v.text.size()),
                              SQLITE_TRANSIENT);
            break;
    }
}

}  // namespace

std::string quoteName(const std::string& name) {
    return "[" + name + "]";
}

namespace {

// Another program's lock is answered at once, not after a wait on every click; the short
// wait only bridges the moment a neighbour needs to finish one write.
constexpr int LockWaitMs = 100;

// The columns every catalogue's Products table has: statement A's.
constexpr const char* CatalogueColumns[] = {
    "PID",       "Category",  "Cost1",    "Cost2",     "Cost3",  "Cost4",   "Cost5",
    "Disco",     "Inventory", "MinOrdR",  "MinOrdW",   "NoSold", "Notes",   "OnOrder",
    "OnSpecial", "Orderable", "OutStock", "Packaging", "PageNo", "Picture", "Price",
    "ProdDesc",  "ProdName",  "ReOrder",  "Retail",    "Ship1",  "Ship2",   "StockNo",
    "Supplier",  "Taxable",   "Weight"};

bool isLockCode(int code) {
    return code == SQLITE_BUSY || code == SQLITE_LOCKED;
}

sqlite3* openHandle(const std::string& path, int flags) {
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.c_str(), &db, flags | SQLITE_OPEN_NOMUTEX, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        throw VbError(CouldNotFindFile, "Could not find file '" + path + "'.");
    }
    sqlite3_busy_timeout(db, LockWaitMs);
    return db;
}

}  // namespace

std::shared_ptr<SqliteFile> SqliteFile::open(const std::string& path, Use use) {
    std::error_code ec;
    if (path.empty() || !std::filesystem::is_regular_file(path, ec))
        throw VbError(CouldNotFindFile, "Could not find file '" + path + "'.");
    // SQLite would take an empty file for an empty database and write one into it.
    if (std::filesystem::file_size(path, ec) == 0 || ec) throw VbError(vberr::NotADatabase);
    std::shared_ptr<SqliteFile> probe(new SqliteFile(openHandle(path, SQLITE_OPEN_READONLY), path));
    // A foreign file fails here, on the first read of the schema.
    int rc = sqlite3_exec(probe->db_, "PRAGMA schema_version", nullptr, nullptr, nullptr);
    if (isLockCode(rc)) throw VbError(vberr::FileInUse);
    if (rc != SQLITE_OK) throw VbError(vberr::NotADatabase);
    if (!probe->isCatalogue()) return probe;
    probe.reset();
    std::shared_ptr<SqliteFile> file(new SqliteFile(openHandle(path, SQLITE_OPEN_READWRITE), path));
    // Every write is its own durable change, but with the log in WAL mode a run of many
    // single-row writes costs no disk sync per row. A read-only or busy file keeps its log;
    // a data control's file takes the log as the catalogue in use left it, and syncs as
    // seldom as the catalogue does, or an import through `Data2` would sync every row.
    if (use == Use::Catalogue)
        sqlite3_exec(file->db_, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    sqlite3_exec(file->db_, "PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
    return file;
}

bool SqliteFile::isCatalogue() {
    try {
        std::vector<ColumnInfo> columns = tableColumns("Products");
        for (const char* wanted : CatalogueColumns)
            if (std::none_of(columns.begin(), columns.end(),
                             [&](const ColumnInfo& c) { return equalFolded(c.name, wanted); }))
                return false;
        return true;
    } catch (const VbError& e) {
        if (e.Number() == vberr::RecordLocked) throw VbError(vberr::FileInUse);
        return false;
    }
}

std::shared_ptr<SqliteFile> SqliteFile::create(const std::string& path) {
    std::error_code ec;
    std::filesystem::remove(path, ec);
    std::filesystem::remove(path + "-wal", ec);
    std::filesystem::remove(path + "-shm", ec);
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) !=
        SQLITE_OK) {
        sqlite3_close(db);
        throw VbError(vberr::PathNotFound, "Path not found: " + path);
    }
    return std::shared_ptr<SqliteFile>(new SqliteFile(db, path));
}

SqliteFile::~SqliteFile() {
    for (auto& [sql, statement] : writes_)
        sqlite3_finalize(statement);
    sqlite3_close_v2(db_);
}

void SqliteFile::fail(int fallbackNumber) {
    const int code = sqlite3_errcode(db_);
    if (isLockCode(code)) throw VbError(vberr::RecordLocked);
    if (code == SQLITE_READONLY) throw VbError(vberr::DatabaseReadOnly);
    throw VbError(fallbackNumber, sqlite3_errmsg(db_));
}

sqlite3_stmt* SqliteFile::prepare(const std::string& sql) {
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db_, sql.c_str(), static_cast<int>(sql.size()), &s, nullptr) !=
        SQLITE_OK) {
        sqlite3_finalize(s);
        fail(StoreFailure);
    }
    return s;
}

void SqliteFile::runWrite(const std::string& sql, const std::function<void(sqlite3_stmt*)>& run) {
    sqlite3_stmt*& s = writes_[sql];
    if (!s) s = prepare(sql);
    struct Reset {
        sqlite3_stmt* s;
        ~Reset() {
            sqlite3_reset(s);
            sqlite3_clear_bindings(s);
        }
    } reset{s};
    run(s);
}

void SqliteFile::execScript(const std::string& sql) {
    char* message = nullptr;
    if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
        std::string text = message ? message : "script failed";
        sqlite3_free(message);
        throw VbError(StoreFailure, text);
    }
}

std::vector<StoredValue> SqliteFile::firstColumn(const std::string& sql) {
    std::unique_ptr<sqlite3_stmt, Finalizer> s(prepare(sql));
    std::vector<StoredValue> values;
    int rc;
    while ((rc = sqlite3_step(s.get())) == SQLITE_ROW)
        values.push_back(column(s.get(), 0));
    if (rc != SQLITE_DONE) fail(StoreFailure);
    return values;
}

std::int64_t SqliteFile::rowCount(const std::string& table) {
    std::unique_ptr<sqlite3_stmt, Finalizer> s(prepare("SELECT count(*) FROM " + quoteName(table)));
    return sqlite3_step(s.get()) == SQLITE_ROW ? sqlite3_column_int64(s.get(), 0) : 0;
}

std::string SqliteFile::firstColumnJoined(const std::string& sql) {
    std::string out;
    bool first = true;
    for (const auto& v : firstColumn(sql)) {
        out += first ? "" : "|";
        first = false;
        switch (v.type) {
            case StoredValue::Type::Null:
                out += "Null";
                break;
            case StoredValue::Type::Integer:
                out += std::to_string(v.i);
                break;
            case StoredValue::Type::Real:
                out += CStr(Variant::Double(v.r));
                break;
            case StoredValue::Type::Text:
                out += v.text;
                break;
        }
    }
    return out;
}

std::vector<std::string> SqliteFile::tableNames() {
    std::unique_ptr<sqlite3_stmt, Finalizer> s(
        prepare("SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite_%' "
                "ORDER BY name"));
    std::vector<std::string> names;
    while (sqlite3_step(s.get()) == SQLITE_ROW)
        names.emplace_back(columnText(s.get(), 0));
    return names;
}

std::vector<ColumnInfo> SqliteFile::tableColumns(const std::string& table, std::string* realName) {
    // Table names ignore case, as the program writes "[products]" and "Products" alike.
    std::string found;
    for (const auto& name : tableNames())
        if (UCase(name) == UCase(table)) found = name;
    if (found.empty())
        throw VbError(CannotFindTable, "Cannot find the input table or query '" + table + "'.");
    if (realName) *realName = found;
    std::unique_ptr<sqlite3_stmt, Finalizer> s(
        prepare("SELECT name, type, pk FROM pragma_table_info(?1) ORDER BY cid"));
    sqlite3_bind_text(s.get(), 1, found.c_str(), -1, SQLITE_TRANSIENT);
    std::vector<ColumnInfo> columns;
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        ColumnInfo c;
        c.name = std::string(columnText(s.get(), 0));
        c.kind = kindOfDeclared(std::string(columnText(s.get(), 1)), columnInt(s.get(), 2) == 1);
        columns.push_back(std::move(c));
    }
    return columns;
}

void SqliteFile::scan(const std::string& table, const std::vector<std::string>& columns,
                      const std::function<void(std::int64_t, sqlite3_stmt*)>& row) {
    std::string sql = "SELECT rowid";
    for (const auto& c : columns)
        sql += "," + quoteName(c);
    sql += " FROM " + quoteName(table);
    std::unique_ptr<sqlite3_stmt, Finalizer> s(prepare(sql));
    int rc;
    while ((rc = sqlite3_step(s.get())) == SQLITE_ROW)
        row(sqlite3_column_int64(s.get(), 0), s.get());
    if (rc != SQLITE_DONE) fail(StoreFailure);
}

void SqliteFile::readRow(const std::string& table, const std::vector<std::string>& columns,
                         std::int64_t rowid, const std::function<void(sqlite3_stmt*)>& row) {
    std::string sql = "SELECT ";
    for (std::size_t i = 0; i < columns.size(); ++i)
        sql += (i ? "," : "") + quoteName(columns[i]);
    sql += " FROM " + quoteName(table) + " WHERE rowid=?";
    std::unique_ptr<sqlite3_stmt, Finalizer> s(prepare(sql));
    sqlite3_bind_int64(s.get(), 1, rowid);
    if (sqlite3_step(s.get()) == SQLITE_ROW) row(s.get());
}

StoredValue SqliteFile::column(sqlite3_stmt* stmt, int index) {
    StoredValue v;
    switch (sqlite3_column_type(stmt, index)) {
        case SQLITE_NULL:
            break;
        case SQLITE_INTEGER:
            v.type = StoredValue::Type::Integer;
            v.i = sqlite3_column_int64(stmt, index);
            break;
        case SQLITE_FLOAT:
            v.type = StoredValue::Type::Real;
            v.r = sqlite3_column_double(stmt, index);
            break;
        default:
            v.type = StoredValue::Type::Text;
            v.text = std::string(columnText(stmt, index));
            break;
    }
    return v;
}

StoredValue::Type SqliteFile::columnType(sqlite3_stmt* stmt, int index) {
    switch (sqlite3_column_type(stmt, index)) {
        case SQLITE_NULL:
            return StoredValue::Type::Null;
        case SQLITE_INTEGER:
            return StoredValue::Type::Integer;
        case SQLITE_FLOAT:
            return StoredValue::Type::Real;
        default:
            return StoredValue::Type::Text;
    }
}

bool SqliteFile::columnIsNull(sqlite3_stmt* stmt, int index) {
    return sqlite3_column_type(stmt, index) == SQLITE_NULL;
}

std::int64_t SqliteFile::columnInt(sqlite3_stmt* stmt, int index) {
    return sqlite3_column_int64(stmt, index);
}

double SqliteFile::columnReal(sqlite3_stmt* stmt, int index) {
    return sqlite3_column_double(stmt, index);
}

std::string_view SqliteFile::columnText(sqlite3_stmt* stmt, int index) {
    const unsigned char* text = sqlite3_column_text(stmt, index);
    if (!text) return {};
    return {reinterpret_cast<const char*>(text),
            static_cast<std::size_t>(sqlite3_column_bytes(stmt, index))};
}

std::int64_t SqliteFile::insert(const std::string& table, const std::vector<std::string>& columns,
                                const std::vector<StoredValue>& values) {
    std::string sql;
    if (columns.empty()) {
        sql = "INSERT INTO " + quoteName(table) + " DEFAULT VALUES";
    } else {
        std::string names, marks;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            names += (i ? "," : "") + quoteName(columns[i]);
            marks += (i ? ",?" : "?");
        }
        sql = "INSERT INTO " + quoteName(table) + " (" + names + ") VALUES (" + marks + ")";
    }
    runWrite(sql, [&](sqlite3_stmt* s) {
        for (std::size_t i = 0; i < values.size(); ++i)
            bind(s, static_cast<int>(i) + 1, values[i]);
        if (sqlite3_step(s) != SQLITE_DONE) fail(StoreFailure);
    });
    return sqlite3_last_insert_rowid(db_);
}

void SqliteFile::update(const std::string& table, std::int64_t rowid,
                        const std::vector<std::string>& columns,
                        const std::vector<StoredValue>& values) {
    if (columns.empty()) return;
    std::string sql = "UPDATE " + quoteName(table) + " SET ";
    for (std::size_t i = 0; i < columns.size(); ++i)
        sql += (i ? "," : "") + quoteName(columns[i]) + "=?";
    sql += " WHERE rowid=?";
    runWrite(sql, [&](sqlite3_stmt* s) {
        for (std::size_t i = 0; i < values.size(); ++i)
            bind(s, static_cast<int>(i) + 1, values[i]);
        sqlite3_bind_int64(s, static_cast<int>(values.size()) + 1, rowid);
        if (sqlite3_step(s) != SQLITE_DONE) fail(StoreFailure);
    });
}

void SqliteFile::remove(const std::string& table, std::int64_t rowid) {
    runWrite("DELETE FROM " + quoteName(table) + " WHERE rowid=?", [&](sqlite3_stmt* s) {
        sqlite3_bind_int64(s, 1, rowid);
        if (sqlite3_step(s) != SQLITE_DONE) fail(StoreFailure);
    });
}
