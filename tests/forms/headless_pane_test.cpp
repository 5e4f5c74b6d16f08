#include <unistd.h>

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "base/kept_listings.h"
#include "base/textio.h"
#include "forms/headless_pane.h"

namespace fs = std::filesystem;

namespace {

// A pane whose events are written down in order.
struct PaneTest : ::testing::Test {
    HeadlessPane pane;
    std::vector<std::string> events;
    std::string cancelUrl;
    fs::path folder;

    void SetUp() override {
        folder = fs::temp_directory_path() / ("panetest" + std::to_string(::getpid()));
        fs::create_directories(folder);
        pane.BeforeNavigate2 = [this](const std::string& url, bool& cancel) {
            events.push_back("before " + url);
            if (url == cancelUrl) cancel = true;
        };
        pane.CommandStateChange = [this] { events.push_back("state"); };
        pane.NavigateComplete2 = [this](const std::string& url) {
            events.push_back("complete " + url);
        };
        pane.NavigateError = [this](const std::string& url) { events.push_back("error " + url); };
    }
    void TearDown() override { fs::remove_all(folder); }

    std::string file(const std::string& name, const std::string& content) {
        std::ofstream(folder / name) << content;
        return (folder / name).string();
    }
};

}  // namespace

TEST_F(PaneTest, LocalFileIsReadBetweenBeforeAndComplete) {
    std::string page = file("page.htm", "<p>one</p>");
    pane.Navigate2(page);
    EXPECT_EQ(events, (std::vector<std::string>{"before " + page, "state", "complete " + page}));
    EXPECT_EQ(pane.DocumentText(), "<p>one</p>");
    EXPECT_EQ(pane.LocationURL(), page);
}

TEST_F(PaneTest, APageRewrittenDuringARunShowsItsNewestContents) {
    const std::string page = (folder / "page.htm").string();
    const KeptListings run;
    for (const char* view : {"<p>one</p>", "<p>two</p>"}) {
        TextFileWriter out(page);
        out.printLine(view);
        out.close();
        pane.Navigate2(page);
    }
    EXPECT_EQ(pane.DocumentText(), "<p>two</p>\r\n");
}

TEST_F(PaneTest, CancelledNavigationChangesNothing) {
    std::string page = file("page.htm", "<p>one</p>");
    pane.Navigate2(page);
    events.clear();
    cancelUrl = "about:blankCONTINUE";
    pane.UserNavigate(HeadlessPane::resolveLink("CONTINUE"));
    EXPECT_EQ(events, (std::vector<std::string>{"before about:blankCONTINUE"}));
    EXPECT_EQ(pane.DocumentText(), "<p>one</p>");
    EXPECT_EQ(pane.LocationURL(), page);
}

TEST_F(PaneTest, MissingLocalFileRaisesNavigateErrorInsteadOfCompleting) {
    std::string missing = (folder / "nothing.htm").string();
    pane.Navigate2(missing);
    EXPECT_EQ(events, (std::vector<std::string>{"before " + missing, "state", "error " + missing}));
    EXPECT_EQ(pane.LocationURL(), "");
}

TEST_F(PaneTest, BlankPageCompletesEmptyAndWritesAppend) {
    std::string page = file("page.htm", "<p>one</p>");
    pane.Navigate2(page);
    pane.Navigate2("about:blank");
    EXPECT_EQ(events.back(), "complete about:blank");
    EXPECT_EQ(pane.DocumentText(), "");
    pane.Write("<a href=CONTINUE>");
    pane.Write("Click Here To Continue</a>");
    EXPECT_EQ(pane.DocumentText(), "<a href=CONTINUE>Click Here To Continue</a>");
}

TEST_F(PaneTest, FileUrlIsALocalPath) {
    std::string page = file("page.htm", "<p>one</p>");
    pane.Navigate2("file://" + page);
    EXPECT_EQ(pane.DocumentText(), "<p>one</p>");
}

TEST_F(PaneTest, RefreshThenGoBackReturnsToThePageBeforeReloadedFromDisk) {
    std::string page = file("page.htm", "<p>one</p>");
    pane.Navigate2(page);
    pane.Refresh2();
    EXPECT_EQ(pane.DocumentText(), "");
    pane.Write("<p>progress</p>");
    file("page.htm", "<p>two</p>");
    events.clear();
    pane.GoBack();
    EXPECT_EQ(pane.DocumentText(), "<p>two</p>");
    EXPECT_EQ(pane.LocationURL(), page);
    EXPECT_EQ(events.back(), "complete " + page);
}

TEST_F(PaneTest, GoBackWithNoHistoryFails) {
    EXPECT_ANY_THROW(pane.GoBack());
}

TEST_F(PaneTest, APageIsReadWhenItsTextIsFirstWantedAndThenKept) {
    std::string page = file("page.htm", "<p>one</p>");
    pane.Navigate2(page);
    file("page.htm", "<p>two</p>");
    EXPECT_EQ(pane.DocumentText(), "<p>two</p>");
    file("page.htm", "<p>three</p>");
    EXPECT_EQ(pane.DocumentText(), "<p>two</p>");
    pane.Write("<p>more</p>");
    EXPECT_EQ(pane.DocumentText(), "<p>two</p><p>more</p>");
}

TEST_F(PaneTest, APageShownAndGoneBeforeItWasReadIsEmpty) {
    std::string page = file("page.htm", "<p>one</p>");
    pane.Navigate2(page);
    EXPECT_EQ(events.back(), "complete " + page);
    fs::remove(page);
    EXPECT_EQ(pane.DocumentText(), "");
    EXPECT_EQ(pane.LocationURL(), page);
}
