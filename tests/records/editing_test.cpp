#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/vb_error.h"
#include "build/bulk.h"
#include "program_fixture.h"
#include "records/pane.h"
#include "shell/errhandler.h"
#include "shell/module.h"

namespace {

// A record set that passes everything on to the program's own, and can be told to fail
// its Close, and counts its requeries.
class Wrapped : public Recordset {
  public:
    explicit Wrapped(std::unique_ptr<Recordset> inner) : in(std::move(inner)) {}
    std::unique_ptr<Recordset> in;
    int closeFault = 0;
    int requeries = 0;

    void Open(const std::string& s, Connection& c, int t, int l, int o) override {
        in->Open(s, c, t, l, o);
    }
    void Open() override { in->Open(); }
    void Close() override {
        if (closeFault) throw VbError(closeFault);
        in->Close();
    }
    void Requery(int o) override {
        ++requeries;
        in->Requery(o);
    }
    int State() const override { return in->State(); }
    void MoveFirst() override { in->MoveFirst(); }
    void MoveLast() override { in->MoveLast(); }
    void MoveNext() override { in->MoveNext(); }
    void MovePrevious() override { in->MovePrevious(); }
    bool Bof() const override { return in->Bof(); }
    bool Eof() const override { return in->Eof(); }
    long RecordCount() const override { return in->RecordCount(); }
    long AbsolutePosition() const override { return in->AbsolutePosition(); }
    void SetAbsolutePosition(long p) override { in->SetAbsolutePosition(p); }
    Variant Bookmark() const override { return in->Bookmark(); }
    void SetBookmark(const Variant& b) override { in->SetBookmark(b); }
    int FieldCount() const override { return in->FieldCount(); }
    int FieldIndex(std::string_view n) const override { return in->FieldIndex(n); }
    std::string FieldName(int i) const override { return in->FieldName(i); }
    Variant GetValue(int i) const override { return in->GetValue(i); }
    void SetValue(int i, const Variant& v) override { in->SetValue(i, v); }
    void AddNew() override { in->AddNew(); }
    void Update() override { in->Update(); }
    void UpdateBatch(int a) override { in->UpdateBatch(a); }
    void CancelUpdate() override { in->CancelUpdate(); }
    void Delete(int a) override { in->Delete(a); }
    int EditMode() const override { return in->EditMode(); }
    void Resync(int a) override { in->Resync(a); }
    void Find(const std::string& c, long s, int d) override { in->Find(c, s, d); }
    std::string Filter() const override { return in->Filter(); }
    void SetFilter(const std::string& c) override { in->SetFilter(c); }
    std::string Sort() const override { return in->Sort(); }
    void SetSort(const std::string& c) override { in->SetSort(c); }
};

constexpr int Cost1 = 2, Inventory = 8, ProdName = 22, StockNo = 27;

struct Editing : ProgramTest {
    Products* f = nullptr;
    std::vector<std::string> reports;

    Editing() {
        setErrorTrace([this](const std::string& line) { reports.push_back(line); });
    }
    ~Editing() override { setErrorTrace(nullptr); }

