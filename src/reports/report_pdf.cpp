#include "reports/report_pdf.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <ostream>
#include <sstream>
#include <vector>

#include "reports/report_file.h"

namespace {

constexpr double PageWidth = 612, PageHeight = 792, Margin = 40;
constexpr double BodySize = 8.5, Leading = 12, TitleSize = 14;

// Helvetica's advance widths of the characters 32 to 126, in thousandths of the size.
constexpr std::array<int, 95> helvetica{
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};

// UTF-8 to the fonts' one-byte encoding: Latin-1 stays, anything else is "?".
std::string latin1(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        std::size_t length = c < 0x80 ? 1 : (c >> 5) == 6 ? 2 : (c >> 4) == 14 ? 3 : 4;
        if (length == 2 && i + 1 < text.size())
            out += static_cast<char>(((c & 0x1F) << 6) | (text[i + 1] & 0x3F));
        else
            out += length == 1 ? static_cast<char>(c) : '?';
        i += length;
    }
    return out;
}

double widthOf(const std::string& bytes, double size, bool bold) {
    double units = 0;
    for (char ch : bytes) {
        const auto c = static_cast<unsigned char>(ch);
        units += c >= 32 && c <= 126 ? helvetica[c - 32] : 556;
    }
    return units * size / 1000 * (bold ? 1.06 : 1.0);
}

// A text as a PDF string.
std::string pdfString(const std::string& utf8) {
    std::string s = "(";
    for (char c : latin1(utf8)) {
        if (c == '(' || c == ')' || c == '\\') s += '\\';
        s += c;
    }
    return s + ")";
}

// One page's content stream.
class PageText {
  public:
    void text(double x, double y, const std::string& utf8, double size, bool bold) {
        char place[64];
        std::snprintf(place, sizeof place, "%.2f %.2f Td", x, y);
        out_ += "BT /" + std::string(bold ? "F2 " : "F1 ") + number(size) + " Tf " + place + " " +
                pdfString(utf8) + " Tj ET\n";
    }
    void right(double xRight, double y, const std::string& utf8, double size, bool bold) {
        text(xRight - widthOf(latin1(utf8), size, bold), y, utf8, size, bold);
    }
    void rule(double x1, double x2, double y, double weight) {
        out_ += number(weight) + " w " + number(x1) + " " + number(y) + " m " + number(x2) + " " +
                number(y) + " l S\n";
    }
    const std::string& stream() const { return out_; }

  private:
    static std::string number(double v) {
        char s[32];
        std::snprintf(s, sizeof s, "%.2f", v);
        return s;
    }
    std::string out_;
};

// Where each column starts and how wide it is, in points.
struct Columns {
    std::vector<double> left, width;
};

Columns columnsOf(const ReportFrame& report) {
    double chars = 0;
    for (const auto& c : report.columns)
        chars += c.width + 1;
    const double unit = std::min(5.0, (PageWidth - 2 * Margin) / std::max(1.0, chars));
    Columns cols;
    double x = Margin;
    for (const auto& c : report.columns) {
        cols.left.push_back(x);
        cols.width.push_back(c.width * unit);
        x += (c.width + 1) * unit;
    }
    return cols;
}

std::string drawPage(const ReportFrame& report, const ReportPage& lines, int number,
                     const Columns& cols) {
    PageText page;
    double y = PageHeight - Margin - TitleSize;
    page.text(Margin, y, report.pageText(report.title, number), TitleSize, true);
    y -= 6;
    for (const std::string& line : report.header)
        page.text(Margin, y -= Leading, report.pageText(line, number), BodySize + 0.5, false);
    y -= Leading + 4;
    const std::size_t count = report.columns.size();
    auto cellAt = [&](std::size_t c, const std::string& text, bool bold) {
        if (report.columns[c].right)
            page.right(cols.left[c] + cols.width[c], y, text, BodySize, bold);
        else
            page.text(cols.left[c], y, text, BodySize, bold);
    };
    for (std::size_t c = 0; c < count; ++c)
        cellAt(c, report.columns[c].caption, true);
    page.rule(Margin, PageWidth - Margin, y - 3, 0.7);
    for (const ReportLine& line : lines.lines) {
        y -= Leading;
        switch (line.kind) {
            case ReportLine::Kind::Detail:
                for (std::size_t c = 0; c < count; ++c)
                    cellAt(c, line.cells[c], false);
                break;
            case ReportLine::Kind::GroupHead:
            case ReportLine::Kind::Nothing:
                page.text(Margin, y, line.text, BodySize, line.kind == ReportLine::Kind::GroupHead);
                break;
            default:
                page.rule(Margin, PageWidth - Margin, y + Leading - 3,
                          line.kind == ReportLine::Kind::ReportTotal ? 1.0 : 0.4);
                page.text(Margin, y, line.text, BodySize, true);
                for (std::size_t c = static_cast<std::size_t>(report.totalLabelSpan()); c < count;
                     ++c)
                    cellAt(c, line.cells[c], true);
        }
    }
    const std::string footer = report.pageText(report.footer, number);
    page.text((PageWidth - widthOf(latin1(footer), BodySize, false)) / 2, Margin - 10, footer,
              BodySize, false);
    return page.stream();
}

