#include "app/report_command.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "base/vb_error.h"
#include "reports/report_html.h"
#include "reports/report_pdf.h"

namespace {

int usage() {
    std::fprintf(stderr,
                 "usage: catalogue-headless --report FILE.rpt --pdf OUT.pdf [--html OUT.htm] "
                 "[CATALOGUE]\n");
    return 64;
}

std::string reportPath(const std::string& name, const std::string& programFolder) {
    const std::filesystem::path path(name);
    std::error_code ec;
    if (std::filesystem::exists(path, ec) || path.has_parent_path()) return name;
    return programFolder + "reports/" + name;
}

}  // namespace

int runReportCommand(const std::vector<std::string>& args, const std::string& programFolder) {
    std::string report, pdf, html, catalogue = programFolder + "tandrel2004.mde";
    for (std::size_t i = 0; i < args.size(); ++i) {
        const bool valued = i + 1 < args.size();
        if (args[i] == "--report" && valued)
            report = args[++i];
        else if (args[i] == "--pdf" && valued)
            pdf = args[++i];
        else if (args[i] == "--html" && valued)
            html = args[++i];
        else if (args[i].rfind("--", 0) == 0)
            return usage();
        else
            catalogue = args[i];
    }
    if (report.empty() || (pdf.empty() && html.empty())) return usage();
    const std::string path = reportPath(report, programFolder);
    try {
        const ReportDesign design = readReportDesign(path);
        const RanReport ran = runReport(design, catalogue);
        if (!pdf.empty()) writeReportPdf(ran, design.title, pdf);
        if (!html.empty()) {
            std::ofstream out(html, std::ios::binary | std::ios::trunc);
            out << reportHtml(ran, design.title);
            if (!out) throw VbError(75, "Path/File access error");
        }
        std::printf("%s: %zu pages\n", path.c_str(), ran.pages.size());
        return 0;
    } catch (const VbError& e) {
        const std::string why =
            e.Description().empty() ? vbErrorDescription(e.Number()) : e.Description();
        std::fprintf(stderr, "catalogue-headless: the report %s did not run: %s (error %d)\n",
                     path.c_str(), why.c_str(), e.Number());
        return 2;
    }
}