    // Three products, B2, D4 and F6, with names and costs.
    void startWithThree() {
        addProduct("B2", "", "ProdName, Cost1", "'Bean', 2");
        addProduct("D4", "", "ProdName, Cost1", "'Date', 4");
        addProduct("F6", "", "ProdName, Cost1", "'Fig', 6");
        f = &start();
    }
    // The composed lines of the faults reported under one procedure's tag.
    std::vector<std::string> reportsOf(const std::string& procedure) {
        std::vector<std::string> lines;
        for (const auto& line : reports)
            if (line.ends_with("::Sub " + procedure)) lines.push_back(line);
        return lines;
    }
    Control& box(int n) { return (*f)("txtFields", n); }
    std::string status() { return (*f)("lblStatus").Caption(); }
    std::string stockNo() { return box(StockNo).Text(); }
    bool visible(const char* name) { return (*f)(name).Visible(); }
    bool enabled(const char* name) { return (*f)(name).Enabled(); }
    std::string location() { return ui.pane().LocationURL(); }
};

TEST_F(Editing, TheButtonsCarryTheirCaptions) {
    f = &start();
    const std::pair<const char*, const char*> captions[] = {
        {"cmdAdd", "&Add 1 New"},   {"cmdEdit", "&Edit This"}, {"cmdDelete", "&Delete This"},
        {"cmdUpdate", "&Update"},   {"cmdCancel", "&Cancel"},  {"cmdRefresh", "&Refresh Data"},
        {"cmdReset", "Reset Data"}, {"cmdClose", "Close"},     {"cmdEditRec", "Edit All Items"},
        {"Command3", "Export DB"},  {"Command16", "Show Help"}};
    for (const auto& [name, caption] : captions)
        EXPECT_EQ((*f)(name).Caption(), caption) << name;
}

TEST_F(Editing, SetButtonsFalseShowsUpdateAndCancelAndStopsTheMoveButtons) {
    startWithThree();
    f->SetButtons(false);
    for (const char* name :
         {"cmdAdd", "cmdEdit", "cmdDelete", "cmdClose", "cmdRefresh", "Command16"})
        EXPECT_FALSE(visible(name)) << name;
    EXPECT_TRUE(visible("cmdUpdate"));
    EXPECT_TRUE(visible("cmdCancel"));
    for (const char* name : {"cmdNext", "cmdFirst", "cmdLast", "cmdPrevious"})
        EXPECT_FALSE(enabled(name)) << name;
    f->SetButtons(true);
    for (const char* name :
         {"cmdAdd", "cmdEdit", "cmdDelete", "cmdClose", "cmdRefresh", "Command16"})
        EXPECT_TRUE(visible(name)) << name;
    EXPECT_FALSE(visible("cmdUpdate"));
    EXPECT_FALSE(visible("cmdCancel"));
    for (const char* name : {"cmdNext", "cmdFirst", "cmdLast", "cmdPrevious"})
        EXPECT_TRUE(enabled(name)) << name;
}

TEST_F(Editing, AddSwitchesToTheEditScreenAndOffersAnEmptyRow) {
    startWithThree();
    f->cmdNext_Click();
    ASSERT_EQ((*f)("cmdShowPic").Caption(), "Edit Mode");
    (*f)("cmdAdd").Raise("Click");
    EXPECT_EQ((*f)("cmdShowPic").Caption(), "View Mode");
    EXPECT_TRUE((*f)("Frame5").Visible());
    EXPECT_TRUE(f->mbAddNewFlag);
    EXPECT_FALSE(f->mvBookMark.IsEmpty());
    EXPECT_EQ(stockNo(), "");
    EXPECT_EQ(box(ProdName).Text(), "");
    EXPECT_TRUE(visible("cmdUpdate"));
    EXPECT_FALSE(visible("cmdAdd"));
    // Moves do no screen work while the row is pending.
    EXPECT_EQ(status(), "Record: 2  of  3");
}

TEST_F(Editing, AnAddedRowTypedAndUpdatedIsStoredAndFoundInStockNoOrder) {
    startWithThree();
    f->cmdLast_Click();
    f->cmdAdd_Click();
    box(StockNo).SetText("C3");
    box(ProdName).SetText("Cherry");
    box(Cost1).SetText("3.5");
    f->cmdUpdate_Click();
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'C3'"), "Cherry");
    EXPECT_EQ(cat.query("SELECT Cost1 FROM Products WHERE StockNo = 'C3'"), "3.5");
    // The current row is the first of the reopened set, not the new row.
    EXPECT_EQ(status(), "Record: 1  of  4");
    EXPECT_EQ(stockNo(), "B2");
    EXPECT_FALSE(f->mbAddNewFlag);
    EXPECT_FALSE(f->mbEditFlag);
    EXPECT_TRUE(visible("cmdAdd"));
    EXPECT_FALSE(visible("cmdUpdate"));
    EXPECT_EQ(rt->MousePointer(), 0);
    f->cmdNext_Click();
    EXPECT_EQ(stockNo(), "C3");
    EXPECT_EQ(status(), "Record: 2  of  4");
}

TEST_F(Editing, EditThenUpdateSavesTheTypedValue) {
    startWithThree();
    f->cmdNext_Click();
    (*f)("cmdEdit").Raise("Click");
    EXPECT_TRUE(f->mbEditFlag);
    EXPECT_EQ((*f)("cmdShowPic").Caption(), "View Mode");
    EXPECT_FALSE(enabled("cmdNext"));
    box(ProdName).SetText("Dried Date");
    (*f)("cmdUpdate").Raise("Click");
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'D4'"), "Dried Date");
    EXPECT_FALSE(f->mbEditFlag);
    EXPECT_TRUE(enabled("cmdNext"));
}

TEST_F(Editing, TypingIntoABoundBoxThenMovingOffTheRowSavesIt) {
    startWithThree();
    box(ProdName).SetText("Broad Bean");
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'B2'"), "Bean");
    f->cmdNext_Click();
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'B2'"), "Broad Bean");
    EXPECT_EQ(stockNo(), "D4");
}

TEST_F(Editing, AValueTheStoreRefusesLeavesTheRowAsItWasSilently) {
    startWithThree();
    f->cmdEdit_Click();
    box(Cost1).SetText("abc");
    box(ProdName).SetText("Runner Bean");
    f->cmdUpdate_Click();
    EXPECT_EQ(cat.query("SELECT Cost1 FROM Products WHERE StockNo = 'B2'"), "2");
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'B2'"), "Runner Bean");
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(box(Cost1).Text(), "2");
}

TEST_F(Editing, CancelAfterAddGoesBackToTheRowItLeftAndStoresNothing) {
    startWithThree();
    f->cmdNext_Click();
    f->cmdAdd_Click();
    box(StockNo).SetText("Z9");
    (*f)("cmdCancel").Raise("Click");
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "3");
    EXPECT_EQ(stockNo(), "D4");
    EXPECT_EQ(status(), "Record: 2  of  3");
    EXPECT_FALSE(f->mbAddNewFlag);
    EXPECT_TRUE(visible("cmdAdd"));
    EXPECT_FALSE(visible("cmdCancel"));
}

