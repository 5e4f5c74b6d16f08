// The criteria dialect through the record set and the data control: any text as a
// filter, a find, a find-first and the where part of a record source. Only the classic
// faults may come out, and a refused filter must leave the set as it was.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "base/vb_error.h"
#include "records/product_statements.h"
#include "records/store.h"
#include "store/catalogue_builder.h"
#include "store/sqlite_file.h"
#include "tolerated.h"

namespace {

// Rows with every kind of cell the dialect meets: negative and zero money, Nulls, yes/no
// both ways, numbers and words in text columns.
const char* const Rows =
    "INSERT INTO Products (StockNo, ProdName, Category, PageNo, Cost1, Cost2, Retail, Disco, "
    "Inventory, Notes, Picture) VALUES "
    "('AB-1', 'Red Bead', 'Beads', '1', 3, -2.5, 8, -1, 5, '-1', '/p/AB-1.jpg'),"
    "('xab2', 'Blue Bead', 'Beads', '2', -6, 0, 12, 0, -3, '6', NULL),"
    "('CD3', 'Paint Pot', 'Paint', '10', 5.5, NULL, 8.5, 0, 0, 'two', '/p/S0.gif'),"
    "('EF4', NULL, NULL, 'A2', NULL, 1e10, 20, -1, NULL, NULL, '');";

struct Catalogue {
    std::string path;
    std::unique_ptr<Connection> conn;
    std::unique_ptr<Recordset> rs;
    std::unique_ptr<DataControl> data;

    Catalogue() {
        const auto folder =
            std::filesystem::temp_directory_path() / ("fuzz-criteria-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder);
        path = (folder / "catalogue.mde").string();
        buildCatalogue(path, folder.string() + "/", {SCHEMA_SQL});
        SqliteFile::open(path)->execScript(Rows);
        conn = CreateConnection();
        conn->SetCursorLocation(ado::adUseClient);
        conn->Open(connectionText(path));
        rs = CreateRecordset();
        rs->Open(StatementA, *conn);
        data = CreateDataControl();
        data->SetDatabaseName(path);
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static Catalogue cat;
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    Recordset& rs = *cat.rs;

    tolerated([&] { rs.SetFilter(""); });
    const long all = rs.RecordCount();
    try {
        rs.SetFilter(text);
        if (rs.RecordCount() > all) std::abort();
    } catch (const VbError&) {
        // Refused: the set is as it was.
        if (rs.RecordCount() != all || !rs.Filter().empty()) std::abort();
    }
    tolerated([&] { rs.SetFilter(""); });
    tolerated([&] { rs.MoveFirst(); });
    tolerated([&] { rs.Find(text, 0, ado::adSearchForward); });
    tolerated([&] {
        cat.data->SetRecordSource("select * from Products where " + text);
        cat.data->Refresh();
        cat.data->Recordset().FindFirst(text);
    });
    return 0;
}
