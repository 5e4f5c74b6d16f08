// site-bench: times the publishing of a web site through the program's own procedures.
//
//   site-bench [OUTPUT_FOLDER] [ROWS] [RUNS]
//
// Builds OUTPUT_FOLDER/bench.mde (default: a folder under the system temp folder) with ROWS
// products (default 100,000) and publishes them headless, as a scripted user: Web Pages, By
// Current Records, Select All, Continue, the site named "catpage", a saved layout loaded
// (a detail link in each cell), 30 items a page, contents on the left, Done, Continue. Then
// a plain C++ writer writes the same files from the same rows, checked byte for byte against
// the program's. The two take turns RUNS times (default 3), each into an empty folder, and
// the medians are compared: on a shared machine one run moves by a tenth or more. Hugo,
// when present, builds a site of as many pages from simple templates of the same data.
// See docs/PERFORMANCE.md.

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "forms/runtime.h"
#include "forms/user_input.h"
#include "plain_site.h"
#include "processor_time.h"
#include "program_run.h"
#include "resident_memory.h"
#include "scripted_user.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/program.h"
#include "site_data.h"

namespace fs = std::filesystem;

namespace {

double peakMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// The user of one site: the answers its dialogs want.
class SiteUser : public ScriptedUser {
  public:
    std::string siteFile, layoutFile;

    std::string InputBox(const std::string&, const std::string&, const std::string&) override {
        return "0";  // the only box of the road: the contents frame on the left
    }
    bool ShowOpen(CommonDialog& dialog) override {
        dialog.FileName = layoutFile;
        return true;
    }
    bool ShowSave(CommonDialog& dialog) override {
        dialog.FileName = siteFile;
        return true;
    }
};

struct Output {
    long files = 0;
    std::uintmax_t bytes = 0;
};

Output measure(const std::string& folder) {
    Output out;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().extension() == ".htm") {
            out.files += 1;
            out.bytes += entry.file_size();
        }
    return out;
}

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// The files of `ours` that `theirs` lacks or holds with other bytes.
long differences(const std::string& ours, const std::string& theirs) {
    long differ = 0;
    for (const auto& entry : fs::directory_iterator(ours)) {
        if (!entry.is_regular_file() || entry.path().extension() != ".htm") continue;
        const fs::path other = fs::path(theirs) / entry.path().filename();
        if (!fs::exists(other) || readFile(entry.path()) != readFile(other)) {
            if (differ < 3) std::printf("  differs: %s\n", entry.path().filename().c_str());
            differ += 1;
        }
    }
    return differ;
}

// The processor time of a stretch of work, its kernel part and the time by the clock.
struct Timing {
    double total = 0, cpu = 0, kernel = 0;
};

template <class Work>
Timing timed(Work&& work) {
    const auto start = Clock::now();
    const std::clock_t cpu0 = std::clock();
    const double kernel0 = kernelSeconds();
    work();
    return {secondsSince(start), static_cast<double>(std::clock() - cpu0) / CLOCKS_PER_SEC,
            kernelSeconds() - kernel0};
}

// One publishing run of the program, from the click on By Current Records to its end.
struct ProgramRun {
    Timing time;
    double grouping = 0, collecting = 0, writing = 0, residentBefore = 0, residentAfter = 0;
};

bool publish(const std::string& appDir, const std::string& catalogue, ProgramRun& run) {
    SiteUser user;
    user.siteFile = appDir + "Pages/catpage.htm";
    user.layoutFile = SHOP_LAYOUT;
    run.residentBefore = residentMiB();
    return withProgram(user, appDir, catalogue, "site-bench", [&](Products& form) {
        auto click = [&form](const std::string& name, int index = -1) {
            UserInput::Click(form(name, index));
        };
        Clock::time_point mark;
        user.actions = {[&] {
                            run.grouping = secondsSince(mark);
                            click("Command13");
                        },
                        [&] {
                            mark = Clock::now();
                            click("Command17");
                        },
                        [&] {
                            run.collecting = secondsSince(mark);
                            click("SaveLoad", 1);
                        },
                        [&] { click("Command30"); },
                        [&] { UserInput::Type(form("Text3", 3), "30"); },
                        [&] {
                            mark = Clock::now();
                            click("Command26");
                            click("Command17");
                        }};
        click("Command5");
        run.time = timed([&] {
            mark = Clock::now();
            click("Command8");
            run.writing = secondsSince(mark);
        });
        run.residentAfter = residentMiB();
        if (!user.actions.empty()) {
            std::fprintf(stderr, "site-bench: the run ended before the road did\n");
            return false;
        }
        return true;
    });
}