TEST_F(Editing, CancelAfterAddOnTheFirstRowGoesBackToIt) {
    startWithThree();
    f->cmdAdd_Click();
    f->cmdCancel_Click();
    EXPECT_EQ(stockNo(), "B2");
    EXPECT_EQ(status(), "Record: 1  of  3");
}

TEST_F(Editing, CancelAfterAddGoesBackAlsoToTheFirstStoredRow) {
    addProduct("D4");
    addProduct("B2");
    f = &start();
    f->cmdNext_Click();
    ASSERT_EQ(stockNo(), "D4");
    f->cmdAdd_Click();
    f->cmdCancel_Click();
    EXPECT_EQ(stockNo(), "D4");
    EXPECT_EQ(status(), "Record: 2  of  2");
}

TEST_F(Editing, CancelAfterEditDropsTheTypedValue) {
    startWithThree();
    f->cmdLast_Click();
    f->cmdEdit_Click();
    box(ProdName).SetText("Green Fig");
    f->cmdCancel_Click();
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'F6'"), "Fig");
    EXPECT_FALSE(f->mbEditFlag);
    // No bookmark was kept by an add: the first record.
    EXPECT_EQ(stockNo(), "B2");
}

TEST_F(Editing, CancelAfterAddOnAnEmptyTableSwallowsTheFailedMoveFirst) {
    f = &start();
    f->cmdAdd_Click();
    EXPECT_TRUE(f->mvBookMark.IsEmpty());
    box(StockNo).SetText("N1");
    reports.clear();
    f->cmdCancel_Click();
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
    EXPECT_EQ(f->adoPrimaryRS->RecordCount(), 0);
    EXPECT_EQ(
        reportsOf("cmdCancel_Click"),
        std::vector<std::string>{"Error - 3021\r\n  In  (Form) Products::Sub cmdCancel_Click"});
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(status(), "NO CURRENT RECORDS");
    EXPECT_TRUE(visible("cmdAdd"));
}

TEST_F(Editing, DeleteOnTheLastRowLeavesTheNewLastRowCurrent) {
    startWithThree();
    f->cmdLast_Click();
    (*f)("cmdDelete").Raise("Click");
    EXPECT_EQ(cat.query("SELECT StockNo FROM Products ORDER BY StockNo"), "B2|D4");
    EXPECT_EQ(stockNo(), "D4");
    EXPECT_EQ(status(), "Record: 2  of  2");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Editing, DeleteInTheMiddleMovesToTheNextRow) {
    startWithThree();
    f->cmdNext_Click();
    f->cmdDelete_Click();
    EXPECT_EQ(cat.query("SELECT StockNo FROM Products ORDER BY StockNo"), "B2|F6");
    EXPECT_EQ(stockNo(), "F6");
    EXPECT_EQ(status(), "Record: 2  of  2");
}

