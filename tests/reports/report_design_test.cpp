#include <gtest/gtest.h>

#include "base/vb_error.h"
#include "reports/report_design.h"
#include "store/catalogue_fixture.h"
#include "vb_expect.h"

namespace {

int faultOf(const std::string& text) {
    try {
        parseReportDesign(text);
    } catch (const VbError& e) {
        return e.Number();
    }
    return 0;
}

std::string whyRefused(const std::string& text) {
    try {
        parseReportDesign(text);
    } catch (const VbError& e) {
        return e.Description();
    }
    return "";
}

}  // namespace

TEST(ReportDesign, ReadsEveryKindOfLine) {
    const ReportDesign d = parseReportDesign(
        "# open orders\n"
        "title \"Open Orders\"\r\n"
        "header \"{company}\"\n"
        "header \"as of {date}\"\n"
        "footer \"- {page} -\"\n"
        "TABLE [Orders]\n"
        "where \"[Date Received] = Null\"\n"
        "join Products on ProductOrderID = StockNo\n"
        "group Products.Supplier \"Supplier\"\n"
        "sort [Order ID] desc ProductOrderID\n"
        "count \"Lines:\"\n"
        "lines 12\n"
        "column [Order ID] \"Order\" 8\n"
        "column NumberOrdered*WtPrice \"Value\" 12 mask \"$#,###.00\" sum\n"
        "column Description \"Say \\\"what\\\"\" 30 right\n");
    EXPECT_EQ(d.title, "Open Orders");
    EXPECT_EQ(d.header, (std::vector<std::string>{"{company}", "as of {date}"}));
    EXPECT_EQ(d.footer, "- {page} -");
    EXPECT_EQ(d.table, "Orders");
    EXPECT_EQ(d.where, "[Date Received] = Null");
    EXPECT_EQ(d.joinTable, "Products");
    EXPECT_EQ(d.joinFrom, "ProductOrderID");
    EXPECT_EQ(d.joinTo, "StockNo");
    EXPECT_EQ(d.group, "Products.Supplier");
    EXPECT_EQ(d.groupCaption, "Supplier");
    ASSERT_EQ(d.sort.size(), 2u);
    EXPECT_EQ(d.sort[0].column, "Order ID");
    EXPECT_TRUE(d.sort[0].descending);
    EXPECT_FALSE(d.sort[1].descending);
    EXPECT_EQ(d.countCaption, "Lines:");
    EXPECT_EQ(d.lines, 12);
    ASSERT_EQ(d.columns.size(), 3u);
    EXPECT_EQ(d.columns[0].factors, std::vector<std::string>{"Order ID"});
    EXPECT_FALSE(d.columns[0].right);
    EXPECT_EQ(d.columns[1].factors, (std::vector<std::string>{"NumberOrdered", "WtPrice"}));
    EXPECT_EQ(d.columns[1].mask, "$#,###.00");
    EXPECT_TRUE(d.columns[1].sum);
    EXPECT_TRUE(d.columns[1].right);
    EXPECT_EQ(d.columns[2].caption, "Say \"what\"");
    EXPECT_TRUE(d.columns[2].right);
}

TEST(ReportDesign, KeepsTheLinesOfAPageWithinWhatASheetHolds) {
    EXPECT_EQ(parseReportDesign("table T\ncolumn A \"A\" 5\nlines 500\n").lines, MaxReportLines);
    EXPECT_EQ(parseReportDesign("table T\ncolumn A \"A\" 5\nlines 0\n").lines, 1);
    EXPECT_EQ(parseReportDesign("table T\ncolumn A \"A\" 5\n").lines, 40);
}

TEST(ReportDesign, AFileThatIsNoReportIsFaultFiveNamingTheLine) {
    EXPECT_EQ(faultOf(""), vberr::InvalidProcedureCall);
    EXPECT_EQ(faultOf("# nothing but a note\n"), vberr::InvalidProcedureCall);
    EXPECT_EQ(faultOf("table Products\n"), vberr::InvalidProcedureCall);
    EXPECT_EQ(faultOf("column StockNo \"Stock\" 10\n"), vberr::InvalidProcedureCall);
    EXPECT_EQ(whyRefused("table Products\ncolour red\n"),
              "Not a report file: line 2: \"colour\" is no word of a report");
    EXPECT_EQ(whyRefused("table Products\ncolumn A \"A\" wide\n"),
              "Not a report file: line 2: \"wide\" is not a number");
    EXPECT_EQ(whyRefused("title \"Open\n"), "Not a report file: line 1: a quote is not closed");
    EXPECT_EQ(whyRefused("table [Orders\n"), "Not a report file: line 1: a bracket is not closed");
    EXPECT_EQ(whyRefused("table Products\ncolumn A \"A\" 5 bold\n"),
              "Not a report file: line 2: \"bold\" is no option of a column");
    EXPECT_EQ(whyRefused("table Products\njoin Supplier Name\ncolumn A \"A\" 5\n"),
              "Not a report file: line 2: a join reads: join TABLE on COLUMN = COLUMN");
    // A file of binary rubbish is refused the same way.
    EXPECT_EQ(faultOf(std::string("\x89PNG\r\n\x1a\n\0\0\0", 11)), vberr::InvalidProcedureCall);
}

TEST(ReportDesign, AMissingFileIsFaultFiftyThree) {
    TempCatalogue cat;
    EXPECT_VBERROR(readReportDesign(cat.folder() + "reports/none.rpt"), vberr::FileNotFound);
    EXPECT_VBERROR(readReportDesign(cat.folder() + "*.rpt"), vberr::FileNotFound);
    EXPECT_VBERROR(readReportDesign(cat.folder()), vberr::FileNotFound);
}
