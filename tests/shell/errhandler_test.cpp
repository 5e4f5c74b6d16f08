#include "shell/errhandler.h"

#include <gtest/gtest.h>

#include <vector>

#include "forms/ui.h"
#include "recording_ui.h"
#include "records/store.h"

namespace {

struct Reporter : ::testing::Test {
    RecordingUi ui;
    std::vector<std::string> lines;
    void SetUp() override {
        setUi(&ui);
        setErrorTrace([this](const std::string& line) { lines.push_back(line); });
    }
    void TearDown() override {
        setUi(nullptr);
        setErrorTrace(nullptr);
    }
    void report(int number, const std::string& tag = "(Form) Products::Sub Form_Load") {
        Err().Number = number;
        Errhandler(tag);
    }
};

TEST_F(Reporter, FileNotFoundShowsTheCriticalBox) {
    report(53);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].prompt,
              "Can't Find The File!\r\nMake Sure ALL Necessary Files Are In The Tandrel Folder!");
    EXPECT_EQ(ui.boxes[0].buttons, vb::vbCritical + vb::vbOKOnly);
    EXPECT_EQ(ui.boxes[0].title, "");
}

TEST_F(Reporter, BadFileNameShowsNothing) {
    report(52);
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Reporter, EveryListedNumberIsSilent) {
    for (int n : {3265, 3021, 481, 91,    5,    13,   3710, 3421, 35752, 76,   52,  3709, 3706,
                  3704, 438,  364, 32755, 3219, 3001, 380,  62,   9,     3078, 342, 20,   51})
        report(n);
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Reporter, AnUnlistedNumberShowsNothingEither) {
    report(3024);
    report(7);
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Reporter, ComposesTheLineWithNumberAndTag) {
    report(13, "(Form) frmSales::Sub SetButtons");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0], "Error - 13\r\n  In  (Form) frmSales::Sub SetButtons");
}

TEST_F(Reporter, LeavesTheErrorStateAsItWas) {
    report(3021);
    EXPECT_EQ(Err().Number, 3021);
}

TEST_F(Reporter, ATrappedProcedureResumesAtTheNextStatement) {
    std::vector<int> ran;
    Trap on = reportTo("(Form) Products::Sub cmdNext_Click");
    on([&] { throw VbError(3021); });
    on([&] { ran.push_back(2); });
    EXPECT_EQ(ran, std::vector<int>{2});
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0], "Error - 3021\r\n  In  (Form) Products::Sub cmdNext_Click");
}

TEST_F(Reporter, ARecordFormWhoseConnectionFailedStepsThroughInSilence) {
    auto conn = CreateConnection();
    auto rs = CreateRecordset();
    Trap on = reportTo("(Form) frmOrders::Sub Form_Load");
    int attempted = 0;
    on([&] { ++attempted, conn->Open(connectionText("/nowhere/tandrel2004.mde")); });
    on([&] { ++attempted, rs->Open("select * from Orders", *conn); });
    on([&] { ++attempted, rs->MoveFirst(); });
    on([&] { ++attempted, (void)rs->Fields(0).Value(); });
    EXPECT_EQ(attempted, 4);
    EXPECT_EQ(lines.size(), 4u);
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(rs->State(), ado::adStateClosed);  // the screen stays empty
}

}  // namespace
