// bulk-bench: times the bulk delete and the export through the program's own procedures,
// each beside the sqlite3 shell doing the same on a copy of the same catalogue.
//
//   bulk-bench [OUTPUT_FOLDER] [ROWS] [delete|export]
//
// Builds OUTPUT_FOLDER/bench.mde (default: a folder under the system temp folder) with ROWS
// products (default 100,000), half of them with a stock number beginning "DEL". Then, headless
// and answered by a scripted user: a detailed search for "DEL" and Delete All confirmed in the
// pane; and, on a fresh copy, Export DB of every product with Select ALL to a comma file. The
// shell runs `DELETE ... WHERE` and `.mode csv` with a `SELECT` on copies of the same file.
// See docs/PERFORMANCE.md.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "base/convert.h"
#include "build/bulk.h"
#include "forms/runtime.h"
#include "forms/user_input.h"
#include "processor_time.h"
#include "program_run.h"
#include "scripted_user.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/program.h"
#include "store/catalogue_builder.h"
#include "store/sqlite_file.h"

namespace fs = std::filesystem;

namespace {

// Wall time, and the processor time of this process and of the children it waited for: on a
// shared machine the processor time is the steadier figure.
struct Timing {
    double wall = -1, cpu = -1;
};

template <class F>
Timing measure(F&& run) {
    const auto wall0 = Clock::now();
    const double cpu0 = processorSeconds();
    if (!run()) return {};
    return {secondsSince(wall0), processorSeconds() - cpu0};
}

// ROWS products in one statement; every second one's stock number begins "DEL".
void fillCatalogue(const std::string& path, const std::string& appDir, int rows) {
    buildCatalogue(path, appDir, {SCHEMA_SQL});
    auto file = SqliteFile::open(path);
    file->execScript(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
        std::to_string(rows) +
        ") INSERT INTO Products (PID, Supplier, StockNo, ProdName, ProdDesc, PageNo, Packaging, "
        "Cost1, Cost2, Retail, Price, Weight, Picture, Category, OnSpecial, Disco, Orderable, "
        "Inventory, Notes, Taxable) SELECT i, 'Supplier ' || (i % 12), "
        "printf('%s%06d', CASE i % 2 WHEN 0 THEN 'DEL' ELSE 'KEP' END, i), "
        "'Item number ' || i, 'A plain description of item ' || i || ' for the shop list', "
        "(i % 480) + 1, 'Box of ' || (i % 24 + 1), (i % 8000) / 100.0 + 0.5, "
        "CASE WHEN i % 3 = 0 THEN NULL ELSE (i % 7000) / 100.0 END, (i % 8000) / 40.0 + 1.8, "
        "CASE WHEN i % 5 = 0 THEN NULL ELSE (i % 8000) / 45.0 + 1 END, (i % 90) || ' oz', "
        "CASE WHEN i % 10 < 3 THEN NULL ELSE 'Pictures/' || i || '.jpg' END, "
        "'Category ' || (i % 20), -(i % 2), 0, -1, i % 40, "
        "CASE WHEN i % 20 = 0 THEN '01/02/04 - Added This Item' || char(13, 10) END, -1 "
        "FROM n;");
}

// The user of one run: types a comma for an export's separator and names its file.
class BulkUser : public ScriptedUser {
  public:
    std::string saveAs;