TEST_F(Editing, DeleteOnTheOnlyRowLeavesAnEmptySetAndNoCurrentRecords) {
    addProduct("A1");
    f = &start();
    ASSERT_EQ(status(), "Record: 1  of  1");
    f->cmdDelete_Click();
    EXPECT_EQ(cat.query("SELECT COUNT(*) FROM Products"), "0");
    EXPECT_EQ(f->adoPrimaryRS->RecordCount(), 0);
    EXPECT_EQ(status(), "NO CURRENT RECORDS");
    EXPECT_FALSE(enabled("cmdDelete"));
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Editing, AHiddenBoxStillHoldsItsValueAndUpdateSavesItUnchanged) {
    startWithThree();
    ui.msgBoxAnswer = vb::vbYes;
    box(ProdName).Raise("DblClick");
    ASSERT_FALSE(box(ProdName).Visible());
    EXPECT_EQ(box(ProdName).Text(), "Bean");
    f->cmdEdit_Click();
    box(Cost1).SetText("2.25");
    f->cmdUpdate_Click();
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'B2'"), "Bean");
    EXPECT_EQ(cat.query("SELECT Cost1 FROM Products WHERE StockNo = 'B2'"), "2.25");
    EXPECT_EQ(box(ProdName).Text(), "Bean");
}

TEST_F(Editing, UpdateWhoseReopenFindsTheSetOpenCancelsAndEnds) {
    startWithThree();
    auto wrapped = std::make_unique<Wrapped>(std::move(f->adoPrimaryRS));
    Wrapped& rs = *wrapped;
    f->adoPrimaryRS = std::move(wrapped);
    rs.closeFault = vberr::InvalidProcedureCall;
    f->cmdLast_Click();
    f->cmdEdit_Click();
    box(ProdName).SetText("Fresh Fig");
    reports.clear();
    f->cmdUpdate_Click();
    EXPECT_EQ(
        reportsOf("cmdUpdate_Click"),
        (std::vector<std::string>{"Error - 5\r\n  In  (Form) Products::Sub cmdUpdate_Click",
                                  "Error - 3705\r\n  In  (Form) Products::Sub cmdUpdate_Click"}));
    // The saved edit stands; cmdCancel_Click ran (to the first record), cmdRefresh_Click not.
    EXPECT_EQ(cat.query("SELECT ProdName FROM Products WHERE StockNo = 'F6'"), "Fresh Fig");
    EXPECT_EQ(stockNo(), "B2");
    EXPECT_EQ(rs.requeries, 0);
    EXPECT_EQ(rt->MousePointer(), 0);
    EXPECT_TRUE(visible("cmdAdd"));
}

TEST_F(Editing, RefreshOfAClosedSetOpensItAndRepeatsTheRequery) {
    startWithThree();
    cat.sql("INSERT INTO Products (StockNo) VALUES ('A0');");
    f->adoPrimaryRS->Close();
    reports.clear();
    (*f)("cmdRefresh").Raise("Click");
    EXPECT_TRUE(reportsOf("cmdRefresh_Click").empty());
    EXPECT_EQ(f->adoPrimaryRS->State(), ado::adStateOpen);
    EXPECT_EQ(f->adoPrimaryRS->RecordCount(), 4);
    EXPECT_EQ(stockNo(), "A0");
    EXPECT_EQ(rt->MousePointer(), 0);
}

TEST_F(Editing, RefreshRequeriesTheGridsSetOnlyWhenTheGridShows) {
    startWithThree();
    cat.sql("INSERT INTO Products (StockNo) VALUES ('A0');");
    f->cmdRefresh_Click();
    EXPECT_EQ(f->adoPrimaryRS->RecordCount(), 4);
    EXPECT_EQ(status(), "Record: 1  of  4");
    EXPECT_EQ(f->adoprimaryrs2->RecordCount(), 3);
    f->cmdGrid_Click();
    f->cmdRefresh_Click();
    EXPECT_EQ(f->adoprimaryrs2->RecordCount(), 4);
}

TEST_F(Editing, ResetEmptiesTheSearchBox) {
    startWithThree();
    (*f)("txtSrch").SetText("D4");
    (*f)("cmdReset").Raise("Click");
    EXPECT_EQ((*f)("txtSrch").Text(), "");
}

TEST_F(Editing, ResetLiftsAFilterInForce) {
    startWithThree();
    Mod().SearchCriteria = Variant("[StockNo] = 'D4'");
    f->adoPrimaryRS->SetFilter("[StockNo] = 'D4'");
    ASSERT_EQ(f->adoPrimaryRS->RecordCount(), 1);
    (*f)("txtSrch").SetText("D4");
    f->cmdReset_Click();
    EXPECT_EQ((*f)("txtSrch").Text(), "");
    EXPECT_EQ(Mod().SearchCriteria, Variant(""));
    EXPECT_EQ(f->adoPrimaryRS->RecordCount(), 3);
    EXPECT_EQ(status(), "Record: 1  of  3");
}

