#include "store/access_file.h"

// mdbtools.h includes these inside its extern "C" block; included first, they keep their
// own linkage.
#include <glib.h>
#include <iconv.h>
#include <locale.h>
#include <mdbtools.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "base/dates.h"
#include "base/fold.h"
#include "base/vb_error.h"
#include "store/sqlite_file.h"

namespace {

constexpr int CouldNotFindFile = 3024;
constexpr int CannotFindTable = 3078;
// The longest text read from one field; Access keeps a memo's first 64K for display too.
constexpr std::size_t FieldBytes = 65536;
// Dates come as text in a form that parseDate reads back whatever the user's locale.
constexpr const char* DateForm = "%Y-%m-%d %H:%M:%S";

// mdbtools prints numbers with the C library: in the C locale while it reads, so that a
// desktop running in a locale with a decimal comma still reads "1.5" as one and a half.
class CLocale {
  public:
    CLocale() : c_(newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr))) {
        if (c_) old_ = uselocale(c_);
    }
    ~CLocale() {
        if (!c_) return;
        uselocale(old_);
        freelocale(c_);
    }
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;

  private:
    locale_t c_;
    locale_t old_ = nullptr;
};

ColumnKind kindOf(int type) {
    switch (type) {
        case MDB_BOOL:
            return ColumnKind::YesNo;
        case MDB_BYTE:
        case MDB_INT:
        case MDB_LONGINT:
            return ColumnKind::Long;
        case MDB_MONEY:
            return ColumnKind::Money;
        case MDB_FLOAT:
        case MDB_DOUBLE:
        case MDB_NUMERIC:
            return ColumnKind::Double;
        case MDB_DATETIME:
            return ColumnKind::Date;
        default:
            return ColumnKind::Text;
    }
}

// Pictures and other objects, and the multi-valued fields of later versions, are no
// text: they read as Null.
bool readable(int type) {
    return type != MDB_OLE && type != MDB_BINARY && type != MDB_COMPLEX;
}

// The value of a field from the text mdbtools gives for it; an empty text is Null, as
// Access fields mostly hold Null rather than a zero-length text.
Variant valueOf(ColumnKind kind, const char* text, int length) {
    if (length <= 0) return Variant::Null();
    switch (kind) {
        case ColumnKind::YesNo:
            return Variant(text[0] == '1');
        case ColumnKind::Counter:
        case ColumnKind::Long:
            return Variant::Long(static_cast<std::int32_t>(std::strtol(text, nullptr, 10)));
        case ColumnKind::Money:
            return Variant::Currency(std::strtod(text, nullptr));
        case ColumnKind::Double:
            return Variant::Double(std::strtod(text, nullptr));
        case ColumnKind::Date: {
            double serial = 0;
            return parseDate(text, serial) ? Variant::Date(serial) : Variant::Null();
        }
        case ColumnKind::Text:
            break;
    }
    return Variant(std::string(text, static_cast<std::size_t>(length)));
}

struct TableDef {
    explicit TableDef(MdbTableDef* d) : def(d) {}
    ~TableDef() { mdb_free_tabledef(def); }
    TableDef(const TableDef&) = delete;
    TableDef& operator=(const TableDef&) = delete;
    MdbTableDef* def;
    MdbColumn* column(unsigned i) const {
        return static_cast<MdbColumn*>(g_ptr_array_index(def->columns, i));
    }
};

}  // namespace

struct AccessFile::Handle {
    MdbHandle* mdb = nullptr;
    ~Handle() {
        if (mdb) mdb_close(mdb);
    }

