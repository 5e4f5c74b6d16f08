#pragma once

#include <ostream>
#include <string>

#include "reports/report_run.h"

// The report as one HTML document, a block per page that prints on a sheet of its own,
// written a page at a time as the pages come. `windowTitle` is the document's title, the
// name the program gives the report's window.
class ReportHtml : public ReportPages {
  public:
    ReportHtml(std::ostream& out, std::string windowTitle);
    void begin(const ReportFrame& frame) override;
    void page(const ReportPage& page) override;
    void end() override;

  private:
    std::ostream& out_;
    std::string windowTitle_;
    ReportFrame frame_;
    int number_ = 0;
};

// A kept run as one HTML text.
std::string reportHtml(const RanReport& report, const std::string& windowTitle);
