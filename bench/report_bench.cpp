// report-bench: the "ALL Items Report" of a large catalogue printed to PDF by the program's
// report engine, beside headless Chromium printing the same report as the engine writes it
// in HTML.
//
//   report-bench [--browser-up-to ROWS] [OUTPUT_FOLDER] [ROWS ...]
//
// For each ROWS (default 10,000, 50,000 and 100,000) builds OUTPUT_FOLDER/ROWS/bench.mde
// (default: a folder under the system temp folder) with the generated products of the
// benchmarks, then runs all.rpt over it in a process of its own: the report file read, the
// catalogue read afresh, the pages laid out and the PDF written, timed, with the peak
// resident memory of that process. The same process then writes the report's HTML, which
// `chromium --headless --print-to-pdf` prints, timed, for runs of at most the ROWS of
// --browser-up-to (all runs without it). Both PDFs are counted with pdfinfo. Chromium's own
// start is timed once, printing a page of one line.
// See docs/PERFORMANCE.md.

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "base/vb_error.h"
#include "product_catalogue.h"
#include "reports/report_file.h"
#include "reports/report_html.h"
#include "reports/report_pdf.h"
#include "resident_memory.h"

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point t0) {
    return std::chrono::duration<double>(Clock::now() - t0).count();
}

// The output of a shell command, "" when it fails.
std::string outputOf(const std::string& command) {
    std::string out;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[256];
        while (std::fgets(buffer, sizeof buffer, pipe))
            out += buffer;
        if (pclose(pipe) != 0) out.clear();
    }
    return out;
}

// The page count of a PDF file as pdfinfo reads it, -1 when it cannot.
long pdfPages(const std::string& pdf) {
    const std::string out = outputOf("pdfinfo '" + pdf + "' 2>/dev/null");
    const auto at = out.find("Pages:");
    return at == std::string::npos ? -1 : std::atol(out.c_str() + at + 6);
}

// The engine's run, in the process report-bench starts for it: prints the seconds, the
// pages, the resident memory at the start and the peak, then writes the HTML.
int runEngine(const std::string& catalogue, const std::string& pdf, const std::string& html) {
    const double start = residentMiB();
    try {
        const auto t0 = Clock::now();
        const std::clock_t cpu0 = std::clock();
        const ReportDesign design = readReportDesign(REPORT_FILE);
        ReportFile pdfFile(
            pdf, [&](std::ostream& out) { return std::make_unique<ReportPdf>(out, design.title); });
        const int pages = runReport(design, catalogue, pdfFile);
        const double seconds = secondsSince(t0);
        const double cpu = static_cast<double>(std::clock() - cpu0) / CLOCKS_PER_SEC;
        std::printf("%.3f %.3f %d %.1f %.1f\n", seconds, cpu, pages, start, peakResidentMiB());
        std::fflush(stdout);
        ReportFile htmlFile(html, [&](std::ostream& out) {
            return std::make_unique<ReportHtml>(out, design.title);
        });
        runReport(design, catalogue, htmlFile);
        return 0;
    } catch (const VbError& e) {
        std::fprintf(stderr, "report-bench: the report did not run: error %d\n", e.Number());
        return 2;
    }
}

struct Result {
    int rows = 0;
    double ours = 0, browser = -1, oursCpu = 0, browserCpu = 0;
    long pages = 0, browserPages = -1, expectedPages = 0;
    double startMiB = 0, peakMiB = 0;
    double pdfMiB = 0, htmlMiB = 0;
};

double mib(const std::string& file) {
    std::error_code ec;
    const auto size = fs::file_size(file, ec);
    return ec ? 0 : static_cast<double>(size) / (1024.0 * 1024.0);
}

