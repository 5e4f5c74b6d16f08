#pragma once

#include <string>
#include <vector>

// `catalogue-headless --report FILE --pdf OUT [--html OUT] [CATALOGUE]`: runs one report
// file over a catalogue (the program folder's by default) and writes it as a PDF file and,
// if asked, as HTML. A report named without a folder that is not in the working folder is
// taken from the program folder's reports/. Returns the exit status: 0 done, 2 when the
// report could not run (one line on the error stream), 64 for a wrong command line.
int runReportCommand(const std::vector<std::string>& args, const std::string& programFolder);
