#include "store/sqlite_file.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>

#include "base/convert.h"
#include "base/fold.h"
#include "base/strings.h"
#include "base/vb_error.h"
#include "store/write_rules.h"

namespace {

constexpr int CouldNotFindFile = 3024;
constexpr int CannotFindTable = 3078;
constexpr int StoreFailure = 3146;  // the driver's own failure, reported silently

// Statements are kept prepared per text, since an import repeats the same few for every
// record; past this many texts the kept ones are let go.
constexpr std::size_t KeptStatements = 64;

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
            // The value outlives the binding: a statement is reset and cleared before the
            // write's values go.
            sqlite3_bind_text(s, index, v.text.data(), static_cast<int>(v.text.size()),
                              SQLITE_STATIC);
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

int listedOrder(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return compareListed({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                         {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
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

bool SqliteFile::isDatabase(const std::string& path) {
    sqlite3* db = nullptr;
    const bool opened =
        sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr) ==
        SQLITE_OK;
    if (opened) sqlite3_busy_timeout(db, LockWaitMs);
    const int rc = opened ? sqlite3_exec(db, "PRAGMA schema_version", nullptr, nullptr, nullptr)
                          : SQLITE_CANTOPEN;
    sqlite3_close(db);
    return rc == SQLITE_OK || isLockCode(rc);
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

SqliteFile::SqliteFile(sqlite3* db, std::string path) : db_(db), path_(std::move(path)) {
    sqlite3_create_collation(db_, "LISTED", SQLITE_UTF8, nullptr, listedOrder);
    std::error_code ec;
    keptPrefix_ = std::filesystem::weakly_canonical(path_, ec).string() + "\n";
}

SqliteFile::~SqliteFile() {
    // Closing would roll an open group back: what the run wrote is kept.
    if (groupOpen_) {
        try {
            commitGroup();
        } catch (const VbError&) {
            // Nothing more can be done for the file while it closes.
        }
    }
    forgetOwnRows();
    statements_.clear();
    sqlite3_close_v2(db_);
}

void SqliteFile::Finalizer::operator()(sqlite3_stmt* s) const {
    sqlite3_finalize(s);
}

class SqliteFile::Lease {
  public:
    explicit Lease(sqlite3_stmt* s) : s_(s) {}
    ~Lease() {
        sqlite3_reset(s_);
        sqlite3_clear_bindings(s_);
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    sqlite3_stmt* get() const { return s_; }

  private:
    sqlite3_stmt* s_;
};

SqliteFile::Lease SqliteFile::cached(const std::string& sql) {
    auto it = statements_.find(sql);
    if (it == statements_.end()) {
        if (statements_.size() >= KeptStatements) statements_.clear();
        it = statements_.emplace(sql, prepare(sql)).first;
    }
    return Lease(it->second.get());
}

void SqliteFile::fail(int fallbackNumber) {
    throwFor(sqlite3_errcode(db_), sqlite3_errmsg(db_), fallbackNumber);
}

void SqliteFile::throwFor(int code, const std::string& message, int fallbackNumber) {
    if (isLockCode(code)) throw VbError(vberr::RecordLocked);
    if (code == SQLITE_READONLY) throw VbError(vberr::DatabaseReadOnly);
    throw VbError(fallbackNumber, message);
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

void SqliteFile::execScript(const std::string& sql) {
    ++writes_;
    forgetOwnRows();
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

SqliteFile::Query SqliteFile::query(const std::string& sql) {
    return Query(prepare(sql));
}

bool SqliteFile::step(sqlite3_stmt* query) {
    const int rc = sqlite3_step(query);
    if (rc != SQLITE_ROW && rc != SQLITE_DONE) fail(StoreFailure);
    return rc == SQLITE_ROW;
}

void SqliteFile::readRow(const std::string& table, const std::vector<std::string>& columns,
                         std::int64_t rowid, const std::function<void(sqlite3_stmt*)>& row) {
    std::string sql = "SELECT ";
    for (std::size_t i = 0; i < columns.size(); ++i)
        sql += (i ? "," : "") + quoteName(columns[i]);
    sql += " FROM " + quoteName(table) + " WHERE rowid=?";
    Lease s = cached(sql);
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

namespace {

std::string returningClause(const std::vector<std::string>& columns) {
    std::string clause;
    for (std::size_t i = 0; i < columns.size(); ++i)
        clause += (i ? "," : " RETURNING ") + quoteName(columns[i]);
    return clause;
}

// Past this many shapes of writes the kept texts are let go, as the kept statements are.
constexpr std::size_t KeptWriteTexts = 16;

// Steps a write to its end, giving a returned row to `returned`.
int stepWrite(sqlite3_stmt* s, const SqliteFile::Returned& returned) {
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW)
        if (returned) returned(s);
    return rc;
}

}  // namespace

const SqliteFile::Text& SqliteFile::writeText(Shape shape, const std::string& table,
                                              const std::vector<std::string>& columns,
                                              const std::vector<std::string>& returning) {
    for (const KeptText& kept : writeTexts_)
        if (kept.shape == shape && kept.table == table && kept.columns == columns &&
            kept.returning == returning)
            return kept.sql;
    std::string sql;
    if (shape == Shape::Insert) {
        // The key goes first, Null so that the file gives it; a group made again after a
        // rollback gives each row the key it had.
        std::string names = "rowid", marks = "?";
        for (const auto& column : columns) {
            names += "," + quoteName(column);
            marks += ",?";
        }
        sql = "INSERT INTO " + quoteName(table) + " (" + names + ") VALUES (" + marks + ")";
    } else {
        sql = "UPDATE " + quoteName(table) + " SET ";
        for (std::size_t i = 0; i < columns.size(); ++i)
            sql += (i ? "," : "") + quoteName(columns[i]) + "=?";
        sql += " WHERE rowid=?";
    }
    sql += returningClause(returning);
    if (writeTexts_.size() >= KeptWriteTexts) writeTexts_.clear();
    writeTexts_.push_back(
        {shape, table, columns, returning, std::make_shared<const std::string>(std::move(sql))});
    return writeTexts_.back().sql;
}

std::int64_t SqliteFile::insert(const std::string& table, const std::vector<std::string>& columns,
                                std::vector<StoredValue> values,
                                const std::vector<std::string>& returning,
                                const Returned& returned) {
    write({writeText(Shape::Insert, table, columns, returning), std::move(values), RowidAt::First,
           std::nullopt},
          returned);
    return sqlite3_last_insert_rowid(db_);
}

void SqliteFile::update(const std::string& table, std::int64_t rowid,
                        const std::vector<std::string>& columns, std::vector<StoredValue> values,
                        const std::vector<std::string>& returning, const Returned& returned) {
    if (columns.empty()) return;
    write({writeText(Shape::Update, table, columns, returning), std::move(values), RowidAt::Last,
           rowid},
          returned);
}

std::optional<WriteRules> SqliteFile::writeRules(const std::string& table,
                                                 const std::vector<std::string>& columns) {
    std::string realName;
    tableColumns(table, &realName);
    auto count = [&](const char* sql) {
        std::unique_ptr<sqlite3_stmt, Finalizer> s(prepare(sql));
        sqlite3_bind_text(s.get(), 1, realName.c_str(), -1, SQLITE_TRANSIENT);
        return sqlite3_step(s.get()) == SQLITE_ROW ? sqlite3_column_int64(s.get(), 0) : 1;
    };
    if (count("SELECT count(*) FROM sqlite_schema WHERE type='trigger' AND tbl_name=?1") > 0 ||
        count("SELECT count(*) FROM pragma_table_list WHERE name=?1 AND strict") > 0 ||
        count("SELECT count(*) FROM pragma_table_xinfo(?1) WHERE hidden<>0") > 0)
        return std::nullopt;
    std::unique_ptr<sqlite3_stmt, Finalizer> s(
        prepare("SELECT name, type, pk, dflt_value FROM pragma_table_info(?1)"));
    sqlite3_bind_text(s.get(), 1, realName.c_str(), -1, SQLITE_TRANSIENT);
    struct Declared {
        std::string name;
        WriteRules::Column rule;
    };
    std::vector<Declared> declared;
    int keys = 0;
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        Declared d;
        d.name = std::string(columnText(s.get(), 0));
        const std::string type(columnText(s.get(), 1));
        d.rule.affinity = affinityOf(type);
        d.rule.key = columnInt(s.get(), 2) == 1 && UCase(type) == "INTEGER";
        keys += columnInt(s.get(), 2) > 0 ? 1 : 0;
        if (std::optional<StoredValue> initial = literalDefault(column(s.get(), 3)))
            d.rule.initial = storedAfter(d.rule.affinity, *initial);
        declared.push_back(std::move(d));
    }
    WriteRules rules;
    for (const auto& name : columns) {
        auto it = std::find_if(declared.begin(), declared.end(),
                               [&](const Declared& d) { return equalFolded(d.name, name); });
        if (it == declared.end()) return std::nullopt;
        rules.columns.push_back(it->rule);
        // Only a single INTEGER PRIMARY KEY is the rowid itself.
        if (keys != 1) rules.columns.back().key = false;
    }
    return rules;
}

void SqliteFile::remove(const std::string& table, std::int64_t rowid) {
    write(
        {std::make_shared<const std::string>("DELETE FROM " + quoteName(table) + " WHERE rowid=?"),
         {},
         RowidAt::Last,
         rowid});
}

void SqliteFile::write(Written written, const Returned& returned) {
    // The count alone makes this connection's kept tables stale.
    ++writes_;
    if (groupDepth_ > 0 && !groupOpen_) {
        // Taking the write lock at the start, a busy file fails here, before any row.
        if (sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) != SQLITE_OK)
            fail(StoreFailure);
        groupOpen_ = true;
        versionInGroup_ = -1;
        groupStarted_ = std::chrono::steady_clock::now();
    }
    {
        Lease s = cached(*written.sql);
        bindWrite(s.get(), written.rowidAt, written.rowid, written.values.data(),
                  written.values.size());
        if (stepWrite(s.get(), returned) != SQLITE_DONE) {
            const int code = sqlite3_errcode(db_);
            const std::string message = sqlite3_errmsg(db_);
            if (groupOpen_ && sqlite3_get_autocommit(db_)) replayGroup();
            throwFor(code, message, StoreFailure);
        }
    }
    if (!groupOpen_) return;
    // An added row is made again with the key it was given.
    if (written.rowidAt == RowidAt::First) written.rowid = sqlite3_last_insert_rowid(db_);
    groupWrites_.push_back({std::move(written.sql), groupValuesUsed_, written.values.size(),
                            written.rowidAt, written.rowid});
    for (StoredValue& value : written.values) {
        if (groupValuesUsed_ == groupValues_.size()) {
            groupValues_.push_back(std::move(value));
        } else {
            StoredValue& kept = groupValues_[groupValuesUsed_];
            kept.type = value.type;
            kept.i = value.i;
            kept.r = value.r;
            kept.text.assign(value.text);
        }
        ++groupValuesUsed_;
    }
    if (static_cast<int>(groupWrites_.size()) >= GroupRows ||
        std::chrono::steady_clock::now() - groupStarted_ >= GroupSpan)
        commitGroup();
}

void SqliteFile::beginGroup() {
    ++groupDepth_;
}

void SqliteFile::endGroup() {
    if (groupDepth_ == 0) return;
    if (--groupDepth_ == 0 && groupOpen_ && !commitGroup()) fail(StoreFailure);
}

bool SqliteFile::commitGroup() {
    if (sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK) {
        // Still open (another program reads a file without WAL): tried again later.
        if (!sqlite3_get_autocommit(db_)) return false;
        replayGroup();
    }
    groupOpen_ = false;
    versionInGroup_ = -1;
    groupWrites_.clear();
    groupValuesUsed_ = 0;
    if (groupDepth_ == 0) groupValues_ = {};
    return true;
}

void SqliteFile::replayGroup() {
    std::vector<KeptWrite> writes = std::move(groupWrites_);
    std::vector<StoredValue> values = std::move(groupValues_);
    groupWrites_.clear();
    groupValues_.clear();
    groupValuesUsed_ = 0;
    groupOpen_ = false;
    versionInGroup_ = -1;
    for (const auto& written : writes) {
        Lease s = cached(*written.sql);
        bindWrite(s.get(), written.rowidAt, written.rowid, values.data() + written.first,
                  written.count);
        if (stepWrite(s.get(), {}) != SQLITE_DONE) fail(StoreFailure);
    }
}

void SqliteFile::bindWrite(sqlite3_stmt* s, RowidAt rowidAt,
                           const std::optional<std::int64_t>& rowid, const StoredValue* values,
                           std::size_t count) {
    int index = 1;
    auto bindRowid = [&] {
        if (rowid)
            sqlite3_bind_int64(s, index, *rowid);
        else
            sqlite3_bind_null(s, index);
        ++index;
    };
    if (rowidAt == RowidAt::First) bindRowid();
    for (std::size_t i = 0; i < count; ++i)
        bind(s, index++, values[i]);
    if (rowidAt == RowidAt::Last) bindRowid();
}

SqliteFile::State SqliteFile::state() {
    State now;
    now.writes = writes_;
    const bool holdsLock = groupOpen_ && !sqlite3_get_autocommit(db_);
    if (holdsLock && versionInGroup_ >= 0) {
        now.dataVersion = versionInGroup_;
        return now;
    }
    Lease s = cached("PRAGMA data_version");
    if (sqlite3_step(s.get()) == SQLITE_ROW) now.dataVersion = sqlite3_column_int64(s.get(), 0);
    versionInGroup_ = holdsLock ? now.dataVersion : -1;
    return now;
}

namespace {

struct Kept {
    SqliteFile* loadedBy;
    SqliteFile::State loadedAt;
    std::shared_ptr<RowTable> rows;
};

// Every kept table of the program, by file and columns.
std::unordered_map<std::string, Kept>& keptTables() {
    static std::unordered_map<std::string, Kept> kept;
    return kept;
}

}  // namespace

void SqliteFile::keepRows(const std::string& key, State loadedAt, std::shared_ptr<RowTable> rows) {
    // A version the engine did not give cannot tell other connections' writes apart.
    if (loadedAt.dataVersion < 0) return;
    keptTables()[keptPrefix_ + key] = Kept{this, loadedAt, std::move(rows)};
}

std::shared_ptr<RowTable> SqliteFile::keptRows(const std::string& key) {
    auto& kept = keptTables();
    auto it = kept.find(keptPrefix_ + key);
    if (it == kept.end()) return nullptr;
    // Writes still in an open group are seen only by the connection that made them.
    if (it->second.loadedBy != this &&
        (!sqlite3_get_autocommit(db_) || !sqlite3_get_autocommit(it->second.loadedBy->db_)))
        return nullptr;
    if (it->second.loadedBy->state() == it->second.loadedAt) return it->second.rows;
    kept.erase(it);
    return nullptr;
}

void SqliteFile::forgetRows(const RowTable* rows) {
    std::erase_if(keptTables(), [&](const auto& entry) { return entry.second.rows.get() == rows; });
}

void SqliteFile::forgetOwnRows() {
    std::erase_if(keptTables(), [&](const auto& entry) { return entry.second.loadedBy == this; });
}
