#include <gtest/gtest.h>

#include "base/clock.h"
#include "base/dates.h"
#include "base/vb_error.h"
#include "reports/report_run.h"
#include "store/catalogue_fixture.h"
#include "vb_expect.h"

namespace {

class ReportRun : public ::testing::Test {
  protected:
    ReportRun() { setClock(&clock); }
    ~ReportRun() override { setClock(nullptr); }

    void product(const std::string& stockNo, const std::string& category, const std::string& cost,
                 const std::string& pageNo = "1") {
        cat.sql(
            "INSERT INTO Products (StockNo, ProdName, Category, Cost1, PageNo, Inventory) "
            "VALUES ('" +
            stockNo + "', 'Item " + stockNo + "', " + category + ", " + cost + ", '" + pageNo +
            "', 2)");
    }
    RanReport run(const std::string& text) {
        return runReport(parseReportDesign(text), cat.path());
    }

  public:
    // Every line of every page, each as its text or its cells joined by "|".
    static std::vector<std::string> linesOf(const RanReport& r) {
        std::vector<std::string> out;
        for (const ReportPage& page : r.pages)
            for (const ReportLine& line : page.lines) {
                std::string text = line.text;
                for (const std::string& cell : line.cells)
                    text += "|" + cell;
                out.push_back(text);
            }
        return out;
    }

  protected:
    TempCatalogue cat;
    FixedClock clock{DateSerial(2004, 3, 7) + 0.5};
};

// Keeps what a run hands on, as it comes: the page count the frame told at the start, each
// page's lines as linesOf gives them, and whether the run ended.
struct PagesSeen : ReportPages {
    int toldPages = -1, begun = 0, ended = 0;
    std::vector<std::vector<std::string>> pages;
    void begin(const ReportFrame& frame) override {
        toldPages = frame.pageCount;
        ++begun;
    }
    void page(const ReportPage& page) override {
        RanReport one;
        one.pages = {page};
        EXPECT_EQ(ended, 0);
        pages.push_back(ReportRun::linesOf(one));
    }
    void end() override { ++ended; }
};

const char* byCategory =
    "title \"Price List\"\n"
    "table Products\n"
    "group Category \"Category\"\n"
    "sort StockNo\n"
    "count \"Items:\"\n"
    "column StockNo \"Stock #\" 8\n"
    "column Cost1 \"Price\" 9 mask \"$#,###.00\" sum\n";

}  // namespace

TEST_F(ReportRun, GroupsRowsWithTheirHeadsCountsAndSums) {
    product("B2", "'Beads'", "1234.5");
    product("A1", "'Ribbon'", "0.5");
    product("B1", "'beads'", "2");
    const RanReport r = run(byCategory);
    EXPECT_EQ(linesOf(r), (std::vector<std::string>{
                              // The group takes the spelling of its first row.
                              "Category: beads",
                              "|B1|$2.00",
                              "|B2|$1,234.50",
                              "Total for beads   Items: 2||$1,236.50",
                              "Category: Ribbon",
                              "|A1|$.50",
                              "Total for Ribbon   Items: 1||$.50",
                              "Report total   Items: 3||$1,237.00",
                          }));
    EXPECT_EQ(r.totalLabelSpan(), 1);
}

TEST_F(ReportRun, PutsAsManyLinesOnAPageAsTheFileSays) {
    for (int i = 10; i < 23; ++i)
        product("S" + std::to_string(i), i < 15 ? "'One'" : "'Two'", "1");
    // 13 rows in 2 groups: 13 + 2 heads + 2 totals + the report's total = 18 lines.
    EXPECT_EQ(run(std::string(byCategory) + "lines 5\n").pages.size(), 4u);
    EXPECT_EQ(run(std::string(byCategory) + "lines 6\n").pages.size(), 3u);
    EXPECT_EQ(run(std::string(byCategory) + "lines 18\n").pages.size(), 1u);
    const RanReport r = run(std::string(byCategory) + "lines 5\n");
    EXPECT_EQ(r.pages[3].lines.size(), 3u);
    EXPECT_EQ(r.pages[3].lines.back().kind, ReportLine::Kind::ReportTotal);
}

