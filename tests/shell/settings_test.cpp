#include <gtest/gtest.h>

#include "program_fixture.h"
#include "shell/module.h"

namespace {

using Settings = ProgramTest;

TEST_F(Settings, AStoredPositionOffTheScreenIsAppliedAsItStands) {
    setting("Settings", "MainLeft", "-30000");
    setting("Settings", "MainTop", "99999");
    Products& f = start();
    EXPECT_EQ(f.Num("Left"), -30000);
    EXPECT_EQ(f.Num("Top"), 99999);
}

TEST_F(Settings, AStoredPositionThatIsNoNumberKeepsThePropertyAsItWas) {
    setting("Settings", "MainLeft", "left side");
    Products& f = start();
    EXPECT_EQ(f.Num("Left"), 0);
    EXPECT_EQ(f.Num("Top"), 1000);
}

TEST_F(Settings, ASavedHideTextOfFalseKeepsTheBoxHiddenAtTheNextStart) {
    setting("Settings", "HideText(22)", "False");
    Products& f = start();
    EXPECT_FALSE(f("txtFields", 22).Visible());
    EXPECT_TRUE(f("txtFields", 21).Visible());
    EXPECT_TRUE(f("chkFields", 7).Visible());
}

TEST_F(Settings, WithNoSettingsAtAllTheWindowStandsAt1000AndTheTipShows) {
    Products& f = start();
    EXPECT_EQ(f.Num("Left"), 1000);
    EXPECT_EQ(f.Num("Top"), 1000);
    EXPECT_NE(std::find(ui.shown.begin(), ui.shown.end(), "frmTip"), ui.shown.end());
}

TEST_F(Settings, ASavedLabelNameRenamesTheLabelAndItsListRow) {
    setting("Settings", "LabelName(3)", "Title:");
    Products& f = start();
    EXPECT_EQ(f("Label3", 3).Caption(), "Title:");
    EXPECT_EQ(f("lstAll", 4).List(2), "Title:");
    EXPECT_EQ(f("Label3", 3).Property("Tag"), Variant("Name:"));
}

TEST_F(Settings, TheCaptionsOf19And28AreNeverReadFromTheSettings) {
    setting("Settings", "LabelName(19)", "Hot!");
    setting("Settings", "LabelName(28)", "Freight:");
    Products& f = start();
    EXPECT_EQ(f("Label3", 19).Caption(), "On Special:");
    EXPECT_EQ(f("Label3", 28).Caption(), "Shipping 2:");
    EXPECT_EQ(f("lstAll", 0).List(18), "N/A");
    EXPECT_EQ(f("lstAll", 0).List(27), "N/A");
}

// The pane takes what the open panels leave.
struct SetSize : ProgramTest {
    Products* f = nullptr;
    void SetUp() override { f = &start(); }
    Control& wb() { return f->Wb1Box(); }
};

TEST_F(SetSize, PageSetupPanelPutsThePaneBelowItAcrossTheForm) {
    (*f)("Frame12").SetVisible(true);
    f->SetSize();
    EXPECT_EQ(wb().Num("Left"), 50);
    EXPECT_EQ(wb().Num("Height"), (*f)("Frame12").Num("Height") - (*f)("Frame5").Num("Height"));
    EXPECT_EQ(wb().Num("Width"), 9480 - 200);
    EXPECT_FALSE((*f)("cmdShowPic").Enabled());
}

TEST_F(SetSize, WebPagesPanelPutsThePaneBesideItAndDisablesTheModeButton) {
    Control& frame9 = (*f)("Frame9");
    frame9.SetVisible(true);
    f->SetSize();
    EXPECT_EQ(wb().Num("Left"), frame9.Num("Width") + frame9.Num("Left"));
    EXPECT_EQ(wb().Num("Width"), 9480 - (wb().Num("Left") + 150));
    EXPECT_EQ(wb().Num("Height"), (*f)("Frame5").Num("Height"));
    EXPECT_FALSE((*f)("cmdShowPic").Enabled());
}

TEST_F(SetSize, CommandPanelPutsThePaneBesideItAndLeavesTheModeButton) {
    Control& frame5 = (*f)("Frame5");
    frame5.SetVisible(true);
    (*f)("cmdShowPic").SetEnabled(false);
    f->SetSize();
    EXPECT_EQ(wb().Num("Left"), frame5.Num("Width") + frame5.Num("Left"));
    EXPECT_EQ(wb().Num("Width"), 9480 - (wb().Num("Left") + 150));
    EXPECT_FALSE((*f)("cmdShowPic").Enabled());
}

TEST_F(SetSize, NoPanelGivesThePaneTheWholeWidthAndEnablesTheModeButton) {
    (*f)("cmdShowPic").SetEnabled(false);
    f->SetSize();
    EXPECT_EQ(wb().Num("Left"), 50);
    EXPECT_EQ(wb().Num("Width"), 9480 - 200);
    EXPECT_TRUE((*f)("cmdShowPic").Enabled());
}

}  // namespace