    std::string InputBox(const std::string& prompt, const std::string&,
                         const std::string& defaultText) override {
        if (prompt.rfind("Type in the key/keys", 0) == 0) return ",";
        return defaultText;
    }
    bool ShowSave(CommonDialog& dialog) override {
        dialog.FileName = saveAs;
        return true;
    }
};

void link(BulkUser& user, Products& form, const std::string& word) {
    user.PaneFor(form, "Wb1").Navigate2("about:blank" + word);
}

// Delete All from the click to the end of the reset and refresh.
Timing timeBulkDelete(const std::string& appDir, const std::string& catalogue) {
    BulkUser user;
    Timing timing;
    const bool ran = withProgram(user, appDir, catalogue, "bulk-bench", [&](Products& form) {
        Runtime& rt = Runtime::Current();
        Form& search = rt.Get("Search");
        user.actions = {[&] {
                            UserInput::MouseClick(search("optsrch", 2));
                            UserInput::Type(search("txtSearch"), "DEL");
                            UserInput::MouseClick(search("cmdSrch"));
                        },
                        [&] { link(user, form, "CONTINUE"); }};
        UserInput::MouseClick(form("cmdDetSearch"));
        std::printf("  search in force: %s\n", CStr(Mod().SearchCriteria).c_str());
        user.actions = {[&] { link(user, form, "Delete"); }, [&] { link(user, form, "CONTINUE"); }};
        timing = measure([&] {
            UserInput::MouseClick(form("cmdDAll"));
            return true;
        });
        std::printf("  status after: %s\n", form("lblStatus").Caption().c_str());
        return true;
    });
    return ran ? timing : Timing{};
}

// Export DB with every box from the click to the end.
Timing timeExport(const std::string& appDir, const std::string& catalogue,
                  const std::string& output) {
    BulkUser user;
    user.saveAs = output;
    Timing timing;
    const bool ran = withProgram(user, appDir, catalogue, "bulk-bench", [&](Products& form) {
        user.actions = {[&] {
                            UserInput::MouseClick(form("cmdSelectAll"));
                            UserInput::MouseClick(form("Command24"));
                        },
                        [&] { link(user, form, "CONTINUE"); }};
        timing = measure([&] {
            UserInput::MouseClick(form("Command3"));
            return true;
        });
        std::printf("  records exported: %d\n", form.bulk->TotalEdited);
        return true;
    });
    return ran ? timing : Timing{};
}

Timing timeShell(const std::string& command) {
    return measure([&] { return std::system(command.c_str()) == 0; });
}

void copyCatalogue(const std::string& from, const std::string& to) {
    for (const char* end : {"", "-wal", "-shm"})
        fs::remove(to + end);
    fs::copy_file(from, to);
}

void report(const char* what, Timing program, Timing shell) {
    std::printf("%s:\n  program: %.3f s wall, %.3f s processor\n", what, program.wall, program.cpu);
    if (shell.wall < 0) {
        std::printf("  sqlite3 shell not available\n");
        return;
    }
    std::printf("  sqlite3 shell: %.3f s wall, %.3f s processor\n", shell.wall, shell.cpu);
    std::printf("  ratio: %.2f wall, %.2f processor (target <= 2)\n", program.wall / shell.wall,
                program.cpu / shell.cpu);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string folder =
        argc > 1 ? argv[1] : (fs::temp_directory_path() / "catalogue-bulk-bench").string();
    const int rows = argc > 2 ? std::atoi(argv[2]) : 100000;
    // One of the two alone, for a profiler.
    const std::string only = argc > 3 ? argv[3] : "";
    fs::create_directories(folder);
    const std::string appDir = folder + "/";
    const std::string original = appDir + "original.mde";
    const std::string catalogue = appDir + "bench.mde";
    const std::string shellCopy = appDir + "shell.mde";

    auto t0 = Clock::now();
    fillCatalogue(original, appDir, rows);
    std::printf("generate catalogue (%d rows): %.2f s\n", rows, secondsSince(t0));

    if (only != "export") {
        copyCatalogue(original, catalogue);
        copyCatalogue(original, shellCopy);
        const Timing deleteTiming = timeBulkDelete(appDir, catalogue);
        if (deleteTiming.wall < 0) return 1;
        std::printf("  products left: %lld\n",
                    static_cast<long long>(SqliteFile::open(catalogue)->rowCount("Products")));
        const Timing shellDelete = timeShell("sqlite3 " + shellCopy +
                                             " \"DELETE FROM Products WHERE StockNo LIKE 'DEL%'\"");
        report("bulk delete of half the products", deleteTiming, shellDelete);
    }
    if (only == "delete") return 0;

    copyCatalogue(original, catalogue);
    copyCatalogue(original, shellCopy);
    const Timing exportTiming = timeExport(appDir, catalogue, appDir + "export.txt");
    if (exportTiming.wall < 0) return 1;
    const Timing shellExport = timeShell("sqlite3 " + shellCopy + " \".mode csv\" \".output " +
                                         appDir + "shell-export.csv\" \"SELECT * FROM Products\"");
    report("export of every product", exportTiming, shellExport);
    return 0;
}
