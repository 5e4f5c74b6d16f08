#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "forms/runtime.h"
#include "gesture_form.h"
#include "session/pattern.h"
#include "session/runner.h"
#include "session/script.h"
#include "toy_program.h"

namespace fs = std::filesystem;

namespace {

// A staged program folder of the toy program, and scripts written to files beside it.
class RunnerTest : public ::testing::Test {
  protected:
    void SetUp() override {
        static int serial = 0;
        root_ = fs::temp_directory_path() /
                ("toyrunner" + std::to_string(::getpid()) + "x" + std::to_string(serial++));
        fs::create_directories(root_ / "program" / "Help");
        std::ofstream(root_ / "program" / "notes.txt") << "shipped notes";
        std::ofstream(root_ / "program" / "Help" / "intro0.htm") << "<p>help</p>";
        options_.programDir = (root_ / "program").string();
        options_.fixturesDir = FIXTURES_DIR;
    }
    void TearDown() override { fs::remove_all(root_); }

    std::string write(const std::string& name, const std::string& script) {
        fs::path file = root_ / name;
        std::ofstream(file) << script;
        return file.string();
    }

    ScriptResult run(const std::string& script) {
        return runScriptFile(write("toy.session", script), toyProgram(), options_);
    }

    // The report of a failing script from its line on: "LINE: TEXT: MESSAGE".
    std::string failure(const std::string& script) {
        ScriptResult r = run(script);
        EXPECT_FALSE(r.passed) << script;
        std::string report = r.report();
        auto at = report.find(".session:");
        return at == std::string::npos ? report : report.substr(at + 9);
    }

    fs::path root_;
    RunnerOptions options_;
};

const char* const Started = "program-folder no-catalogue\nstart\n";

}  // namespace

TEST(PatternTest, StarMatchesAnyRunAndThePatternSpansTheWholeText) {
    EXPECT_TRUE(Pattern::fromQuoted("*Total*").matches("Grand Total: 5"));
    EXPECT_FALSE(Pattern::fromQuoted("Total").matches("Grand Total"));
    EXPECT_TRUE(Pattern::fromQuoted("Total").matches("Total"));
    EXPECT_FALSE(Pattern::fromQuoted("total").matches("Total"));
    EXPECT_TRUE(Pattern::fromQuoted("a*b*c").matches("a\r\nxbyyc"));
    EXPECT_FALSE(Pattern::fromQuoted("a*b*c").matches("acb"));
    EXPECT_TRUE(Pattern::fromQuoted("*ab*ab").matches("abab"));
    EXPECT_FALSE(Pattern::fromQuoted("ab*ab").matches("ab"));
    EXPECT_TRUE(Pattern::fromQuoted("").matches(""));
    EXPECT_TRUE(Pattern::fromQuoted("*").matches(""));
}

TEST(PatternTest, EscapedStarIsLiteralAndEscapesAreRead) {
    EXPECT_TRUE(Pattern::fromQuoted("5 \\* 2").matches("5 * 2"));
    EXPECT_FALSE(Pattern::fromQuoted("5 \\* 2").matches("5 x 2"));
    EXPECT_TRUE(Pattern::fromQuoted("a\\r\\nb\\t\\\"\\\\").matches("a\r\nb\t\"\\"));
    EXPECT_TRUE(Pattern::fromQuoted("$APPpage.htm").withApp("/tmp/x/").matches("/tmp/x/page.htm"));
}

TEST(ScriptTest, WordsAndStrings) {
    auto words = splitWords("expect  Products.Caption \"a \\\"b\\\" c\"");
    ASSERT_EQ(words.size(), 3u);
    EXPECT_EQ(words[1].text, "Products.Caption");
    EXPECT_TRUE(words[2].quoted);
    EXPECT_EQ(decodeText(words[2].text), "a \"b\" c");
    EXPECT_THROW(splitWords("type A.b \"open"), ScriptSyntaxError);
}

TEST(ScriptTest, ReferencesToControlsPropertiesAndListItems) {
    Ref r = parseRef("Products.txtFields(27).Text", RefUse::Property);
    EXPECT_EQ(r.form, "Products");
    EXPECT_EQ(r.control, "txtFields");
    EXPECT_EQ(r.index, 27);
    EXPECT_EQ(r.member, "Text");
    Ref list = parseRef("Products.lstAll(0).List(3)", RefUse::Property);
    EXPECT_EQ(list.member, "List");
    EXPECT_EQ(list.memberIndex, 3);
    Ref own = parseRef("Products.Caption", RefUse::Property);
    EXPECT_TRUE(own.control.empty());
    EXPECT_EQ(own.member, "Caption");
    EXPECT_THROW(parseRef("Products", RefUse::Control), ScriptSyntaxError);
    EXPECT_EQ(parseNumber("&HFFFF80"), 0xFFFF80);
}

