#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/vb_error.h"
#include "reports/report_file.h"
#include "reports/report_html.h"
#include "reports/report_pdf.h"
#include "store/catalogue_fixture.h"
#include "vb_expect.h"

namespace {

class ReportFileTest : public ::testing::Test {
  protected:
    void SetUp() override {
        cat.sql(
            "INSERT INTO Products (StockNo, Cost1) VALUES ('A', 1), ('B', 2), ('C', 3), "
            "('D', 4)");
    }
    ReportFile pdfFile() {
        return ReportFile(
            path, [](std::ostream& out) { return std::make_unique<ReportPdf>(out, "Price List"); });
    }
    std::string contents() const {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    TempCatalogue cat;
    std::string path = cat.folder() + "out.pdf";
    const ReportDesign design = parseReportDesign(
        "table Products\nsort StockNo\nlines 1\ncolumn StockNo \"S\" 5\n"
        "column Cost1 \"Price\" 9 mask \"$#,###.00\" sum\n");
};

}  // namespace

TEST_F(ReportFileTest, WritesTheSameFileAsTheKeptRun) {
    {
        ReportFile file = pdfFile();
        EXPECT_EQ(runReport(design, cat.path(), file), 5);
    }
    EXPECT_EQ(contents(), reportPdf(runReport(design, cat.path()), "Price List"));
    const std::string html = cat.folder() + "out.htm";
    {
        ReportFile file(html, [](std::ostream& out) {
            return std::make_unique<ReportHtml>(out, "Price List");
        });
        runReport(design, cat.path(), file);
    }
    path = html;
    EXPECT_EQ(contents(), reportHtml(runReport(design, cat.path()), "Price List"));
}

TEST_F(ReportFileTest, AReportThatDoesNotRunLeavesTheFileAsItWas) {
    std::ofstream(path) << "last week's list";
    {
        ReportFile file = pdfFile();
        EXPECT_VBERROR(runReport(parseReportDesign("table Products\ncolumn Colour \"C\" 5\n"),
                                 cat.path(), file),
                       vberr::ItemNotFound);
    }
    EXPECT_EQ(contents(), "last week's list");
}

TEST_F(ReportFileTest, AFaultHalfWayLeavesNoFile) {
    // A price too large for money reads as an overflow when its row is printed: the pages
    // before it are written by then.
    cat.sql("UPDATE Products SET Cost1 = 1e300 WHERE StockNo = 'C'");
    {
        ReportFile file = pdfFile();
        EXPECT_VBERROR(runReport(design, cat.path(), file), vberr::Overflow);
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ReportFileTest, AFileThatCannotBeWrittenIsAFault) {
    path = cat.folder() + "no-such-folder/out.pdf";
    ReportFile file = pdfFile();
    EXPECT_VBERROR(runReport(design, cat.path(), file), 75);
}
