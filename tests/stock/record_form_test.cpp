// The record form on the suppliers and the company setup: browsing, the three states and
// their buttons, the keys, and the two forms' own differences.
#include <gtest/gtest.h>

#include "stock_fixture.h"
#include "store/sqlite_file.h"

namespace {

constexpr int vbKeyEscape = 27, vbKeyEnd = 35, vbKeyHome = 36, vbKeyUp = 38, vbKeyDown = 40;
constexpr int vbCtrlMask = 2;

struct RecordForms : StockTest {
    void twoSuppliers() {
        cat.sql(
            "INSERT INTO Supplier (SID, Name, City, TaxRate) VALUES (1, 'Acme', 'Ely', 0.05), "
            "(2, 'Bolt', 'Rye', 0);");
    }
    bool live(Form& f, const char* button) { return f(button).Enabled(); }
    // Another program holds the file for writing until its handle commits.
    std::shared_ptr<SqliteFile> lockedByAnother() {
        auto other = SqliteFile::open(cat.path());
        other->execScript("BEGIN IMMEDIATE; UPDATE Supplier SET City = 'Ely' WHERE SID = 1");
        return other;
    }
};

TEST_F(RecordForms, AnEmptyTableHasNoCurrentRecordsAndOnlyAddAndCloseLive) {
    RecordForm& f = open("frmSupplier");
    EXPECT_EQ(status(f), "NO CURRENT RECORDS");
    for (const char* b : {"cmdEdit", "cmdDelete", "cmdFirst", "cmdLast", "cmdPrevious", "cmdNext"})
        EXPECT_FALSE(live(f, b)) << b;
    EXPECT_TRUE(live(f, "cmdAdd") && f("cmdAdd").Visible());
    EXPECT_TRUE(live(f, "cmdClose") && f("cmdClose").Visible());
    EXPECT_TRUE(reports.empty());
}

TEST_F(RecordForms, OpensAtTheTopLeftOnTheFirstRowWithItsPosition) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    EXPECT_EQ(f.Num("Left"), 0);
    EXPECT_EQ(f.Num("Top"), 0);
    EXPECT_EQ(status(f), "Record: 1  of  2");
    EXPECT_EQ(box(f, 8), "Acme");
    EXPECT_EQ(f("lblLabels", 8).Caption(), "Co. Name:");
    EXPECT_EQ(f("lblLabels", 22).Caption(), "Sales Tax:");
    EXPECT_EQ(rt->MousePointer(), vb::vbDefault);
    EXPECT_EQ(f.ChangedFlag, 0);
}

TEST_F(RecordForms, NextStopsOnTheLastRowAndPreviousOnTheFirst) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    click(f, "cmdNext");
    click(f, "cmdNext");
    EXPECT_EQ(status(f), "Record: 2  of  2");
    EXPECT_EQ(box(f, 8), "Bolt");
    click(f, "cmdPrevious");
    click(f, "cmdPrevious");
    EXPECT_EQ(status(f), "Record: 1  of  2");
    click(f, "cmdLast");
    EXPECT_EQ(box(f, 8), "Bolt");
    click(f, "cmdFirst");
    EXPECT_EQ(box(f, 8), "Acme");
}

TEST_F(RecordForms, AddThenUpdateStoresTheRowAndGoesToTheLast) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    click(f, "cmdAdd");
    EXPECT_EQ(status(f), "Add record");
    EXPECT_EQ(f.AddFlag, -1);
    EXPECT_TRUE(f("cmdUpdate").Visible());
    EXPECT_FALSE(f("cmdAdd").Visible());
    EXPECT_FALSE(live(f, "cmdNext"));
    type(f, 8, "Crane");
    click(f, "cmdUpdate");
    EXPECT_EQ(cat.query("SELECT Name FROM Supplier ORDER BY SID"), "Acme|Bolt|Crane");
    EXPECT_EQ(box(f, 8), "Crane");
    EXPECT_EQ(status(f), "Record: 3  of  3");
    EXPECT_EQ(f.AddFlag, 0);
    EXPECT_TRUE(f("cmdAdd").Visible());
    EXPECT_FALSE(f("cmdUpdate").Visible());
    EXPECT_TRUE(live(f, "cmdNext"));
}

