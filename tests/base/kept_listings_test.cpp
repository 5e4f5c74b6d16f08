#include "base/kept_listings.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>

#include "base/files.h"
#include "base/textio.h"
#include "base/vb_error.h"

namespace fs = std::filesystem;

namespace {

class KeptListingsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = fs::temp_directory_path() /
               ("kept_" + std::string(info->name()) + "_" + std::to_string(::getpid()));
        fs::remove_all(dir_);
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }
    std::string path(const std::string& name) const { return (dir_ / name).string(); }
    // A file made behind the program's back, as another program would.
    void touch(const std::string& name) const { std::ofstream(path(name)) << "x"; }
    static void write(const std::string& file) {
        TextFileWriter out(file);
        out.printLine("x");
    }
    fs::path dir_;
};

TEST_F(KeptListingsTest, OutsideARunEveryLookupAsksTheFileItself) {
    EXPECT_EQ(Dir(path("a.jpg")), "");
    touch("a.jpg");
    EXPECT_EQ(Dir(path("a.jpg")), "a.jpg");
    fs::remove(path("a.jpg"));
    EXPECT_EQ(Dir(path("a.jpg")), "");
}

TEST_F(KeptListingsTest, ARunFindsWhatTheFolderHeldAndWhatTheProgramWrites) {
    touch("a.jpg");
    fs::create_directory(path("sub.jpg"));
    const KeptListings run;
    EXPECT_EQ(Dir(path("a.jpg")), "a.jpg");
    EXPECT_EQ(Dir(path("a.gif")), "");
    EXPECT_EQ(Dir(path("sub.jpg")), "");  // a folder is no file
    write(path("page.htm"));
    EXPECT_TRUE(IsRegularFile(path("page.htm")));
    // Another spelling of the same folder knows the write too.
    write(path("sub.jpg/../other.htm"));
    EXPECT_EQ(Dir(path("other.htm")), "other.htm");
}

TEST_F(KeptListingsTest, ARunKeepsTheListingUntilForgottenOrEnded) {
    {
        const KeptListings run;
        EXPECT_EQ(Dir(path("late.jpg")), "");
        touch("late.jpg");  // behind the program's back: the run answers from its listing
        EXPECT_EQ(Dir(path("late.jpg")), "");
        KeptListings::forget();
        EXPECT_EQ(Dir(path("late.jpg")), "late.jpg");
        fs::remove(path("late.jpg"));
    }
    EXPECT_EQ(Dir(path("late.jpg")), "");
}

TEST_F(KeptListingsTest, KillFileCopyAndMkDirInARunAreSeen) {
    touch("a.jpg");
    const KeptListings run;
    EXPECT_EQ(Dir(path("a.jpg")), "a.jpg");
    FileCopy(path("a.jpg"), path("b.jpg"));
    EXPECT_EQ(Dir(path("b.jpg")), "b.jpg");
    Kill(path("a.jpg"));
    EXPECT_EQ(Dir(path("a.jpg")), "");
    EXPECT_EQ(Dir(path("new/c.jpg")), "");
    MkDir(path("new"));
    write(path("new/c.jpg"));
    EXPECT_EQ(Dir(path("new/c.jpg")), "c.jpg");
}

TEST_F(KeptListingsTest, ALinkCountsAsTheFileItNames) {
    touch("a.jpg");
    fs::create_directory(path("folder"));
    fs::create_symlink(path("a.jpg"), path("link.jpg"));
    fs::create_symlink(path("folder"), path("dirlink.jpg"));
    fs::create_symlink(path("gone.jpg"), path("broken.jpg"));
    const KeptListings run;
    EXPECT_EQ(Dir(path("link.jpg")), "link.jpg");
    EXPECT_EQ(Dir(path("dirlink.jpg")), "");
    EXPECT_EQ(Dir(path("broken.jpg")), "");
    EXPECT_EQ(Dir(path("missing/a.jpg")), "");
    EXPECT_EQ(Dir(""), "");
}

