// The Reports menu: each item runs its report file over the catalogue in use through the
// Report control, and faults pass in silence.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/convert.h"
#include "program_fixture.h"
#include "reports/reports.h"
#include "shell/module.h"
#include "vb_expect.h"

namespace {

struct ReportsMenu : ProgramTest {
    ReportsMenu() {
        addProduct("BD-1001", "", "ProdName, Category, Cost1, Retail",
                   "'Seed Beads', 'Beads', 4.8, 9.95");
        addProduct("RB615", "", "ProdName, Category, Cost1, Retail",
                   "'Satin Ribbon', 'Ribbon', 1.95, 4.25");
    }
    Reports& menu() { return *form().reports; }
    void click(const std::string& item) { form()(item).Raise("Click"); }
    void writeReport(const std::string& name, const std::string& text) {
        std::ofstream(appDir() + "reports/" + name, std::ios::binary) << text;
    }
    // The hourglass went up and came back, and nothing was shown but the window (if any).
    void expectHourglassCameBack() {
        ASSERT_GE(ui.pointers.size(), 2u);
        EXPECT_EQ(ui.pointers[ui.pointers.size() - 2], vb::vbHourglass);
        EXPECT_EQ(ui.pointers.back(), vb::vbNormal);
        EXPECT_TRUE(ui.boxes.empty());
    }
};

struct Shipped {
    const char* item;
    const char* title;
    const char* file;
};

}  // namespace

TEST_F(ReportsMenu, EachItemRunsItsFileInAMaximisedWindowWithItsTitle) {
    start();
    const Shipped shipped[] = {
        {"mnuR1", "Cost 1 Report", "cost1.rpt"},
        {"mnuR2", "Cost 2 Report", "cost2.rpt"},
        {"mnuR3", "Cost 3 Report", "cost3.rpt"},
        {"mnuR4", "Cost 4 Report", "cost4.rpt"},
        {"mnuR5", "Cost 5 Report", "cost5.rpt"},
        {"mnuR6", "Retail Report", "retail.rpt"},
        {"mnuR7", "Category Report", "Category.rpt"},
        {"mnuR8", "Inventory Report", "inventory.rpt"},
        {"mnuR9", "Orders Report", "orders.rpt"},
        {"mnuPG", "Page Report", "page.rpt"},
        {"mnuAll", "All Report", "all.rpt"},
    };
    for (const Shipped& s : shipped) {
        ui.reportWindows.clear();
        click(s.item);
        ASSERT_EQ(ui.reportWindows.size(), 1u) << s.item;
        const ReportWindow& w = ui.reportWindows[0];
        EXPECT_EQ(w.Title, s.title);
        EXPECT_EQ(w.WindowState, 2);
        EXPECT_NE(w.Html.find(std::string("<title>") + s.title + "</title>"), std::string::npos);
        EXPECT_EQ(w.File, appDir() + "report.htm");
        const ReportControl& r = menu().Report;
        EXPECT_EQ(r.WindowTitle, s.title);
        EXPECT_EQ(r.ReportFileName, appDir() + "/reports/" + s.file);
        EXPECT_EQ(r.DataFiles(0), Mod().DBName);
        EXPECT_EQ(r.Destination, 0);
        EXPECT_TRUE(r.DiscardSavedData);
        expectHourglassCameBack();
    }
}

TEST_F(ReportsMenu, APriceListReadsTheCatalogueAfreshEachTime) {
    start();
    click("mnuR1");
    EXPECT_NE(ui.reportWindows.back().Html.find("$4.80"), std::string::npos);
    cat.sql("UPDATE Products SET Cost1 = 5.25 WHERE StockNo = 'BD-1001'");
    click("mnuR1");
    EXPECT_NE(ui.reportWindows.back().Html.find("$5.25"), std::string::npos);
    EXPECT_EQ(ui.reportWindows.back().Pages, 1);
}

TEST_F(ReportsMenu, ASecondReportSetsTheSameReportUpAnew) {
    start();
    const ReportControl* control = &menu().Report;
    click("mnuR1");
    click("mnuR6");
    ASSERT_EQ(ui.reportWindows.size(), 2u);
    EXPECT_EQ(&menu().Report, control);
    EXPECT_EQ(menu().Report.WindowTitle, "Retail Report");
    EXPECT_EQ(menu().Report.ReportFileName, appDir() + "/reports/retail.rpt");
    std::ifstream shown(appDir() + "report.htm");
    std::string html((std::istreambuf_iterator<char>(shown)), std::istreambuf_iterator<char>());
    EXPECT_NE(html.find("<title>Retail Report</title>"), std::string::npos);
    EXPECT_NE(html.find("$9.95"), std::string::npos);
}

TEST_F(ReportsMenu, AMissingEmptyOrBrokenReportFileGivesTheHourglassBackAndNoWindow) {
    start();
    std::filesystem::remove(appDir() + "reports/cost2.rpt");
    writeReport("cost3.rpt", "");
    writeReport("cost4.rpt", "table Products\ncolumn Colour \"Colour\" 10\n");
    writeReport("cost5.rpt", "table Customers\ncolumn Name \"Name\" 10\n");
    writeReport("retail.rpt", "table Products\nwhere \"StockNo = 'A\"\ncolumn StockNo \"S\" 5\n");
    for (const char* item : {"mnuR2", "mnuR3", "mnuR4", "mnuR5", "mnuR6"}) {
        ui.pointers.clear();
        click(item);
        EXPECT_TRUE(ui.reportWindows.empty()) << item;
        expectHourglassCameBack();
    }
    EXPECT_FALSE(std::filesystem::exists(appDir() + "report.htm"));
}

TEST_F(ReportsMenu, BrowseRunsTheChosenFileWithItsPathAsTitle) {
    start();
    const std::string mine = appDir() + "mine.rpt";
    std::ofstream(mine) << "title \"Mine\"\ntable Products\ncolumn StockNo \"S\" 8\n";
    ui.openAnswer = mine;
    click("mnuBrwse");
    ASSERT_EQ(ui.reportWindows.size(), 1u);
    EXPECT_EQ(ui.reportWindows[0].Title, mine);
    EXPECT_EQ(menu().Report.ReportFileName, mine);
    EXPECT_NE(ui.reportWindows[0].Html.find("RB615"), std::string::npos);
    expectHourglassCameBack();
}

TEST_F(ReportsMenu, BrowseCancelledRunsTheNameItWasGivenWhichFailsInSilence) {
    start();
    ui.openAnswer = "";  // the dialog is cancelled and hands "*.rpt" back
    click("mnuBrwse");
    EXPECT_TRUE(ui.reportWindows.empty());
    EXPECT_EQ(menu().Report.WindowTitle, "*.rpt");
    EXPECT_EQ(menu().Report.ReportFileName, "*.rpt");
    expectHourglassCameBack();
}

TEST_F(ReportsMenu, TheReportControlRunsOnlyToTheScreen) {
    start();
    ReportControl& r = menu().Report;
    r.ReportFileName = appDir() + "reports/all.rpt";
    r.SetDataFiles(0, Mod().DBName);
    r.Destination = 1;
    EXPECT_VBERROR(r.SetAction(1), vberr::InvalidProcedureCall);
    r.Destination = 0;
    EXPECT_VBERROR(r.SetAction(2), vberr::InvalidProcedureCall);
    EXPECT_VBERROR(r.SetDataFiles(1, "x"), vberr::SubscriptOutOfRange);
    EXPECT_TRUE(ui.reportWindows.empty());
    r.SetAction(1);
    EXPECT_EQ(ui.reportWindows.size(), 1u);
}