TEST_F(RecordForms, ARowRefusedAtUpdateIsReportedAndStaysPendingForTheUser) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    auto other = lockedByAnother();
    click(f, "cmdAdd");
    type(f, 8, "Crane");
    click(f, "cmdUpdate");
    EXPECT_EQ(reports, std::vector<std::string>{"3218 (Form) frmSupplier::Sub cmdUpdate_Click"});
    EXPECT_EQ(f.AddFlag, -1);
    EXPECT_EQ(status(f), "Add record");
    EXPECT_TRUE(f("cmdUpdate").Visible());
    EXPECT_FALSE(f("cmdAdd").Visible());
    EXPECT_EQ(box(f, 8), "Crane");
    other->execScript("COMMIT");
    EXPECT_EQ(cat.query("SELECT Name FROM Supplier ORDER BY SID"), "Acme|Bolt");
    // Once the file is free, Update stores the row as typed.
    click(f, "cmdUpdate");
    EXPECT_EQ(cat.query("SELECT Name FROM Supplier ORDER BY SID"), "Acme|Bolt|Crane");
    EXPECT_EQ(f.AddFlag, 0);
    EXPECT_EQ(status(f), "Record: 3  of  3");
}

TEST_F(RecordForms, ARowRefusedAtUpdateThenCancelledLeavesNothing) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    auto other = lockedByAnother();
    click(f, "cmdEdit");
    type(f, 3, "Hull");
    click(f, "cmdUpdate");
    EXPECT_EQ(f.EditFlag, -1);
    click(f, "cmdCancel");
    other->execScript("COMMIT");
    EXPECT_EQ(cat.query("SELECT City FROM Supplier ORDER BY SID"), "Ely|Rye");
    EXPECT_EQ(box(f, 3), "Ely");
    EXPECT_EQ(status(f), "Record: 1  of  2");
    EXPECT_TRUE(f("cmdAdd").Visible());
}

TEST_F(RecordForms, CancelOfAnAddGoesBackToTheSavedRow) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    click(f, "cmdNext");
    click(f, "cmdAdd");
    type(f, 8, "Crane");
    click(f, "cmdCancel");
    EXPECT_EQ(box(f, 8), "Bolt");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Supplier"), "2");
    EXPECT_TRUE(reports.empty());
}

TEST_F(RecordForms, AddingToAnEmptyTableThenCancelReportsTheFailedMoveToTheFirstRow) {
    RecordForm& f = open("frmSupplier");
    click(f, "cmdAdd");
    EXPECT_TRUE(f.SavedBookmark.IsEmpty());
    click(f, "cmdCancel");
    EXPECT_EQ(reports, std::vector<std::string>{"3021 (Form) frmSupplier::Sub cmdCancel_Click"});
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Supplier"), "0");
    EXPECT_TRUE(f("cmdAdd").Visible());
}

TEST_F(RecordForms, EditThenMovingStoresTheChange) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    click(f, "cmdEdit");
    EXPECT_EQ(status(f), "Edit record");
    type(f, 3, "York");
    click(f, "cmdUpdate");
    EXPECT_EQ(cat.query("SELECT City FROM Supplier WHERE SID = 1"), "York");
    EXPECT_EQ(f.EditFlag, 0);
}

TEST_F(RecordForms, DeletingTheOnlyRowLeavesNoCurrentRecords) {
    cat.sql("INSERT INTO Supplier (SID, Name) VALUES (1, 'Acme');");
    RecordForm& f = open("frmSupplier");
    click(f, "cmdDelete");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Supplier"), "0");
    EXPECT_EQ(status(f), "NO CURRENT RECORDS");
    EXPECT_FALSE(live(f, "cmdDelete"));
}

TEST_F(RecordForms, DeletingTheLastRowMovesToTheNewLast) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    click(f, "cmdLast");
    click(f, "cmdDelete");
    EXPECT_EQ(box(f, 8), "Acme");
    EXPECT_EQ(status(f), "Record: 1  of  1");
}

TEST_F(RecordForms, RefreshSeesRowsStoredElsewhere) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    cat.sql("INSERT INTO Supplier (SID, Name) VALUES (3, 'Crane');");
    EXPECT_EQ(f.adoPrimaryRS->RecordCount(), 2);
    click(f, "cmdRefresh");
    EXPECT_EQ(f.adoPrimaryRS->RecordCount(), 3);
}

TEST_F(RecordForms, KeysMoveWhileBrowsing) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    key(f, vbKeyEnd);
    EXPECT_EQ(box(f, 8), "Bolt");
    key(f, vbKeyHome);
    EXPECT_EQ(box(f, 8), "Acme");
    key(f, vbKeyDown);
    EXPECT_EQ(box(f, 8), "Bolt");
    key(f, vbKeyUp);
    EXPECT_EQ(box(f, 8), "Acme");
    key(f, vbKeyDown, vbCtrlMask);
    EXPECT_EQ(box(f, 8), "Bolt");
    key(f, vbKeyUp, vbCtrlMask);
    EXPECT_EQ(box(f, 8), "Acme");
    key(f, vbKeyEscape);
    EXPECT_EQ(rt->Loaded("frmSupplier"), nullptr);
}

