#pragma once

#include <string>

#include "reports/report_run.h"

// The report as one HTML document, a block per page that prints on a sheet of its own.
// `windowTitle` is the document's title, the name the program gives the report's window.
std::string reportHtml(const RanReport& report, const std::string& windowTitle);
