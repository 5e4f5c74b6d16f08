#include <gtest/gtest.h>

#include <string>

#include "program_fixture.h"
#include "shell/module.h"
#include "shell/program.h"

namespace {

struct FieldLabels : ProgramTest {
    Products* f = nullptr;

    void startOne() {
        addProduct("A1", "", "ProdName", "'Apple'");
        f = &start();
    }
    // Ends this run and starts the program again with the same stored settings.
    void restart() {
        ui.modal.clear();
        rt.reset();
        rt = std::make_unique<Runtime>(ui, settings, appDir(), title);
        RegisterForms(*rt);
        startModule(*rt);
        f = &start();
    }
    Control& label(int n) { return (*f)("Label3", n); }
    Control& box(int n) { return (*f)("txtFields", n); }
    void rename(int n, const std::string& answer) {
        ui.inputAnswer = answer;
        label(n).Raise("DblClick");
    }
    // Position n - 1 of every lstAll list.
    void expectListsShow(int n, const std::string& text) {
        for (int k = 0; k <= 5; ++k)
            EXPECT_EQ((*f)("lstAll", k).List(n - 1), text) << k;
    }
};

TEST_F(FieldLabels, DoubleClickAsksForTheNameWithThePresentCaption) {
    startOne();
    rename(3, "Title:");
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].prompt,
              "Enter The Name You Want For This Label - Blank or Cancel To Hide The Label");
    EXPECT_EQ(ui.boxes[0].title, "Change Label Name");
    EXPECT_EQ(ui.inputDefaults[0], "Name:");
    EXPECT_EQ(label(3).Caption(), "Title:");
    EXPECT_EQ(saved("Settings", "LabelName(3)"), "Title:");
}

TEST_F(FieldLabels, ARenamedLabelKeepsItsNameAndFeedsTheListsAtTheNextStart) {
    startOne();
    rename(12, "List Price:");
    // The lists read the names at load only.
    expectListsShow(12, "Retail:");
    restart();
    EXPECT_EQ(label(12).Caption(), "List Price:");
    expectListsShow(12, "List Price:");
}

TEST_F(FieldLabels, CancelBlanksTheLabelAndItStaysBlankAfterARestart) {
    startOne();
    rename(4, "");
    EXPECT_EQ(label(4).Caption(), "");
    EXPECT_EQ(saved("Settings", "LabelName(4)"), "");
    restart();
    EXPECT_EQ(label(4).Caption(), "");
    expectListsShow(4, "");
}

TEST_F(FieldLabels, TwoRenamesWithoutARestartThenRestoreBringBackTheFirstNewName) {
    startOne();
    rename(5, "Folio:");
    rename(5, "Sheet:");
    (*f)("mnuRestoreLabels").Raise("Click");
    EXPECT_EQ(label(5).Caption(), "Folio:");
    EXPECT_EQ(saved("Settings", "LabelName(5)"), "Folio:");
    EXPECT_EQ(rt->MousePointer(), 0);
}

TEST_F(FieldLabels, ARenameARestartThenRestoreBringBackTheDesignName) {
    startOne();
    rename(5, "Folio:");
    restart();
    ASSERT_EQ(label(5).Caption(), "Folio:");
    f->mnuRestoreLabels_Click();
    EXPECT_EQ(label(5).Caption(), "Page:");
    EXPECT_EQ(saved("Settings", "LabelName(5)"), "Page:");
}

TEST_F(FieldLabels, RestoreLabelsStoresEveryLabelAndStepsOverTheMissingOnes) {
    startOne();
    f->mnuRestoreLabels_Click();
    EXPECT_EQ(saved("Settings", "LabelName(2)"), "Stock #:");
    EXPECT_EQ(saved("Settings", "LabelName(19)"), "On Special:");
    EXPECT_EQ(saved("Settings", "LabelName(28)"), "Shipping 2:");
    EXPECT_EQ(saved("Settings", "LabelName(30)"), "Taxable:");
    EXPECT_EQ(saved("Settings", "LabelName(1)"), "<none>");
    EXPECT_EQ(saved("Settings", "LabelName(17)"), "<none>");
}

TEST_F(FieldLabels, TheCaptions19And28AreNeverReadFromTheSettings) {
    startOne();
    rename(19, "Sale:");
    rename(28, "Freight:");
    EXPECT_EQ(label(19).Caption(), "Sale:");
    EXPECT_EQ(label(28).Caption(), "Freight:");
    EXPECT_EQ(saved("Settings", "LabelName(19)"), "Sale:");
    restart();
    EXPECT_EQ(label(19).Caption(), "On Special:");
    EXPECT_EQ(label(28).Caption(), "Shipping 2:");
    expectListsShow(19, "N/A");
    expectListsShow(28, "N/A");
    expectListsShow(1, "N/A");
    expectListsShow(17, "N/A");
}

TEST_F(FieldLabels, AHiddenBoxStaysHiddenAtTheNextStart) {
    startOne();
    ui.msgBoxAnswer = vb::vbYes;
    box(22).Raise("DblClick");
    EXPECT_EQ(saved("Settings", "HideText(22)"), "False");
    restart();
    EXPECT_FALSE(box(22).Visible());
    EXPECT_EQ(box(22).Text(), "Apple");
}

TEST_F(FieldLabels, RestoreTextBoxesShowsEveryBoxAndStoresTheWordTrue) {
    startOne();
    ui.msgBoxAnswer = vb::vbYes;
    box(22).Raise("DblClick");
    box(2).Raise("DblClick");
    (*f)("mnuRestore").Raise("Click");
    EXPECT_TRUE(box(22).Visible());
    EXPECT_TRUE(box(2).Visible());
    EXPECT_EQ(saved("Settings", "HideText(22)"), "true");
    EXPECT_EQ(saved("Settings", "HideText(2)"), "true");
    EXPECT_EQ(saved("Settings", "HideText(30)"), "true");
    EXPECT_EQ(rt->MousePointer(), 0);
    restart();
    EXPECT_TRUE(box(22).Visible());
}

TEST_F(FieldLabels, RestoreTextBoxesLeavesTheCheckBoxesAlone) {
    startOne();
    (*f)("chkFields", 14).SetVisible(false);
    f->mnuRestore_Click();
    EXPECT_FALSE((*f)("chkFields", 14).Visible());
    for (int n : {7, 14, 15, 29})
        EXPECT_EQ(saved("Settings", "HideText(" + std::to_string(n) + ")"), "<none>");
}

}  // namespace
