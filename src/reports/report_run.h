#pragma once

#include <string>
#include <vector>

#include "reports/report_design.h"

// A report run over a catalogue: its lines laid out in pages, ready to be drawn as HTML or
// as a PDF file.

struct ReportLine {
    enum class Kind { GroupHead, Detail, GroupTotal, ReportTotal, Nothing };
    Kind kind = Kind::Detail;
    std::string text;                // the group's head, a total's label, the empty report's note
    std::vector<std::string> cells;  // one per column; "" where a total line has none
};

struct ReportPage {
    std::vector<ReportLine> lines;
};

struct ReportColumnHead {
    std::string caption;
    int width = 10;
    bool right = false;
    bool sum = false;
};

struct RanReport {
    std::string title;
    std::vector<std::string> header;
    std::string footer;
    std::string date, company;
    std::vector<ReportColumnHead> columns;
    std::vector<ReportPage> pages;  // never empty

    // A header or footer line of a page (numbered from 1) with its words put in: {title},
    // {page}, {pages}, {date}, {company}.
    std::string pageText(const std::string& line, int page) const;
    // How many columns the label of a total line spans: those before the first summed one.
    int totalLabelSpan() const;
};

// Runs the design over the catalogue at databasePath, reading it afresh. Faults of the
// store pass on: an unknown table (3078), an unknown column (3265), a selection the store
// refuses (3001), a file that is no catalogue.
RanReport runReport(const ReportDesign& design, const std::string& databasePath);
