// folder-bench: times adding a folder of generated picture files through the program's own
// procedures, beside `find` listing the folder and the sqlite3 shell's .import of as many
// rows.
//
//   folder-bench [OUTPUT_FOLDER] [FILES]
//
// Makes OUTPUT_FOLDER/pictures with FILES empty ".jpg" files (default 30,000) and an empty
// catalogue, then adds the folder twice headless, as the build menu's link `Folder` does:
// first to the empty catalogue (every file new), then again (every file known). The user is
// a script: the open dialog answers a file of the folder with the filter "JPG's", and the
// wait for "Click Here To Continue" is answered at once. See docs/PERFORMANCE.md.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "build/bulk.h"
#include "forms/headless_pane.h"
#include "forms/runtime.h"
#include "forms/ui.h"
#include "program_run.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/program.h"
#include "store/catalogue_builder.h"

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;
constexpr int JpgFilter = 2;

double since(Clock::time_point t0) {
    return std::chrono::duration<double>(Clock::now() - t0).count();
}

// The user adds the folder: a file of it in the open dialog, then "Click Here To Continue".
class FolderUser : public Ui {
  public:
    explicit FolderUser(std::string picked) : picked_(std::move(picked)) {}

    int MsgBox(const std::string&, int, const std::string&) override { return vb::vbOK; }
    std::string InputBox(const std::string&, const std::string&, const std::string& d) override {
        return d;
    }
    bool ShowOpen(CommonDialog& dialog) override {
        dialog.FileName = picked_;
        dialog.FilterIndex = JpgFilter;
        return true;
    }
    bool ShowSave(CommonDialog&) override { return false; }
    bool ShowFont(CommonDialog&) override { return false; }
    bool ShowColor(CommonDialog&) override { return false; }
    Control* PopupMenu(Form&, const std::string&) override { return nullptr; }
    Pane& PaneFor(Form&, const std::string&) override { return pane_; }
    void RunDocument(const std::string&) override {}
    void LetEventsRun() override {}
    void WaitForUser() override {
        // The only wait is the one for "Click Here To Continue"; another ends the program.
        if (++waits > 1) Runtime::Current().End();
        Mod().MainForm->ContinueFlag = true;
    }
    int waits = 0;

  private:
    std::string picked_;
    HeadlessPane pane_;
};

// Seconds a shell command takes; -1 when it fails.
double timeCommand(const std::string& command) {
    const auto t0 = Clock::now();
    return std::system(command.c_str()) == 0 ? since(t0) : -1;
}

// The sqlite3 shell's .import of one row per file, as a plain table.
double timeShellImport(const std::string& folder, const std::string& pictures, int files) {
    const std::string db = folder + "/shell.db", rows = folder + "/rows.csv";
    fs::remove(db);
    {
        std::ofstream out(rows, std::ios::binary);
        for (int i = 0; i < files; ++i)
            out << "IMG" << i << ".JPG,img" << i << "," << pictures << "/img" << i << ".jpg\n";
    }
    if (std::system(
            ("sqlite3 " + db + " \"CREATE TABLE Imp (StockNo TEXT, ProdName TEXT, Picture TEXT)\"")
                .c_str()) != 0)
        return -1;
    return timeCommand("sqlite3 " + db + " \".import --csv " + rows + " Imp\"");
}

}  // namespace

int main(int argc, char** argv) {
    const std::string folder =
        argc > 1 ? argv[1] : (fs::temp_directory_path() / "catalogue-folder-bench").string();
    const int files = argc > 2 ? std::atoi(argv[2]) : 30000;
    const std::string appDir = folder + "/", pictures = folder + "/pictures";
    const std::string catalogue = appDir + "bench.mde";
    fs::remove_all(pictures);
    fs::create_directories(pictures);
    fs::remove(catalogue);
    fs::remove(catalogue + "-wal");
    fs::remove(catalogue + "-shm");
    for (int i = 0; i < files; ++i)
        std::ofstream(pictures + "/img" + std::to_string(i) + ".jpg");
    buildCatalogue(catalogue, appDir, {SCHEMA_SQL});

    FolderUser user(pictures + "/img0.jpg");
    double firstRun = 0, secondRun = 0;
    const bool ran = withProgram(user, appDir, catalogue, "folder-bench", [&](Products& form) {
        auto addFolder = [&] {
            user.waits = 0;
            const auto t0 = Clock::now();
            user.PaneFor(form, "Wb1").Navigate2("about:blankFolder");
            return since(t0);
        };
        firstRun = addFolder();
        secondRun = addFolder();
        std::printf("files: %d\n", files);
        std::printf("add the folder to an empty catalogue: %.2f s\n", firstRun);
        std::printf("add it again, every file known:       %.2f s\n", secondRun);
        std::printf("last totals page: %s\n",
                    user.PaneFor(form, "Wb1").DocumentText().substr(0, 160).c_str());
        return true;
    });
    if (!ran) return 1;
    const double find = timeCommand("find " + pictures + " -type f > /dev/null");
    const double shell = timeShellImport(folder, pictures, files);
    std::printf("find FOLDER -type f:                  %.3f s\n", find);
    if (shell < 0) {
        std::printf("sqlite3 shell .import: not available\n");
        return 0;
    }
    std::printf("sqlite3 shell .import of %d rows:   %.3f s\n", files, shell);
    const double baseline = find + shell;
    std::printf("ratio to find + .import: first run %.1f x, second run %.1f x\n",
                firstRun / baseline, secondRun / baseline);
    return 0;
}
