// File, Open: another catalogue in a further main form, the window in hand going on with
// its own file under the new name.
#include <gtest/gtest.h>

#include <fstream>

#include "program_fixture.h"
#include "reports/reports.h"
#include "shell/module.h"
#include "stock/record_form.h"

namespace {

struct OpenDatabase : ProgramTest {
    OpenDatabase() {
        addProduct("OLD-1");
        addProduct("OLD-2");
        other.sql("INSERT INTO Products (StockNo, Cost1) VALUES ('NEW-1', 7.5)");
        other.sql("INSERT INTO Orders ([Order ID], ProductOrderID) VALUES ('9001', 'NEW-1')");
    }
    std::vector<Products*> mainForms() const {
        std::vector<Products*> forms;
        for (Form* f : rt->LoadedForms())
            if (f->Name() == "Products") forms.push_back(static_cast<Products*>(f));
        return forms;
    }
    void open(Products& form, const std::string& answer) {
        ui.openAnswer = answer;
        form("mnuFileOpen").Raise("Click");
    }
    TempCatalogue other;
};

}  // namespace

TEST_F(OpenDatabase, CancelOpensNoWindowAndWritesTheCaptionAgain) {
    Products& old = start();
    const std::string first = Mod().DBName;
    old.SetCaption("something else");
    open(old, "");
    EXPECT_EQ(mainForms().size(), 1u);
    EXPECT_EQ(Mod().DBName, first);
    EXPECT_EQ(old.Caption(), first);
    EXPECT_EQ(Mod().MainForm, &old);
}

TEST_F(OpenDatabase, AnotherFileOpensInAFurtherWindowWhileTheOldGoesOnWithItsOwn) {
    Products& old = start();
    open(old, other.path());
    ASSERT_EQ(mainForms().size(), 2u);
    Products& fresh = *Mod().MainForm;
    EXPECT_NE(&fresh, &old);
    EXPECT_EQ(Mod().DBName, other.path());
    EXPECT_EQ(fresh.Caption(), other.path());
    EXPECT_EQ(old.Caption(), other.path());
    EXPECT_EQ(fresh.adoPrimaryRS->RecordCount(), 1);
    EXPECT_EQ(fresh("txtFields", 27).Text(), "NEW-1");
    // The old window keeps its connection and rows on the old file.
    EXPECT_EQ(old.adoPrimaryRS->RecordCount(), 2);
    old.cmdNext_Click();
    EXPECT_EQ(old("txtFields", 27).Text(), "OLD-2");
    EXPECT_EQ(ui.pointers.back(), vb::vbNormal);
}

TEST_F(OpenDatabase, TheOpenFileChosenAgainGivesASecondWindowOnTheSameFile) {
    Products& old = start();
    const std::string first = Mod().DBName;
    open(old, first);
    ASSERT_EQ(mainForms().size(), 2u);
    EXPECT_EQ(Mod().MainForm->adoPrimaryRS->RecordCount(), 2);
    EXPECT_EQ(Mod().DBName, first);
    EXPECT_EQ(old.Caption(), first);
}

TEST_F(OpenDatabase, TheOrdersFormFromTheOldWindowOpensOnTheNewFile) {
    Products& old = start();
    open(old, other.path());
    old.mnuDatafrmOrders_Click();
    auto& orders = static_cast<RecordForm&>(rt->Get("frmOrders"));
    ASSERT_TRUE(orders.IsLoaded());
    EXPECT_EQ(orders.adoPrimaryRS->RecordCount(), 1);
    EXPECT_EQ(orders("txtFields", 8).Text(), "NEW-1");
}

TEST_F(OpenDatabase, AReportFromTheOldWindowRunsOnTheNewFile) {
    Products& old = start();
    open(old, other.path());
    old("mnuAll").Raise("Click");
    ASSERT_EQ(ui.reportWindows.size(), 1u);
    EXPECT_NE(ui.reportWindows[0].Html.find("NEW-1"), std::string::npos);
    EXPECT_EQ(ui.reportWindows[0].Html.find("OLD-1"), std::string::npos);
    EXPECT_EQ(old.reports->Report.DataFiles(0), other.path());
}

TEST_F(OpenDatabase, TheFileLastChosenIsTheOneTheNextStartOpens) {
    Products& old = start();
    open(old, other.path());
    try {
        old.mnuFileExit_Click();
    } catch (const ProgramEnded&) {
    }
    EXPECT_EQ(saved("Settings", "DBName"), other.path());
}

TEST_F(OpenDatabase, AFileThatIsNoCatalogueFailsInTheNewWindowOnly) {
    Products& old = start();
    const std::string letter = appDir() + "letter.mde";
    std::ofstream(letter) << "Dear customer";
    open(old, letter);
    ASSERT_EQ(mainForms().size(), 2u);
    EXPECT_EQ(Mod().DBName, letter);
    EXPECT_EQ(old.adoPrimaryRS->RecordCount(), 2);
    EXPECT_EQ(ui.pointers.back(), vb::vbNormal);
}