TEST_F(RecordForms, EscapeDuringAnEditDoesNothing) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    click(f, "cmdEdit");
    key(f, vbKeyEscape);
    key(f, vbKeyEnd);
    EXPECT_NE(rt->Loaded("frmSupplier"), nullptr);
    EXPECT_EQ(box(f, 8), "Acme");
    click(f, "cmdCancel");
    key(f, vbKeyEscape);
    EXPECT_EQ(rt->Loaded("frmSupplier"), nullptr);
}

// Suppliers.

TEST_F(RecordForms, SupplierShowsOnlyTheRowsOfTheSearchInForce) {
    twoSuppliers();
    start();
    Mod().SearchCriteria = Variant("name = 'Bolt'");
    form()("mnuDatafrmSupplier").Raise("Click");
    RecordForm& f = loaded("frmSupplier");
    EXPECT_EQ(box(f, 8), "Bolt");
    EXPECT_EQ(status(f), "Record: 1  of  1");
}

TEST_F(RecordForms, SupplierUnderAProductSearchReportsTheFilterAndShowsAllRows) {
    twoSuppliers();
    start();
    Mod().SearchCriteria = Variant("[StockNo] like '*A*'");
    form()("mnuDatafrmSupplier").Raise("Click");
    RecordForm& f = loaded("frmSupplier");
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_NE(reports[0].find(" (Form) frmSupplier::Sub Form_Load"), std::string::npos);
    EXPECT_EQ(f.adoPrimaryRS->RecordCount(), 2);
}

TEST_F(RecordForms, SupplierTaxRateIsDividedAtEveryFocusChange) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    click(f, "cmdEdit");
    type(f, 22, "5");
    f("txtFields", 22).Raise("LostFocus");
    EXPECT_EQ(box(f, 22), "0.05");
    f("txtFields", 22).Raise("LostFocus");
    EXPECT_EQ(box(f, 22), "0.0005");
    type(f, 22, "five");
    f("txtFields", 22).Raise("LostFocus");
    EXPECT_EQ(box(f, 22), "five");
    f("txtFields", 3).Raise("LostFocus");
    EXPECT_EQ(box(f, 3), "Ely");
    EXPECT_TRUE(reports.empty());
}

TEST_F(RecordForms, SupplierCloseAndCancelMarkTheSupplierClosed) {
    twoSuppliers();
    RecordForm& f = open("frmSupplier");
    click(f, "cmdEdit");
    click(f, "cmdCancel");
    EXPECT_TRUE(Mod().SupplierClosed);
    Mod().SupplierClosed = false;
    click(f, "cmdClose");
    EXPECT_TRUE(Mod().SupplierClosed);
    EXPECT_EQ(rt->Loaded("frmSupplier"), nullptr);
}

// Company setup.

TEST_F(RecordForms, SetupBindsItsBoxesByColumnName) {
    cat.sql(
        "INSERT INTO Setup ([Company Name], [Company City], [Owner Name], [Web Page]) VALUES "
        "('Tandrel', 'Ely', 'Ann', 'www.t.com');");
    RecordForm& f = open("frmSetup");
    EXPECT_EQ(box(f, 0), "Tandrel");
    EXPECT_EQ(box(f, 4), "Ely");
    EXPECT_EQ(box(f, 17), "Ann");
    EXPECT_EQ(box(f, 23), "www.t.com");
    EXPECT_EQ(f("lblLabels", 23).Caption(), "Web Page:");
    EXPECT_EQ(f.Find("txtFields", 1), nullptr);
}

TEST_F(RecordForms, SetupUpdateKeepsTheFlagsSoTheKeysStayDead) {
    cat.sql("INSERT INTO Setup ([Company Name]) VALUES ('Tandrel');");
    RecordForm& f = open("frmSetup");
    click(f, "cmdEdit");
    type(f, 19, "555");
    click(f, "cmdUpdate");
    EXPECT_EQ(cat.query("SELECT Phone FROM Setup"), "555");
    EXPECT_TRUE(f("cmdAdd").Visible());
    EXPECT_EQ(f.EditFlag, -1);
    key(f, vbKeyEscape);
    EXPECT_NE(rt->Loaded("frmSetup"), nullptr);
}

TEST_F(RecordForms, SetupReportsItsMoveEventUnderItsOldName) {
    RecordForm& f = open("frmSetup");
    f.adoPrimaryRS->Close();
    f.adoPrimaryRS_MoveComplete();
    EXPECT_EQ(reports,
              std::vector<std::string>{"3704 (Form) Setup::Sub adoPrimaryRS_MoveComplete"});
}

}  // namespace
