#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "reports/report_run.h"

// The report as a PDF file of US Letter pages, one sheet per page of the run, in the
// standard Helvetica fonts (text beyond Latin-1 prints as "?"). `documentTitle` names the
// document. Each page is written as soon as it comes; only the places of the objects wait
// for the end.
class ReportPdf : public ReportPages {
  public:
    ReportPdf(std::ostream& out, std::string documentTitle);
    ~ReportPdf() override;
    void begin(const ReportFrame& frame) override;
    void page(const ReportPage& page) override;
    void end() override;

  private:
    struct Writing;
    std::ostream& out_;
    std::string documentTitle_;
    std::unique_ptr<Writing> w_;
};

// A kept run as a PDF file (see ReportFile), and as bytes.
void writeReportPdf(const RanReport& report, const std::string& documentTitle,
                    const std::string& path);
std::string reportPdf(const RanReport& report, const std::string& documentTitle);