TEST(ScriptTest, CommentsBlankLinesAndLeadingBlanksAreSkipped) {
    Script s = parseScript("# a comment\n\n   start\n\t  expect ended\n");
    ASSERT_EQ(s.commands.size(), 2u);
    EXPECT_EQ(s.commands[0].line, 3);
    EXPECT_EQ(s.commands[1].text, "expect ended");
    EXPECT_EQ(s.lastLine, 4);
}

TEST_F(RunnerTest, MessageBoxAnsweredAndTheDialogsSeen) {
    ScriptResult r = run(std::string(Started) +
                         "click Main.cmdHello\n"
                         "answer msgbox \"Hel*\" OK\n"
                         "click Main.cmdAsk\n"
                         "expect dialogs \"Hello\\nSure?\\n\"\n"
                         "answer msgbox \"Sure?\" No\n"
                         "expect Main.lblDone.Caption \"No\"\n"
                         "expect dialogs \"\"\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, DialogThatNoAnswerExpectsFails) {
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdHello\nclick Main.cmdAsk\n"),
              "4: click Main.cmdAsk: expected answer msgbox, found the message box \"Hello\" open");
}

TEST_F(RunnerTest, ScriptEndingWithADialogOpenFails) {
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdHello\n"),
              "4: end of script: expected answer msgbox, found the message box \"Hello\" open");
}

TEST_F(RunnerTest, AnswerWithNoDialogFails) {
    EXPECT_EQ(failure(std::string(Started) + "answer msgbox \"Hello\" OK\n"),
              "3: answer msgbox \"Hello\" OK: expected an open dialog, found no dialog");
}

TEST_F(RunnerTest, AnswerOfAnotherKindOrPromptOrButtonFails) {
    EXPECT_EQ(
        failure(std::string(Started) + "click Main.cmdHello\nanswer inputbox \"Hello\" \"x\"\n"),
        "4: answer inputbox \"Hello\" \"x\": expected an input box, found the message box "
        "\"Hello\" "
        "open");
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdHello\nanswer msgbox \"Bye\" OK\n"),
              "4: answer msgbox \"Bye\" OK: expected a message box \"Bye\", found the message box "
              "\"Hello\"");
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdAsk\nanswer msgbox \"Sure?\" OK\n"),
              "4: answer msgbox \"Sure?\" OK: expected one of its buttons Yes, No, found OK");
}

TEST_F(RunnerTest, WaitOnAFlagTakesTheNextUserLine) {
    ScriptResult r = run(std::string(Started) +
                         "click Main.cmdWait\n"
                         "expect pane \"*CONTINUE*\"\n"
                         "expect var Main.ContinueFlag \"False\"\n"
                         "expect Main.lblDone.Caption \"\"\n"
                         "link \"CONTINUE\"\n"
                         "expect Main.lblDone.Caption \"done\"\n"
                         "expect var Main.ContinueFlag True\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, ScriptEndingDuringAWaitFailsAfterAHundredThousandPasses) {
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdWait\n"),
              "4: end of script: expected the program idle when the script ends, found it waiting "
              "for the "
              "user (100000 passes with no user line)");
}

TEST_F(RunnerTest, WaitThatEndsByItselfNeedsNoUserLine) {
    ScriptResult r = run(std::string(Started) + "click Main.cmdLoop\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, LinkMustBeOnThePage) {
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdWait\nlink \"STOP\"\n"),
              "4: link \"STOP\": expected a link \"STOP\" in the page, found the page \"<a "
              "href=CONTINUE>Click Here To Continue</a>\"");
}

