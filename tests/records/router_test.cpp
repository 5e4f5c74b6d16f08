// The pane's router: the link words of the program's own pages, the picture enlargement, the
// thumbnail links, the close question before a program runs and the retry of a failure.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "forms/headless_pane.h"
#include "program_fixture.h"
#include "records/pane.h"
#include "shell/module.h"

namespace {

const char* const CloseQuestion =
    "Do You Want To Close Tandrel Catalog Before Running This Program?";

struct Router : ProgramTest {
    Products* f = nullptr;

    // Two products with pictures, CM44 and CR205, and ZZ9 without one.
    Products& startWithItems() {
        addProduct("CM44", appDir() + "Pictures/CM44.jpg", "ProdName, Cost1", "'Candle Mould', 2");
        addProduct("CR205", appDir() + "Pictures/CR205.jpg", "ProdName", "'Crayons'");
        addProduct("ZZ9", "", "ProdName", "'No Picture'");
        f = &start();
        return *f;
    }
    HeadlessPane& pane() { return ui.pane(); }
    // The user follows a link written as `word` in the page.
    void link(const std::string& word) { pane().UserNavigate(HeadlessPane::resolveLink(word)); }
    void navigate(const std::string& url) { pane().UserNavigate(url); }
    std::string location() { return pane().LocationURL(); }
    std::string stockNo() { return (*f)("txtFields", 27).Text(); }
    void writeFile(const std::string& name, const std::string& text) {
        std::ofstream(appDir() + name, std::ios::binary) << text;
    }
};

// --- Words caught anywhere, in any case -----------------------------------------------

TEST_F(Router, AWebAddressHoldingDbDashIsSwallowedAsACommand) {
    Products& p = startWithItems();
    navigate("http://www.example.com/shop/DB-12");
    EXPECT_EQ(location(), appDir() + "page.htm");
    EXPECT_EQ(p.LastBox, 12);
    EXPECT_TRUE(p.ContinueFlag);
}

TEST_F(Router, AWebAddressHoldingGfDashIsSwallowedAsACommand) {
    Products& p = startWithItems();
    navigate("http://www.example.com/gf-7");
    EXPECT_EQ(location(), appDir() + "page.htm");
    EXPECT_EQ(p.LinkNumber, 7);
    EXPECT_TRUE(p.ContinueFlag);
}

TEST_F(Router, AWebAddressWithNoNumberBehindDbDashIsSwallowedAndKeepsTheNumber) {
    Products& p = startWithItems();
    p.LastBox = 4;
    navigate("http://www.example.com/DB-items/list.html");
    EXPECT_EQ(location(), appDir() + "page.htm");
    EXPECT_EQ(p.LastBox, 4);
    EXPECT_TRUE(p.ContinueFlag);
}

TEST_F(Router, AGfLinkOnABlankPageStoresItsNumber) {
    Products& p = startWithItems();
    link("GF-3");
    EXPECT_EQ(p.LinkNumber, 3);
    EXPECT_TRUE(p.ContinueFlag);
}

TEST_F(Router, AnOrdinaryWebAddressGoesOn) {
    Products& p = startWithItems();
    navigate("http://www.example.com/catalog.html");
    EXPECT_EQ(location(), "http://www.example.com/catalog.html");
    EXPECT_FALSE(p.ContinueFlag);
}

TEST_F(Router, ContinueWakesTheWaitingTask) {
    Products& p = startWithItems();
    link("CONTINUE");
    EXPECT_TRUE(p.ContinueFlag);
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Router, DeleteAndCancelAnswerTheBulkDelete) {
    startWithItems();
    link("Delete");
    EXPECT_EQ(Mod().DeleteChoice, Variant::Integer(1));
    link("CANCEL");
    EXPECT_EQ(Mod().DeleteChoice, Variant::Integer(2));
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Router, FolderArrivesAsAboutBlankFolderAndIsMatchedInAnyCase) {
    startWithItems();
    // Adding a folder asks for one, is refused, and waits on its totals page.
    int runs = 0;
    ui.onWait = [&] {
        ++runs;
        link("CONTINUE");
    };
    link("Folder");
    EXPECT_EQ(location(), appDir() + "page.htm");
    link("fOLDER");
    EXPECT_EQ(location(), appDir() + "page.htm");
    // A word the router does not know is a real navigation.
    link("Folders");
    EXPECT_EQ(location(), appDir() + "page.htm");
    EXPECT_EQ(runs, 3);
    link("Foldr");
    EXPECT_EQ(location(), "about:blankFoldr");
}

TEST_F(Router, TextEditSetsEditPlacements) {
    Products& p = startWithItems();
    // The import asks for a file, is refused one, and waits on its totals page.
    ui.onWait = [&] { link("CONTINUE"); };
    link("TextEdit");
    EXPECT_TRUE(p.EditPlacements);
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Router, TextFilesClearsEditPlacementsAndKeepsTheImportKind) {
    Products& p = startWithItems();
    p.EditPlacements = true;
    p.ImportKind = 0;
    ui.onWait = [&] { link("CONTINUE"); };
    link("textfiles");
    EXPECT_FALSE(p.EditPlacements);
    EXPECT_EQ(p.ImportKind, 0);
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Router, DbFilesSetsTheDatabaseImportKind) {
    Products& p = startWithItems();
    p.EditPlacements = true;
    int kindWhileWaiting = 0;
    // The import asks for a database, is refused one, and waits on its totals page.
    ui.onWait = [&] {
        kindWhileWaiting = p.ImportKind;
        link("CONTINUE");
    };
    link("DBFiles");
    EXPECT_FALSE(p.EditPlacements);
    EXPECT_EQ(kindWhileWaiting, 7);
    // The run's ending sets the kind back, so that a text import after it is one.
    EXPECT_EQ(p.ImportKind, 0);
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Router, ChangePicPathIsCaught) {
    Products& p = startWithItems();
    // The change asks where from, is refused a folder, and waits on "Click Here To Continue".
    int waits = 0;
    ui.onWait = [&] {
        ++waits;
        link("CONTINUE");
    };
    link("ChangePicPath");
    EXPECT_EQ(waits, 1);
    EXPECT_EQ(location(), appDir() + "page.htm");
    EXPECT_FALSE(p.ContinueFlag);
}

TEST_F(Router, NothingIsCaughtWhileStartingUp) {
    Products& p = startWithItems();
    Mod().StartingUp = true;
    link("CONTINUE");
    EXPECT_FALSE(p.ContinueFlag);
    EXPECT_EQ(location(), "about:blankCONTINUE");
}

TEST_F(Router, TextAndMusicFilesGoOnEvenWithACommandWord) {
    Products& p = startWithItems();
    navigate(appDir() + "Media/price-list.txt");
    EXPECT_EQ(location(), appDir() + "Media/price-list.txt");
    link("CONTINUE.mp3");
    EXPECT_EQ(location(), "about:blankCONTINUE.mp3");
    EXPECT_FALSE(p.ContinueFlag);
}

TEST_F(Router, TheBareSchemeGoesOn) {
    startWithItems();
    navigate("http:///");
    EXPECT_EQ(location(), "http:///");
}

// --- The item's picture enlarged ------------------------------------------------------

TEST_F(Router, ClickingTheItemsPictureEnlargesIt) {
    startWithItems();
    const std::string picture = appDir() + "Pictures/CM44.jpg";
    navigate(picture);
    EXPECT_EQ(pane().DocumentText(),
              "<p align=center><font size=4 font color=blue>Item: CM44</a></p>"
              "<p align=center><font size=4 font color=blue><a href='PICBACK'>Click Here To "
              "Return To Main Screen</a></p>"
              "<p align=center><img src=\"" +
                  picture + "\"></p>");
}

TEST_F(Router, TheReturnLinkGoesBackToTheItemPage) {
    startWithItems();
    const std::string itemPage = page();
    navigate(appDir() + "Pictures/CM44.jpg");
    link("PICBACK");
    EXPECT_EQ(location(), appDir() + "page.htm");
    EXPECT_EQ(pane().DocumentText(), itemPage);
}

TEST_F(Router, ThePictureMatchesWhateverItsLastFourCharacters) {
    startWithItems();
    const std::string other = appDir() + "Pictures/CM44.gif";
    navigate(other);
    EXPECT_NE(pane().DocumentText().find("<img src=\"" + other + "\">"), std::string::npos);
}

TEST_F(Router, ThePictureMatchesWhateverItsLastFourCharactersWhenTheyAreNotPlainLetters) {
    startWithItems();
    // Four characters, six bytes: the cut counts characters.
    const std::string other = appDir() + "Pictures/CM44\u00B7jp\u00E9";
    navigate(other);
    EXPECT_NE(pane().DocumentText().find("<img src=\"" + other + "\">"), std::string::npos);
}

TEST_F(Router, AnotherItemsPictureIsNoEnlargement) {
    startWithItems();
    navigate(appDir() + "Pictures/CR205.jpg");
    EXPECT_EQ(location(), appDir() + "Pictures/CR205.jpg");
    EXPECT_EQ(pane().DocumentText().find("Return To Main Screen"), std::string::npos);
}

TEST_F(Router, ClickingThePictureInEditModeTurnsToViewModeFirst) {
    Products& p = startWithItems();
    p.cmdShowPic_Click();
    ASSERT_EQ(p("cmdShowPic").Caption(), "View Mode");
    navigate(appDir() + "Pictures/CM44.jpg");
    EXPECT_EQ(p("cmdShowPic").Caption(), "Edit Mode");
    EXPECT_FALSE(p("Frame5").Visible());
    EXPECT_NE(page().find("width=100% Id = Table1>"), std::string::npos);
    EXPECT_NE(pane().DocumentText().find("Item: CM44"), std::string::npos);
    link("PICBACK");
    EXPECT_EQ(location(), appDir() + "page.htm");
    EXPECT_NE(pane().DocumentText().find("width=100% Id = Table1>"), std::string::npos);
}

// --- Thumbnails ---------------------------------------------------------------------

TEST_F(Router, BackToThumbsReturnsToTheThumbnailsPage) {
    startWithItems();
    writeFile("tmpthumb.htm", "<html>thumbs</html>");
    link("backtothumbs");
    EXPECT_EQ(location(), appDir() + "tmpthumb.htm");
    EXPECT_EQ(pane().DocumentText(), "<html>thumbs</html>");
}

TEST_F(Router, InThumbsModeAPictureThatCompletesFindsItsItem) {
    Products& p = startWithItems();
    p.cmdNext_Click();
    p.cmdNext_Click();
    ASSERT_EQ(stockNo(), "ZZ9");
    Mod().ThumbsMode = true;
    navigate(appDir() + "Pictures/CR205.jpg");
    EXPECT_EQ(stockNo(), "CR205");
}

TEST_F(Router, OutOfThumbsModeAPictureThatCompletesMovesNothing) {
    Products& p = startWithItems();
    p.cmdNext_Click();
    p.cmdNext_Click();
    navigate(appDir() + "Pictures/CR205.jpg");
    EXPECT_EQ(stockNo(), "ZZ9");
    EXPECT_EQ(Mod().LastUrl, appDir() + "Pictures/CR205.jpg");
}

TEST_F(Router, AGuyLinkMakesItsRowCurrentAndFlipsItsSelection) {
    Products& p = startWithItems();
    Control& list2 = p("List2");
    for (const char* s : {"CM44", "CR205", "ZZ9"})
        list2.AddItem(s);
    list2.SetSelected(2, true);
    link("Guy_1");
    EXPECT_EQ(list2.ListIndex(), 1);
    EXPECT_TRUE(list2.Selected(1));
    link("GUY_2");
    EXPECT_EQ(list2.ListIndex(), 2);
    EXPECT_FALSE(list2.Selected(2));
    link("guy_1");
    EXPECT_FALSE(list2.Selected(1));
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Router, AGuyLinkPastTheListChangesNothing) {
    Products& p = startWithItems();
    Control& list2 = p("List2");
    list2.AddItem("CM44");
    link("Guy_5");
    EXPECT_EQ(list2.ListIndex(), -1);
    EXPECT_FALSE(list2.Selected(0));
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Router, AnUnderscoreNumberLinkSwitchesTheMarkAndTheRow) {
    Products& p = startWithItems();
    Control& list2 = p("List2");
    for (const char* s : {"CM44", "CR205", "ZZ9"})
        list2.AddItem(s);
    list2.SetSelected(2, true);
    ASSERT_EQ(Mod().Marks.size(), 3u);
    link("CH_2");
    EXPECT_EQ(Mod().MarkRow, 1);
    EXPECT_EQ(Mod().Marks[1], 1);
    EXPECT_FALSE(list2.Selected(2));
    link("CH_2");
    EXPECT_EQ(Mod().Marks[1], 0);
    EXPECT_TRUE(list2.Selected(2));
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Router, AnUnderscoreZeroLinkMarksTheFirstEntry) {
    startWithItems();
    link("CH_0");
    EXPECT_EQ(Mod().MarkRow, 0);
    EXPECT_EQ(Mod().Marks[0], 1);
}

TEST_F(Router, AnUnderscoreWithADotIsARealNavigation) {
    startWithItems();
    navigate("http://www.example.com/new_5");
    EXPECT_EQ(location(), "http://www.example.com/new_5");
    EXPECT_EQ(Mod().Marks[0] + Mod().Marks[1] + Mod().Marks[2], 0);
}

// --- Programs: the close question -----------------------------------------------------

TEST_F(Router, AProgramLinkAsksWhetherToCloseFirst) {
    Products& p = startWithItems();
    ui.msgBoxAnswer = vb::vbNo;
    navigate(appDir() + "Media/catalog-tool.exe");
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].prompt, CloseQuestion);
    EXPECT_EQ(ui.boxes[0].title, "Close Tandrel?");
    EXPECT_EQ(ui.boxes[0].buttons & 7, vb::vbYesNo);
    EXPECT_EQ(p.ExitAfterRun, Variant(false));
    EXPECT_FALSE(rt->Ended());
}

