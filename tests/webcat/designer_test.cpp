// The page designer: each control writes its one setting of the layout and asks for the
// preview again.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/convert.h"
#include "program_fixture.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "webcat/web_catalogue.h"

namespace {

struct Designer : ProgramTest {
    Products* f = nullptr;
    WebCatalogue* w = nullptr;
    void SetUp() override {
        addProduct("A1");
        f = &start();
        w = f->webcat.get();
        Mod().PanelGo = false;
    }
    Control& c(const std::string& name, int index = -1) { return (*f)(name, index); }
    bool marked(const std::string& name, int index) {
        return CLng(c(name, index).Property("BackColor")) == MarkerColor;
    }
    // Opens the page setup as a run does once its items are chosen.
    void openSetup() {
        c("List2").SetVisible(true);
        w->Command12_Click();
        Mod().PanelGo = false;
    }
    CommonDialog font(const std::string& face, double size) {
        CommonDialog d;
        d.FontName = face;
        d.FontSize = size;
        return d;
    }
};

TEST(DesignerRules, PointSizesGiveTheSevenHtmlSizes) {
    EXPECT_EQ(htmlFontSize(8), 1);
    EXPECT_EQ(htmlFontSize(9), 2);
    EXPECT_EQ(htmlFontSize(10), 2);
    EXPECT_EQ(htmlFontSize(12), 3);
    EXPECT_EQ(htmlFontSize(14), 4);
    EXPECT_EQ(htmlFontSize(18), 5);
    EXPECT_EQ(htmlFontSize(19), 6);
    EXPECT_EQ(htmlFontSize(24), 6);
    EXPECT_EQ(htmlFontSize(25), 7);
}

TEST(DesignerRules, CommonColoursHaveTheirWordsAndOthersKeepBlueFirst) {
    EXPECT_EQ(colourWord(255), "#FF0000");
    EXPECT_EQ(colourWord(16711680), "#0000FF");
    EXPECT_EQ(colourWord(8421376), "#008080");
    // Red 0x12, green 0x34, blue 0x56: the digits stand blue first.
    EXPECT_EQ(colourWord(0x563412), "#563412");
    EXPECT_EQ(colourWord(0x1234), "#001234");  // digits only: padded as a number
    EXPECT_EQ(colourWord(0xAB), "#AB");        // with letters: as the digits came
}

TEST_F(Designer, WithBottomStoredTheSetupMarksCenter) {
    w->ItemAlign[0][11] = Variant("Bottom");
    w->ItemAlign[0][1] = Variant("Right");
    openSetup();
    EXPECT_TRUE(marked("cmdPosC", 11));
    EXPECT_FALSE(marked("cmdPosR", 11));
    EXPECT_TRUE(marked("cmdPosR", 1));
    EXPECT_TRUE(marked("cmdPosC", 0));  // an empty alignment became Center
    EXPECT_EQ(CStr(w->ItemAlign[0][0]), "Center");
    EXPECT_EQ(CStr(w->ItemAlign[0][12]), "Center");
}

TEST_F(Designer, EditDetailPagesWithoutADetailsLinkWritesTheMessageAndStaysOnTheMainSide) {
    c("chkDetail", 0).SetValue(Variant::Integer(1));
    EXPECT_EQ(CInt(Mod().LayoutSide), 0);
    EXPECT_EQ(c("chkDetail", 0).Caption(), "Edit Detail Pages");
    EXPECT_NE(ui.pane().DocumentText().find("You Have To Select The Details Link Option"),
              std::string::npos);
    // With the link placed the switch goes through.
    c("chkDetail", 0).SetValue(Variant::Integer(0));
    w->Label4_Click(7);
    c("chkDetail", 0).SetValue(Variant::Integer(1));
    EXPECT_EQ(CInt(Mod().LayoutSide), 1);
    EXPECT_EQ(c("chkDetail", 0).Caption(), "Edit Main Pages");
}

TEST_F(Designer, TheFontDialogWritesFaceColourStylesSizeAndClosingTags) {
    CommonDialog chosen = font("Georgia", 18);
    chosen.FontBold = chosen.FontUnderline = chosen.FontStrikethru = true;
    chosen.Color = 0x102030;
    ui.fontAnswer = chosen;
    w->cmdFont_Click(3);  // box 2, the picture's row
    Module& m = Mod();
    EXPECT_EQ(m.FontNameOf[0][3], "Georgia");
    EXPECT_EQ(m.FontColorOf[0][3], "#102030");
    EXPECT_EQ(m.BoldOn[0][3], "<b>");
    EXPECT_EQ(m.ItalicOn[0][3], "");
    EXPECT_EQ(m.UnderlineOn[0][3], "<u>");
    EXPECT_EQ(m.StrikeOn[0][3], "<strike>");
    EXPECT_EQ(m.FontSizeOf[0][3], 5);
    EXPECT_EQ(m.CloseTags[0][3], "</b></u></strike>");
    EXPECT_TRUE(m.PanelGo);
    // The dialog opens on the element's font, its size shown four times the page's.
    w->cmdFont_Click(0);
    ASSERT_EQ(ui.fontPresets.size(), 2u);
    EXPECT_EQ(ui.fontPresets[1].FontSize, 20);
    EXPECT_EQ(ui.fontPresets[1].Flags, 259);
}

TEST_F(Designer, AFontNameWithQuotesIsKeptAsItStands) {
    ui.fontAnswer = font("Bob's \"Best\" Face", 10);
    w->cmdFont_Click(0);
    EXPECT_EQ(Mod().FontNameOf[0][0], "Bob's \"Best\" Face");
}

TEST_F(Designer, ACancelledFontOrColourDialogChangesNothing) {
    Module& m = Mod();
    w->cmdFont_Click(0);
    EXPECT_EQ(m.FontSizeOf[0][0], 5);
    EXPECT_EQ(m.FontColorOf[0][0], "#111111");
    w->CellBorderColor = Variant("#00FF00");
    w->Command27_Click(1);
    EXPECT_EQ(CStr(w->CellBorderColor), "#00FF00");
    ui.inputAnswer = "1";
    w->Command27_Click(0);
    EXPECT_EQ(w->BodyTag[0], "");
    EXPECT_EQ(w->BodyColor[0], "");
}

TEST_F(Designer, WithAnInsertBoxOpenTheFontAndAlignmentGoToItsText) {
    ui.fontAnswer = font("Courier", 12);
    w->cmdInsrt_Click(2);
    EXPECT_TRUE(c("Text4", 2).Visible());
    EXPECT_FALSE(c("Command26").Visible());
    EXPECT_TRUE(c("Command28", 0).Visible());
    w->cmdFont_Click(3);  // the row's text: element r + 11
    EXPECT_EQ(Mod().FontNameOf[0][13], "Courier");
    w->cmdPos_Click("cmdPosR", 3);  // its alignment: element r + 14
    EXPECT_EQ(CStr(w->ItemAlign[0][16]), "Right");
    EXPECT_TRUE(marked("cmdPosR", 3));
    w->cmdInsrt_Click(9);  // the text before the title: element 19
    w->cmdFont_Click(0);
    EXPECT_EQ(Mod().FontNameOf[0][19], "Courier");
    EXPECT_FALSE(c("Text4", 2).Visible());
}

TEST_F(Designer, TheTitleButtonsSetThePageAlignmentAndTheCellsTopAndBottom) {
    w->cmdPos_Click("cmdPosL", 0);
    EXPECT_EQ(Mod().PageAlign, "Left");
    EXPECT_EQ(CStr(w->ItemAlign[0][0]), "Left");
    w->cmdPos_Click("cmdPosR", 11);
    EXPECT_EQ(CStr(w->ItemAlign[0][11]), "Bottom");
    w->cmdPos_Click("cmdPosL", 11);
    EXPECT_EQ(CStr(w->ItemAlign[0][11]), "Top");
    w->cmdPos_Click("cmdPosR", 10);
    EXPECT_EQ(CStr(w->ItemAlign[0][10]), "Right");
    EXPECT_TRUE(Mod().PanelGo);
}

TEST_F(Designer, InsertStoresTheTextAndBreakGoesInFrontOrAfterTheTitle) {
    w->cmdInsrt_Click(4);
    c("Text4", 4).SetText("Sale");
    w->Command28_Click(2);
    EXPECT_EQ(c("Text4", 4).Text(), "<br>Sale");
    w->Command28_Click(0);
    EXPECT_EQ(CStr(w->InsertText[0][4]), "<br>Sale");
    EXPECT_FALSE(c("Text4", 4).Visible());
    EXPECT_TRUE(marked("cmdInsrt", 4));
    EXPECT_TRUE(c("Command26").Visible());
    EXPECT_FALSE(c("Command28", 1).Visible());
    w->cmdInsrt_Click(10);
    c("Text4", 10).SetText("Welcome");
    w->Command28_Click(2);
    EXPECT_EQ(c("Text4", 10).Text(), "Welcome<br>");
}

TEST_F(Designer, GraphicPutsAPictureIntoTheOpenBox) {
    w->cmdInsrt_Click(0);
    ui.openAnswer = "/pics/logo.jpg";
    w->Command28_Click(1);
    EXPECT_EQ(CStr(w->InsertText[0][0]), "<img border=1 dynsrc=\"/pics/logo.jpg\" width=100'>");
    EXPECT_FALSE(c("Text4", 0).Visible());
}

TEST_F(Designer, PlacingAndRemovingBoxesMovesTheRows) {
    Module& m = Mod();
    w->Label4_Click(3);
    w->Label4_Click(1);
    w->Label4_Click(4);
    EXPECT_EQ(m.BoxField[0][0], 3);
    EXPECT_EQ(m.BoxField[0][1], 1);
    EXPECT_EQ(m.BoxField[0][2], 4);
    EXPECT_EQ(m.BoxField[0][3], 10);
    EXPECT_TRUE(marked("Label4", 1));
    EXPECT_TRUE(c("lstAll", 1).Visible());
    EXPECT_EQ(c("Label4", 3).Num("Top"), c("Label4", 0).Num("Top") - 3 * 305);
    EXPECT_EQ(c("cmdFont", 4).Num("Top"), c("Label4", 3).Num("Top"));
    w->Label4_Click(3);  // out again: the rows below move up
    EXPECT_EQ(m.BoxField[0][0], 1);
    EXPECT_EQ(m.BoxField[0][1], 4);
    EXPECT_EQ(m.BoxField[0][2], 10);
    EXPECT_EQ(CStr(m.BoxOrder[0][3]), "8");
    EXPECT_EQ(CStr(m.BoxOrder[0][1]), "0");
    EXPECT_FALSE(marked("Label4", 3));
    EXPECT_FALSE(c("lstAll", 3).Visible());
    // Every box has a row of its own.
    std::vector<int> rows;
    for (int k = 0; k <= 8; ++k)
        rows.push_back(CInt(m.BoxOrder[0][k]));
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(Designer, TheDetailsLinkCannotBePlacedOnTheDetailPage) {
    w->Label4_Click(7);
    c("chkDetail", 0).SetValue(Variant::Integer(1));
    w->Label4_Click(7);
    EXPECT_EQ(Mod().BoxField[1][0], 10);
}

TEST_F(Designer, TheFieldListOfABoxIsItsListIndex) {
    w->Label4_Click(0);
    c("lstAll", 0).SetListIndex(11);
    EXPECT_EQ(CStr(Mod().BoxListIndex[0][0]), "11");
    EXPECT_TRUE(Mod().PanelGo);
}

TEST_F(Designer, PerRowTakesTheNumberAndLettersAreReported) {
    c("txtIR").SetText("3");
    EXPECT_EQ(Mod().ItemsPerRow, 3);
    std::vector<std::string> trace;
    setErrorTrace([&](const std::string& line) { trace.push_back(line); });
    c("txtIR").SetText("three");
    setErrorTrace(nullptr);
    EXPECT_EQ(Mod().ItemsPerRow, 3);
    ASSERT_EQ(trace.size(), 1u);
}

TEST_F(Designer, BordersColoursAndStylesMakeTheCellStyle) {
    c("Text3", 4).SetText("2");
    ui.inputAnswer = "3";
    w->Command27_Click(5);
    EXPECT_EQ(CStr(w->CellBorderStyle), "dotted");
    ui.colourAnswer = 255;
    w->Command27_Click(1);
    EXPECT_EQ(CStr(w->CellStyle),
              "style='border-style: dotted; border-width: 2' bordercolor='#FF0000'>");
    ui.inputAnswer = "1";
    ui.colourAnswer = 65280;
    w->Command27_Click(4);
    EXPECT_EQ(CStr(w->CellStyle),
              "style='border-style: dotted; border-width: 2' bordercolor='#FF0000' "
              "bgcolor='#00FF00'>");
    ui.inputAnswer = "2";
    w->Command27_Click(4);
    EXPECT_EQ(CStr(w->CellColor), "");
    w->CellStyle = Variant("");
    w->Command27_Click(2);
    EXPECT_EQ(CStr(w->CellStyle), "style='border-style: dotted; border-width: 2'");
    EXPECT_EQ(c("Command27", 2).Caption(), "Remove Borders");
    w->Command27_Click(2);
    EXPECT_EQ(CStr(w->CellStyle), "");
    EXPECT_EQ(c("Command27", 2).Caption(), "Add Borders");
}

TEST_F(Designer, ABackgroundColourOrPictureMakesTheBodyTagOfTheSide) {
    ui.inputAnswer = "1";
    ui.colourAnswer = 128;
    w->Command27_Click(0);
    EXPECT_EQ(w->BodyColor[0], "#800000");
    EXPECT_EQ(w->BodyTag[0], "<body bgcolor=\"#800000\">");
    std::filesystem::create_directories(appDir() + "Pages/images");
    std::ofstream(appDir() + "paper.jpg") << "picture";
    w->PageBase = "shop";
    ui.inputAnswer = "2";
    ui.openAnswer = appDir() + "paper.jpg";
    w->Command27_Click(0);
    EXPECT_TRUE(std::filesystem::exists(appDir() + "Pages/images/0bgshop.spb"));
    EXPECT_EQ(w->BodyTag[0], "<body bgproperties=fixed background=\"images/0bgshop.spb\">");
}

TEST_F(Designer, ViewPageNarrowsThePanelAndGivesThePaneTheRest) {
    openSetup();
    w->Command29_Click();
    EXPECT_EQ(c("Frame12").Num("Width"), 3120);
    EXPECT_EQ(c("Wb1").Num("Left"), 3120);
    EXPECT_EQ(c("Wb1").Num("Width"), f->Num("Width") - 3270);
    w->Command29_Click();
    EXPECT_EQ(c("Frame12").Num("Width"), 9200);
}

TEST_F(Designer, TheBuyLinkIsTypedUntilInsertHidesItsBox) {
    int waits = 0;
    ui.onWait = [&] {
        ++waits;
        EXPECT_EQ(c("Text5").Text(), "<a href=\"http://www.example.com/order.htm\">");
        c("Text5").SetText("<a href=\"http://shop/buy\">");
        w->Command28_Click(0);
    };
    w->cmdeditBuy_Click();
    EXPECT_EQ(waits, 1);
    EXPECT_EQ(CStr(w->BuyLinkTag), "<a href=\"http://shop/buy\">");
    EXPECT_FALSE(c("Text5").Visible());
}

}  // namespace
