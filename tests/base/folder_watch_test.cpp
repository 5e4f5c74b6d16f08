#include "base/folder_watch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

// Enough look-ups of one folder in a row for it to be watched.
constexpr int Lookups = 10;

class FolderWatchTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        // The real path: a path through a link is never watched.
        dir_ = fs::canonical(fs::temp_directory_path()) /
               ("watch_" + std::string(info->name()) + "_" + std::to_string(::getpid()));
        fs::remove_all(dir_);
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }
    std::string folder(const std::string& relative) const {
        fs::create_directories(dir_ / relative);
        return (dir_ / relative).string();
    }
    std::string path(const std::string& relative) const { return (dir_ / relative).string(); }
    // Asks about the folder again and again, as adding a folder does once a file.
    static bool askedOften(const std::string& folder) {
        bool all = true;
        for (int i = 0; i < Lookups; ++i)
            all = IsFolderNow(folder) && all;
        return all;
    }
    fs::path dir_;
};

TEST_F(FolderWatchTest, AWatchedFolderRemovedIsNoLongerAFolderAndMadeAgainIsOne) {
    const std::string pics = folder("pics");
    EXPECT_TRUE(askedOften(pics));
    fs::remove(pics);
    EXPECT_FALSE(IsFolderNow(pics));
    EXPECT_FALSE(IsFolderNow(pics));
    fs::create_directory(pics);
    EXPECT_TRUE(askedOften(pics));
}

TEST_F(FolderWatchTest, FilesMadeBesideAndInsideTheFolderChangeNothing) {
    const std::string pics = folder("a/pics");
    EXPECT_TRUE(askedOften(pics));
    std::ofstream(path("a/beside.jpg")) << "x";
    std::ofstream(path("a/pics/inside.jpg")) << "x";
    fs::create_directory(path("a/other"));
    fs::remove(path("a/beside.jpg"));
    EXPECT_TRUE(askedOften(pics));
}

TEST_F(FolderWatchTest, AFolderAboveRenamedLeavesThePathLeadingNowhere) {
    const std::string pics = folder("a/b/pics");
    EXPECT_TRUE(askedOften(pics));
    fs::rename(path("a"), path("moved"));
    EXPECT_FALSE(IsFolderNow(pics));
    EXPECT_TRUE(IsFolderNow(path("moved/b/pics")));
    fs::rename(path("moved"), path("a"));
    EXPECT_TRUE(askedOften(pics));
}

TEST_F(FolderWatchTest, AFolderReplacedByAFileOfItsNameIsNoFolder) {
    const std::string pics = folder("pics");
    EXPECT_TRUE(askedOften(pics));
    fs::remove(pics);
    std::ofstream(pics) << "x";
    EXPECT_FALSE(IsFolderNow(pics));
}

TEST_F(FolderWatchTest, AFolderMovedAwayAndAnotherMovedInItsPlaceIsStillAFolder) {
    const std::string pics = folder("pics");
    folder("spare");
    EXPECT_TRUE(askedOften(pics));
    fs::rename(pics, path("old"));
    EXPECT_FALSE(IsFolderNow(pics));
    EXPECT_TRUE(askedOften(path("old")));
    fs::rename(path("spare"), pics);
    EXPECT_TRUE(IsFolderNow(pics));
    fs::remove(path("old"));
    EXPECT_FALSE(IsFolderNow(path("old")));
}

TEST_F(FolderWatchTest, TwoFoldersAskedInTurnAreEachLookedUp) {
    const std::string a = folder("a"), b = folder("b");
    for (int i = 0; i < Lookups; ++i) {
        EXPECT_TRUE(IsFolderNow(a));
        EXPECT_TRUE(IsFolderNow(b));
    }
    fs::remove(b);
    EXPECT_TRUE(IsFolderNow(a));
    EXPECT_FALSE(IsFolderNow(b));
}

TEST_F(FolderWatchTest, APathThroughALinkFollowsTheLinkWhereverItNowLeads) {
    const std::string pics = folder("pics");
    fs::create_directory_symlink(pics, path("link"));
    EXPECT_TRUE(askedOften(path("link")));
    fs::remove(path("link"));
    fs::create_directory_symlink(path("nowhere"), path("link"));
    EXPECT_FALSE(IsFolderNow(path("link")));
}

TEST_F(FolderWatchTest, AMissingFolderStaysMissingUntilMade) {
    const std::string pics = path("pics");
    for (int i = 0; i < Lookups; ++i)
        EXPECT_FALSE(IsFolderNow(pics));
    fs::create_directory(pics);
    EXPECT_TRUE(IsFolderNow(pics));
}

}  // namespace
