#pragma once

#include <string>

#include "reports/report_run.h"

// The report as a PDF file of US Letter pages, one sheet per page of the run, in the
// standard Helvetica fonts (text beyond Latin-1 prints as "?"). `documentTitle` names the
// document. A file that cannot be written is fault 75.
void writeReportPdf(const RanReport& report, const std::string& documentTitle,
                    const std::string& path);
// The same PDF as bytes.
std::string reportPdf(const RanReport& report, const std::string& documentTitle);