TEST_F(ReportRun, AReportWithoutRowsSaysSoOnOnePage) {
    const RanReport r = run(byCategory);
    ASSERT_EQ(r.pages.size(), 1u);
    EXPECT_EQ(linesOf(r),
              (std::vector<std::string>{"Nothing to list.", "Report total   Items: 0||$.00"}));
}

TEST_F(ReportRun, SortsPageNumbersAsNumbersAndEmptyValuesFirst) {
    product("A", "'X'", "1", "10");
    product("B", "'X'", "1", "2");
    product("C", "Null", "1", "");
    product("D", "''", "1", "9");
    const RanReport r =
        run("table Products\ngroup Category \"Category\"\nsort PageNo\n"
            "column StockNo \"S\" 5\n");
    EXPECT_EQ(linesOf(r), (std::vector<std::string>{"Category: (none)", "|C", "|D",
                                                    "Total for (none)|", "Category: X", "|B", "|A",
                                                    "Total for X|", "Report total|"}));
    EXPECT_EQ(linesOf(run("table Products\nsort PageNo desc\ncolumn StockNo \"S\" 5\n")),
              (std::vector<std::string>{"|A", "|D", "|B", "|C", "Report total|"}));
}

TEST_F(ReportRun, SelectsJoinsMultipliesAndCutsToTheWidth) {
    product("RB615", "'Ribbon'", "1.95");
    cat.sql("UPDATE Products SET Supplier = 'Prairie Ribbon Co.'");
    cat.sql(
        "INSERT INTO Orders ([Order ID], ProductOrderID, Description, NumberOrdered, WtPrice, "
        "[Date Received]) VALUES ('1002', 'rb615', 'Satin Ribbon 5/8 in, Red', 12, 1.95, "
        "Null), ('1003', 'ZZ9', 'Gone', 2, 1, Null), ('1000', 'RB615', 'In', 1, 1, 38000)");
    const RanReport r =
        run("table Orders\nwhere \"[Date Received] = Null\"\njoin Products on ProductOrderID = "
            "StockNo\ngroup Products.Supplier \"Supplier\"\nsort [Order ID]\n"
            "column Description \"What\" 12\ncolumn NumberOrdered \"Qty\" 4 sum\n"
            "column NumberOrdered*WtPrice \"Value\" 9 mask \"$#,###.00\" sum\n");
    EXPECT_EQ(linesOf(r), (std::vector<std::string>{
                              "Supplier: (none)",
                              "|Gone|2|$2.00",
                              "Total for (none)||2|$2.00",
                              "Supplier: Prairie Ribbon Co.",
                              "|Satin Ribbon|12|$23.40",
                              "Total for Prairie Ribbon Co.||12|$23.40",
                              "Report total||14|$25.40",
                          }));
}

TEST_F(ReportRun, FillsInTheWordsOfHeaderAndFooter) {
    cat.sql("INSERT INTO Setup ([Company Name]) VALUES ('Willow & Co')");
    product("A", "'X'", "1");
    const RanReport r =
        run("title \"List\"\nheader \"{company}, {date}\"\ntable Products\n"
            "column StockNo \"S\" 5\nfooter \"{title}: {page} of {pages}\"\n");
    EXPECT_EQ(r.pageText(r.header[0], 1), "Willow & Co, 03/07/2004");
    EXPECT_EQ(r.pageText(r.footer, 1), "List: 1 of 1");
}

TEST_F(ReportRun, AnUnknownTableOrColumnOrBrokenSelectionIsTheStoresFault) {
    product("A", "'X'", "1");
    EXPECT_VBERROR(run("table Customers\ncolumn Name \"N\" 5\n"), 3078);
    EXPECT_VBERROR(run("table Products\ncolumn Colour \"C\" 5\n"), vberr::ItemNotFound);
    EXPECT_VBERROR(run("table Products\nsort Colour\ncolumn StockNo \"S\" 5\n"),
                   vberr::ItemNotFound);
    EXPECT_VBERROR(run("table Products\ngroup Colour\ncolumn StockNo \"S\" 5\n"),
                   vberr::ItemNotFound);
    EXPECT_VBERROR(run("table Orders\njoin Products on ProductOrderID = Colour\n"
                       "column Description \"D\" 5\n"),
                   vberr::ItemNotFound);
    EXPECT_VBERROR(run("table Products\nwhere \"StockNo = 'A\"\ncolumn StockNo \"S\" 5\n"),
                   vberr::BadArguments);
}