std::string contents(const std::string& file) {
    TextFileReader in(file);
    std::string text;
    while (!in.eof())
        text += in.lineInput() + "|";
    return text;
}

TEST_F(KeptListingsTest, AFileWrittenAgainInARunHoldsOnlyItsLastContents) {
    const KeptListings run;
    {
        TextFileWriter out(path("page.htm"));
        out.printLine("a long first line");
        out.printLine("and a second");
    }
    {
        TextFileWriter out(path("page.htm"));
        out.printLine("short");
    }
    EXPECT_EQ(contents(path("page.htm")), "short|");
    EXPECT_EQ(fs::file_size(path("page.htm")), 7u);
    write(path("page.htm"));  // shorter again, after a write that was not cut
    EXPECT_EQ(contents(path("page.htm")), "x|");
    EXPECT_EQ(fs::file_size(path("page.htm")), 3u);
    {
        TextFileWriter out(path("page.htm"));
        out.printLine("short");
    }
    {
        TextFileWriter out(path("page.htm"), TextFileWriter::Mode::Append);
        out.printLine("added");
    }
    EXPECT_EQ(contents(path("page.htm")), "short|added|");
}

// The bytes on disk, read behind the program's back as another program would.
std::string onDisk(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void rewrite(const std::string& file, const std::string& line) {
    TextFileWriter out(file);
    out.printLine(line);
}

// The item view written for one product after another.
void rewriteEach(const std::string& file, std::initializer_list<const char*> views) {
    for (const char* view : views)
        rewrite(file, view);
}

TEST_F(KeptListingsTest, ARewriteInARunWaitsUntilTheProgramReadsTheFile) {
    const KeptListings run;
    rewriteEach(path("page.htm"), {"first view", "second", "third"});
    EXPECT_EQ(onDisk(path("page.htm")), "first view\r\n");
    EXPECT_EQ(contents(path("page.htm")), "third|");
    EXPECT_EQ(onDisk(path("page.htm")), "third\r\n");
}

TEST_F(KeptListingsTest, AWaitingRewriteReachesTheDiskWhenTheRunEnds) {
    {
        const KeptListings run;
        rewriteEach(path("page.htm"), {"first view", "last"});
    }
    EXPECT_EQ(onDisk(path("page.htm")), "last\r\n");
}

TEST_F(KeptListingsTest, ALongerRewriteIsWrittenAtOnce) {
    const KeptListings run;
    rewriteEach(path("page.htm"), {"short", "a good deal longer"});
    EXPECT_EQ(onDisk(path("page.htm")), "a good deal longer\r\n");
}

TEST_F(KeptListingsTest, AWaitingRewriteReachesTheDiskWhenAnotherFileIsWrittenOrKilled) {
    const KeptListings run;
    rewriteEach(path("page.htm"), {"first view", "second"});
    rewrite(path("other.htm"), "other");
    EXPECT_EQ(onDisk(path("page.htm")), "second\r\n");
    rewriteEach(path("page.htm"), {"third view", "fourth"});
    Kill(path("other.htm"));
    EXPECT_EQ(onDisk(path("page.htm")), "fourth\r\n");
}

TEST_F(KeptListingsTest, AFileKilledInARunIsMadeAgainWhenWritten) {
    const KeptListings run;
    write(path("page.htm"));
    Kill(path("page.htm"));
    EXPECT_FALSE(fs::exists(path("page.htm")));
    write(path("page.htm"));
    EXPECT_EQ(contents(path("page.htm")), "x|");
}

TEST_F(KeptListingsTest, AnOpenFileIsStillRefusedWhileOneIsKept) {
    const KeptListings run;
    write(path("page.htm"));
    TextFileWriter out(path("page.htm"));
    EXPECT_THROW(TextFileWriter(path("page.htm")), VbError);
}

}  // namespace
