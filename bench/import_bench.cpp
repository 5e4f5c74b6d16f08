// import-bench: times the import of a text file through the program's own procedures.
//
//   import-bench [OUTPUT_FOLDER] [ROWS]
//
// Builds OUTPUT_FOLDER/bench.mde (default: a folder under the system temp folder) with ROWS
// products (default 100,000), writes a comma file of ROWS lines of which half name a stock
// number already in the catalogue, and imports it headless: the build menu's link, the line
// clicked, the separator offered and taken, three fields dragged on the board, Done, the
// note, and the totals page, all answered by a scripted user. The sqlite3 shell, when
// present, imports the same file with .import for comparison, and the run's own statements
// are made alone on a copy of the catalogue, the least the store can do. See
// docs/PERFORMANCE.md.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "build/bulk.h"
#include "forms/runtime.h"
#include "forms/user_input.h"
#include "import_floor.h"
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

std::string stockNo(int n) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "P%06d", n);
    return buf;
}

void fillCatalogue(const std::string& path, const std::string& appDir, int rows) {
    buildCatalogue(path, appDir, {SCHEMA_SQL});
    auto file = SqliteFile::open(path);
    file->execScript("BEGIN");
    constexpr int kBatch = 1000;
    for (int start = 0; start < rows; start += kBatch) {
        std::string sql = "INSERT INTO Products (PID, StockNo, ProdName, Retail, Price) VALUES ";
        for (int i = start; i < std::min(rows, start + kBatch); ++i)
            sql += std::string(i > start ? "," : "") + "(" + std::to_string(i + 1) + ",'" +
                   stockNo(i) + "','Old " + std::to_string(i) + "'," + std::to_string(i % 90) +
                   "," + std::to_string(i % 90) + ")";
        file->execScript(sql + ";");
    }
    file->execScript("COMMIT");
}

// Half the lines name products of the catalogue (every second one), half are new.
void writeImportFile(const std::string& path, int rows) {
    std::ofstream out(path, std::ios::binary);
    for (int i = 0; i < rows; ++i) {
        const int n = i % 2 == 0 ? i : rows + i;
        out << stockNo(n) << ",Item " << i << "," << (i % 97) << ".5\r\n";
    }
}

// The user of one import: the answers its dialogs want.
class ImportUser : public ScriptedUser {
  public:
    std::string importFile;

    int MsgBox(const std::string& prompt, int, const std::string&) override {
        if (prompt.rfind("To EDIT", 0) == 0) return vb::vbNo;
        if (prompt.rfind("This File appears To Use", 0) == 0) return vb::vbYes;
        return vb::vbOK;
    }
    std::string InputBox(const std::string& prompt, const std::string&,
                         const std::string& defaultText) override {
        if (prompt.rfind("The Data Shows", 0) == 0) return "0";
        return defaultText;
    }
    bool ShowOpen(CommonDialog& dialog) override {
        dialog.FileName = importFile;
        return true;
    }
};

double timeShellImport(const std::string& folder, const std::string& importFile, double& cpu) {
    const std::string db = folder + "/shell.db";
    fs::remove(db);
    const std::string create =
        "sqlite3 " + db + " \"CREATE TABLE Imp (StockNo TEXT, ProdName TEXT, Retail REAL)\"";
    const std::string import = "sqlite3 " + db + " \".import --csv " + importFile + " Imp\"";
    if (std::system(create.c_str()) != 0) return -1;
    const auto t0 = Clock::now();
    const double cpu0 = processorSeconds();
    if (std::system(import.c_str()) != 0) return -1;
    cpu = processorSeconds() - cpu0;
    std::printf("sqlite3 shell .import processor time: %.2f s\n", cpu);
    return secondsSince(t0);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string folder =
        argc > 1 ? argv[1] : (fs::temp_directory_path() / "catalogue-import-bench").string();
    const int rows = argc > 2 ? std::atoi(argv[2]) : 100000;
    fs::create_directories(folder);
    const std::string appDir = folder + "/";
    const std::string catalogue = appDir + "bench.mde";
    const std::string importFile = appDir + "items.txt";
    fs::remove(appDir + "items.dat");

    auto t0 = Clock::now();
    fillCatalogue(catalogue, appDir, rows);
    writeImportFile(importFile, rows);
    std::printf("generate catalogue and file (%d rows): %.2f s\n", rows, secondsSince(t0));
    const std::string floorCopy = appDir + "floor.mde";
    fs::copy_file(catalogue, floorCopy, fs::copy_options::overwrite_existing);

    ImportUser user;
    user.importFile = importFile;
    double importCpu = 0;
    const bool ran = withProgram(user, appDir, catalogue, "import-bench", [&](Products& form) {
        Pane& pane = user.PaneFor(form, "Wb1");
        Clock::time_point totalsShown;
        auto link = [&pane](const std::string& word) { pane.Navigate2("about:blank" + word); };
        auto drag = [&form](int source, int target) {
            UserInput::Drag(form("Label2", source), form("Label1", target), 0, 0);
        };
        user.actions = {[&] { link("GF-1"); },
                        [&] { drag(0, 2); },
                        [&] { drag(1, 3); },
                        [&] { drag(2, 12); },
                        [&] { UserInput::Click(form("Command24")); },
                        [&] {
                            totalsShown = Clock::now();
                            link("CONTINUE");
                        }};
        form.bulk->cmdAddAll_Click();
        t0 = Clock::now();
        const double cpu0 = processorSeconds();
        link("TextFiles");
        const double importSeconds = secondsSince(t0);
        importCpu = processorSeconds() - cpu0;
        std::printf("import processor time: %.2f s\n", importCpu);
        const double runSeconds = std::chrono::duration<double>(totalsShown - t0).count();
        std::printf("up to the totals page: %.2f s; Continue (reset and refresh): %.2f s\n",
                    runSeconds, importSeconds - runSeconds);
        std::printf("import through GetFiles: %.2f s (checked %d, added %d, edited %d)\n",
                    importSeconds, form.bulk->TotalChecked, form.bulk->TotalAdded,
                    form.bulk->TotalEdited);
        return true;
    });
    if (!ran) return 1;
    const double floor = importFloorSeconds(floorCopy, importFile);
    std::printf("the run's statements alone, processor time: %.2f s\n", floor);
    double shellCpu = 0;
    const double shell = timeShellImport(folder, importFile, shellCpu);
    if (shell < 0) {
        std::printf("sqlite3 shell .import: not available\n");
        return 0;
    }
    std::printf("sqlite3 shell .import --csv of the same file: %.2f s\n", shell);
    std::printf(
        "processor time against the shell: import %.1f x, its statements alone %.1f x "
        "(target <= 3)\n",
        importCpu / shellCpu, floor / shellCpu);
    return 0;
}
