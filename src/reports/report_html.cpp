#include "reports/report_html.h"

#include <sstream>

namespace {

// Data may hold "&" or "<" ("Ribbon & Trim"): the report's own page shows them as they are.
std::string escaped(const std::string& text) {
    std::string out;
    for (char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

const char* style =
    "<style>\n"
    "body { font-family: sans-serif; font-size: 10pt; margin: 0; background: #ddd; }\n"
    ".page { background: #fff; margin: 12px auto; padding: 24px 32px; max-width: 60em;"
    " page-break-after: always; }\n"
    "h1 { font-size: 14pt; margin: 0 0 4px 0; }\n"
    ".head { color: #333; margin: 0 0 2px 0; }\n"
    "table { border-collapse: collapse; width: 100%; margin-top: 8px; }\n"
    "th { text-align: left; border-bottom: 1px solid #000; padding: 2px 6px; }\n"
    "td { padding: 1px 6px; }\n"
    ".num { text-align: right; }\n"
    "tr.group td { font-weight: bold; padding-top: 6px; }\n"
    "tr.total td { font-weight: bold; border-top: 1px solid #888; }\n"
    "tr.grand td { font-weight: bold; border-top: 2px solid #000; }\n"
    ".foot { margin-top: 12px; text-align: center; color: #333; }\n"
    "@media print { body { background: #fff; font-size: 8.5pt; } .page { margin: 0; padding: 0; } "
    "}\n"
    "</style>\n";

std::string cell(const std::string& text, bool right, int span = 1) {
    std::string td = "<td";
    if (span > 1) td += " colspan=\"" + std::to_string(span) + "\"";
    if (right) td += " class=\"num\"";
    return td + ">" + escaped(text) + "</td>";
}

std::string row(const ReportFrame& report, const ReportLine& line) {
    const int columns = static_cast<int>(report.columns.size());
    switch (line.kind) {
        case ReportLine::Kind::GroupHead:
            return "<tr class=\"group\">" + cell(line.text, false, columns) + "</tr>";
        case ReportLine::Kind::Nothing:
            return "<tr>" + cell(line.text, false, columns) + "</tr>";
        case ReportLine::Kind::Detail: {
            std::string tr = "<tr>";
            for (int c = 0; c < columns; ++c)
                tr += cell(line.cells[c], report.columns[c].right);
            return tr + "</tr>";
        }
        default: {
            const int span = report.totalLabelSpan();
            std::string tr = line.kind == ReportLine::Kind::GroupTotal ? "<tr class=\"total\">"
                                                                       : "<tr class=\"grand\">";
            tr += cell(line.text, false, span);
            for (int c = span; c < columns; ++c)
                tr += cell(line.cells[c], report.columns[c].right);
            return tr + "</tr>";
        }
    }
}

}  // namespace

ReportHtml::ReportHtml(std::ostream& out, std::string windowTitle)
    : out_(out), windowTitle_(std::move(windowTitle)) {}

void ReportHtml::begin(const ReportFrame& frame) {
    frame_ = frame;
    number_ = 0;
    out_ << "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">\n<title>" +
                escaped(windowTitle_) + "</title>\n" + style + "</head><body>\n";
}

void ReportHtml::page(const ReportPage& lines) {
    const int page = ++number_;
    std::string html =
        "<div class=\"page\">\n<h1>" + escaped(frame_.pageText(frame_.title, page)) + "</h1>\n";
    for (const std::string& line : frame_.header)
        html += "<p class=\"head\">" + escaped(frame_.pageText(line, page)) + "</p>\n";
    html += "<table>\n<tr>";
    for (const ReportColumnHead& column : frame_.columns)
        html += std::string("<th") + (column.right ? " class=\"num\"" : "") +
                " style=\"width:" + std::to_string(column.width) + "ch\">" +
                escaped(column.caption) + "</th>";
    html += "</tr>\n";
    for (const ReportLine& line : lines.lines)
        html += row(frame_, line) + "\n";
    html += "</table>\n<p class=\"foot\">" + escaped(frame_.pageText(frame_.footer, page)) +
            "</p>\n</div>\n";
    out_ << html;
}

void ReportHtml::end() {
    out_ << "</body></html>\n";
}

std::string reportHtml(const RanReport& report, const std::string& windowTitle) {
    std::ostringstream out;
    ReportHtml html(out, windowTitle);
    replayReport(report, html);
    return std::move(out).str();
}
