#include <gtest/gtest.h>

#include "base/vb_error.h"
#include "reports/report_html.h"
#include "reports/report_pdf.h"

namespace {

RanReport twoPages() {
    RanReport r;
    r.title = "Price <List>";
    r.header = {"{company}"};
    r.company = "Ribbon & Trim";
    r.footer = "Page {page} of {pages}";
    r.columns = {
        {"Stock #", 8, false, false}, {"Name", 20, false, false}, {"Price", 9, true, true}};
    r.pages.push_back({{{ReportLine::Kind::GroupHead, "Category: Beads", {}},
                        {ReportLine::Kind::Detail, "", {"B1", "Caf\xC3\xA9 (big)", "$2.00"}}}});
    r.pages.push_back({{{ReportLine::Kind::GroupTotal, "Total for Beads", {"", "", "$2.00"}},
                        {ReportLine::Kind::ReportTotal, "Report total", {"", "", "$2.00"}}}});
    return r;
}

long count(const std::string& text, const std::string& what) {
    long n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++n;
    return n;
}

}  // namespace

TEST(ReportHtml, ShowsEachPageAsASheetWithItsHeadAndFoot) {
    const std::string html = reportHtml(twoPages(), "Cost 1 Report");
    EXPECT_NE(html.find("<title>Cost 1 Report</title>"), std::string::npos);
    EXPECT_EQ(count(html, "<div class=\"page\">"), 2);
    EXPECT_NE(html.find("<h1>Price &lt;List&gt;</h1>"), std::string::npos);
    EXPECT_NE(html.find("<p class=\"head\">Ribbon &amp; Trim</p>"), std::string::npos);
    EXPECT_NE(html.find("Page 2 of 2"), std::string::npos);
    EXPECT_NE(html.find("<td colspan=\"2\">Total for Beads</td><td class=\"num\">$2.00</td>"),
              std::string::npos);
    EXPECT_NE(html.find("<td colspan=\"3\">Category: Beads</td>"), std::string::npos);
}

TEST(ReportPdf, WritesOnePdfPageForEachPageWithItsText) {
    const std::string pdf = reportPdf(twoPages(), "Cost (1) Report");
    EXPECT_EQ(pdf.rfind("%PDF-1.4", 0), 0u);
    EXPECT_NE(pdf.find("/Count 2"), std::string::npos);
    EXPECT_EQ(count(pdf, "/Type /Page "), 2);
    EXPECT_NE(pdf.find("/Title (Cost \\(1\\) Report)"), std::string::npos);
    // Latin-1 stays one byte; brackets are escaped.
    EXPECT_NE(pdf.find("(Caf\xE9 \\(big\\)) Tj"), std::string::npos);
    EXPECT_NE(pdf.find("(Page 1 of 2) Tj"), std::string::npos);
    // The cross-reference table points at each object.
    const std::size_t start = pdf.rfind("startxref\n");
    ASSERT_NE(start, std::string::npos);
    EXPECT_EQ(pdf.compare(std::stoul(pdf.substr(start + 10)), 4, "xref"), 0);
}

TEST(ReportPdf, AFileThatCannotBeWrittenIsAFault) {
    EXPECT_THROW(writeReportPdf(twoPages(), "T", "/nonexistent-folder/x.pdf"), VbError);
}
