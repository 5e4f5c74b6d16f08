// A run of the page generator on a small catalogue: the groups, the pages, the frames and
// the detail pages, with the operator's clicks given in turn at each wait.
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "base/convert.h"
#include "program_fixture.h"
#include "records/data_control.h"
#include "records/recordset.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "webcat/web_catalogue.h"

namespace fs = std::filesystem;

namespace {

struct PageRun : ProgramTest {
    Products* f = nullptr;
    WebCatalogue* w = nullptr;
    std::deque<std::function<void()>> steps;

    void item(const std::string& stockNo, const std::string& pageNo,
              const std::string& picture = "") {
        addProduct(stockNo, picture, "ProdName, PageNo, Category, Retail, Cost1",
                   "'Name " + stockNo + "', " + (pageNo == "NULL" ? pageNo : "'" + pageNo + "'") +
                       ", 'Cat', 10, 4");
    }
    void begin() {
        f = &start();
        w = f->webcat.get();
        // When the clicks run out the operator cancels, so a run never waits for ever.
        ui.onWait = [this] {
            if (steps.empty()) {
                w->Command19_Click();
                return;
            }
            auto step = steps.front();
            steps.pop_front();
            step();
        };
        ui.saveAnswer = appDir() + "Pages/site.htm";
    }
    Control& c(const std::string& name, int index = -1) { return (*f)(name, index); }
    // Every group, go on; in the page setup `setup` runs, then Done and Continue.
    void allPages(const std::function<void()>& setup = {}) {
        steps = {[this] { w->Command13_Click(); }, [this] { w->Command17_Click(); },
                 [this, setup] {
                     if (setup) setup();
                     w->Command26_Click();
                     w->Command17_Click();
                 }};
    }
    void placeBoxes(int side, std::initializer_list<int> boxes) {
        int r = 0;
        for (int k : boxes)
            Mod().BoxField[side][r++] = static_cast<std::int16_t>(k);
    }
    std::string file(const std::string& name) {
        std::ifstream in(appDir() + "Pages/" + name, std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    bool has(const std::string& name, const std::string& text) {
        return file(name).find(text) != std::string::npos;
    }
};

TEST_F(PageRun, APageNumberWithAnApostropheIsCleanedInTheCatalogue) {
    item("A1", "3''");
    begin();
    steps = {};
    w->Command6_Click();
    // The count is taken from the grid's set, which has not seen the cleaned value yet.
    EXPECT_EQ(c("List1").List(0), "3 - Items: (0)");
    f->adoPrimaryRS->Requery();
    f->adoPrimaryRS->MoveFirst();
    EXPECT_EQ(CStr(f->adoPrimaryRS->Fields("PageNo").Value()), "3");
}

TEST_F(PageRun, TheGroupOfNullValuesIsTheFirstRowAndItsFilterUsesNull) {
    item("A1", "2");
    item("A2", "NULL");
    item("A3", "1");
    begin();
    steps = {[this] {
        c("List1").SetSelected(0, true);
        w->Command17_Click();
    }};
    w->Command6_Click();
    EXPECT_EQ(c("List1").List(0), "Null - Items: (1)");
    EXPECT_EQ(c("List1").List(1), "1 - Items: (1)");
    EXPECT_EQ(c("List1").List(2), "2 - Items: (1)");
    EXPECT_EQ(CStr(Mod().SearchCriteria), "[PageNo] = Null");
    EXPECT_EQ(c("List3").ListCount(), 1);
    EXPECT_EQ(c("List3").List(0), "A2");
}

TEST_F(PageRun, CurrentRecordsMakeOneGroupWithoutTheNewPageBox) {
    item("A1", "1");
    item("A2", "2");
    item("A3", "3");
    begin();
    std::string status;
    steps = {[&] {
        status = c("lblStatus").Caption();
        w->Command19_Click();
    }};
    w->Command8_Click();
    EXPECT_EQ(c("List1").ListCount(), 1);
    EXPECT_EQ(c("List1").List(0), "All Current Records");
    EXPECT_FALSE(c("chkDetail", 3).Visible());
    EXPECT_EQ(status, "Total Pages Available: 1");
}

TEST_F(PageRun, LettersInPerPageGiveOnePageInTotal) {
    item("A1", "1");
    begin();
    c("List3").AddItem("A1");
    c("List3").AddItem("A2");
    c("Text3", 3).SetText("abc");
    EXPECT_EQ(Mod().ItemsPerPage, 1);
    EXPECT_EQ(CStr(Mod().TotalPages), "1");
}

TEST_F(PageRun, AnEmptyPerPageBoxPutsAllItemsOnOnePage) {
    item("A1", "1");
    begin();
    for (const char* s : {"A1", "A2", "A3"})
        c("List3").AddItem(s);
    c("Text3", 3).SetText("");
    w->Text3_Change(3);
    EXPECT_EQ(c("Text3", 3).Text(), "3");
    EXPECT_EQ(Mod().ItemsPerPage, 3);
    EXPECT_EQ(CStr(Mod().TotalPages), "1");
}

TEST_F(PageRun, TheCellWidthIsTheWholeDoubleOfAHundredByTheItemsPerRow) {
    item("A1", "1");
    begin();
    allPages([this] { Mod().ItemsPerRow = 3; });
    w->Command6_Click();
    EXPECT_TRUE(has("site1.htm",
                    "<td width=33.3333333333333% height=100% align='Center' valign='Top' \r\n"));
    Mod().ItemsPerRow = 4;
    allPages();
    w->Command6_Click();
    EXPECT_TRUE(has("site1.htm", "<td width=25% height=100%"));
}

TEST_F(PageRun, ACellWithNoBoxesHoldsOnlyItsHeadAndEnd) {
    item("A1", "1");
    begin();
    allPages();
    w->Command6_Click();
    EXPECT_TRUE(has(
        "site1.htm",
        "<tr>\r\n<td width=25% height=100% align='Center' valign='Top' \r\n<p></td>\r\n</table>"));
}

TEST_F(PageRun, AnEmptyBodyTagGivesTheWhiteBody) {
    item("A1", "1");
    begin();
    allPages();
    w->Command6_Click();
    EXPECT_TRUE(has("site1.htm", "\r\n<body bgcolor='#FFFFFF'>\r\n"));
}

TEST_F(PageRun, AGifOnlyPictureWithCopiedPicturesLinksByTheLookups) {
    fs::create_directories(appDir() + "pics");
    std::ofstream(appDir() + "pics/rose.gif") << "GIF89a";
    item("A1", "1", appDir() + "pics/rose.gif");
    begin();
    placeBoxes(0, {2});
    Mod().BoxListIndex[0][2] = Variant::Integer(30);
    allPages([this] { c("chkDetail", 1).SetValue(Variant::Integer(1)); });
    w->Command6_Click();
    EXPECT_EQ(w->PictureJpeg, "rose.gif");
    EXPECT_EQ(w->PictureGif, "rose.gif");
    EXPECT_TRUE(has("site1.htm",
                    "<a href=\"images/rose.gif\"><img border=1 dynsrc=\"images/rose.gif\" "
                    "width=100'></a></p>"));
}

TEST_F(PageRun, ASiteOfOnePageGetsNoFramesButStillGoesToTheFramesetName) {
    item("A1", "1");
    begin();
    allPages([this] { w->FrameStyle = Variant::Integer(0); });
    w->Command6_Click();
    EXPECT_FALSE(fs::exists(appDir() + "Pages/FRsite.htm"));
    EXPECT_FALSE(fs::exists(appDir() + "Pages/consite.htm"));
    EXPECT_TRUE(has("site1.htm", "<tr>"));
    EXPECT_FALSE(has("site1.htm", "First Page"));
}

TEST_F(PageRun, FrameStyleFourOrATextGivesTheNavigationBar) {
    for (const char* s : {"A1", "A2"})
        item(s, "1");
    begin();
    allPages([this] {
        c("Text3", 3).SetText("1");
        w->FrameStyle = Variant("none");
    });
    w->Command6_Click();
    EXPECT_TRUE(
        has("site1.htm",
            "<a HREF=site1.htm><font color='#111111'>First Page </a> - <a href=site2.htm>"));
    EXPECT_TRUE(has("site2.htm", "<a href=site1.htm><font color='#111111'> Previous Page </a>"));
    EXPECT_FALSE(fs::exists(appDir() + "Pages/FRsite.htm"));
}

TEST_F(PageRun, GroupsWithoutNewPageGiveAContentsPageWithTheHeadingOnly) {
    for (const char* s : {"A1", "A2"})
        item(s, "1");
    begin();
    allPages([this] {
        c("Text3", 3).SetText("1");
        w->FrameStyle = Variant::Integer(1);
    });
    w->Command6_Click();
    EXPECT_TRUE(
        has("FRsite.htm",
            "<frameset frameborder=0 rows=75,100%>\r\n<frame src='consite.htm' NAME='Contents'"));
    EXPECT_TRUE(has("consite.htm",
                    "Page Numbers\r\n</center></font>\r\n<p align='center'><font face='MS Sans "
                    "Serif'><font size='3' color='#111111'>\r\n</font></font></p><br>\r\n"));
    EXPECT_EQ(ui.pane().LocationURL(), appDir() + "Pages/FRsite.htm");
    EXPECT_FALSE(has("site1.htm", "First Page"));
}

TEST_F(PageRun, ACancelledFrameStyleBoxGivesStyleZero) {
    begin();
    ui.inputAnswer = "";
    w->Command30_Click();
    EXPECT_TRUE(w->FrameStyle.IsString());
    EXPECT_EQ(CStr(w->FrameStyle), "");
    ASSERT_FALSE(ui.boxes.empty());
    EXPECT_EQ(ui.boxes.back().title, "Choose One:");
}

TEST_F(PageRun, StockNumbersThatNameNoPlainFileFailAndTheRunGoesOn) {
    for (const char* s : {"../up", "a/b", "c\\d", "C:x", " ", "Café Set", "Ok1"})
        item(s, "1");
    begin();
    placeBoxes(0, {7});
    c("Label4", 7).SetProperty("BackColor", Variant::Long(MarkerColor));
    std::vector<std::string> trace;
    setErrorTrace([&](const std::string& line) { trace.push_back(line); });
    allPages();
    w->Command6_Click();
    setErrorTrace(nullptr);
    EXPECT_TRUE(fs::exists(appDir() + "Pages/Ok1.htm"));
    EXPECT_TRUE(fs::exists(appDir() + "Pages/Café Set.htm"));
    EXPECT_FALSE(fs::exists(appDir() + "up.htm"));
    EXPECT_FALSE(fs::exists(appDir() + "Pages/a"));
    EXPECT_FALSE(fs::exists(appDir() + "Pages/ .htm"));
    int bad = 0;
    for (const auto& line : trace)
        bad += line.find("52") != std::string::npos &&
               line.find("CreateDetailPages") != std::string::npos;
    EXPECT_EQ(bad, 4 + 1);  // "../up", "a/b", "c\d", "C:x" and the blank
    for (const auto& entry : fs::recursive_directory_iterator(appDir()))
        EXPECT_EQ(entry.path().string().find("up.htm"), std::string::npos);
    EXPECT_TRUE(has("STNDRDTPLT.dat", "PicRef"));
}

TEST_F(PageRun, DetailPagesLinkBackToTheLatestRunAndPage) {
    item("A1", "1");
    item("A2", "2");
    begin();
    placeBoxes(0, {7});
    placeBoxes(1, {0});
    c("Label4", 7).SetProperty("BackColor", Variant::Long(MarkerColor));
    allPages([this] { c("Text3", 3).SetText("1"); });
    w->Command6_Click();
    EXPECT_TRUE(has("A2.htm", "<a href='site2.htm'>"));
    w->PageBase = "later";
    // The first run leaves the last group's filter on the records, so the second run
    // offers that group alone.
    allPages([this] { c("Text3", 3).SetText("1"); });
    w->Command6_Click();
    EXPECT_EQ(c("List1").ListCount(), 1);
    EXPECT_TRUE(has("A1.htm", "<a href='site1.htm'>"));
    EXPECT_EQ(file("A2.htm"),
              "<body bgcolor='#FFFFFF'>\r\n<a href='later1.htm'><p align='Center'><font "
              "face='MS Sans Serif'><font size='0' color=''>Click Here To Return</font></font></a>"
              "</p>\r\n<p align='Center'><font face='MS Sans Serif'><font size='0' "
              "color=''>A2</font></font></p>\r\n");
}

TEST_F(PageRun, AnItemOnTwoPagesLinksBackToTheLater) {
    item("A1", "1");
    begin();
    placeBoxes(0, {7});
    c("Label4", 7).SetProperty("BackColor", Variant::Long(MarkerColor));
    allPages([this] {
        c("List3").AddItem("A1");
        c("Text3", 3).SetText("1");
    });
    w->Command6_Click();
    EXPECT_TRUE(fs::exists(appDir() + "Pages/site2.htm"));
    EXPECT_TRUE(has("A1.htm", "<a href='site2.htm'>"));
}

TEST_F(PageRun, CancellingThePickEndsTheRunAtTheFirstRecord) {
    item("A1", "1");
    begin();
    steps = {[this] { w->Command19_Click(); }};
    w->Command6_Click();
    EXPECT_FALSE(w->GroupByPageNo);
    EXPECT_FALSE(c("List1").Visible());
    EXPECT_FALSE(fs::exists(appDir() + "Pages/site1.htm"));
}

}  // namespace
