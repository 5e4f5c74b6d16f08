#pragma once

#include <string>
#include <vector>

#include "reports/report_design.h"

// A report run over a catalogue: its lines laid out in pages, handed on a page at a time to
// be drawn as HTML or as a PDF file, or kept whole for the report window.

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

// What every page of a run shows around its lines.
struct ReportFrame {
    std::string title;
    std::vector<std::string> header;
    std::string footer;
    std::string date, company;
    std::vector<ReportColumnHead> columns;
    int pageCount = 1;

    // A header or footer line of a page (numbered from 1) with its words put in: {title},
    // {page}, {pages}, {date}, {company}.
    std::string pageText(const std::string& line, int page) const;
    // How many columns the label of a total line spans: those before the first summed one.
    int totalLabelSpan() const;
};

// Where the pages of a run go: the frame first, then each page in turn, then the end.
class ReportPages {
  public:
    virtual ~ReportPages() = default;
    virtual void begin(const ReportFrame& frame) = 0;
    virtual void page(const ReportPage& page) = 0;
    virtual void end() = 0;
};

// Runs the design over the catalogue at databasePath, reading it afresh, and hands its pages
// on as they are laid out: the rows are read in the report's order, a few at a time, so that
// no more than a page is ever held. Gives the number of pages. Faults of the store pass on:
// an unknown table (3078), an unknown column (3265), a selection the store refuses (3001),
// a file that is no catalogue.
int runReport(const ReportDesign& design, const std::string& databasePath, ReportPages& out);

// A run kept whole, for the report window, which shows every page and exports them again.
struct RanReport : ReportFrame {
    std::vector<ReportPage> pages;  // never empty
};
RanReport runReport(const ReportDesign& design, const std::string& databasePath);
// Hands a kept run's pages on again.
void replayReport(const RanReport& report, ReportPages& out);
