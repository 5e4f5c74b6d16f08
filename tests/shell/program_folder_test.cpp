#include "shell/program_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "store/scratch_folder.h"

namespace fs = std::filesystem;

namespace {

std::string readText(const fs::path& path) {
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void writeText(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

// A shipped program folder: an executable, the catalogue, a page and a picture.
class ProgramFolderTest : public ::testing::Test {
  protected:
    void SetUp() override {
        root = scratchFolder() / ("program-folder-" + std::to_string(getpid()));
        fs::remove_all(root);
        writeText(root / "shipped/catalogue", "program");
        fs::permissions(root / "shipped/catalogue", fs::perms::owner_exec, fs::perm_options::add);
        writeText(root / "shipped/tandrel2004.mde", "catalogue");
        writeText(root / "shipped/Pages/STNDRDTPLT.dat", "template");
        writeText(root / "shipped/Pictures/NoPic.jpg", "picture");
        // Read-only, as an installation for every user leaves it.
        fs::permissions(root / "shipped/tandrel2004.mde", fs::perms::owner_write,
                        fs::perm_options::remove);
        fs::permissions(root / "shipped/Pages", fs::perms::owner_write, fs::perm_options::remove);
    }
    void TearDown() override {
        fs::permissions(root / "shipped/Pages", fs::perms::owner_write, fs::perm_options::add);
        fs::remove_all(root);
    }
    std::string shipped() const { return (root / "shipped").string() + "/"; }
    std::string user() const { return (root / "home/catalogue-manager").string() + "/"; }

    fs::path root;
};

TEST_F(ProgramFolderTest, AWritableFolderIsUsedInPlaceAndNothingIsCopied) {
    EXPECT_EQ(ChooseProgramFolder(shipped(), true, user()), shipped());
    EXPECT_FALSE(fs::exists(root / "home"));
}

TEST_F(ProgramFolderTest, AFolderThatCannotBeWrittenIsCopiedToTheUsersFolder) {
    EXPECT_EQ(ChooseProgramFolder(shipped(), false, user()), user());
    const fs::path copy = user();
    EXPECT_EQ(readText(copy / "tandrel2004.mde"), "catalogue");
    EXPECT_EQ(readText(copy / "Pages/STNDRDTPLT.dat"), "template");
    EXPECT_EQ(readText(copy / "Pictures/NoPic.jpg"), "picture");
    EXPECT_FALSE(fs::exists(copy / "catalogue"));
    EXPECT_FALSE(fs::exists(root / "home/catalogue-manager.part"));
    // The copies are the user's to change, though the shipped files were read-only.
    const auto perms = fs::status(copy / "tandrel2004.mde").permissions();
    EXPECT_NE(perms & fs::perms::owner_write, fs::perms::none);
    EXPECT_NE(fs::status(copy / "Pages").permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(ProgramFolderTest, TheUsersCopyIsMadeOnceAndKeptAtTheNextStart) {
    ASSERT_EQ(ChooseProgramFolder(shipped(), false, user()), user());
    writeText(fs::path(user()) / "tandrel2004.mde", "changed by the user");
    writeText(fs::path(user()) / "page.htm", "written");
    EXPECT_EQ(ChooseProgramFolder(shipped(), false, user()), user());
    EXPECT_EQ(readText(fs::path(user()) / "tandrel2004.mde"), "changed by the user");
    EXPECT_EQ(readText(fs::path(user()) / "page.htm"), "written");
    EXPECT_EQ(readText(root / "shipped/tandrel2004.mde"), "catalogue");
}

TEST_F(ProgramFolderTest, ACopyCutShortIsMadeAgainWhole) {
    writeText(root / "home/catalogue-manager.part/tandrel2004.mde", "half");
    EXPECT_EQ(ChooseProgramFolder(shipped(), false, user()), user());
    EXPECT_EQ(readText(fs::path(user()) / "tandrel2004.mde"), "catalogue");
    EXPECT_FALSE(fs::exists(root / "home/catalogue-manager.part"));
}

TEST_F(ProgramFolderTest, WithNoUsersFolderTheShippedOneStaysInUse) {
    EXPECT_EQ(ChooseProgramFolder(shipped(), false, ""), shipped());
}

TEST_F(ProgramFolderTest, ACopyThatCannotBeMadeLeavesTheShippedFolderInUse) {
    // The user's folder would lie below a plain file.
    writeText(root / "home", "not a folder");
    EXPECT_EQ(ChooseProgramFolder(shipped(), false, user()), shipped());
}

TEST_F(ProgramFolderTest, AFolderWithoutWritePermissionIsNotWritable) {
    EXPECT_TRUE(FolderWritable(shipped()));
    EXPECT_FALSE(FolderWritable((root / "missing").string() + "/"));
    if (geteuid() == 0) GTEST_SKIP() << "the superuser may write anywhere";
    EXPECT_FALSE(FolderWritable((root / "shipped/Pages").string() + "/"));
}

TEST(UserProgramFolder, FollowsTheUsersDataFolder) {
    const char* saved = std::getenv("XDG_DATA_HOME");
    const std::string before = saved ? saved : "";
    setenv("XDG_DATA_HOME", "/data/of/the/user", 1);
    EXPECT_EQ(UserProgramFolder(), "/data/of/the/user/catalogue-manager/");
    unsetenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    if (home) {
        EXPECT_EQ(UserProgramFolder(), std::string(home) + "/.local/share/catalogue-manager/");
    }
    if (saved) setenv("XDG_DATA_HOME", before.c_str(), 1);
}

}  // namespace
