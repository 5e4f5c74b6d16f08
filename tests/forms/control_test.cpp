#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "base/convert.h"
#include "forms/form.h"
#include "vb_expect.h"

namespace {

// A form whose events count themselves.
struct Counting : ::testing::Test {
    Form form{"frmTest"};
    int changes = 0, clicks = 0;
    std::vector<int> clickedIndexes;

    void SetUp() override {
        form.Add("txtName", ControlKind::TextBox);
        form.Add("lstItems", ControlKind::ListBox);
        form.Add("chkOn", ControlKind::CheckBox);
        for (int i = 0; i < 3; ++i)
            form.Add("lblCell", ControlKind::Label, i);
        form.On("txtName", "Change", [this](EventArgs&) { ++changes; });
        form.On("lstItems", "Click", [this](EventArgs&) { ++clicks; });
        form.On("chkOn", "Click", [this](EventArgs&) { ++clicks; });
        form.On("lblCell", "Click", [this](EventArgs& e) { clickedIndexes.push_back(e.Index); });
    }
};

}  // namespace

TEST_F(Counting, TextWriteFiresChangeOnlyWhenTheTextDiffers) {
    form("txtName").SetText("Ann");
    form("txtName").SetText("Ann");
    EXPECT_EQ(changes, 1);
    form("txtName").SetText("Bob");
    EXPECT_EQ(changes, 2);
    form("txtName").SetText("");
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(form("txtName").Text(), "");
}

