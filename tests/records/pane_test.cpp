#include <gtest/gtest.h>

#include "program_fixture.h"
#include "records/pane.h"
#include "shell/module.h"

namespace {

using PaneEvents = ProgramTest;

TEST_F(PaneEvents, ACompletedNavigationIsKeptAsTheLastAddress) {
    Products& f = start();
    f.Wb1().Navigate2(appDir() + "Help/intro2.htm");
    EXPECT_EQ(Mod().LastUrl, appDir() + "Help/intro2.htm");
}

TEST_F(PaneEvents, NothingIsKeptWhileStartingUp) {
    addProduct("A1");
    Products& f = start();
    // The first item reached the pane while the form was loading.
    EXPECT_EQ(Mod().LastUrl, "");
    Mod().StartingUp = true;
    f.Wb1().Navigate2(appDir() + "Help/intro2.htm");
    EXPECT_EQ(Mod().LastUrl, "");
}

TEST_F(PaneEvents, AFailedNavigationGoesBackToTheLastAddress) {
    Products& f = start();
    f.Wb1().Navigate2(appDir() + "Help/intro3.htm");
    f.Wb1().Navigate2(appDir() + "nowhere.htm");
    EXPECT_EQ(ui.pane().LocationURL(), appDir() + "Help/intro3.htm");
}

TEST_F(PaneEvents, ARetryThatFailsTooDoesNotRunAway) {
    Products& f = start();
    const std::string before = ui.pane().LocationURL();
    Mod().LastUrl = appDir() + "gone.htm";
    f.Wb1().Navigate2(appDir() + "nowhere.htm");
    EXPECT_EQ(ui.pane().LocationURL(), before);
}

TEST_F(PaneEvents, AfterAgreeingToCloseTheNextPaneEventEndsTheProgram) {
    Products& f = start();
    f.ExitAfterRun = Variant(true);
    EXPECT_THROW(f.Wb1().Navigate2(appDir() + "Help/intro1.htm"), ProgramEnded);
    EXPECT_TRUE(rt->Ended());
}

}  // namespace