// An empty site folder holding only the template, as a shop's first publishing finds it.
void freshPages(const std::string& appDir) {
    std::error_code ignored;
    fs::remove_all(appDir + "Pages", ignored);
    fs::remove(appDir + "page.htm", ignored);
    fs::create_directories(appDir + "Pages");
    fs::copy_file(TEMPLATE_FILE, appDir + "Pages/STNDRDTPLT.dat");
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string folder =
        argc > 1 ? argv[1] : (fs::temp_directory_path() / "catalogue-site-bench").string();
    const int rows = argc > 2 ? std::atoi(argv[2]) : 100000;
    const int runs = std::max(1, argc > 3 ? std::atoi(argv[3]) : 3);
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    fs::create_directories(folder);
    const std::string appDir = folder + "/";
    const std::string catalogue = appDir + "bench.mde";
    freshPages(appDir);

    auto t0 = Clock::now();
    const std::vector<SiteItem> items = generateItems(rows, appDir);
    fillCatalogue(catalogue, appDir, items);
    std::printf("generate catalogue (%d rows): %.2f s\n", rows, secondsSince(t0));

    const std::string plainFolder = appDir + "plain/";
    std::vector<double> programCpu, plainCpu, programClock, plainClock, ratios;
    long differ = 0;
    for (int n = 1; n <= runs; ++n) {
        if (n > 1) freshPages(appDir);
        ProgramRun run;
        if (!publish(appDir, catalogue, run)) return 1;
        const Output program = measure(appDir + "Pages");
        std::printf(
            "run %d, program: %.2f s (%.2f s CPU, %.2f s of it in the kernel): grouping %.2f s, "
            "collecting and first page %.2f s, all pages %.2f s\n",
            n, run.time.total, run.time.cpu, run.time.kernel, run.grouping, run.collecting,
            run.writing);
        std::printf(
            "run %d, program: %ld files, %.1f MiB; resident %.0f -> %.0f MiB, peak %.0f MiB\n", n,
            program.files, static_cast<double>(program.bytes) / (1024.0 * 1024.0),
            run.residentBefore, run.residentAfter, peakMiB());

        fs::remove_all(plainFolder, ignored);
        std::fflush(stdout);
        const Timing plain =
            timed([&] { writePlainSite(plainFolder, appDir + "Pages/STNDRDTPLT.dat", catalogue); });
        const Output written = measure(plainFolder);
        const long differs = differences(appDir + "Pages", plainFolder);
        differ += differs;
        std::printf(
            "run %d, plain writer: %.2f s (%.2f s CPU, %.2f s of it in the kernel), %ld files, "
            "%.1f MiB, %ld of the program's files differ\n",
            n, plain.total, plain.cpu, plain.kernel, written.files,
            static_cast<double>(written.bytes) / (1024.0 * 1024.0), differs);
        programCpu.push_back(run.time.cpu);
        plainCpu.push_back(plain.cpu);
        programClock.push_back(run.time.total);
        plainClock.push_back(plain.total);
        ratios.push_back(run.time.cpu / plain.cpu);
    }
    std::printf(
        "medians of %d runs: program %.2f s (%.2f s CPU), plain writer %.2f s (%.2f s CPU)\n"
        "program / plain writer: %.2f (CPU %.2f; the median of the runs' own ratios %.2f)\n",
        runs, median(programClock), median(programCpu), median(plainClock), median(plainCpu),
        median(programClock) / median(plainClock), median(programCpu) / median(plainCpu),
        median(ratios));

    const double hugo = buildWithHugo(appDir + "hugo/", items);
    if (hugo < 0)
        std::printf("hugo: not available, or it failed\n");
    else
        std::printf("hugo: %.2f s, %ld pages; program / hugo: %.2f\n", hugo,
                    countHugoPages(appDir + "hugo/public"), median(programClock) / hugo);
    return differ == 0 ? 0 : 1;
}
