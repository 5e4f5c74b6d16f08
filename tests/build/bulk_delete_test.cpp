// Deleting in bulk: what Data2 is left on, and the 16-bit count of a long run.
#include <gtest/gtest.h>

#include <memory>

#include "build/bulk.h"
#include "forms/user_input.h"
#include "program_fixture.h"
#include "records/data_control.h"
#include "shell/errhandler.h"
#include "shell/module.h"

namespace {

struct BulkDelete : ProgramTest {
    std::string pageAtContinue;  // the page on which the user clicked Continue
    // The user's answer on the confirmation page, then Continue on the last page.
    void answerThenContinue(Products& p, int choice) {
        auto waits = std::make_shared<int>(0);
        ui.onWait = [this, &p, choice, waits] {
            if ((*waits)++ == 0) {
                Mod().DeleteChoice = Variant::Integer(static_cast<std::int16_t>(choice));
                return;
            }
            pageAtContinue = ui.pane().DocumentText();
            p.ContinueFlag = true;
        };
    }
};

TEST_F(BulkDelete, ACancelLeavesData2OnTheSearchUntilADeleteWithNoSearch) {
    for (const char* stockNo : {"GO1", "KEEP1", "GO2"})
        addProduct(stockNo);
    Products& p = start();
    Mod().SearchCriteria = Variant("StockNo like '*GO*'");
    answerThenContinue(p, 2);
    UserInput::MouseClick(p("cmdDAll"));
    EXPECT_EQ(p.Data2->RecordSource(), "Select * From Products Where StockNo like '*GO*'");
    EXPECT_EQ(p.Data2->Recordset().RecordCount(), 2);
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "3");
    EXPECT_EQ(Mod().DeleteChoice, Variant::Integer(0));
    Mod().SearchCriteria = Variant("");
    answerThenContinue(p, 2);
    UserInput::MouseClick(p("cmdDAll"));
    EXPECT_EQ(p.Data2->RecordSource(), "Products");
}

TEST_F(BulkDelete, TheCountStopsAt32767WhileEveryProductIsDeleted) {
    cat.sql(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32800) "
        "INSERT INTO Products (StockNo) SELECT 'P' || i FROM n;");
    Products& p = start();
    int overflows = 0;
    setErrorTrace([&](const std::string& report) {
        if (report.rfind("Error - 6\r\n  In  (Form) BuildDB::Sub Delete", 0) == 0) ++overflows;
    });
    answerThenContinue(p, 1);
    UserInput::MouseClick(p("cmdDAll"));
    setErrorTrace(nullptr);
    EXPECT_EQ(overflows, 33);
    EXPECT_NE(pageAtContinue.find("Finished Deleting 32767 Records!"), std::string::npos);
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
    EXPECT_EQ(p("lblStatus").Caption(), "NO CURRENT RECORDS");
}

}  // namespace