    // The table by name, ignoring case; 3078 when there is none.
    std::unique_ptr<TableDef> table(const std::string& name) {
        if (mdb->catalog)
            for (unsigned i = 0; i < mdb->catalog->len; ++i) {
                auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, i));
                if (entry->object_type != MDB_TABLE || !equalFolded(entry->object_name, name))
                    continue;
                // A table the catalogue names but whose pages are damaged or missing.
                MdbTableDef* def = mdb_read_table(entry);
                if (!def) throw VbError(vberr::NotADatabase);
                auto found = std::make_unique<TableDef>(def);
                if (!mdb_read_columns(def)) throw VbError(vberr::NotADatabase);
                return found;
            }
        throw VbError(CannotFindTable, "Cannot find the input table or query '" + name + "'.");
    }
};

bool AccessFile::isAccessFile(const std::string& path) {
    // A catalogue in use must not be opened here: see SqliteFile::isDatabase.
    if (SqliteFile::isDatabase(path)) return false;
    char head[20] = {};
    std::ifstream in(path, std::ios::binary);
    if (!in.read(head, sizeof head)) return false;
    const std::string_view kind(head + 4, 15);
    return kind == "Standard Jet DB" || kind == "Standard ACE DB";
}

AccessFile::AccessFile(std::unique_ptr<Handle> handle, std::string path)
    : handle_(std::move(handle)), path_(std::move(path)) {}

AccessFile::~AccessFile() = default;

std::shared_ptr<AccessFile> AccessFile::open(const std::string& path) {
    std::error_code ec;
    if (path.empty() || !std::filesystem::is_regular_file(path, ec))
        throw VbError(CouldNotFindFile, "Could not find file '" + path + "'.");
    CLocale c;
    auto handle = std::make_unique<Handle>();
    handle->mdb = mdb_open(path.c_str(), MDB_NOFLAGS);
    if (!handle->mdb) throw VbError(vberr::NotADatabase);
    GPtrArray* catalog = mdb_read_catalog(handle->mdb, MDB_TABLE);
    if (!catalog) throw VbError(vberr::NotADatabase);
    mdb_set_date_fmt(handle->mdb, DateForm);
    mdb_set_shortdate_fmt(handle->mdb, DateForm);
    mdb_set_boolean_fmt_numbers(handle->mdb);
    mdb_set_bind_size(handle->mdb, FieldBytes);
    std::shared_ptr<AccessFile> file(new AccessFile(std::move(handle), path));
    for (unsigned i = 0; i < catalog->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(catalog, i));
        if (entry->object_type == MDB_TABLE) file->tables_.emplace_back(entry->object_name);
    }
    std::stable_sort(
        file->tables_.begin(), file->tables_.end(),
        [](const std::string& a, const std::string& b) { return compareFolded(a, b) < 0; });
    return file;
}

std::vector<ColumnInfo> AccessFile::tableColumns(const std::string& table) {
    CLocale c;
    auto def = handle_->table(table);
    std::vector<ColumnInfo> columns;
    for (unsigned i = 0; i < def->def->num_cols; ++i)
        columns.push_back({def->column(i)->name, kindOf(def->column(i)->col_type)});
    return columns;
}

RowTable AccessFile::readRows(const std::string& table) {
    CLocale c;
    auto def = handle_->table(table);
    std::vector<ColumnInfo> columns;
    const unsigned count = def->def->num_cols;
    std::vector<std::vector<char>> fields(count);
    std::vector<int> lengths(count, 0);
    for (unsigned i = 0; i < count; ++i) {
        MdbColumn* column = def->column(i);
        columns.push_back({column->name, kindOf(column->col_type)});
        if (!readable(column->col_type)) continue;
        fields[i].assign(FieldBytes + 1, '\0');
        mdb_bind_column(def->def, static_cast<int>(i) + 1, fields[i].data(), &lengths[i]);
    }
    RowTable rows(columns);
    mdb_rewind_table(def->def);
    while (mdb_fetch_row(def->def)) {
        const int row = rows.appendRow(rows.rowCount() + 1);
        for (unsigned i = 0; i < count; ++i) {
            if (fields[i].empty()) continue;
            rows.set(row, static_cast<int>(i),
                     valueOf(columns[i].kind, fields[i].data(), lengths[i]));
        }
    }
    rows.shrink();
    return rows;
}