// Writes numbered objects as they come, so that no page waits in memory for the others, and
// ends with their cross-reference table. An object may be numbered before it is written.
class PdfWriter {
  public:
    explicit PdfWriter(std::ostream& out) : out_(out) { put("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n"); }
    int reserve() {
        offsets_.push_back(0);
        return static_cast<int>(offsets_.size());
    }
    void write(int id, const std::string& body) {
        offsets_[static_cast<std::size_t>(id - 1)] = written_;
        put(std::to_string(id) + " 0 obj\n" + body + "\nendobj\n");
    }
    int add(const std::string& body) {
        const int id = reserve();
        write(id, body);
        return id;
    }
    void finish(int root, int info) {
        const std::size_t xref = written_;
        put("xref\n0 " + std::to_string(offsets_.size() + 1) + "\n0000000000 65535 f \n");
        for (std::size_t offset : offsets_) {
            char entry[24];
            std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", offset);
            put(entry);
        }
        put("trailer\n<< /Size " + std::to_string(offsets_.size() + 1) + " /Root " +
            std::to_string(root) + " 0 R /Info " + std::to_string(info) + " 0 R >>\nstartxref\n" +
            std::to_string(xref) + "\n%%EOF\n");
    }

  private:
    void put(const std::string& bytes) {
        out_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        written_ += bytes.size();
    }
    std::ostream& out_;
    std::vector<std::size_t> offsets_;
    std::size_t written_ = 0;
};

}  // namespace

struct ReportPdf::Writing {
    explicit Writing(std::ostream& out) : pdf(out) {}
    PdfWriter pdf;
    ReportFrame frame;
    Columns cols;
    int catalog = 0, pages = 0, count = 0;
    std::string resources, kids;
};

ReportPdf::ReportPdf(std::ostream& out, std::string documentTitle)
    : out_(out), documentTitle_(std::move(documentTitle)) {}

ReportPdf::~ReportPdf() = default;

void ReportPdf::begin(const ReportFrame& frame) {
    w_ = std::make_unique<Writing>(out_);
    PdfWriter& pdf = w_->pdf;
    w_->frame = frame;
    w_->cols = columnsOf(frame);
    w_->catalog = pdf.reserve();
    w_->pages = pdf.reserve();
    const int regular = pdf.add(
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>");
    const int bold = pdf.add(
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>");
    w_->resources = "<< /Font << /F1 " + std::to_string(regular) + " 0 R /F2 " +
                    std::to_string(bold) + " 0 R >> >>";
}

void ReportPdf::page(const ReportPage& lines) {
    PdfWriter& pdf = w_->pdf;
    const std::string stream = drawPage(w_->frame, lines, ++w_->count, w_->cols);
    const int contents = pdf.add("<< /Length " + std::to_string(stream.size()) + " >>\nstream\n" +
                                 stream + "endstream");
    const int page = pdf.add("<< /Type /Page /Parent " + std::to_string(w_->pages) +
                             " 0 R /MediaBox [0 0 612 792] /Resources " + w_->resources +
                             " /Contents " + std::to_string(contents) + " 0 R >>");
    w_->kids += std::to_string(page) + " 0 R ";
}

void ReportPdf::end() {
    PdfWriter& pdf = w_->pdf;
    pdf.write(w_->pages, "<< /Type /Pages /Kids [" + w_->kids + "] /Count " +
                             std::to_string(w_->count) + " >>");
    pdf.write(w_->catalog, "<< /Type /Catalog /Pages " + std::to_string(w_->pages) + " 0 R >>");
    const int info =
        pdf.add("<< /Title " + pdfString(documentTitle_) + " /Producer (Catalogue Manager) >>");
    pdf.finish(w_->catalog, info);
    w_.reset();
}

std::string reportPdf(const RanReport& report, const std::string& documentTitle) {
    std::ostringstream out;
    ReportPdf pdf(out, documentTitle);
    replayReport(report, pdf);
    return std::move(out).str();
}

void writeReportPdf(const RanReport& report, const std::string& documentTitle,
                    const std::string& path) {
    ReportFile pdf(
        path, [&](std::ostream& out) { return std::make_unique<ReportPdf>(out, documentTitle); });
    replayReport(report, pdf);
}