TEST_F(RunnerTest, ModalFormWaitsUntilHidden) {
    ScriptResult r = run(std::string(Started) +
                         "click Main.cmdModal\n"
                         "expect form Dialog visible\n"
                         "expect Main.lblDone.Caption \"\"\n"
                         "click Dialog.cmdOK\n"
                         "expect form Dialog hidden\n"
                         "expect form Dialog loaded\n"
                         "expect Main.lblDone.Caption \"back\"\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, EndIsNotedAndARestartRunsTheProgramAgain) {
    ScriptResult r = run(std::string(Started) +
                         "expect not ended\n"
                         "click Main.cmdEnd\n"
                         "expect ended\n"
                         "expect setting \"Settings\" \"Ended\" \"yes\"\n"
                         "start\n"
                         "expect not ended\n"
                         "expect var Started True\n"
                         "expect setting \"Settings\" \"Ended\" \"yes\"\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, UserLineAfterEndFails) {
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdEnd\nclick Main.cmdHello\n"),
              "4: click Main.cmdHello: the program has ended");
}

TEST_F(RunnerTest, UnknownFormsAndControlsFail) {
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdNope\n"),
              "3: click Main.cmdNope: no control Main.cmdNope");
    EXPECT_EQ(failure(std::string(Started) + "click Main.lblCell(7)\n"),
              "3: click Main.lblCell(7): no control Main.lblCell(7)");
    EXPECT_EQ(failure(std::string(Started) + "expect Nope.Caption \"\"\n"),
              "3: expect Nope.Caption \"\": no form Nope");
    EXPECT_EQ(failure(std::string(Started) + "expect Main.lblDone.Colour \"\"\n"),
              "3: expect Main.lblDone.Colour \"\": no property Main.lblDone.Colour");
}

TEST_F(RunnerTest, DisabledOrInvisibleControlCannotBeUsed) {
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdDisabled\n"),
              "3: click Main.cmdDisabled: expected Main.cmdDisabled enabled, found it disabled");
    EXPECT_EQ(failure(std::string(Started) + "dblclick Main.cmdHidden\n"),
              "3: dblclick Main.cmdHidden: expected Main.cmdHidden visible, found it invisible");
}

TEST_F(RunnerTest, MismatchShowsExpectedAndFound) {
    EXPECT_EQ(failure(std::string(Started) +
                      "click Main.lblCell(0)\nexpect Main.lblDone.Caption \"cell 2\"\n"),
              "4: expect Main.lblDone.Caption \"cell 2\": expected \"cell 2\", found \"cell 0\"");
    EXPECT_EQ(failure(std::string(Started) + "expect not Main.lblDone.Caption \"\"\n"),
              "3: expect not Main.lblDone.Caption \"\": expected not \"\", found \"\"");
}

