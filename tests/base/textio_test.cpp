#include "base/textio.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#include "base/vb_error.h"

namespace fs = std::filesystem;

namespace {

template <class F>
int errorOf(F&& f) {
    try {
        f();
    } catch (const VbError& e) {
        return e.Number();
    }
    return 0;
}

// A fresh folder per test, removed afterwards.
class TextFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = fs::temp_directory_path() /
               ("textio_" + std::string(info->name()) + "_" + std::to_string(::getpid()));
        fs::remove_all(dir_);
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }

    std::string path(const std::string& name) const { return (dir_ / name).string(); }

    void writeRaw(const std::string& name, const std::string& bytes) const {
        std::ofstream out(path(name), std::ios::binary);
        out << bytes;
    }
    std::string readRaw(const std::string& name) const {
        std::ifstream in(path(name), std::ios::binary);
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }

    fs::path dir_;
};

}  // namespace

TEST(PrintForm, PositiveNumberHasBlanksAround) {
    EXPECT_EQ(printForm(Variant(5)), " 5 ");
}

TEST(PrintForm, NegativeNumberHasMinusAndTrailingBlank) {
    EXPECT_EQ(printForm(Variant(-3)), "-3 ");
}

TEST(PrintForm, DropsTheLeadingZero) {
    EXPECT_EQ(printForm(Variant(0.5)), " .5 ");
    EXPECT_EQ(printForm(Variant(-0.5)), "-.5 ");
    EXPECT_EQ(printForm(Variant(0)), " 0 ");
}

TEST(PrintForm, Fractions) {
    EXPECT_EQ(printForm(Variant(12.25)), " 12.25 ");
}

TEST(PrintForm, IntegerAndCurrency) {
    EXPECT_EQ(printForm(Variant::Integer(14)), " 14 ");
    EXPECT_EQ(printForm(Variant::Currency(2.5)), " 2.5 ");
}

TEST(PrintForm, BooleanWords) {
    EXPECT_EQ(printForm(Variant(true)), "True");
    EXPECT_EQ(printForm(Variant(false)), "False");
}

TEST(PrintForm, TextAsItStands) {
    EXPECT_EQ(printForm(Variant(" Arial, 12 ")), " Arial, 12 ");
}

TEST(PrintForm, EmptyAndNull) {
    EXPECT_EQ(printForm(Variant()), "");
    EXPECT_EQ(printForm(Variant::Null()), "Null");
}

TEST_F(TextFiles, LinesEndWithCarriageReturnLineFeed) {
    TextFileWriter out(path("a.txt"));
    out.printLine("one");
    out.printValue(Variant(5));
    out.printValue(Variant(true));
    out.printValue(Variant());
    out.close();
    EXPECT_EQ(readRaw("a.txt"), "one\r\n 5 \r\nTrue\r\n\r\n");
}

TEST_F(TextFiles, OutputReplacesAndAppendAdds) {
    writeRaw("a.txt", "old\r\n");
    {
        TextFileWriter out(path("a.txt"));
        out.printLine("new");
    }
    EXPECT_EQ(readRaw("a.txt"), "new\r\n");
    {
        TextFileWriter out(path("a.txt"), TextFileWriter::Mode::Append);
        out.printLine("more");
    }
    EXPECT_EQ(readRaw("a.txt"), "new\r\nmore\r\n");
}

TEST_F(TextFiles, LargeOutputIsWrittenWhole) {
    {
        TextFileWriter out(path("big.txt"));
        for (int i = 0; i < 200000; ++i)
            out.printLine("line " + std::to_string(i));
    }
    TextFileReader in(path("big.txt"));
    int count = 0;
    std::string last;
    while (!in.eof()) {
        last = in.lineInput();
        ++count;
    }
    EXPECT_EQ(count, 200000);
    EXPECT_EQ(last, "line 199999");
}

TEST_F(TextFiles, WriterToMissingFolderIsPathNotFound) {
    EXPECT_EQ(errorOf([&] { TextFileWriter out(path("nofolder/a.txt")); }), 76);
}

TEST_F(TextFiles, EmptyFileNameIsBadFileName) {
    EXPECT_EQ(errorOf([] { TextFileWriter out(""); }), 52);
    EXPECT_EQ(errorOf([] { TextFileReader in(""); }), 52);
}

TEST_F(TextFiles, ReaderOfMissingFileIsFileNotFound) {
    EXPECT_EQ(errorOf([&] { TextFileReader in(path("none.txt")); }), 53);
}

TEST_F(TextFiles, ReaderInMissingFolderIsPathNotFound) {
    EXPECT_EQ(errorOf([&] { TextFileReader in(path("nofolder/none.txt")); }), 76);
}