TEST_F(Editing, ShowHelpTogglesTheHelpStartPageAndBack) {
    startWithThree();
    (*f)("Command16").Raise("Click");
    EXPECT_EQ((*f)("Command16").Caption(), "Hide Help");
    EXPECT_EQ(Mod().HelpShowing, Variant(true));
    EXPECT_EQ(location(), appDir() + "Help/index.htm");
    (*f)("Command16").Raise("Click");
    EXPECT_EQ((*f)("Command16").Caption(), "Show Help");
    EXPECT_EQ(Mod().HelpShowing, Variant(false));
    EXPECT_EQ(location(), appDir() + "page.htm");
}

TEST_F(Editing, TheWillChangeHookAcceptsEveryChange) {
    startWithThree();
    int adStatus = 1;
    f->adoPrimaryRS_WillChangeRecord(adStatus);
    EXPECT_EQ(adStatus, 1);
    box(Inventory).SetText("12");
    f->cmdNext_Click();
    EXPECT_EQ(cat.query("SELECT Inventory FROM Products WHERE StockNo = 'B2'"), "12");
}

TEST_F(Editing, TheKeysDoNothingWhileEditingOrAdding) {
    startWithThree();
    f->cmdEdit_Click();
    int end = 35;
    f->Form_KeyDown(end, 0);
    EXPECT_EQ(stockNo(), "B2");
    f->cmdCancel_Click();
    f->cmdAdd_Click();
    f->Form_KeyDown(end, 0);
    EXPECT_TRUE(f->mbAddNewFlag);
    f->cmdCancel_Click();
    f->Form_KeyDown(end, 0);
    EXPECT_EQ(stockNo(), "F6");
}

TEST_F(Editing, DoubleClickOnABoxHidesItOnYesAndShowsItOnNo) {
    startWithThree();
    ui.msgBoxAnswer = vb::vbYes;
    box(Cost1).Raise("DblClick");
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].prompt, "Hide This Text Box?");
    EXPECT_EQ(ui.boxes[0].buttons, vb::vbYesNo + vb::vbQuestion);
    EXPECT_FALSE(box(Cost1).Visible());
    EXPECT_EQ(saved("Settings", "HideText(2)"), "False");
    ui.msgBoxAnswer = vb::vbNo;
    box(Inventory).Raise("DblClick");
    EXPECT_TRUE(box(Inventory).Visible());
    EXPECT_EQ(saved("Settings", "HideText(8)"), "True");
}

TEST_F(Editing, EditAllItemsWaitsForTheBulkEditThenOpensTheSetsAgain) {
    startWithThree();
    cat.sql("INSERT INTO Products (StockNo) VALUES ('A0');");
    int waits = 0;
    // The user cancels the board, then clicks Continue on the totals page.
    ui.onWait = [&] {
        if (waits++ == 0) {
            EXPECT_TRUE(Mod().BulkEditMode);
            f->bulk->Command25_Click();
        } else {
            f->ContinueFlag = true;
        }
    };
    f->cmdEditRec_Click();
    EXPECT_EQ(waits, 2);
    EXPECT_FALSE(Mod().BulkEditMode);
    EXPECT_EQ(f->adoPrimaryRS->RecordCount(), 4);
    EXPECT_EQ(f->adoprimaryrs2->RecordCount(), 4);
}

TEST_F(Editing, EditAllItemsDoesNothingOnTheEditScreen) {
    startWithThree();
    f->cmdShowPic_Click();
    int waits = 0;
    ui.onWait = [&] { ++waits; };
    f->cmdEditRec_Click();
    EXPECT_EQ(waits, 0);
    EXPECT_FALSE(Mod().BulkEditMode);
}

TEST_F(Editing, ExportDbSetsExportModeAndShowsTheSelectionButtonsWhileItRuns) {
    startWithThree();
    EXPECT_FALSE((*f)("cmdSelectAll").Visible());
    ui.inputAnswer = ",";
    int waits = 0;
    ui.onWait = [&] {
        if (waits++ == 0) {
            EXPECT_TRUE(f->ExportMode);
            EXPECT_TRUE((*f)("cmdSelectAll").Visible());
            EXPECT_TRUE((*f)("cmdUnSelect").Visible());
            f->bulk->Command25_Click();
        } else {
            f->ContinueFlag = true;
        }
    };
    f->Command3_Click();
    EXPECT_EQ(waits, 2);
    EXPECT_FALSE(f->ExportMode);
    EXPECT_FALSE((*f)("cmdSelectAll").Visible());
    EXPECT_FALSE((*f)("cmdUnSelect").Visible());
}

}  // namespace