TEST_F(RunnerTest, AClickOnAControlThatDragsByItselfIsADragThatDropsNothing) {
    ScriptResult r = run(std::string(Started) +
                         "click Main.lblCell(1)\n"
                         "expect Main.lblDone.Caption \"\"\n"
                         "click Main.lblCell(2)\n"
                         "expect Main.lblDone.Caption \"cell 2\"\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, SyntaxErrorNamesItsLine) {
    EXPECT_EQ(failure("start\n\nclick\n"), "3: click: expected a control");
    EXPECT_EQ(failure("frobnicate Main\n"), "1: frobnicate Main: no command frobnicate");
}

TEST_F(RunnerTest, TypingFiresChangeOnlyWhenTheTextDiffers) {
    ScriptResult r = run(std::string(Started) +
                         "type Main.txtName \"Ann\"\n"
                         "type Main.txtName \"Ann\"\n"
                         "expect var Changes \"1\"\n"
                         "expect Main.txtName.Text \"Ann\"\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, CheckBoxClickTogglesAndQueryUnloadCanCancelAClose) {
    ScriptResult r = run(std::string(Started) +
                         "click Main.chkOn\n"
                         "expect Main.chkOn.Value \"1\"\n"
                         "close Main\n"
                         "expect form Main visible\n"
                         "click Main.chkOn\n"
                         "expect Main.chkOn.Value \"0\"\n"
                         "expect var Clicks \"2\"\n"
                         "close Main\n"
                         "expect form Main unloaded\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, SelectSlideAndControlArrays) {
    ScriptResult r = run(std::string(Started) +
                         "select Main.lstItems 1\n"
                         "expect Main.lblDone.Caption \"item pear\"\n"
                         "expect Main.lstItems.ListIndex \"1\"\n"
                         "expect Main.lstItems.List(0) \"apple\"\n"
                         "expect Main.lstItems.ListCount \"2\"\n"
                         "select Main.lstItems 0 on\n"
                         "expect Main.lstItems.Selected(0) True\n"
                         "slide Main.Slider1 4\n"
                         "expect Main.lblDone.Caption \"slid 4\"\n"
                         "click Main.lblCell(2)\n"
                         "expect Main.lblDone.Caption \"cell 2\"\n"
                         "drag Main.lblCell(1) Main.lblDone\n"
                         "expect Main.lblDone.Caption \"dropped lblCell(1)\"\n"
                         "click Main.lblCell(0)\n"
                         "drag Main.lblCell(2) Main.lblDone\n"
                         "expect Main.lblDone.Caption \"cell 0\"\n");
    EXPECT_TRUE(r.passed) << r.report();
    EXPECT_EQ(failure(std::string(Started) + "select Main.lstItems 2\n"),
              "3: select Main.lstItems 2: expected an item from 0 to 1, found 2 items");
    EXPECT_EQ(failure(std::string(Started) + "slide Main.Slider1 11\n"),
              "3: slide Main.Slider1 11: expected a value from 0 to 10, found 11");
}

TEST_F(RunnerTest, KeysGoThroughTheFormsKeyPreviewFirst) {
    ScriptResult r = run(std::string(Started) +
                         "key Main.txtName 65\n"
                         "expect var Keys \"form65 down65 formpress97 press97 up65 \"\n"
                         "key Main.txtName 27\n"
                         "expect var Keys \"*up65 form27 up27 \"\n"
                         "key Main.txtName 13 shift\n"
                         "expect var Keys \"*form13 down13 formpress13 press13 up13 \"\n"
                         "key Main.txtName 40\n"
                         "expect var Keys \"*form40 down40 up40 \"\n"
                         "key Main 36\n"
                         "expect var Keys \"*up40 form36 \"\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, InputOpenAndPopupAnswers) {
    ScriptResult r = run(std::string(Started) +
                         "click Main.cmdInput\n"
                         "answer inputbox \"Your name?\" \"Ann\"\n"
                         "expect Main.lblDone.Caption \"[Ann]\"\n"
                         "click Main.cmdInput\n"
                         "answer inputbox \"*\" cancel\n"
                         "expect Main.lblDone.Caption \"[]\"\n"
                         "click Main.cmdOpen\n"
                         "answer open \"lists/a.txt\" filter 2\n"
                         "expect Main.lblDone.Caption \"$APPlists/a.txt 2\"\n"
                         "click Main.cmdOpen\n"
                         "answer open cancel\n"
                         "expect Main.lblDone.Caption \"cancelled\"\n"
                         "click Main.cmdPopup\n"
                         "answer popup \"Choice 1\"\n"
                         "expect Main.lblDone.Caption \"mnuPop(1)\"\n"
                         "click Main.cmdPopup\n"
                         "answer popup dismiss\n"
                         "expect Main.lblDone.Caption \"none\"\n"
                         "expect dialogs \"Your name?\\nYour name?\\nOpen a list\\nOpen a "
                         "list\\nmnuPop\\nmnuPop\\n\"\n");
    EXPECT_TRUE(r.passed) << r.report();
    EXPECT_EQ(
        failure(std::string(Started) + "click Main.cmdPopup\nanswer popup \"Choice 2\"\n"),
        "4: answer popup \"Choice 2\": expected an enabled item \"Choice 2\", found it disabled");
}

TEST_F(RunnerTest, FilesSettingsAndTheProgramFolder) {
    ScriptResult r =
        run("program-folder no-catalogue\n"
            "file \"Pages/a.txt\" \"one\\r\\ntwo\"\n"
            "file \"zeros.bin\" bytes 3\n"
            "setting \"Options\" \"Show\" \"0\"\n"
            "expect file \"notes.txt\" \"shipped notes\"\n"
            "expect file \"$APPHelp/intro0.htm\" \"<p>help</p>\"\n"
            "expect file \"Pages/a.txt\" \"one\\r\\ntwo\"\n"
            "expect not file \"Pages/a.txt\" \"*three*\"\n"
            "delete \"Pages/a.txt\"\n"
            "expect no-file \"Pages/a.txt\"\n"
            "expect no-file \"tandrel2004.mde\"\n"
            "expect setting \"Options\" \"Show\" \"0\"\n"
            "expect no-setting \"Options\" \"Other\"\n"
            "start\n"
            "click Main.cmdPage\n"
            "expect pane-url \"\"\n"
            "file \"page.htm\" \"<p>page</p>\"\n"
            "click Main.cmdPage\n"
            "expect pane-url \"$APPpage.htm\"\n"
            "expect pane \"<p>page</p>\"\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, CopyBringsFilesAndFoldersFromBesideTheScript) {
    fs::create_directories(root_ / "inputs" / "shots" / "deep");
    std::ofstream(root_ / "inputs" / "pic.jpg", std::ios::binary) << std::string("\xff\xd8\0x", 4);
    std::ofstream(root_ / "inputs" / "shots" / "deep" / "a.png") << "png";
    std::ofstream(root_ / "elsewhere.txt") << "absolute";
    ScriptResult r =
        run("program-folder no-catalogue\n"
            "copy \"inputs/pic.jpg\" \"Pictures/new/pic.jpg\"\n"
            "expect file \"Pictures/new/pic.jpg\" \"*x\"\n"
            "copy \"inputs/shots\" \"shots\"\n"
            "expect file \"shots/deep/a.png\" \"png\"\n"
            "start\n"
            "copy \"" +
            (root_ / "elsewhere.txt").string() +
            "\" \"late.txt\"\n"
            "expect file \"late.txt\" \"absolute\"\n");
    ASSERT_TRUE(r.passed) << r.report();
    // The script's own folder, not the working folder, is where a relative source is found.
    EXPECT_EQ(failure("copy \"inputs/none.jpg\" \"x.jpg\"\n"),
              "1: copy \"inputs/none.jpg\" \"x.jpg\": expected a file or folder \"" +
                  (root_ / "inputs" / "none.jpg").string() + "\", found none");
}

TEST_F(RunnerTest, ScriptLinesGiveTheFormWhatTheMouseAndKeysGive) {
    ProgramHooks gestures;
    gestures.title = "Gestures";
    gestures.registerForms = [](Runtime& rt) {
        rt.Register("frmBoard", [] { return std::make_unique<GestureForm>(); });
    };
    gestures.subMain = [] { Runtime::Current().Show(Runtime::Current().Get("frmBoard")); };
    std::string notes;
    for (const std::string& note : GestureNotes)
        notes += (notes.empty() ? "" : "|") + note;
    const std::string script = std::string("program-folder no-catalogue\nstart\n") + GestureScript +
                               "expect var frmBoard.Seen \"" + notes + "\"\n";
    ScriptResult r = runScriptFile(write("gestures.session", script), gestures, options_);
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, SqlOnTheCatalogue) {
    ScriptResult r =
        run("program-folder empty-catalogue\n"
            "expect sql \"SELECT COUNT(*) FROM Products\" \"0\"\n"
            "sql \"INSERT INTO Products (PID, StockNo, ProdName, Cost1) VALUES (1, 'A1', 'Apple', "
            "2.5)\"\n"
            "sql \"INSERT INTO Products (PID, StockNo, ProdName) VALUES (2, 'B2', 'Bean')\"\n"
            "expect sql \"SELECT StockNo FROM Products ORDER BY PID\" \"A1|B2\"\n"
            "expect sql \"SELECT Cost1 FROM Products ORDER BY PID\" \"2.5|Null\"\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, FaultThatEscapesAProcedureFailsTheLine) {
    EXPECT_EQ(failure(std::string(Started) + "click Main.cmdFault\n"),
              "3: click Main.cmdFault: a fault no procedure trapped: error 13 (Type mismatch)");
}

TEST_F(RunnerTest, VariablesReadAsText) {
    ScriptResult r =
        run(std::string(Started) + "expect var Nothing \"Null\"\nexpect var Started \"True\"\n");
    EXPECT_TRUE(r.passed) << r.report();
    EXPECT_EQ(failure(std::string(Started) + "expect var Nope \"\"\n"),
              "3: expect var Nope \"\": no variable Nope");
}

TEST_F(RunnerTest, MinimizeRestoreAndMousePointer) {
    ScriptResult r = run(std::string(Started) +
                         "minimize Main\n"
                         "expect Main.WindowState \"1\"\n"
                         "restore Main\n"
                         "expect Main.WindowState \"0\"\n"
                         "expect mousepointer 0\n");
    EXPECT_TRUE(r.passed) << r.report();
}

TEST_F(RunnerTest, ManyFilesEachReportedThenTheCount) {
    std::string good = write("good.session", std::string(Started) + "expect form Main visible\n");
    std::string bad = write("bad.session", std::string(Started) + "expect form Main hidden\n");
    std::ostringstream out;
    int code = runScriptFiles({good, bad, good}, toyProgram(), options_, out);
    EXPECT_EQ(code, 1);
    EXPECT_EQ(out.str(),
              "ok " + good + "\nFAIL " + bad +
                  ":3: expect form Main hidden: expected form Main hidden, found it loaded and "
                  "visible\nok " +
                  good + "\n2 passed, 1 failed\n");
    std::ostringstream allGood;
    EXPECT_EQ(runScriptFiles({good}, toyProgram(), options_, allGood), 0);
    EXPECT_EQ(allGood.str(), "ok " + good + "\n1 passed, 0 failed\n");
}
