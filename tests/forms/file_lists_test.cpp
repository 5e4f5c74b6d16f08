// The drive, folder and file lists show the real file system.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "base/convert.h"
#include "base/files.h"
#include "base/vb_error.h"
#include "forms/file_lists.h"
#include "forms/form.h"
#include "store/scratch_folder.h"

namespace fs = std::filesystem;

namespace {

struct FileListTest : ::testing::Test {
    FileListTest()
        : root((scratchFolder() / ("lists-" + std::to_string(getpid()) + "-" +
                                   ::testing::UnitTest::GetInstance()->current_test_info()->name()))
                   .string()) {
        fs::create_directories(root);
    }
    ~FileListTest() override {
        std::error_code ec;
        fs::remove_all(root, ec);
    }
    std::string make(const std::string& relative) {
        const fs::path path = fs::path(root) / relative;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "x";
        return path.string();
    }
    std::string dir(const std::string& relative) {
        const fs::path path = fs::path(root) / relative;
        fs::create_directories(path);
        return path.string();
    }
    std::vector<std::string> items(const Control& c) const {
        std::vector<std::string> all;
        for (int i = 0; i < c.ListCount(); ++i)
            all.push_back(c.List(i));
        return all;
    }
    std::string root;
    Form form{"F"};
    Control& dirs = form.Add("dirList", ControlKind::DirList);
    Control& files = form.Add("filList", ControlKind::FileList);
};

TEST_F(FileListTest, AFolderListHoldsTheFullPathsOfItsSubfoldersInAnyCaseOrder) {
    const std::string b = dir("beta"), a = dir("Alpha"), c = dir("charlie");
    dir(".hidden");
    make("file.jpg");
    dirs.SetProperty("Path", Variant(root + "/"));
    EXPECT_EQ(textOf(dirs.Property("Path")), root);
    EXPECT_EQ(items(dirs), (std::vector<std::string>{a, b, c}));
    EXPECT_EQ(dirs.ListIndex(), -1);
    EXPECT_EQ(dirs.List(-1), root);
    EXPECT_EQ(dirs.List(-2), fs::path(root).parent_path().string());
    dirs.SetListIndex(-2);
    EXPECT_EQ(dirs.ListIndex(), -2);
}

TEST_F(FileListTest, AFolderThatIsNotThereIsPathNotFoundAndThePathStays) {
    dirs.SetProperty("Path", Variant(root));
    try {
        dirs.SetProperty("Path", Variant(root + "/missing"));
        FAIL() << "no fault";
    } catch (const VbError& e) {
        EXPECT_EQ(e.Number(), vberr::PathNotFound);
    }
    EXPECT_EQ(textOf(dirs.Property("Path")), root);
}

TEST_F(FileListTest, AFileListHoldsTheNamesThatMatchItsPatternsInAnyCase) {
    make("b.JPG");
    make("a.gif");
    make("c.bmp");
    make(".secret.jpg");
    dir("folder.jpg");
    files.SetProperty("Path", Variant(root));
    EXPECT_EQ(items(files), (std::vector<std::string>{"a.gif", "b.JPG", "c.bmp"}));
    files.SetProperty("Pattern", Variant("*.jpg;*.gif"));
    EXPECT_EQ(items(files), (std::vector<std::string>{"a.gif", "b.JPG"}));
    files.SetListIndex(1);
    EXPECT_EQ(textOf(files.Property("FileName")), "b.JPG");
}

TEST_F(FileListTest, NamesSortIgnoringCaseAndNamesOfOneSpellingInAFixedOrder) {
    for (const char* name : {"b.jpg", "_a.jpg", "B.jpg", "ab.jpg", "a.jpg", "A.jpg"})
        make(name);
    files.SetProperty("Path", Variant(root));
    EXPECT_EQ(items(files),
              (std::vector<std::string>{"A.jpg", "a.jpg", "ab.jpg", "B.jpg", "b.jpg", "_a.jpg"}));
}

TEST_F(FileListTest, NamesWithBlanksApostrophesAndLettersBeyondAsciiStandAsTheyAre) {
    make("Tasse à thé.jpg");
    make("O'Brien's #1 [big].jpg");
    dir("Café crème");
    files.SetProperty("Pattern", Variant("*.jpg"));
    files.SetProperty("Path", Variant(root));
    dirs.SetProperty("Path", Variant(root));
    EXPECT_EQ(items(files),
              (std::vector<std::string>{"O'Brien's #1 [big].jpg", "Tasse à thé.jpg"}));
    EXPECT_EQ(items(dirs), std::vector<std::string>{root + "/Café crème"});
    EXPECT_TRUE(MatchesPattern("O'Brien's #1 [big].jpg", "O'Brien's #1 [big].*"));
    EXPECT_FALSE(MatchesPattern("X1 b.jpg", "X# [b].jpg"));
}

TEST_F(FileListTest, LinksBackUpTheTreeAreLeftOutAndOthersListed) {
    const std::string inner = dir("a/b");
    const std::string other = dir("elsewhere");
    fs::create_directory_symlink(".", fs::path(root) / "a" / "self");
    fs::create_directory_symlink("..", fs::path(inner) / "up");
    fs::create_directory_symlink(other, fs::path(inner) / "away");
    fs::create_directory_symlink(root + "/gone", fs::path(inner) / "broken");
    dirs.SetProperty("Path", Variant(root + "/a"));
    EXPECT_EQ(items(dirs), std::vector<std::string>{inner});
    dirs.SetProperty("Path", Variant(inner));
    EXPECT_EQ(items(dirs), std::vector<std::string>{inner + "/away"});
    // A link from the far side back into the tree is cut once it closes the loop.
    fs::create_directory_symlink(inner, fs::path(other) / "back");
    dirs.SetProperty("Path", Variant(inner + "/away/back"));
    EXPECT_EQ(items(dirs), std::vector<std::string>{});
}

TEST_F(FileListTest, AFolderThatCannotBeReadListsNothing) {
    make("locked/a.jpg");
    dir("locked/sub");
    chmod(root.c_str(), 0755);
    chmod((root + "/locked").c_str(), 0);
    // Root reads every folder: another user reads it, in a child.
    EXPECT_EXIT(
        {
            if (geteuid() == 0 && seteuid(65534) != 0) _exit(3);
            files.SetProperty("Path", Variant(root + "/locked"));
            dirs.SetProperty("Path", Variant(root + "/locked"));
            _exit(files.ListCount() == 0 && dirs.ListCount() == 0 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    chmod((root + "/locked").c_str(), 0755);
}

// A large folder's listing is kept while its status is unchanged: every change to it, made
// at once after a listing or once the listing has had time to be kept, shows at the next one.
struct LargeFolderTest : FileListTest {
    static constexpr int Many = 300;
    LargeFolderTest() {
        for (int i = 0; i < Many; ++i)
            make("large/p" + std::to_string(i) + ".jpg");
        large = root + "/large";
    }
    // Long enough that the listing's reading begins after the folder's last change by the
    // kernel's coarse clock, so that the listing is kept.
    static void settle() { std::this_thread::sleep_for(std::chrono::milliseconds(30)); }
    std::size_t count(const std::string& name) const {
        const auto all = FileLists::files(large, "*.*");
        return static_cast<std::size_t>(std::count(all.begin(), all.end(), name));
    }
    std::string large;
};

TEST_F(LargeFolderTest, AFileMadeRightAfterAListingShowsInTheNext) {
    EXPECT_EQ(FileLists::files(large, "*.jpg").size(), std::size_t{Many});
    make("large/new.jpg");
    EXPECT_EQ(FileLists::files(large, "*.jpg").size(), std::size_t{Many + 1});
}

TEST_F(LargeFolderTest, FilesMadeRemovedAndRenamedAfterAKeptListingShowInTheNext) {
    settle();
    EXPECT_EQ(count("p7.jpg"), 1u);
    EXPECT_EQ(FileLists::files(large, "*.jpg"), FileLists::files(large, "*.jpg"));
    make("large/new.jpg");
    EXPECT_EQ(count("new.jpg"), 1u);
    settle();
    EXPECT_EQ(count("new.jpg"), 1u);
    fs::remove(large + "/p7.jpg");
    EXPECT_EQ(count("p7.jpg"), 0u);
    settle();
    EXPECT_EQ(count("p8.jpg"), 1u);
    fs::rename(large + "/p8.jpg", large + "/renamed.jpg");
    EXPECT_EQ(count("p8.jpg"), 0u);
    EXPECT_EQ(count("renamed.jpg"), 1u);
    settle();
    EXPECT_TRUE(FileLists::subfolders(large).empty());
    dir("large/sub");
    EXPECT_EQ(FileLists::subfolders(large), std::vector<std::string>{large + "/sub"});
}

TEST_F(LargeFolderTest, AFolderPutInThePlaceOfAListedOneListsItsOwnFiles) {
    settle();
    EXPECT_EQ(count("p1.jpg"), 1u);
    fs::rename(large, root + "/old");
    make("other/only.jpg");
    fs::rename(root + "/other", large);
    EXPECT_EQ(FileLists::files(large, "*.*"), std::vector<std::string>{"only.jpg"});
}

TEST_F(LargeFolderTest, ALinkWhoseTargetBecomesAFolderIsListedAsOne) {
    const std::string target = make("away/target");
    fs::create_symlink(target, fs::path(large) / "link");
    settle();
    EXPECT_EQ(count("link"), 1u);
    EXPECT_TRUE(FileLists::subfolders(large).empty());
    // The folder holding the link does not change: only what the link leads to.
    fs::remove(target);
    dir("away/target");
    EXPECT_EQ(count("link"), 0u);
    EXPECT_EQ(FileLists::subfolders(large), std::vector<std::string>{large + "/link"});
}

TEST_F(FileListTest, TheDriveListHoldsTheRootAndPickingItChangesTheDrive) {
    Control& drives = form.Add("drvList", ControlKind::DriveList);
    EXPECT_EQ(items(drives), std::vector<std::string>{"/"});
    drives.SetProperty("Drive", Variant(root));
    EXPECT_EQ(textOf(drives.Property("Drive")), "/");
}

}  // namespace