TEST_F(TextFiles, FileOpenForOutputIsAlreadyOpen) {
    TextFileWriter out(path("a.txt"));
    EXPECT_EQ(errorOf([&] { TextFileWriter again(path("a.txt")); }), 55);
    EXPECT_EQ(errorOf([&] { TextFileReader in(path("a.txt")); }), 55);
    out.close();
    EXPECT_EQ(errorOf([&] { TextFileReader in(path("a.txt")); }), 0);
}

TEST_F(TextFiles, AFileMadeWhileAnotherIsOpenIsKnownToLaterOpens) {
    TextFileWriter first(path("a.txt"));
    TextFileWriter made(path("b.txt"));  // new: made without a look at the others
    made.printLine({"one", " two", ""});
    EXPECT_EQ(errorOf([&] { TextFileReader in(path("b.txt")); }), 55);
    fs::create_symlink(path("b.txt"), path("link.txt"));
    EXPECT_EQ(errorOf([&] { TextFileWriter again(path("link.txt")); }), 55);
    made.close();
    EXPECT_EQ(readRaw("b.txt"), "one two\r\n");
}

TEST_F(TextFiles, AnExistingFileOpenedWhileAnotherIsOpenIsEmptied) {
    writeRaw("b.txt", "old text\r\n");
    TextFileWriter first(path("a.txt"));
    TextFileWriter out(path("b.txt"));
    out.printLine("new");
    out.close();
    EXPECT_EQ(readRaw("b.txt"), "new\r\n");
}

TEST_F(TextFiles, AnotherNameOfAnOpenFileIsTheSameFile) {
    TextFileWriter out(path("a.txt"));
    fs::create_symlink(path("a.txt"), path("link.txt"));
    EXPECT_EQ(errorOf([&] { TextFileReader in(path("link.txt")); }), 55);
    EXPECT_EQ(errorOf([&] { TextFileReader in(dir_.string() + "/./a.txt"); }), 55);
}

TEST_F(TextFiles, AFileOpenForInputIsNotEmptiedByARefusedOutput) {
    writeRaw("a.txt", "kept\r\n");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(errorOf([&] { TextFileWriter out(path("a.txt")); }), 55);
    EXPECT_EQ(readRaw("a.txt"), "kept\r\n");
    in.close();
    TextFileWriter out(path("a.txt"));
    out.close();
    EXPECT_EQ(readRaw("a.txt"), "");
}

TEST_F(TextFiles, AFolderGivenAsTheFileIsAccessError) {
    fs::create_directories(path("sub"));
    EXPECT_EQ(errorOf([&] { TextFileWriter out(path("sub")); }), 75);
    EXPECT_EQ(errorOf([&] { TextFileReader in(path("sub")); }), 75);
    // The same with another file open, when the open is checked against it first.
    TextFileWriter other(path("other.txt"));
    EXPECT_EQ(errorOf([&] { TextFileWriter out(path("sub")); }), 75);
    EXPECT_EQ(errorOf([&] { TextFileWriter out(path("nofolder/a.txt")); }), 76);
}

TEST_F(TextFiles, PrintingToAClosedFileFails) {
    TextFileWriter out(path("a.txt"));
    out.close();
    EXPECT_EQ(errorOf([&] { out.printLine("x"); }), 52);
    EXPECT_EQ(errorOf([&] { out.printLine({"x", "y"}); }), 52);
}

TEST_F(TextFiles, ALineBuiltInPlaceIsWrittenWholeOrNotAtAll) {
    TextFileWriter out(path("a.txt"));
    out.printBuilt([](std::string& line) { line.append("<p>").append("one"); });
    EXPECT_EQ(errorOf([&] {
                  out.printBuilt([](std::string& line) {
                      line.append("<p>half");
                      throw VbError(94);
                  });
              }),
              94);
    out.printBuilt([](std::string& line) { line.append("two"); });
    out.close();
    EXPECT_EQ(readRaw("a.txt"), "<p>one\r\ntwo\r\n");
}

TEST_F(TextFiles, ALineBuiltForAClosedFileFaultsAfterItsParts) {
    TextFileWriter out(path("a.txt"));
    out.close();
    EXPECT_EQ(errorOf([&] { out.printBuilt([](std::string& line) { line.append("x"); }); }), 52);
    // A part that fails is the fault reported, as when the parts were worked out first.
    EXPECT_EQ(errorOf([&] { out.printBuilt([](std::string&) { throw VbError(94); }); }), 94);
    // Nothing was left behind for a later file.
    out.open(path("b.txt"));
    out.printLine("b");
    out.close();
    EXPECT_EQ(readRaw("b.txt"), "b\r\n");
}

TEST_F(TextFiles, LineInputAcceptsEveryLineEnd) {
    writeRaw("a.txt", "one\r\ntwo\nthree\rfour");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(in.lineInput(), "one");
    EXPECT_EQ(in.lineInput(), "two");
    EXPECT_EQ(in.lineInput(), "three");
    EXPECT_FALSE(in.eof());
    EXPECT_EQ(in.lineInput(), "four");
    EXPECT_TRUE(in.eof());
}