TEST_F(Router, YesToTheCloseQuestionEndsTheProgramAtTheNextPaneEvent) {
    Products& p = startWithItems();
    ui.msgBoxAnswer = vb::vbYes;
    EXPECT_THROW(navigate(appDir() + "Media/catalog-tool.exe"), ProgramEnded);
    EXPECT_EQ(p.ExitAfterRun, Variant(true));
    EXPECT_TRUE(rt->Ended());
}

TEST_F(Router, YesSavesNothingBeyondTheRecords) {
    startWithItems();
    ui.msgBoxAnswer = vb::vbYes;
    EXPECT_THROW(navigate(appDir() + "Media/catalog-tool.exe"), ProgramEnded);
    EXPECT_EQ(saved("Settings", "DBName"), "<none>");
    EXPECT_EQ(saved("Settings", "MainLeft"), "<none>");
}

TEST_F(Router, AfterNoALaterYesStillEnds) {
    startWithItems();
    ui.msgBoxAnswer = vb::vbNo;
    navigate(appDir() + "Media/catalog-tool.exe");
    navigate(appDir() + "page.htm");
    EXPECT_FALSE(rt->Ended());
    ui.msgBoxAnswer = vb::vbYes;
    EXPECT_THROW(navigate(appDir() + "Media/CATALOG-TOOL.EXE"), ProgramEnded);
}

