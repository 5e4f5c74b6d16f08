// The contact sheet `tmpthumb.htm`: the Thumbnails button's sheet of the current records
// and the sections of the item selection.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/convert.h"
#include "program_fixture.h"
#include "shell/module.h"
#include "webcat/web_catalogue.h"

namespace {

struct Thumbnails : ProgramTest {
    Products* f = nullptr;
    WebCatalogue* w = nullptr;
    void item(const std::string& stockNo, const std::string& pageNo, const std::string& picture) {
        addProduct(stockNo, picture, "PageNo", "'" + pageNo + "'");
    }
    void begin() {
        f = &start();
        w = f->webcat.get();
    }
    Control& c(const std::string& name, int index = -1) { return (*f)(name, index); }
    std::string sheet() {
        std::ifstream in(appDir() + "tmpthumb.htm", std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    static int count(const std::string& text, const std::string& part) {
        int n = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
            ++n;
        return n;
    }
    // The selection's sections, as the page run makes them for a group.
    void section(int run) {
        Mod().SelectItemsMode = Variant(true);
        w->ThumbsRun = Variant::Integer(run);
        w->MakeThumbs();
    }
};

const std::string head =
    "<html>\r\n<head>\r\n<title>Thumnbails</title>\r\n</head>\r\n<body>\r\n"
    "<body bgcolor=\"silver\">\r\n"
    "<p align=\"center\"><font face=\"MS Sans Serif\"><p align=\"left\">\r\n"
    "<table border=1 cellpadding=2 cellspacing=2 style=border-style:solid; border-width:1; "
    "border-collapse: collapse; padding-left:4; padding-right:4; padding-top:4; "
    "padding-bottom:4 bordercolor=black bgcolor=white width=100% id=Table1>\r\n<tr>\r\n";
const std::string tail = "</td>\r\n</tr>\r\n</table>\r\n</td>\r\n</body>\r\n</html>\r\n";

TEST_F(Thumbnails, AnEmptyFilterGivesATableWithOneEmptyRow) {
    begin();
    c("Command4").Raise("Click");
    EXPECT_EQ(sheet(), head + tail);
    EXPECT_EQ(c("Command4").Caption(), "Thumbnails");
    EXPECT_EQ(c("lblStatus").Caption(), "Thumbnails Completed");
    EXPECT_EQ(ui.pane().LocationURL(), appDir() + "tmpthumb.htm");
}

TEST_F(Thumbnails, OneItemLineForLine) {
    item("CM44", "1", "/shop/CM44.jpg");
    begin();
    c("Text1").SetText("80");
    c("Command4").Raise("Click");
    EXPECT_EQ(sheet(),
              head +
                  "<td width=\"20%\" align=\"center\" halign=\"center\" valign=\"top\" "
                  "bgcolor=silver>\r\n"
                  "<form method=POST action><p align=\"center\">\r\n"
                  "<input type=checkbox name=CH_1 value=\"ON\" "
                  "onClick=window.navigate('Guy_1')>CM44</p>\r\n"
                  "</form></font>\r\n<a href=\"/shop/CM44.jpg\">\r\n"
                  "<img border=\"2\" src=\"/shop/CM44.jpg\" width=\"80\" align=\"top\"></a>\r\n"
                  "<p></td>\r\n" +
                  tail);
    EXPECT_TRUE(Mod().ThumbsMode);  // a click on a picture now finds its item
}

TEST_F(Thumbnails, AGifInTheMiddleOfThePathCutsThere) {
    item("B1", "1", "/shop/my.gifts/bowl.gif");
    item("B2", "1", "/shop/vase.gif");
    begin();
    c("Command4").Raise("Click");
    EXPECT_NE(sheet().find("<a href=\"/shop/my.jpg\">"), std::string::npos);
    EXPECT_NE(sheet().find("<a href=\"/shop/vase.jpg\">"), std::string::npos);
    EXPECT_NE(sheet().find("src=\"/shop/my.gifts/bowl.gif\""), std::string::npos);
}

TEST_F(Thumbnails, FiveToARowAndNoNewRowAfterTheLast) {
    for (int i = 1; i <= 10; ++i)
        item("S" + std::to_string(i), "1", "/p/" + std::to_string(i) + ".jpg");
    begin();
    c("Command4").Raise("Click");
    EXPECT_EQ(count(sheet(), "</tr>\r\n<tr>\r\n"), 1);
    EXPECT_EQ(count(sheet(), "<td width"), 10);
}

TEST_F(Thumbnails, CancelStopsTheSheetAtTheNextPicture) {
    for (int i = 1; i <= 4; ++i)
        item("S" + std::to_string(i), "1", "/p/" + std::to_string(i) + ".jpg");
    begin();
    ui.onLetEventsRun = [&] {
        if (c("Command4").Caption() == "Cancel") c("Command4").Raise("Click");
    };
    c("Command4").Raise("Click");
    EXPECT_EQ(count(sheet(), "<td width"), 1);
    EXPECT_TRUE(sheet().size() > tail.size() &&
                sheet().substr(sheet().size() - tail.size()) == tail);
    EXPECT_EQ(c("Command4").Caption(), "Thumbnails");
}

TEST_F(Thumbnails, EachGroupOfTheSelectionAddsABodyAndATable) {
    item("A1", "1", "/p/a1.jpg");
    item("A2", "1", "/p/a2.jpg");
    begin();
    w->GroupByPageNo = true;
    Mod().ItemSerial = Variant::Integer(-1);
    Mod().SelectDefault = false;
    section(0);
    section(1);
    const std::string text = sheet();
    EXPECT_EQ(text.find("<html>"), std::string::npos);
    EXPECT_EQ(text.rfind("<body><HR><font size=5><center><br>Page Number: 1<font size=3> - "
                         "Total Items: 2</center></font>\r\n<body bgcolor=\"silver\">",
                         0),
              0u);
    EXPECT_EQ(count(text, "<body><HR>"), 2);
    EXPECT_EQ(count(text, "<table border=1"), 2);
    EXPECT_EQ(count(text, "</html>"), 2);
    // The check boxes count on through the sections and none starts checked.
    EXPECT_NE(text.find("onClick=window.navigate('Guy_3')>A2</p>"), std::string::npos);
    EXPECT_EQ(text.find(" checked>"), std::string::npos);
    EXPECT_EQ(c("List2").ListCount(), 4);
    EXPECT_FALSE(c("List2").Selected(3));
}

TEST_F(Thumbnails, TheFirstSectionReplacesAnOldSheetAndSelectedRowsAreChecked) {
    item("A1", "1", "/p/a1.jpg");
    begin();
    std::ofstream(appDir() + "tmpthumb.htm") << "old sheet\r\n";
    w->GroupByCurrent = true;
    Mod().ItemSerial = Variant::Integer(-1);
    Mod().SelectDefault = true;
    section(0);
    const std::string text = sheet();
    EXPECT_EQ(text.find("old sheet"), std::string::npos);
    EXPECT_EQ(text.rfind("<body><HR><font size=5><center><br><font size=3>Total Current Items: "
                         "1</center></font>",
                         0),
              0u);
    EXPECT_NE(text.find("navigate('Guy_0') checked>A1</p>"), std::string::npos);
}

TEST_F(Thumbnails, APriceGroupIsHeadedByItsPrice) {
    addProduct("P1", "/p/p1.jpg", "Retail", "1234.5");
    begin();
    w->GroupByPrice = true;
    w->PriceField = "Retail";
    Mod().ItemSerial = Variant::Integer(-1);
    section(0);
    EXPECT_EQ(sheet().rfind("<body><HR><font size=5><center><br>Page By Retail:  $1,234.50<font "
                            "size=3> - Total Items: 1</center></font>",
                            0),
              0u);
}

}  // namespace
