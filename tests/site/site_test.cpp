// The web site of the sample shop, made through the program's own procedures by a scripted
// user, then read: every link and picture of every page names a file, and a headless
// Chromium opens the frameset with its two frames and reads every reference of both.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "base/convert.h"
#include "forms/user_input.h"
#include "program_fixture.h"
#include "shell/module.h"
#include "site_links.h"
#include "webcat/web_catalogue.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::stringstream in(text);
    for (std::string part; std::getline(in, part, separator);)
        parts.push_back(part);
    return parts;
}

std::string describe(const std::vector<BrokenReference>& broken) {
    std::string text;
    for (const auto& b : broken)
        text += "  " + b.page + ": " + b.attribute + "=\"" + b.value + "\"\n";
    return text;
}

// The Chromium of the machine, or "" when there is none.
std::string chromium() {
    for (const char* name : {"chromium", "chromium-browser"})
        for (const auto& dir : split(std::getenv("PATH") ? std::getenv("PATH") : "", ':'))
            if (!dir.empty() && fs::exists(fs::path(dir) / name)) return (fs::path(dir) / name);
    return "";
}

struct SampleSite : ProgramTest {
    SampleSite() : ProgramTest(true) {}

    Products* f = nullptr;
    std::deque<std::function<void()>> steps;

    Control& c(const std::string& name, int index = -1) { return (*f)(name, index); }
    std::string pages() { return appDir() + "Pages/"; }

    // The sample names some pictures that it does not ship; each gets the program's own
    // "no picture" file, so that the site can be held to every picture being there.
    void completeThePictures() {
        for (const std::string& picture :
             split(cat.query("SELECT Picture FROM Products WHERE Picture IS NOT NULL"), '|')) {
            if (picture.empty() || fs::exists(picture)) continue;
            fs::create_directories(fs::path(picture).parent_path());
            fs::copy_file(appDir() + "Pictures/NoPic.jpg", picture);
        }
    }

    // The shop owner's road through the Web Pages panel: by category, every group, the
    // site named "catpage", a saved layout loaded, 30 items a page, a new page at each
    // category with the category as title, contents on the left, a title; then Done and
    // Continue. `layout` is the saved layout the owner loads.
    void makeTheSite(const std::string& layout = SHOP_LAYOUT) {
        completeThePictures();
        f = &start();
        ui.onWait = [this] {
            if (steps.empty()) {  // a wait the road does not foresee: the user cancels
                UserInput::Click(c("Command19"));
                return;
            }
            auto step = std::move(steps.front());
            steps.pop_front();
            step();
        };
        ui.saveAnswer = pages() + "catpage.htm";
        ui.openAnswer = layout;
        ui.inputAnswer = "0";
        steps = {[this] { UserInput::Click(c("Command13")); },
                 [this] { UserInput::Click(c("Command17")); },
                 [this] { UserInput::Click(c("SaveLoad", 1)); },
                 [this] { UserInput::Type(c("Text3", 3), "30"); },
                 [this] { UserInput::Click(c("chkDetail", 3)); },
                 [this] { UserInput::Click(c("chkDetail", 2)); },
                 [this] { UserInput::Click(c("Command30")); },
                 [this] { UserInput::Type(c("txtTitle"), "Willow Creek Crafts -"); },
                 [this] {
                     UserInput::Click(c("Command26"));
                     UserInput::Click(c("Command17"));
                 }};
        UserInput::Click(c("Command5"));
        UserInput::Click(c("Command10"));
        ASSERT_TRUE(steps.empty()) << "the run ended before the road did";
    }

