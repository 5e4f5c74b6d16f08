#include "app/report_command.h"

#include <cstdio>
#include <filesystem>
#include <memory>

#include "base/vb_error.h"
#include "reports/report_file.h"
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

// The pages of one run handed to each output asked for.
class Outputs : public ReportPages {
  public:
    explicit Outputs(std::vector<std::unique_ptr<ReportPages>> outputs)
        : outputs_(std::move(outputs)) {}
    void begin(const ReportFrame& frame) override {
        for (const auto& out : outputs_)
            out->begin(frame);
    }
    void page(const ReportPage& page) override {
        for (const auto& out : outputs_)
            out->page(page);
    }
    void end() override {
        for (const auto& out : outputs_)
            out->end();
    }

  private:
    std::vector<std::unique_ptr<ReportPages>> outputs_;
};

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
        // Each page goes to the files as it is laid out, so a report of any length prints
        // in the same memory.
        std::vector<std::unique_ptr<ReportPages>> outputs;
        if (!pdf.empty())
            outputs.push_back(std::make_unique<ReportFile>(pdf, [&](std::ostream& out) {
                return std::make_unique<ReportPdf>(out, design.title);
            }));
        if (!html.empty())
            outputs.push_back(std::make_unique<ReportFile>(html, [&](std::ostream& out) {
                return std::make_unique<ReportHtml>(out, design.title);
            }));
        Outputs both(std::move(outputs));
        const int pages = runReport(design, catalogue, both);
        std::printf("%s: %d pages\n", path.c_str(), pages);
        return 0;
    } catch (const VbError& e) {
        const std::string why =
            e.Description().empty() ? vbErrorDescription(e.Number()) : e.Description();
        std::fprintf(stderr, "catalogue-headless: the report %s did not run: %s (error %d)\n",
                     path.c_str(), why.c_str(), e.Number());
        return 2;
    }
}