// --- Failed navigations -------------------------------------------------------------

TEST_F(Router, AFailedNavigationRepeatsTheLastAddress) {
    startWithItems();
    navigate(appDir() + "Help/intro2.htm");
    navigate(appDir() + "missing.htm");
    EXPECT_EQ(location(), appDir() + "Help/intro2.htm");
    EXPECT_EQ(Mod().LastUrl, appDir() + "Help/intro2.htm");
}

TEST_F(Router, NoLastAddressIsKeptWhileStartingUp) {
    startWithItems();
    // The first item reached the pane while the form was loading.
    EXPECT_EQ(Mod().LastUrl, "");
    Mod().StartingUp = true;
    navigate(appDir() + "Help/intro2.htm");
    EXPECT_EQ(Mod().LastUrl, "");
}

TEST_F(Router, ARetryThatFailsTooIsRepeatedAtItsOwnFailure) {
    Products& p = startWithItems();
    // Count the program's navigations to the last address.
    std::vector<std::string> seen;
    auto router = pane().BeforeNavigate2;
    pane().BeforeNavigate2 = [&](const std::string& url, bool& cancel) {
        seen.push_back(url);
        router(url, cancel);
    };
    Mod().LastUrl = appDir() + "gone.htm";
    // Each failure that the pane reports, the retry's own among them, is retried.
    p.Wb1_NavigateError(appDir() + "missing.htm");
    p.Wb1_NavigateError(appDir() + "gone.htm");
    p.Wb1_NavigateError(appDir() + "gone.htm");
    EXPECT_EQ(seen, std::vector<std::string>(3, appDir() + "gone.htm"));
}