// The CPU seconds of the children this process has waited for, Chromium's helpers included.
double childrenCpu() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    auto seconds = [](const timeval& t) { return static_cast<double>(t.tv_sec) + t.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Seconds of headless Chromium printing `html` to `pdf`, -1 when it cannot; `cpu` gets the
// CPU seconds of all its processes.
double printWithChromium(const std::string& html, const std::string& pdf, double& cpu) {
    const auto t0 = Clock::now();
    const double cpu0 = childrenCpu();
    const int status = std::system(("timeout 1800 chromium --headless --no-sandbox "
                                    "--print-to-pdf='" +
                                    pdf + "' 'file://" + html + "' >/dev/null 2>&1")
                                       .c_str());
    cpu = childrenCpu() - cpu0;
    return status == 0 && fs::exists(pdf) ? secondsSince(t0) : -1;
}

bool measure(const std::string& self, const std::string& folder, bool browser, Result& r) {
    fs::create_directories(folder);
    const std::string catalogue = folder + "bench.mde", pdf = folder + "all.pdf",
                      html = folder + "all.htm", browserPdf = folder + "chromium.pdf";
    const auto t0 = Clock::now();
    generateCatalogue(catalogue, folder, r.rows);
    std::printf("%d products: catalogue generated in %.2f s\n", r.rows, secondsSince(t0));
    std::fflush(stdout);

    const std::string line =
        outputOf("'" + self + "' --engine '" + catalogue + "' '" + pdf + "' '" + html + "'");
    if (std::sscanf(line.c_str(), "%lf %lf %ld %lf %lf", &r.ours, &r.oursCpu, &r.pages, &r.startMiB,
                    &r.peakMiB) != 5)
        return false;
    // all.rpt has no groups: a body line per product and the report's total, 45 a page.
    r.expectedPages = (r.rows + 1 + 44) / 45;
    const long read = pdfPages(pdf);
    if (read >= 0 && read != r.pages) {
        std::fprintf(stderr, "report-bench: pdfinfo reads %ld pages, the engine made %ld\n", read,
                     r.pages);
        return false;
    }
    r.pdfMiB = mib(pdf);
    r.htmlMiB = mib(html);

    if (browser) r.browser = printWithChromium(html, browserPdf, r.browserCpu);
    if (r.browser >= 0) r.browserPages = pdfPages(browserPdf);
    std::printf(
        "%d products: engine %.2f s (%.2f s CPU), %ld pages (%ld expected), resident "
        "%.0f -> peak %.0f MiB, PDF %.1f MiB; chromium %.2f s (%.2f s CPU), %ld pages, "
        "HTML %.1f MiB\n",
        r.rows, r.ours, r.oursCpu, r.pages, r.expectedPages, r.startMiB, r.peakMiB, r.pdfMiB,
        r.browser, r.browserCpu, r.browserPages, r.htmlMiB);
    std::fflush(stdout);
    return r.pages == r.expectedPages;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 5 && std::string(argv[1]) == "--engine")
        return runEngine(argv[2], argv[3], argv[4]);
    int first = 1;
    long browserUpTo = -1;
    if (argc > 2 && std::string(argv[1]) == "--browser-up-to") {
        browserUpTo = std::atol(argv[2]);
        first = 3;
    }
    const std::string folder =
        argc > first ? argv[first]
                     : (fs::temp_directory_path() / "catalogue-report-bench").string();
    std::vector<int> sizes;
    for (int i = first + 1; i < argc; ++i)
        sizes.push_back(std::atoi(argv[i]));
    if (sizes.empty()) sizes = {10000, 50000, 100000};
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    const std::string self = fs::read_symlink("/proc/self/exe").string();

    // What Chromium takes whatever it prints: starting, loading a page of one line, ending.
    fs::create_directories(folder);
    std::ofstream(folder + "/line.htm") << "<p>One line.</p>\n";
    double lineCpu = 0;
    const double line = printWithChromium(folder + "/line.htm", folder + "/line.pdf", lineCpu);
    std::printf("chromium, a page of one line: %.2f s (%.2f s CPU)\n", line, lineCpu);

    std::vector<Result> results;
    for (int rows : sizes) {
        Result r;
        r.rows = rows;
        const bool browser = browserUpTo < 0 || rows <= browserUpTo;
        if (!measure(self, folder + "/" + std::to_string(rows) + "/", browser, r)) {
            std::fprintf(stderr, "report-bench: the run of %d products failed\n", rows);
            return 1;
        }
        results.push_back(r);
    }
    std::printf(
        "\n| Products | Pages | Engine | Engine CPU | Peak resident | Chromium | "
        "Chromium CPU | Chromium pages |\n|---:|---:|---:|---:|---:|---:|---:|---:|\n");
    for (const Result& r : results)
        std::printf("| %d | %ld | %.2f s | %.2f s | %.0f MiB | %.2f s | %.2f s | %ld |\n", r.rows,
                    r.pages, r.ours, r.oursCpu, r.peakMiB, r.browser, r.browserCpu, r.browserPages);
    return 0;
}
