// The file seeker walks the real folder tree depth first: subfolders last first, a folder's
// own files after its subfolders.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "base/convert.h"
#include "forms/runtime.h"
#include "program_fixture.h"
#include "reports/win_seek.h"

namespace fs = std::filesystem;

namespace {

struct Seeker : ProgramTest {
    Seeker() {
        rt->Show(rt->Get("WinSeek"));
        seek = static_cast<WinSeek*>(rt->Loaded("WinSeek"));
    }
    std::string file(const std::string& relative) {
        const fs::path path = root() / relative;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "x";
        return path.string();
    }
    fs::path root() const { return fs::path(appDir()) / "tree"; }
    // Searches below the folder for the pattern, as adding a folder drives it.
    void search(const std::string& folder, const std::string& pattern) {
        (*seek)("txtSearchSpec").SetText(pattern);
        (*seek)("dirList").SetProperty("Path", Variant(folder));
        (*seek)("cmdSearch").Raise("Click");
    }
    std::vector<std::string> found() const {
        std::vector<std::string> all;
        Control& list = (*seek)("lstFoundFiles");
        for (int i = 0; i < list.ListCount(); ++i)
            all.push_back(list.List(i));
        return all;
    }
    std::string caption(const char* name) const { return (*seek)(name).Caption(); }
    WinSeek* seek = nullptr;
};

TEST_F(Seeker, SubfoldersComeLastFirstAndAFoldersFilesAfterThem) {
    const std::string a = file("a.jpg"), x = file("A/x.jpg"), y = file("B/y.jpg"),
                      z = file("B/C/z.jpg");
    file("B/skip.txt");
    EXPECT_EQ(seek->Caption(), "Getting Files...");
    EXPECT_EQ(caption("cmdSearch"), "&Search");
    search(root().string(), "*.jpg");
    EXPECT_EQ(found(), (std::vector<std::string>{z, y, x, a}));
    EXPECT_EQ(caption("lblCount"), " 4");
    EXPECT_EQ(caption("cmdSearch"), "&Reset");
    EXPECT_EQ(caption("cmdExit"), "E&xit");
    EXPECT_EQ(textOf((*seek)("filList").Property("Path")), root().string());
}

TEST_F(Seeker, AFolderWithoutSubfoldersListsOnlyItsFiles) {
    const std::string b = file("b.gif"), a = file("a.gif");
    search(root().string(), "*.*");
    EXPECT_EQ(found(), (std::vector<std::string>{a, b}));
}

TEST_F(Seeker, ATreeWithoutAMatchCountsNoneAndStillEnds) {
    file("s/t/u.txt");
    search(root().string(), "*.jpg");
    EXPECT_TRUE(found().empty());
    EXPECT_EQ(caption("lblCount"), "0");
    EXPECT_EQ(caption("cmdSearch"), "&Reset");
}

TEST_F(Seeker, APatternOfSeveralPartsMatchesEachInAnyCase) {
    const std::string j = file("one.JPG"), g = file("two.gif");
    file("three.bmp");
    search(root().string(), "*.jpg;*.gif");
    EXPECT_EQ(found(), (std::vector<std::string>{j, g}));
}

TEST_F(Seeker, ARootAsTheStartFolderGivesASingleSeparator) {
    file("top.jpg");
    file("sub/low.jpg");
    // The tree becomes the root of a child process of its own.
    EXPECT_EXIT(
        {
            if (chroot(root().c_str()) != 0 || chdir("/") != 0) _exit(3);
            search("/", "*.jpg");
            _exit(found() == std::vector<std::string>{"/sub/low.jpg", "/top.jpg"} ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(Seeker, ThePressOnAChosenFolderOnlyGoesIntoIt) {
    file("inner/x.jpg");
    (*seek)("dirList").SetProperty("Path", Variant(root().string()));
    (*seek)("dirList").SetListIndex(0);
    (*seek)("cmdSearch").Raise("Click");
    EXPECT_EQ(textOf((*seek)("dirList").Property("Path")), (root() / "inner").string());
    EXPECT_EQ(caption("cmdSearch"), "&Search");
    EXPECT_TRUE(found().empty());
    EXPECT_EQ((*seek)("filList").List(0), "x.jpg");
}

TEST_F(Seeker, CancelStopsTheWalkAtItsNextFolder) {
    for (const char* f : {"a/1.jpg", "b/2.jpg", "c/3.jpg", "4.jpg"})
        file(f);
    int passes = 0;
    ui.onLetEventsRun = [&] {
        if (++passes == 3) (*seek)("cmdExit").Raise("Click");
    };
    EXPECT_EQ(caption("cmdExit"), "E&xit");
    search(root().string(), "*.jpg");
    // The root and c were entered, b was not: only c's file.
    EXPECT_EQ(found(), std::vector<std::string>{(root() / "c/3.jpg").string()});
    EXPECT_EQ(caption("cmdSearch"), "&Reset");
    EXPECT_FALSE(seek->SeekAllowed);
}

TEST_F(Seeker, ResetEmptiesTheListAndGoesBackToTheCurrentFolder) {
    file("a.jpg");
    search(root().string(), "*.jpg");
    (*seek)("cmdSearch").Raise("Click");
    EXPECT_TRUE(found().empty());
    EXPECT_EQ(caption("lblCount"), "0");
    EXPECT_EQ(caption("cmdSearch"), "&Search");
    EXPECT_EQ(textOf((*seek)("dirList").Property("Path")),
              fs::path(appDir()).parent_path().string());
    EXPECT_EQ(textOf((*seek)("drvList").Property("Drive")), "/");
}

TEST_F(Seeker, ExitUnloadsTheForm) {
    (*seek)("cmdExit").Raise("Click");
    EXPECT_EQ(rt->Loaded("WinSeek"), nullptr);
}

TEST_F(Seeker, ExactlyTheLimitShowsTheMessageAndOneMoreAboveEndsOnTheNext) {
    fs::create_directories(root() / "sub");
    for (int i = 0; i < 32766; ++i)
        std::ofstream(root() / "sub" / ("f" + std::to_string(i) + ".jpg"));
    file("up.jpg");
    file("up2.jpg");
    search((root() / "sub").string(), "*.jpg");
    EXPECT_EQ((*seek)("lstFoundFiles").ListCount(), 32766);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].prompt, "Sorry, the database can have a maximum of 32,767 records!");
    (*seek)("cmdSearch").Raise("Click");
    search(root().string(), "*.jpg");
    // The upper folder adds one more entry, without the message.
    EXPECT_EQ((*seek)("lstFoundFiles").ListCount(), 32767);
    EXPECT_EQ(caption("lblCount"), " 32767");
    EXPECT_EQ((*seek)("lstFoundFiles").List(32766), (root() / "up.jpg").string());
    EXPECT_EQ(ui.boxes.size(), 2u);
}

TEST_F(Seeker, AFolderGoneDuringTheWalkShowsItsFaultAndEndsTheProgram) {
    file("a/x.jpg");
    file("b/y.jpg");
    int passes = 0;
    ui.onLetEventsRun = [&] {
        if (++passes == 2) fs::remove_all(root());
    };
    // Inside b the walk goes back up to the tree, which is gone.
    EXPECT_THROW(search(root().string(), "*.jpg"), ProgramEnded);
    ASSERT_FALSE(ui.boxes.empty());
    EXPECT_EQ(ui.boxes.back().prompt, "Path not found");
}

}  // namespace