TEST_F(ReportRun, ADatabaseThatIsNoCatalogueIsAFault) {
    EXPECT_THROW(runReport(parseReportDesign(byCategory), cat.folder() + "none.mde"), VbError);
}

TEST_F(ReportRun, HandsOnEachPageAsItFillsWithGroupsAndSumsCarriedAcrossPages) {
    for (int i = 1; i <= 4; ++i)
        product("A" + std::to_string(i), "'One'", std::to_string(i));
    product("B1", "'Two'", "10");
    product("B2", "'Two'", "20");
    PagesSeen seen;
    EXPECT_EQ(runReport(parseReportDesign(std::string(byCategory) + "lines 3\n"), cat.path(), seen),
              4);
    EXPECT_EQ(seen.toldPages, 4);
    EXPECT_EQ(seen.begun, 1);
    EXPECT_EQ(seen.ended, 1);
    EXPECT_EQ(seen.pages,
              (std::vector<std::vector<std::string>>{
                  {"Category: One", "|A1|$1.00", "|A2|$2.00"},
                  {"|A3|$3.00", "|A4|$4.00", "Total for One   Items: 4||$10.00"},
                  {"Category: Two", "|B1|$10.00", "|B2|$20.00"},
                  {"Total for Two   Items: 2||$30.00", "Report total   Items: 6||$40.00"},
              }));
}

TEST_F(ReportRun, TellsEveryPageHowManyPagesTheSelectionNeeds) {
    // Kept: four groups (no category being one, whether Null or empty; "x" and "X" one) of
    // 1 to 4 rows, 10 lines of rows and 8 of heads and totals, with the report's total 19.
    // Each discontinued item would add a line, and one a group too.
    const std::vector<std::pair<const char*, const char*>> rows{
        {"'W'", "False"}, {"'x'", "False"}, {"'X'", "False"},  {"'Y'", "Null"},
        {"'y'", "False"}, {"'Y'", "False"}, {"Null", "False"}, {"''", "False"},
        {"Null", "Null"}, {"''", "False"},  {"'W'", "True"},   {"'Z'", "True"}};
    for (std::size_t r = 0; r < rows.size(); ++r) {
        product("S" + std::to_string(10 + r), rows[r].first, "1");
        cat.sql("UPDATE Products SET Disco = " + std::string(rows[r].second) +
                " WHERE StockNo = 'S" + std::to_string(10 + r) + "'");
    }
    const std::string design =
        std::string(byCategory) + "where \"Disco = False or Disco = Null\"\n";
    for (int lines = 1; lines <= 20; ++lines) {
        SCOPED_TRACE(lines);
        PagesSeen seen;
        const int pages = runReport(
            parseReportDesign(design + "lines " + std::to_string(lines) + "\n"), cat.path(), seen);
        std::size_t all = 0;
        for (const auto& page : seen.pages)
            all += page.size();
        EXPECT_EQ(all, 19u);
        EXPECT_EQ(pages, (19 + lines - 1) / lines);
        EXPECT_EQ(seen.toldPages, pages);
        EXPECT_EQ(static_cast<int>(seen.pages.size()), pages);
    }
}

TEST_F(ReportRun, AReportWithoutRowsHandsOnOnePageOfOne) {
    product("A", "'X'", "1");
    PagesSeen seen;
    EXPECT_EQ(runReport(parseReportDesign(std::string(byCategory) + "where \"StockNo = 'B'\"\n"),
                        cat.path(), seen),
              1);
    EXPECT_EQ(seen.toldPages, 1);
    EXPECT_EQ(seen.ended, 1);
    EXPECT_EQ(seen.pages, (std::vector<std::vector<std::string>>{
                              {"Nothing to list.", "Report total   Items: 0||$.00"}}));
}

TEST_F(ReportRun, AFaultBeforeThePagesHandsNothingOn) {
    product("A", "'X'", "1");
    PagesSeen seen;
    EXPECT_VBERROR(
        runReport(parseReportDesign("table Products\ncolumn Colour \"C\" 5\n"), cat.path(), seen),
        vberr::ItemNotFound);
    EXPECT_EQ(seen.begun, 0);
    EXPECT_TRUE(seen.pages.empty());
}
