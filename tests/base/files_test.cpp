#include "base/files.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "base/vb_error.h"

namespace fs = std::filesystem;

namespace {

int errorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const VbError& e) {
        return e.Number();
    }
    return 0;
}

class Files : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = fs::temp_directory_path() /
               ("files_" + std::string(info->name()) + "_" + std::to_string(::getpid()));
        fs::remove_all(dir_);
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }
    std::string path(const std::string& name) const { return (dir_ / name).string(); }
    void touch(const std::string& name, const std::string& text = "x") const {
        std::ofstream(path(name), std::ios::binary) << text;
    }
    fs::path dir_;
};

}  // namespace

TEST(FilePatterns, StarQuestionMarkAndCase) {
    EXPECT_TRUE(MatchesPattern("cat1.htm", "*.htm*"));
    EXPECT_TRUE(MatchesPattern("cat1.html", "*.htm*"));
    EXPECT_TRUE(MatchesPattern("CAT1.HTM", "*.htm"));
    EXPECT_FALSE(MatchesPattern("cat1.html", "*.htm"));
    EXPECT_TRUE(MatchesPattern("a.b", "?.?"));
    EXPECT_FALSE(MatchesPattern("ab.b", "?.?"));
    EXPECT_TRUE(MatchesPattern("x.gif", "*.jpg;*.gif"));
    EXPECT_FALSE(MatchesPattern("start.dat", "*.jpg;*.gif"));
    EXPECT_TRUE(MatchesPattern("noext", "*.*"));
}

TEST_F(Files, KillDeletesWhatFitsAndFaultsOnNothing) {
    touch("p1.htm");
    touch("p2.html");
    Kill(path("*.htm"));
    EXPECT_FALSE(fs::exists(path("p1.htm")));
    EXPECT_TRUE(fs::exists(path("p2.html")));
    EXPECT_EQ(errorOf([&] { Kill(path("*.htm")); }), vberr::FileNotFound);
    EXPECT_EQ(errorOf([&] { Kill(path("missing/*.htm")); }), vberr::PathNotFound);
}

TEST_F(Files, FileCopyReplacesTheTarget) {
    touch("from.jpg", "new");
    touch("to.spb", "old");
    FileCopy(path("from.jpg"), path("to.spb"));
    std::ifstream in(path("to.spb"));
    std::string text;
    in >> text;
    EXPECT_EQ(text, "new");
    EXPECT_EQ(errorOf([&] { FileCopy(path("none.jpg"), path("x")); }), vberr::FileNotFound);
    EXPECT_EQ(errorOf([&] { FileCopy(path("from.jpg"), path("no/x")); }), vberr::PathNotFound);
}
