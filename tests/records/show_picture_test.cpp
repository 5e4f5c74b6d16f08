#include <gtest/gtest.h>

#include <vector>

#include "program_fixture.h"
#include "records/pane.h"
#include "shell/module.h"

namespace {

const std::string Table =
    "<table border=2 cellpadding=4 cellspacing=4 style=border-style:solid; border-width:4; "
    "border-collapse: collapse; padding-left:4; padding-right:4; padding-top:4; padding-bottom:4 "
    "bordercolor=black bgcolor=#7C7C7C height=100% width=";

using Lines = std::vector<std::string>;

struct ItemView : ProgramTest {
    Products* f = nullptr;
    std::string pic(const std::string& name) { return appDir() + "Pictures/" + name; }
    // One product with the usual fields and the given picture, description, page and cost.
    Products& startWith(const std::string& stockNo, const std::string& picture,
                        const std::string& desc = "Birch hearts.", const std::string& pageNo = "7",
                        const std::string& cost1 = "3.25") {
        addProduct(stockNo, picture, "ProdName, ProdDesc, PageNo, Packaging, Cost1",
                   "'Wooden Hearts', '" + desc + "', '" + pageNo + "', 'Pk/12', " + cost1);
        f = &start();
        return *f;
    }
    void editMode() { f->cmdShowPic_Click(); }
    Lines head(const std::string& size) {
        return {"<body>", "<body bgcolor=silver>", "<div align=\"Center\">",
                Table + size + "% Id = Table1>"};
    }
    static Lines join(std::initializer_list<Lines> parts) {
        Lines all;
        for (const auto& p : parts)
            all.insert(all.end(), p.begin(), p.end());
        return all;
    }
    Lines header(const std::string& stockNo, const std::string& pageLine) {
        return {"<tr>",
                "<td width=100% align=center height=10% bgcolor=#EEEEEE>",
                "<p align=center><font size=4 font color=blue>" + stockNo + "</font>",
                pageLine,
                "</tr>",
                "<tr>",
                "<td width=100% align=center height=10% bgcolor=white>",
                "<p align=center>Wooden Hearts</td>",
                "</tr>"};
    }
    Lines footer(const std::string& desc, const std::string& costLine) {
        Lines l{"<tr>",
                "<td width=100% align=center height=10% bgcolor=white>",
                "<p align=left>" + desc + "</td>",
                "</tr>",
                "<tr>",
                "<td width=100% align=center height=10% bgcolor=#EEEEEE>"};
        if (!costLine.empty()) l.push_back(costLine);
        l.push_back("</tr>");
        return l;
    }
    Lines tail() { return {"</table>", "</body>"}; }
};

TEST_F(ItemView, APicturePageInViewModeLineForLine) {
    const std::string p = pic("CR205.jpg");
    startWith("CR205", p);
    EXPECT_EQ(pageLines(),
              join({head("100"),
                    header("CR205", "<br><font size=2>Page # 7</font></td>"),
                    {"<tr>", "<td width=100% align=center height=60% bgcolor=#D4D4D4>",
                     "<a href=\"" + p + "\">",
                     "<img border=0 dynsrc=\"" + p + "\" src=\"" + p +
                         "\" height=260 align=center alt=\"CR205\"></a></td>",
                     "</tr>"},
                    footer("Birch hearts.",
                           "<p align=center>Your Cost: $3.25<br><font size=1> PKG: Pk/12</td>"),
                    tail()}));
    EXPECT_EQ(ui.pane().LocationURL(), appDir() + "page.htm");
    EXPECT_FALSE(f->mbAddNewFlag);
}

TEST_F(ItemView, APicturePageInEditModeLineForLine) {
    const std::string p = pic("CR205.jpg");
    startWith("CR205", p);
    editMode();
    EXPECT_EQ(
        pageLines(),
        join({head("85"),
              {"<tr>", "<td width=100% align=center height=100% bgcolor=#D4D4D4>",
               "<a href=\"" + p + "\">",
               "<img border=0 dynsrc=\"" + p + "\" height=100 align=center alt=\"CR205\"></a></td>",
               "</tr>"},
              tail()}));
}

TEST_F(ItemView, ANoPicturePageInViewModeLineForLine) {
    startWith("ZZ9", pic("missing.jpg"));
    const std::string noPic = appDir() + "Pictures/NoPic.jpg";
    EXPECT_EQ(pageLines(),
              join({head("100"),
                    header("ZZ9", "<br><font size=2>Page #7</font></td>"),
                    {"<tr>", "<td width=100% align=center height=60% bgcolor=#D4D4D4>",
                     "<img border=0 href=\"" + noPic + "\" src=\"" + noPic +
                         "\" height=100% align=center alt=\"ZZ9\"></a></td>",
                     "</tr>"},
                    footer("Birch hearts.",
                           "<p align=center>Your Cost: $3.25<br><font size=1> PKG: Pk/12</td>"),
                    tail()}));
}

TEST_F(ItemView, ANoPicturePageInEditModeHasABlankBeforeThePercentSign) {
    startWith("ZZ9", "");
    editMode();
    const std::string noPic = appDir() + "Pictures/NoPic.jpg";
    EXPECT_EQ(pageLines(), join({head("85"),
                                 {"<tr>", "<td width=85% align=center height=60% bgcolor=#D4D4D4>",
                                  "<img border=0 href=\"" + noPic + "\" src=\"" + noPic +
                                      "\" height=85 % align=center alt=\"ZZ9\"></a></td>",
                                  "</tr>"},
                                 tail()}));
}

TEST_F(ItemView, APictureOfNullGivesTheNoPicturePage) {
    startWith("ZZ9", "");
    EXPECT_NE(page().find("Pictures/NoPic.jpg"), std::string::npos);
    EXPECT_EQ(page().find("dynsrc"), std::string::npos);
}

TEST_F(ItemView, AMediaItemPageInViewModeLineForLine) {
    const std::string media = appDir() + "Media/price-list.txt";
    startWith("TX1", appDir() + "textpic.jpg", media);
    const std::string image = appDir() + "textpic.jpg";
    EXPECT_EQ(
        pageLines(),
        join({head("100"),
              header("TX1", "<br><font size=2>Page # 7</font></td>"),
              {"<tr>", "<td width=100% align=center height=60% bgcolor=#D4D4D4>",
               "<a href=\"" + media + "\">", "<p align=center>Text File - Click To View It Now</p>",
               "<img border=0 src=\"" + image + "\" src=\"" + media +
                   "\" height=100 align=center alt=\"TX1\"></a></td>",
               "</tr>"},
              footer(media, "<p align=center>Your Cost: $3.25<br><font size=1> PKG: Pk/12</td>"),
              tail()}));
}

TEST_F(ItemView, AMediaItemInEditModeShowsNoCaption) {
    const std::string media = appDir() + "Media/jingle.mp3";
    startWith("MU1", appDir() + "music.jpg", media);
    editMode();
    EXPECT_EQ(pageLines(),
              join({head("85"),
                    {"<tr>", "<td width=100% align=center height=100% bgcolor=#D4D4D4>",
                     "<a href=\"" + media + "\">",
                     "<img border=0 src=\"" + appDir() +
                         "music.jpg\" height=100 align=center alt=\"MU1\"></a></td>",
                     "</tr>"},
                    tail()}));
}

struct MediaKind {
    const char* file;
    const char* viewText;
    const char* editText;
    const char* image;
};

class MediaKinds : public ItemView, public ::testing::WithParamInterface<MediaKind> {};

TEST_P(MediaKinds, TheKindIsReadFromTheDescriptionInAnyCase) {
    const MediaKind& k = GetParam();
    startWith("MK1", appDir() + "textpic.jpg", appDir() + "Media/" + k.file);
    EXPECT_NE(page().find("<p align=center>" + std::string(k.viewText) + "</p>"),
              std::string::npos);
    EXPECT_NE(page().find("<img border=0 src=\"" + appDir() + k.image + "\""), std::string::npos);
    editMode();
    EXPECT_EQ(page().find(k.editText + std::string("</p>")), std::string::npos);
    EXPECT_NE(page().find("<img border=0 src=\"" + appDir() + k.image + "\" height=100"),
              std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    ItemView, MediaKinds,
    ::testing::Values(
        MediaKind{"notes.Txt", "Text File - Click To View It Now", "Text File", "textpic.jpg"},
        MediaKind{"order-form.doc", "Document File - Click To View It Now", "Document File",
                  "textpic.jpg"},
        MediaKind{"welcome.htm", "Web Page - Click To View It Now", "Web Page", "webpage.jpg"},
        MediaKind{"jingle.MP3", "Music File - Click To Play It Now", "Music File", "music.jpg"},
        MediaKind{"tool.exe", "Program File - Click To Run It Now", "Program", "exepic.jpg"}));

TEST_F(ItemView, AProgramItemWithASiblingIconShowsTheIcon) {
    const std::string program = appDir() + "Media/catalog-tool.exe";
    startWith("EX1", appDir() + "exepic.jpg", program);
    EXPECT_NE(page().find("<img border=0 src=\"" + appDir() + "Media/catalog-tool.ico\""),
              std::string::npos);
    EXPECT_NE(page().find("Program File - Click To Run It Now"), std::string::npos);
}

TEST_F(ItemView, AGifWithAJpgTwinLinksTheJpgWhileTheImageNamesTheGif) {
    const std::string gif = pic("CR300.gif");
    startWith("CR300", gif);
    EXPECT_NE(page().find("<a href=\"" + pic("CR300.jpg") + "\">\r\n<img border=0 dynsrc=\"" + gif +
                          "\" src=\"" + gif + "\""),
              std::string::npos);
}

TEST_F(ItemView, APictureNamedWithALeadingXThatExistsWithoutItIsRepairedInTheRecord) {
    startWith("X4410", pic("X4410.jpg"));
    EXPECT_EQ(f->adoPrimaryRS->Fields("Picture").Value(), Variant(pic("4410.jpg")));
    EXPECT_NE(page().find("src=\"" + pic("4410.jpg") + "\""), std::string::npos);
    // The next move saves the repaired field.
    f->cmdNext_Click();
    EXPECT_EQ(cat.query("select Picture from Products where StockNo = 'X4410'"), pic("4410.jpg"));
}

TEST_F(ItemView, AStockNumberHoldingS0CutsThePictureNameBeforeItsExtension) {
    startWith("GS0115", pic("GS0115.jpg"));
    EXPECT_EQ(f->adoPrimaryRS->Fields("Picture").Value(), Variant(pic("G.jpg")));
    EXPECT_NE(page().find("NoPic.jpg"), std::string::npos);
}

TEST_F(ItemView, AStockNumberWithADashDropsTheDashAndThreeCharactersFromThePicture) {
    startWith("CM44-RED", pic("CM44-RED.jpg"));
    EXPECT_EQ(f->adoPrimaryRS->Fields("Picture").Value(), Variant(pic("CM44.jpg")));
    EXPECT_NE(page().find("dynsrc=\"" + pic("CM44.jpg") + "\""), std::string::npos);
}

TEST_F(ItemView, TheDashRepairCutsInTheFileNameNeverInAFolderName) {
    startWith("AB-1002", appDir() + "my-shop/pics/AB-1002.jpg");
    EXPECT_EQ(f->adoPrimaryRS->Fields("Picture").Value(),
              Variant(appDir() + "my-shop/pics/AB2.jpg"));
}

TEST_F(ItemView, ADashInAFolderNameAloneRepairsNothing) {
    startWith("AB-1", appDir() + "my-shop/AB1.jpg");
    EXPECT_EQ(f->adoPrimaryRS->Fields("Picture").Value(), Variant(appDir() + "my-shop/AB1.jpg"));
    EXPECT_EQ(f->adoPrimaryRS->EditMode(), ado::adEditNone);
}

TEST_F(ItemView, TheS0AndLeadingXRepairsKeepTheFolder) {
    startWith("GS0115", appDir() + "S0-pics/GS0115.jpg");
    EXPECT_EQ(f->adoPrimaryRS->Fields("Picture").Value(), Variant(appDir() + "S0-pics/G.jpg"));
}

TEST_F(ItemView, TheLeadingXRepairLooksForTheStockNumberInTheFileName) {
    startWith("X44", appDir() + "X44/X44.jpg");
    EXPECT_EQ(f->adoPrimaryRS->Fields("Picture").Value(), Variant(appDir() + "X44/44.jpg"));
}

TEST_F(ItemView, AnExistingPictureIsNotRepaired) {
    startWith("X-99", pic("CR205.jpg"));
    EXPECT_EQ(f->adoPrimaryRS->Fields("Picture").Value(), Variant(pic("CR205.jpg")));
}

TEST_F(ItemView, AnEmptyPageNumberInViewModeLeavesTheHeaderCellOpen) {
    startWith("CR205", pic("CR205.jpg"), "Birch hearts.", "");
    Lines lines = pageLines();
    ASSERT_GT(lines.size(), 8u);
    EXPECT_EQ(lines[6], "<p align=center><font size=4 font color=blue>CR205</font>");
    EXPECT_EQ(lines[7], "</tr>");
}

TEST_F(ItemView, ACostOfZeroGivesAnEmptyCostCell) {
    startWith("CR205", pic("CR205.jpg"), "Birch hearts.", "7", "0");
    Lines lines = pageLines();
    ASSERT_GE(lines.size(), 5u);
    const Lines end(lines.end() - 5, lines.end());
    EXPECT_EQ(end, (Lines{"<tr>", "<td width=100% align=center height=10% bgcolor=#EEEEEE>",
                          "</tr>", "</table>", "</body>"}));
}

TEST_F(ItemView, WithNoPictureACostOfZeroIsStillPrinted) {
    startWith("ZZ9", "", "Birch hearts.", "7", "0");
    EXPECT_NE(page().find("<p align=center>Your Cost: $.00<br><font size=1> PKG: Pk/12</td>"),
              std::string::npos);
}

TEST_F(ItemView, InThumbnailsModeThePageLinksBackToTheThumbnails) {
    startWith("CR205", pic("CR205.jpg"));
    Mod().ThumbsMode = true;
    f->ShowPicture();
    EXPECT_NE(
        page().find("<td width=100% align=center height=60% bgcolor=#D4D4D4>\r\n"
                    "<center><a href=backtothumbs>Click To Return To Thumbnails</a></center>\r\n"),
        std::string::npos);
}

TEST_F(ItemView, WhileHelpShowsThePaneGoesToTheHelpStartPage) {
    startWith("CR205", pic("CR205.jpg"));
    Mod().HelpShowing = Variant(true);
    f->ShowPicture();
    EXPECT_EQ(ui.pane().LocationURL(), appDir() + "Help/index.htm");
}

}  // namespace