    // Runs Chromium headless on the probe page over the frameset; its output, or a failure.
    std::string browse(const std::string& arguments) {
        const std::string browser = chromium();
        if (browser.empty()) {
            ADD_FAILURE() << "no chromium on the PATH: scripts/install-deps installs it";
            return "";
        }
        fs::copy_file(SITE_PROBE, appDir() + "probe.htm", fs::copy_options::overwrite_existing);
        const std::string out = appDir() + "browser.out";
        const std::string command =
            "timeout 120 " + browser +
            " --headless --no-sandbox --disable-gpu --no-first-run --allow-file-access-from-files"
            " --user-data-dir=" +
            appDir() + "chromium --virtual-time-budget=2000 " + arguments + " > " + out +
            " 2>/dev/null";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        std::ifstream in(out, std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    std::string probeUrl(const std::string& hash = "") {
        return "'file://" + appDir() + "probe.htm?Pages/FRcatpage.htm" + hash + "'";
    }
};

TEST_F(SampleSite, EveryLinkAndPictureOfEveryPageNamesAFile) {
    makeTheSite();
    const SiteReferences site = CheckSite(pages());
    EXPECT_TRUE(site.broken.empty()) << site.broken.size() << " broken references:\n"
                                     << describe(site.broken);
    // Seven categories, a page each, the frameset, the contents page and a detail page for
    // each of the 53 products; a link, a picture and a detail link at least for each.
    EXPECT_EQ(site.pages, 7 + 2 + 53);
    EXPECT_GT(site.resolved, 53 * 3);
    EXPECT_EQ(site.outside, 0);
    EXPECT_EQ(ui.pane().LocationURL(), pages() + "FRcatpage.htm");
}

// The same road with a layout saved with "Copy Pictures To" on: loading it copies the chosen
// items' pictures into Pages/images/, and every picture of every page is a copy there. An item
// without a picture refers to the folder itself ("images/"), which is no picture.
TEST_F(SampleSite, WithCopyPicturesOnEveryPictureIsACopyInTheImagesFolder) {
    makeTheSite(SHOP_COPY_LAYOUT);
    EXPECT_TRUE(Mod().PicturesCopied);
    int copies = 0, none = 0;
    std::string stray;
    for (const auto& entry : fs::directory_iterator(pages())) {
        if (entry.path().extension() != ".htm") continue;
        std::ifstream in(entry.path(), std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        for (const auto& [attribute, value] : PageReferences(text.str())) {
            // Pictures are given as dynsrc; links to them name the images folder. The
            // frameset's src name pages.
            const bool picture = attribute == "dynsrc" || value.rfind("images/", 0) == 0;
            if (!picture) continue;
            if (value == "images/")
                none += 1;
            else if (value.rfind("images/", 0) == 0 && fs::is_regular_file(pages() + value))
                copies += 1;
            else
                stray += "  " + entry.path().filename().string() + ": " + value + "\n";
        }
    }
    EXPECT_TRUE(stray.empty()) << "pictures outside Pages/images/:\n" << stray;
    // For each product: the stock number's link, the picture's link and the picture on the
    // catalogue page, and the picture on the detail page.
    const int withPicture =
        std::stoi(cat.query("SELECT COUNT(*) FROM Products WHERE Picture <> ''"));
    EXPECT_EQ(copies, 4 * withPicture);
    EXPECT_EQ(copies + none, 4 * 53);
    const SiteReferences site = CheckSite(pages());
    for (const auto& b : site.broken)
        EXPECT_EQ(b.value, "images/") << b.page << ": " << b.attribute;
}

TEST_F(SampleSite, ChromiumOpensTheFramesetWithBothFramesAndReadsAllTheyReferTo) {
    makeTheSite();
    const std::string dom = browse("--dump-dom " + probeUrl());
    const std::size_t open = dom.find("<pre id=\"report\">"), close = dom.find("</pre>");
    ASSERT_NE(open, std::string::npos) << dom;
    const std::vector<std::string> lines = split(dom.substr(open + 17, close - open - 17), '\n');
    std::vector<std::string> frames;
    int ok = 0;
    std::string broken;
    for (const std::string& line : lines) {
        if (line.rfind("frame", 0) == 0)
            frames.push_back(line);
        else if (line.rfind("ok ", 0) == 0)
            ok += 1;
        else
            broken += "  " + line + "\n";
    }
    EXPECT_EQ(frames,
              (std::vector<std::string>{"frames 2", "frame Contents concatpage.htm complete",
                                        "frame RightFrame catpage1.htm complete"}))
        << dom;
    EXPECT_TRUE(broken.empty()) << "the browser could not read:\n" << broken;
    // The contents page's seven categories, and on page 1 at least a link, a picture and a
    // detail link for each product.
    EXPECT_GE(ok, 7 + 3 * 2);
}

TEST_F(SampleSite, TheFramesetIsPhotographed) {
    makeTheSite();
    fs::remove(WEB_CATALOGUE_SCREENSHOT);
    browse("--window-size=1200,800 --screenshot=" + std::string(WEB_CATALOGUE_SCREENSHOT) + " " +
           probeUrl("#view"));
    ASSERT_TRUE(fs::exists(WEB_CATALOGUE_SCREENSHOT));
    EXPECT_GT(fs::file_size(WEB_CATALOGUE_SCREENSHOT), 10000u);
}

}  // namespace