TEST_F(Counting, ListIndexWriteFiresClickWhenItChanges) {
    Control& list = form("lstItems");
    list.AddItem("apple");
    list.AddItem("pear");
    list.SetListIndex(1);
    EXPECT_EQ(clicks, 1);
    list.SetListIndex(1);
    EXPECT_EQ(clicks, 1);
    list.SetListIndex(-1);
    EXPECT_EQ(clicks, 2);
    EXPECT_VBERROR(list.SetListIndex(2), 380);
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(Counting, ListIndexWrittenByNameOrSetIsTheSameWrite) {
    Control& list = form("lstItems");
    list.AddItem("apple");
    list.AddItem("pear");
    std::vector<std::string> heard;
    form.Observe([&](Form&, Control* c, std::string_view p) {
        if (c) heard.push_back(c->Name() + "." + std::string(p));
    });
    list.SetProperty("listindex", Variant::Double(1));
    EXPECT_EQ(clicks, 1);
    list.SetListIndex(1);  // the same row: told, not clicked
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(list.Property("ListIndex").Type(), VarType::Long);
    list.SetListIndex(0);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(heard, (std::vector<std::string>{"lstItems.ListIndex", "lstItems.ListIndex",
                                               "lstItems.ListIndex"}));
    list.RemoveItem(1);
    EXPECT_VBERROR(list.SetListIndex(1), 380);
    EXPECT_VBERROR(list.SetListIndex(-2), 380);
    EXPECT_EQ(list.ListIndex(), 0);
    EXPECT_VBERROR(form("txtName").SetListIndex(0), 438);
}

TEST_F(Counting, ComboBoxTextFollowsItsListIndex) {
    Control& combo = form.Add("cboKind", ControlKind::ComboBox);
    combo.AddItem("Retail");
    combo.AddItem("Cost1");
    combo.SetListIndex(1);
    EXPECT_EQ(combo.Text(), "Cost1");
}

TEST_F(Counting, CheckBoxValueWriteFiresClick) {
    form("chkOn").SetValue(Variant::Integer(1));
    EXPECT_EQ(clicks, 1);
    form("chkOn").SetValue(Variant::Integer(1));
    EXPECT_EQ(clicks, 1);
    form("chkOn").SetValue(Variant::Integer(0));
    EXPECT_EQ(clicks, 2);
}

TEST_F(Counting, ControlArraysAreReachedByIndexAndShareOneProcedure) {
    form("lblCell", 2).Raise("Click");
    form("lblCell", 0).Raise("Click");
    EXPECT_EQ(clickedIndexes, (std::vector<int>{2, 0}));
    EXPECT_EQ(form("lblCell", 1).Path(), "lblCell(1)");
    EXPECT_EQ(form.Find("LBLCELL", 1), &form("lblCell", 1));
}

TEST_F(Counting, MissingControlIsFault340) {
    EXPECT_VBERROR(form("cmdNope"), 340);
    EXPECT_VBERROR(form("lblCell", 3), 340);
    EXPECT_VBERROR(form("lblCell"), 340);
    EXPECT_EQ(form.Find("txtName", 0), nullptr);
}

TEST_F(Counting, UnknownPropertyIsFault438) {
    EXPECT_VBERROR(form("txtName").Property("Caption"), 438);
    EXPECT_VBERROR(form("lblCell", 0).SetProperty("Text", Variant("x")), 438);
    EXPECT_VBERROR(form.Property("Colour"), 438);
    EXPECT_VBERROR(form.SetProperty("Colour", Variant(1)), 438);
    EXPECT_FALSE(form("lblCell", 0).HasProperty("Text"));
}

TEST_F(Counting, PropertiesKeepTheirKind) {
    Control& box = form("txtName");
    box.SetProperty("Text", Variant(12));
    EXPECT_EQ(box.Text(), "12");
    box.SetProperty("Visible", Variant(0));
    EXPECT_FALSE(box.Visible());
    box.SetProperty("Left", Variant("150"));
    EXPECT_EQ(box.Num("Left"), 150);
    EXPECT_EQ(form("lstItems").Property("ListCount").Number(), 0);
}

TEST_F(Counting, NamesOfPropertiesAndProceduresIgnoreCase) {
    Control& box = form("TXTNAME");
    box.SetProperty("tExT", Variant("Ann"));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(textOf(box.Property("TEXT")), "Ann");
    EXPECT_TRUE(box.HasProperty("visible"));
    std::vector<std::string> heard;
    form.Observe([&](Form&, Control*, std::string_view p) { heard.emplace_back(p); });
    box.SetProperty("text", Variant("Bob"));
    EXPECT_EQ(heard, std::vector<std::string>{"Text"});  // told by its own spelling
    EXPECT_EQ(changes, 2);
    form.On("TxtName", "change", [this](EventArgs&) { changes += 10; });  // replaces
    box.SetText("Cy");
    EXPECT_EQ(changes, 12);
}

TEST_F(Counting, AProcedureThatReplacesItselfRunsToItsEnd) {
    int ran = 0;
    form.On("chkOn", "Click", [&](EventArgs&) {
        form.On("chkOn", "Click", [&](EventArgs&) { ran += 100; });
        ran += 1;
    });
    form("chkOn").Raise("Click");
    form("chkOn").Raise("Click");
    EXPECT_EQ(ran, 101);
}

TEST_F(Counting, ArrayElementsAddedOutOfOrderAreFoundByIndex) {
    form.Add("optKind", ControlKind::OptionButton, 5);
    form.Add("optKind", ControlKind::OptionButton, 0);
    EXPECT_EQ(form("optKind", 5).Index(), 5);
    EXPECT_EQ(form("optKind", 0).Index(), 0);
    EXPECT_VBERROR(form("optKind", 1), 340);
}

TEST_F(Counting, AProcedureSetAfterAControlWasWrittenHearsItsNextWrites) {
    Control& box = form.Add("txtLater", ControlKind::TextBox);
    Control& check = form.Add("chkLater", ControlKind::CheckBox);
    box.SetText("before");
    check.SetValue(Variant::Integer(1));
    form.On("txtLater", "Change", [this](EventArgs&) { ++changes; });
    form.On("chkLater", "Click", [this](EventArgs&) { ++clicks; });
    box.SetText("after");
    check.SetValue(Variant::Integer(0));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Counting, AControlNamedByATextThatChangesInPlaceIsFoundByWhatItSays) {
    form.Add("txtOther", ControlKind::TextBox);
    std::string name = "txtName";
    EXPECT_EQ(&form(name), form.Find("txtName"));
    name.replace(0, name.size(), "txtOther");  // the same buffer now names another control
    EXPECT_EQ(form(name).Name(), "txtOther");
    name.replace(0, name.size(), "lblCell");
    EXPECT_EQ(form(name, 2).Index(), 2);
    EXPECT_EQ(form(name, 1).Index(), 1);
    EXPECT_VBERROR(form(name, 3), 340);
    name.replace(0, name.size(), "LBLCELL");
    EXPECT_EQ(form(name, 1).Name(), "lblCell");
}

TEST_F(Counting, TheCommonPropertiesReadAndWriteAsAnyOther) {
    Control& cell = form("lblCell", 0);
    cell.SetCaption("Total");
    EXPECT_EQ(textOf(cell.Property("caption")), "Total");
    cell.SetProperty("CAPTION", Variant(5));
    EXPECT_EQ(cell.Caption(), "5");
    cell.SetEnabled(false);
    EXPECT_FALSE(cell.Property("Enabled").BoolValue());
    EXPECT_VBERROR(cell.SetText("no text on a label"), 438);
    EXPECT_VBERROR(cell.Text(), 438);
    EXPECT_VBERROR(cell.SetValue(Variant(1)), 438);
}

TEST_F(Counting, ObserversHearEveryPropertyWrite) {
    std::vector<std::string> heard;
    form.Observe([&](Form&, Control* c, std::string_view p) {
        heard.push_back((c ? c->Path() : std::string("form")) + "." + std::string(p));
    });
    form("txtName").SetText("x");
    form.SetCaption("Title");
    EXPECT_EQ(heard, (std::vector<std::string>{"txtName.Text", "form.Caption"}));
}

TEST(FileListControl, ReadsItsFolderByPathAndPatternAndOnRefresh) {
    namespace fs = std::filesystem;
    const fs::path dir = fs::temp_directory_path() / ("filelist_" + std::to_string(::getpid()));
    fs::remove_all(dir);
    fs::create_directories(dir);
    std::ofstream(dir / "b.htm") << "b";
    std::ofstream(dir / "a.html") << "a";
    std::ofstream(dir / "c.txt") << "c";
    Form form{"frmFiles"};
    Control& list = form.Add("File1", ControlKind::FileList);
    list.SetProperty("Pattern", Variant("*.htm*"));
    EXPECT_EQ(list.ListCount(), 0);
    list.SetProperty("Path", Variant(dir.string()));
    ASSERT_EQ(list.ListCount(), 2);
    EXPECT_EQ(list.List(0), "a.html");
    EXPECT_EQ(list.List(1), "b.htm");
    list.SetListIndex(1);
    EXPECT_EQ(textOf(list.Property("FileName")), "b.htm");
    std::ofstream(dir / "d.htm") << "d";
    EXPECT_EQ(list.ListCount(), 2);
    list.Refresh();
    EXPECT_EQ(list.ListCount(), 3);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(textOf(list.Property("FileName")), "");
    fs::remove_all(dir);
}
