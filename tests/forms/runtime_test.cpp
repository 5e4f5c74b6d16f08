#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "base/trap.h"
#include "forms/runtime.h"
#include "recording_ui.h"
#include "vb_expect.h"

namespace {

// A Ui whose wait for the user runs a step of the test's own.
struct StepUi : RecordingUi {
    std::function<void()> step;
    int waits = 0;
    void WaitForUser() override {
        ++waits;
        if (step) step();
    }
};

// A form whose closing can be refused and that can unload itself from a button.
class Closable : public Form {
  public:
    explicit Closable(std::string name) : Form(std::move(name)) {
        Add("cmdClose", ControlKind::CommandButton);
        On("cmdClose", "Click", [this](EventArgs&) {
            Runtime::Current().Unload(*this);
            // Still inside the unloaded form's own procedure: its members stay usable.
            afterUnload = (*this)("cmdClose").Path() + (IsLoaded() ? " loaded" : " unloaded");
        });
    }
    void Form_QueryUnload(int& Cancel, int UnloadMode) override {
        modes.push_back(UnloadMode);
        if (refuse) Cancel = 1;
    }
    void Form_Unload(int&) override { ++unloads; }

    bool refuse = false;
    int unloads = 0;
    std::vector<int> modes;
    std::string afterUnload;
};

struct RuntimeTest : ::testing::Test {
    StepUi ui;
    MemorySettings settings;
    Runtime rt{ui, settings, "/tmp/app/", "Test"};
    void SetUp() override {
        rt.Register("frmOne", [] { return std::make_unique<Closable>("frmOne"); });
        rt.Register("frmTwo", [] { return std::make_unique<Closable>("frmTwo"); });
    }
};

}  // namespace

TEST_F(RuntimeTest, ModalShowReturnsOnceTheFormIsHidden) {
    Form& dialog = rt.Get("frmOne");
    ui.step = [&] {
        if (ui.waits == 3) rt.Hide(dialog);
    };
    rt.Show(dialog, vb::vbModal);
    EXPECT_EQ(ui.waits, 3);
    EXPECT_TRUE(dialog.IsLoaded());
    EXPECT_FALSE(dialog.Visible());
}

TEST_F(RuntimeTest, ModalShowReturnsOnceTheFormIsUnloaded) {
    Form& dialog = rt.Get("frmOne");
    ui.step = [&] { dialog("cmdClose").Raise("Click"); };
    rt.Show(dialog, vb::vbModal);
    EXPECT_EQ(ui.waits, 1);
    EXPECT_EQ(rt.Loaded("frmOne"), nullptr);
}

TEST_F(RuntimeTest, ModelessShowDoesNotWait) {
    rt.Show(rt.Get("frmOne"));
    EXPECT_EQ(ui.waits, 0);
    EXPECT_TRUE(rt.Get("frmOne").Visible());
}

TEST_F(RuntimeTest, QueryUnloadCanCancelAnUnload) {
    auto& form = static_cast<Closable&>(rt.Get("frmOne"));
    rt.Show(form);
    form.refuse = true;
    EXPECT_FALSE(rt.Unload(form, 0));
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(form.unloads, 0);
    form.refuse = false;
    EXPECT_TRUE(rt.Unload(form));
    EXPECT_EQ(form.modes, (std::vector<int>{0, 1}));
    EXPECT_EQ(form.unloads, 1);
    EXPECT_EQ(rt.Loaded("frmOne"), nullptr);
}

TEST_F(RuntimeTest, UnloadInsideTheFormsOwnProcedureIsSafe) {
    auto& form = static_cast<Closable&>(rt.Get("frmOne"));
    rt.Show(form);
    form("cmdClose").Raise("Click");
    EXPECT_EQ(form.afterUnload, "cmdClose unloaded");
    // The name now gives a fresh instance; the old one goes once no procedure runs.
    Form& fresh = rt.Get("frmOne");
    EXPECT_NE(&fresh, &form);
    EXPECT_FALSE(fresh.IsLoaded());
    rt.CollectRetired();
    EXPECT_EQ(rt.LoadedForms().size(), 0u);
}

TEST_F(RuntimeTest, EndPassesThroughATrap) {
    int after = 0;
    Trap on = Trap::Ignoring();
    EXPECT_THROW(
        {
            on([&] { rt.End(); });
            ++after;
        },
        ProgramEnded);
    EXPECT_EQ(after, 0);
    EXPECT_TRUE(rt.Ended());
}

TEST_F(RuntimeTest, UnknownFormIsFault340) {
    EXPECT_VBERROR(rt.Get("frmNope"), 340);
}

TEST_F(RuntimeTest, SettingsAreKeptUnderTheProgramsTitle) {
    rt.SaveSetting("Settings", "MainLeft", "1200");
    EXPECT_EQ(rt.GetSetting("Settings", "MainLeft", "1000"), "1200");
    EXPECT_EQ(settings.Read("Test", "Settings", "MainLeft").value_or(""), "1200");
    EXPECT_EQ(rt.GetSetting("Settings", "MainTop", "1000"), "1000");
    rt.DeleteSetting("Settings", "MainLeft");
    EXPECT_FALSE(settings.Read("Test", "Settings", "MainLeft").has_value());
}

TEST_F(RuntimeTest, MousePointerIsTold) {
    rt.SetMousePointer(vb::vbHourglass);
    EXPECT_EQ(rt.MousePointer(), 11);
    EXPECT_EQ(ui.pointer, 11);
}

TEST(VarTableTest, ScalarsAndArraysByName) {
    VarTable vars;
    int marks[3] = {0, 1, 0};
    std::string criteria = "StockNo = 'A1'";
    vars.Add("SearchCriteria", [&] { return Variant(criteria); });
    vars.AddArray("Marks", [&](int i) {
        if (i < 0 || i >= 3) throw VbError(9, "Subscript out of range");
        return Variant::Integer(marks[i]);
    });
    EXPECT_TRUE(vars.Has("searchcriteria"));
    EXPECT_TRUE(vars.Has("Marks(2)"));
    EXPECT_FALSE(vars.Has("Marks"));
    EXPECT_EQ(vars.Get("SearchCriteria").Str(), "StockNo = 'A1'");
    EXPECT_EQ(vars.Get("Marks(1)").Number(), 1);
    EXPECT_EQ(vars.Get("Marks( 2 )").Number(), 0);
    marks[2] = 1;
    EXPECT_EQ(vars.Get("Marks(2)").Number(), 1);
    EXPECT_VBERROR(vars.Get("Marks(3)"), 9);
    EXPECT_VBERROR(vars.Get("Nope"), 9);
    EXPECT_VBERROR(vars.Get("Nope(1)"), 9);
}

TEST(VarTableTest, TwoDimensionalArraysByName) {
    VarTable vars;
    int sizes[2][3] = {{5, 2, 3}, {4, 1, 6}};
    vars.AddArray2("FontSizeOf", [&](int i, int j) {
        if (i < 0 || i >= 2 || j < 0 || j >= 3) throw VbError(9, "Subscript out of range");
        return Variant::Integer(sizes[i][j]);
    });
    EXPECT_TRUE(vars.Has("FontSizeOf(1, 2)"));
    EXPECT_FALSE(vars.Has("FontSizeOf(1)"));
    EXPECT_EQ(vars.Get("FontSizeOf(0,0)").Number(), 5);
    EXPECT_EQ(vars.Get("fontsizeof( 1 , 2 )").Number(), 6);
    EXPECT_VBERROR(vars.Get("FontSizeOf(2, 0)"), 9);
    EXPECT_VBERROR(vars.Get("FontSizeOf(0)"), 9);
}
