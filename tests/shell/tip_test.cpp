#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "program_fixture.h"
#include "shell/frm_tip.h"
#include "shell/module.h"

namespace {

struct Tips : ProgramTest {
    void tipFile(const std::string& text) {
        std::ofstream out(appDir() + "TIPOFDAY.TXT", std::ios::binary);
        out << text;
    }
    // The tip form as the Help menu opens it.
    frmTip& fromMenu() {
        start().mnuHelpTip_Click();
        auto* tip = dynamic_cast<frmTip*>(rt->Loaded("frmTip"));
        EXPECT_NE(tip, nullptr);
        return *tip;
    }
    std::string tipText(frmTip& tip) { return tip("lblTipText").Caption(); }
};

TEST_F(Tips, WithTipsOffAtStartupTheFormNeverShows) {
    setting("Options", "Show Tips at Startup", "0");
    start();
    EXPECT_EQ(std::find(ui.shown.begin(), ui.shown.end(), "frmTip"), ui.shown.end());
    EXPECT_EQ(rt->Loaded("frmTip"), nullptr);
}

TEST_F(Tips, WithTipsOffTheHelpMenuStillShowsItWithTheBoxUnchecked) {
    setting("Options", "Show Tips at Startup", "0");
    frmTip& tip = fromMenu();
    EXPECT_TRUE(tip.Visible());
    EXPECT_EQ(tip("chkLoadTipsAtStartup").Value(), Variant::Integer(0));
    EXPECT_FALSE(Mod().TipsAsked);
    EXPECT_EQ(rt->MousePointer(), vb::vbDefault);
}

TEST_F(Tips, TheFirstTipShownIsTheFirstLine) {
    tipFile("First tip\r\nSecond tip\r\n");
    frmTip& tip = fromMenu();
    EXPECT_EQ(tipText(tip), "First tip");
    EXPECT_EQ(tip("chkLoadTipsAtStartup").Value(), Variant::Integer(1));
}

TEST_F(Tips, NoTipFileShowsHowToMakeOneAndNextTipThenDoesNothing) {
    std::filesystem::remove(appDir() + "TIPOFDAY.TXT");
    frmTip& tip = fromMenu();
    const std::string howTo =
        "There Was No TIPOFDAY.TXT Found ? \r\n\r\nYou Can Create A Text File Named TIPOFDAY.TXT "
        "Using "
        "NotePad With 1 Tip Per Line. Then Place It In The Same Directory As The Tandrel Catalog "
        "2000 "
        "Application. ";
    EXPECT_EQ(tipText(tip), howTo);
    tip("cmdNextTip").Raise("Click");
    EXPECT_EQ(tipText(tip), howTo);
}

TEST_F(Tips, AFileOfOneLineShowsThatLineAtEachNextTip) {
    tipFile("Only tip\r\n");
    frmTip& tip = fromMenu();
    tip("cmdNextTip").Raise("Click");
    EXPECT_EQ(tipText(tip), "Only tip");
    tip("cmdNextTip").Raise("Click");
    EXPECT_EQ(tipText(tip), "Only tip");
}

TEST_F(Tips, NextTipPastTheLastLineShowsTheFirst) {
    tipFile("One\r\nTwo\r\nThree\r\n");
    frmTip& tip = fromMenu();
    tip("cmdNextTip").Raise("Click");
    EXPECT_EQ(tipText(tip), "Two");
    tip("cmdNextTip").Raise("Click");
    EXPECT_EQ(tipText(tip), "Three");
    tip("cmdNextTip").Raise("Click");
    EXPECT_EQ(tipText(tip), "One");
}

TEST_F(Tips, TheStartupBoxIsSavedAtOnceWhenClicked) {
    frmTip& tip = fromMenu();
    tip("chkLoadTipsAtStartup").SetValue(Variant::Integer(0));
    EXPECT_EQ(saved("Options", "Show Tips at Startup"), "0");
}

TEST_F(Tips, OKClosesTheTip) {
    frmTip& tip = fromMenu();
    tip("cmdOK").Raise("Click");
    EXPECT_EQ(rt->Loaded("frmTip"), nullptr);
}

TEST_F(Tips, AboutShowsTheProgramTitleModallyAndOKClosesIt) {
    Products& f = start();
    f("mnuHelpAbout").Raise("Click");
    EXPECT_EQ(ui.shown.back(), "frmAbout");
    EXPECT_EQ(rt->Loaded("frmAbout"), nullptr);
    Form& about = rt->Get("frmAbout");
    rt->Load(about);
    EXPECT_EQ(about("lblTitle").Caption(), title);
    EXPECT_FALSE(about("lblDisclaimer", 0).Caption().empty());
    EXPECT_FALSE(about("lblDisclaimer", 1).Caption().empty());
    about("cmdOK").Raise("Click");
    EXPECT_FALSE(about.IsLoaded());
}

}  // namespace