// --- The command panel opened by MENU -------------------------------------------------

TEST_F(Router, MenuShowsTheCommandPanelAndFitsThePane) {
    Products& p = startWithItems();
    p.Command21_Click();
    EXPECT_TRUE(p("Frame5").Visible());
    Control& wb = p.Wb1Box();
    EXPECT_EQ(wb.Num("Left"), p("Frame5").Num("Width") + p("Frame5").Num("Left"));
    EXPECT_EQ(p("grddatagrid").Num("Left"), wb.Num("Left"));
    EXPECT_EQ(p("grddatagrid").Num("Top"), wb.Num("Top"));
    EXPECT_EQ(p("grddatagrid").Num("Width"), wb.Num("Width"));
    EXPECT_EQ(p("grddatagrid").Num("Height"), wb.Num("Height"));
    EXPECT_EQ(p("txtFields", 19).Num("Left"), wb.Num("Left"));
    EXPECT_EQ(p("txtFields", 19).Num("Width"), wb.Num("Width"));
    p.Command21_Click();
    EXPECT_FALSE(p("Frame5").Visible());
    EXPECT_EQ(wb.Num("Left"), 50);
}

TEST_F(Router, InViewModeANavigationClosesTheCommandPanelFirst) {
    Products& p = startWithItems();
    p.Command21_Click();
    ASSERT_TRUE(p("Frame5").Visible());
    p.cmdNext_Click();
    EXPECT_FALSE(p("Frame5").Visible());
    EXPECT_EQ(p.Wb1Box().Num("Left"), 50);
    EXPECT_EQ(stockNo(), "CR205");
}

TEST_F(Router, InEditModeANavigationLeavesTheCommandPanel) {
    Products& p = startWithItems();
    p.cmdShowPic_Click();
    p.cmdNext_Click();
    EXPECT_TRUE(p("Frame5").Visible());
}

TEST_F(Router, TheLinkVariablesAreReadableByName) {
    Products& p = startWithItems();
    link("GF-4");
    link("DB-2");
    EXPECT_EQ(p.Vars().Get("ContinueFlag"), Variant(true));
    EXPECT_EQ(p.Vars().Get("LinkNumber"), Variant::Long(4));
    EXPECT_EQ(p.Vars().Get("LastBox"), Variant::Integer(2));
    EXPECT_EQ(p.Vars().Get("ImportKind"), Variant::Integer(0));
    EXPECT_EQ(p.Vars().Get("EditPlacements"), Variant(false));
}

}  // namespace