TEST_F(TextFiles, LineInputKeepsEmptyLinesAndBlanks) {
    writeRaw("a.txt", "\r\n a, b \r\n");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(in.lineInput(), "");
    EXPECT_EQ(in.lineInput(), " a, b ");
    EXPECT_TRUE(in.eof());
}

TEST_F(TextFiles, LineInputPastTheEndFails) {
    writeRaw("a.txt", "only\r\n");
    TextFileReader in(path("a.txt"));
    in.lineInput();
    EXPECT_EQ(errorOf([&] { in.lineInput(); }), 62);
}

TEST_F(TextFiles, EmptyFileIsAtEndAtOnce) {
    writeRaw("a.txt", "");
    TextFileReader in(path("a.txt"));
    EXPECT_TRUE(in.eof());
    EXPECT_EQ(errorOf([&] { in.input(); }), 62);
}

TEST_F(TextFiles, InputSkipsLeadingBlanksAndTrimsTrailing) {
    writeRaw("a.txt", "  \tArial  \r\n 12 \r\n");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(in.input(), "Arial");
    EXPECT_EQ(in.input(), "12");
    EXPECT_TRUE(in.eof());
}

TEST_F(TextFiles, InputCommaSplitsAValue) {
    writeRaw("a.txt", "Hello, world\r\nnext\r\n");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(in.input(), "Hello");
    EXPECT_EQ(in.input(), "world");
    EXPECT_EQ(in.input(), "next");
    EXPECT_TRUE(in.eof());
}

TEST_F(TextFiles, InputQuotedValueKeepsCommasAndDropsTheRest) {
    writeRaw("a.txt", "\"a, b\" junk,next\r\n\"x\"\r\n");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(in.input(), "a, b");
    EXPECT_EQ(in.input(), "next");
    EXPECT_EQ(in.input(), "x");
    EXPECT_TRUE(in.eof());
}

TEST_F(TextFiles, InputEmptyLineIsOneEmptyValue) {
    writeRaw("a.txt", "a\r\n\r\nb\r\n");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(in.input(), "a");
    EXPECT_EQ(in.input(), "");
    EXPECT_EQ(in.input(), "b");
    EXPECT_TRUE(in.eof());
}

TEST_F(TextFiles, InputTrailingCommaGivesAnEmptyValue) {
    writeRaw("a.txt", "a,\r\nb");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(in.input(), "a");
    EXPECT_EQ(in.input(), "");
    EXPECT_EQ(in.input(), "b");
    EXPECT_TRUE(in.eof());
}

TEST_F(TextFiles, InputPastTheEndFails) {
    writeRaw("a.txt", "a\r\n");
    TextFileReader in(path("a.txt"));
    in.input();
    EXPECT_EQ(errorOf([&] { in.input(); }), 62);
}

TEST_F(TextFiles, PrintedValuesReadBack) {
    {
        TextFileWriter out(path("layout.spd"));
        out.printValue(Variant(3));
        out.printValue(Variant(0.5));
        out.printValue(Variant("Times New Roman"));
        out.printValue(Variant(true));
        out.printValue(Variant());
        out.printValue(Variant("red, bold"));
        out.printValue(Variant(-2));
    }
    TextFileReader in(path("layout.spd"));
    EXPECT_EQ(in.input(), "3");
    EXPECT_EQ(in.input(), ".5");
    EXPECT_EQ(in.input(), "Times New Roman");
    EXPECT_EQ(in.input(), "True");
    EXPECT_EQ(in.input(), "");
    // A comma inside a saved text splits it and shifts what follows.
    EXPECT_EQ(in.input(), "red");
    EXPECT_EQ(in.input(), "bold");
    EXPECT_EQ(in.input(), "-2");
    EXPECT_TRUE(in.eof());
}

TEST_F(TextFiles, HugeLineIsReadWhole) {
    const std::string line(5 * 1024 * 1024, 'x');
    writeRaw("a.txt", line + "\r\nend\r\n");
    TextFileReader in(path("a.txt"));
    EXPECT_EQ(in.lineInput().size(), line.size());
    EXPECT_EQ(in.input(), "end");
}

TEST_F(TextFiles, BinaryJunkNeverCrashes) {
    std::mt19937 random(42);
    std::string junk;
    for (int i = 0; i < 200000; ++i)
        junk += static_cast<char>(random() % 256);
    junk += "\"unclosed";
    writeRaw("junk.bin", junk);
    TextFileReader in(path("junk.bin"));
    std::size_t values = 0;
    while (!in.eof()) {
        in.input();
        ++values;
    }
    EXPECT_GT(values, 0u);
    EXPECT_EQ(errorOf([&] { in.input(); }), 62);
    TextFileReader lines(path("junk.bin"));
    while (!lines.eof())
        lines.lineInput();
    EXPECT_TRUE(lines.eof());
}
