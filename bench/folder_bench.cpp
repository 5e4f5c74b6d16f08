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

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "processor_time.h"
#include "program_run.h"
#include "scripted_user.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/program.h"
#include "store/catalogue_builder.h"

namespace fs = std::filesystem;

namespace {

constexpr int JpgFilter = 2;

// The user adds the folder: a file of it in the open dialog, then "Click Here To Continue".
class FolderUser : public ScriptedUser {
  public:
    explicit FolderUser(std::string picked) : picked_(std::move(picked)) {}

    bool ShowOpen(CommonDialog& dialog) override {
        dialog.FileName = picked_;
        dialog.FilterIndex = JpgFilter;
        return true;
    }

  private:
    std::string picked_;
};

// The wall and processor seconds of a step; wall is -1 when a command of it failed.
struct Timing {
    double wall = 0, processor = 0;
};

// Times a shell command; wall -1 when it fails.
Timing timeCommand(const std::string& command) {
    const auto t0 = Clock::now();
    const double cpu0 = processorSeconds();
    const bool ok = std::system(command.c_str()) == 0;
    return {ok ? secondsSince(t0) : -1, processorSeconds() - cpu0};
}

// The sqlite3 shell's .import of one row per file, as a plain table.
Timing timeShellImport(const std::string& folder, const std::string& pictures, int files) {
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
        return {-1, 0};
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
    Timing firstRun, secondRun;
    const bool ran = withProgram(user, appDir, catalogue, "folder-bench", [&](Products& form) {
        auto addFolder = [&] {
            // The run's one wait is the one for "Click Here To Continue".
            user.actions.push_back([] { Mod().MainForm->ContinueFlag = true; });
            const auto t0 = Clock::now();
            const double cpu0 = processorSeconds();
            user.PaneFor(form, "Wb1").Navigate2("about:blankFolder");
            return Timing{secondsSince(t0), processorSeconds() - cpu0};
        };
        firstRun = addFolder();
        secondRun = addFolder();
        std::printf("files: %d\n", files);
        std::printf("add the folder to an empty catalogue: %.2f s (processor %.2f s)\n",
                    firstRun.wall, firstRun.processor);
        std::printf("add it again, every file known:       %.2f s (processor %.2f s)\n",
                    secondRun.wall, secondRun.processor);
        std::printf("last totals page: %s\n",
                    user.PaneFor(form, "Wb1").DocumentText().substr(0, 160).c_str());
        return user.actions.empty();
    });
    if (!ran) return 1;
    const Timing find = timeCommand("find " + pictures + " -type f > /dev/null");
    const Timing shell = timeShellImport(folder, pictures, files);
    std::printf("find FOLDER -type f:                  %.3f s (processor %.3f s)\n", find.wall,
                find.processor);
    if (shell.wall < 0) {
        std::printf("sqlite3 shell .import: not available\n");
        return 0;
    }
    std::printf("sqlite3 shell .import of %d rows:   %.3f s (processor %.3f s)\n", files,
                shell.wall, shell.processor);
    const double wall = find.wall + shell.wall, processor = find.processor + shell.processor;
    std::printf("ratio to find + .import by the clock: first run %.1f x, second run %.1f x\n",
                firstRun.wall / wall, secondRun.wall / wall);
    std::printf("ratio by processor time:              first run %.1f x, second run %.1f x\n",
                firstRun.processor / processor, secondRun.processor / processor);
    return 0;
}
