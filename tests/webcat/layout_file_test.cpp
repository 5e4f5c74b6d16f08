// Saved layouts: the 538 values of a `.spd` file, written and read in one order.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/convert.h"
#include "base/textio.h"
#include "program_fixture.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "webcat/web_catalogue.h"

namespace {

std::string readAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> lines(const std::string& path) {
    std::vector<std::string> all;
    std::istringstream in(readAll(path));
    for (std::string line; std::getline(in, line);)
        all.push_back(line.substr(0, line.size() - 1));  // without the CR
    return all;
}

struct LayoutFile : ProgramTest {
    Products* f = nullptr;
    WebCatalogue& web() { return *f->webcat; }
    void SetUp() override {
        addProduct("A1");
        f = &start();
    }
    std::string spd(const std::string& name) { return appDir() + "Pages/" + name; }
    void save(const std::string& name) {
        ui.saveAnswer = name;
        web().SaveLoad_Click(0);
    }
    void load(const std::string& name) {
        ui.openAnswer = name;
        web().SaveLoad_Click(1);
    }
    // Every value of the layout as the file would print it, in the file's order.
    std::vector<std::string> state() {
        std::vector<std::string> all;
        web().forEachLayoutValue([&](const LayoutValue& v) { all.push_back(printForm(v.get())); });
        return all;
    }
    // Gives every value of the layout a value of its own: a text where the value takes one,
    // else a number.
    void fillDistinct() {
        int n = 0;
        web().forEachLayoutValue([&](const LayoutValue& v) {
            ++n;
            try {
                v.set("t" + std::to_string(n));
            } catch (const VbError&) {
                v.set(std::to_string(n));
            }
        });
    }
};

TEST_F(LayoutFile, ASavedLayoutHas538LinesAndLoadsBackValueByValue) {
    fillDistinct();
    const std::vector<std::string> before = state();
    save(spd("all.spd"));
    EXPECT_EQ(lines(spd("all.spd")).size(), 538u);
    EXPECT_EQ(lines(spd("all.spd")), before);
    web().forEachLayoutValue([](const LayoutValue& v) { v.set(""); });
    ASSERT_NE(state(), before);
    load(spd("all.spd"));
    // The load ends by checking and clearing Edit Detail Pages, so that box reads 0.
    std::vector<std::string> expected = before;
    expected[16] = " 0 ";
    EXPECT_EQ(state(), expected);
}

TEST_F(LayoutFile, NumbersPrintWithTheirBlanksAndEmptyValuesAsEmptyLines) {
    save(spd("plain.spd"));
    const auto saved = lines(spd("plain.spd"));
    EXPECT_EQ(saved[0], "center");          // PageAlign
    EXPECT_EQ(saved[2], " 4 ");             // ItemsPerRow
    EXPECT_EQ(saved[3], "");                // CellBorderColor
    EXPECT_EQ(saved[6], "");                // SelectItemsMode, never set
    EXPECT_EQ(saved[12], " 0 ");            // chkDetail(3)
    EXPECT_EQ(saved[17], " 10 ");           // BoxField(0, 0)
    EXPECT_EQ(saved[18], " 0 ");            // BoxOrder(0, 0)
    EXPECT_EQ(saved[22], "MS Sans Serif");  // FontNameOf(0, 0)
    EXPECT_EQ(saved[23], "#111111");        // FontColorOf(0, 0)
    EXPECT_EQ(saved[24], " 5 ");            // FontSizeOf(0, 0)
    EXPECT_EQ(saved[29], "");               // ItemAlign(0, 0), set by the page setup only
    EXPECT_EQ(saved[30], " 1 ");            // BoxListIndex(0, 0)
}

// The table of the file, written out by hand: group by group for each side and counter.
TEST_F(LayoutFile, AFileWrittenFromTheTableLoads) {
    std::vector<std::string> out;
    for (int i = 0; i <= 1; ++i) {
        for (int j = 0; j <= 30; ++j) {
            if (i == 0 && j == 0)
                out.insert(out.end(),
                           {"left", "6", " 6 ", "#00FF00", "style='x'>", "#FF0000", "True",
                            "<a href='buy'>", "buy text", "My Shop", "dotted", " 2 ", " 1 "});
            if (i == 0 && j < 2) out.insert(out.end(), {"<body bgcolor=\"#EEEEEE\">", "#EEEEEE"});
            if (i == 0 && j < 5) {
                out.push_back("T3-" + std::to_string(j));
                if (j < 3) out.push_back(j == 2 ? " 1 " : " 0 ");
            }
            if (j < 9)
                out.insert(out.end(),
                           {" " + std::to_string(j) + " ", " " + std::to_string(8 - j) + " "});
            if (j < 11) {
                out.push_back("ins" + std::to_string(i) + "-" + std::to_string(j));
                if (i == 0) out.push_back("box" + std::to_string(j));
            }
            if (j < 21)
                out.insert(out.end(), {"</b>", "Face" + std::to_string(i) + "-" + std::to_string(j),
                                       "#12345" + std::to_string(j % 10), " 3 ", "<b>", "<i>",
                                       "<strike>", "<u>"});
            if (j < 23) out.push_back("Al" + std::to_string(i) + "-" + std::to_string(j));
            out.push_back(" " + std::to_string(100 + j) + " ");
        }
    }
    ASSERT_EQ(out.size(), 538u);
    {
        TextFileWriter w(spd("hand.spd"));
        for (const auto& line : out)
            w.printLine(line);
    }
    load(spd("hand.spd"));
    Module& m = Mod();
    WebCatalogue& w = web();
    EXPECT_EQ(m.PageAlign, "left");
    EXPECT_EQ(f->operator()("txtIR").Text(), "6");
    EXPECT_EQ(m.ItemsPerRow, 6);
    EXPECT_EQ(CStr(w.CellBorderColor), "#00FF00");
    EXPECT_EQ(CStr(m.SelectItemsMode), "True");
    EXPECT_EQ(f->operator()("Text5").Text(), "buy text");
    EXPECT_EQ(f->operator()("txtTitle").Text(), "My Shop");
    EXPECT_EQ(w.PageTitle, "My Shop");  // the box's Change ran
    EXPECT_EQ(CStr(w.CellBorderStyle), "dotted");
    EXPECT_EQ(CStr(w.FrameStyle), "2");
    EXPECT_EQ(CInt(f->operator()("chkDetail", 3).Value()), 1);
    EXPECT_TRUE(w.NewPageOnChange);  // the box's Click ran
    EXPECT_EQ(w.BodyTag[1], "<body bgcolor=\"#EEEEEE\">");
    EXPECT_EQ(f->operator()("Text3", 4).Text(), "T3-4");
    EXPECT_EQ(w.TitleMode, 0);  // chkDetail(2) checked with the page number caption
    EXPECT_EQ(m.BoxField[1][8], 8);
    EXPECT_EQ(CStr(m.BoxOrder[1][8]), "0");
    EXPECT_EQ(CStr(w.InsertText[1][10]), "ins1-10");
    EXPECT_EQ(f->operator()("Text4", 10).Text(), "box10");
    EXPECT_EQ(m.FontNameOf[1][20], "Face1-20");
    EXPECT_EQ(m.FontColorOf[0][13], "#123453");
    EXPECT_EQ(m.FontSizeOf[1][20], 3);
    EXPECT_EQ(m.StrikeOn[1][20], "<strike>");
    EXPECT_EQ(m.UnderlineOn[1][20], "<u>");
    EXPECT_EQ(CStr(w.ItemAlign[1][22]), "Al1-22");
    EXPECT_EQ(CStr(m.BoxListIndex[1][30]), "130");
    EXPECT_TRUE(m.PanelGo);
}

TEST_F(LayoutFile, ATitleWithACommaShiftsEveryLaterValueByOne) {
    f->operator()("txtTitle").SetText("Crafts, Gifts");
    web().CellBorderStyle = Variant("solid");
    web().FrameStyle = Variant::Integer(4);
    save(spd("comma.spd"));
    load(spd("comma.spd"));
    EXPECT_EQ(f->operator()("txtTitle").Text(), "Crafts");
    EXPECT_EQ(CStr(web().CellBorderStyle), "Gifts");
    EXPECT_EQ(CStr(web().FrameStyle), "solid");                 // the border style's line
    EXPECT_EQ(CInt(f->operator()("chkDetail", 3).Value()), 4);  // the frame style's line
}

TEST_F(LayoutFile, ANameWithoutExtensionGetsSpdAndOneHoldingItAnywhereGetsNothing) {
    save(spd("plain"));
    EXPECT_TRUE(std::filesystem::exists(spd("plain.spd")));
    save(spd("shop.SpD.old"));
    EXPECT_TRUE(std::filesystem::exists(spd("shop.SpD.old")));
    EXPECT_FALSE(std::filesystem::exists(spd("shop.SpD.old.spd")));
}

TEST_F(LayoutFile, CancellingEitherDialogLeavesEverythingAsItWas) {
    fillDistinct();
    Mod().PanelGo = false;
    const auto before = state();
    save("");
    load("");
    save("*.spd");
    EXPECT_EQ(state(), before);
    EXPECT_FALSE(Mod().PanelGo);
    EXPECT_FALSE(std::filesystem::exists(spd("*.spd")));
}

TEST_F(LayoutFile, AShortFileEndsInTheReadErrorAndKeepsWhatWasRead) {
    {
        TextFileWriter w(spd("short.spd"));
        w.printLine("right");
        w.printLine("7");
    }
    std::vector<std::string> trace;
    setErrorTrace([&](const std::string& line) { trace.push_back(line); });
    load(spd("short.spd"));
    setErrorTrace(nullptr);
    EXPECT_EQ(Mod().PageAlign, "right");
    EXPECT_EQ(f->operator()("txtIR").Text(), "7");
    ASSERT_FALSE(trace.empty());
    EXPECT_NE(trace.front().find("62"), std::string::npos);
}

TEST_F(LayoutFile, TheImagesFolderIsMadeWithItsMarkerOnce) {
    Trap on = Trap::Ignoring();
    web().makeImagesFolder(on);
    EXPECT_EQ(readAll(appDir() + "Pages/images/start.dat"), "started\r\n");
    {
        TextFileWriter w(appDir() + "Pages/images/start.dat");
        w.printLine("kept");
    }
    web().makeImagesFolder(on);
    EXPECT_EQ(readAll(appDir() + "Pages/images/start.dat"), "kept\r\n");
}

}  // namespace
