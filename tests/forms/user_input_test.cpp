#include <gtest/gtest.h>

#include <string>

#include "base/convert.h"
#include "forms/form.h"
#include "forms/user_input.h"

namespace {

// A form that writes down what its events saw.
struct Gestures : ::testing::Test {
    struct Keyed : Form {
        Keyed() : Form("frmKeys") {}
        std::string log;
        int swallowFormPress = 0;
        void Form_KeyDown(int& KeyCode, int) override { log += "fd" + std::to_string(KeyCode); }
        void Form_KeyPress(int& KeyAscii) override {
            log += "fp" + std::to_string(KeyAscii);
            if (KeyAscii == swallowFormPress) KeyAscii = 0;
        }
    } form;

    void SetUp() override {
        form.SetLoaded(true);
        for (int i = 0; i < 2; ++i) {
            form.Add("optA", ControlKind::OptionButton, i).SetContainer("Frame1");
            form.Add("optB", ControlKind::OptionButton, i).SetContainer("Frame2");
            form.Add("lblBox", ControlKind::Label, i);
        }
        form.Add("optLoose", ControlKind::OptionButton).SetContainer("Frame1");
        form.Add("txtName", ControlKind::TextBox);
        form.Add("chkOn", ControlKind::CheckBox);
        for (const char* event : {"MouseDown", "MouseUp", "Click", "DragDrop"})
            form.On("lblBox", event, [this, event](EventArgs& e) {
                form.log += std::string(event) + std::to_string(e.Index);
                if (e.Source)
                    form.log +=
                        "<" + e.Source->Path() + "@" + std::to_string(static_cast<int>(e.X));
                form.log += " ";
            });
        form.On("txtName", "KeyPress", [this](EventArgs& e) {
            form.log += "p" + std::to_string(e.KeyAscii);
            if (e.KeyAscii == 'x') e.KeyAscii = 0;  // the box refuses an x
        });
    }
    bool on(const char* name, int index = -1) { return form(name, index).Value().BoolValue(); }
};

}  // namespace

TEST_F(Gestures, SelectingAnOptionButtonClearsTheOthersOfItsContainerOnly) {
    UserInput::Click(form("optA", 0));
    UserInput::Click(form("optB", 1));
    EXPECT_TRUE(on("optA", 0));
    UserInput::Click(form("optA", 1));
    EXPECT_FALSE(on("optA", 0));
    EXPECT_TRUE(on("optA", 1));
    EXPECT_TRUE(on("optB", 1));
    // Another array in the same container belongs to the same group.
    UserInput::Click(form("optLoose"));
    EXPECT_FALSE(on("optA", 1));
    // The program selecting one by its Value does the same as the user's click.
    form("optA", 0).SetValue(Variant(true));
    EXPECT_FALSE(on("optLoose"));
}

TEST_F(Gestures, ACheckBoxClickTogglesItsValue) {
    UserInput::Click(form("chkOn"));
    EXPECT_EQ(CDbl(form("chkOn").Value()), 1);
    UserInput::Click(form("chkOn"));
    EXPECT_EQ(CDbl(form("chkOn").Value()), 0);
}

TEST_F(Gestures, AnAutomaticDragDropsTheSourceAtThePoint) {
    form("lblBox", 0).SetProperty("DragMode", Variant::Integer(1));
    UserInput::Drag(form("lblBox", 0), form("lblBox", 1), 120, 30);
    EXPECT_EQ(form.log, "DragDrop1<lblBox(0)@120 ");
}

TEST_F(Gestures, AControlWithoutDraggingIsOnlyPressedAndReleasedOffItself) {
    UserInput::Drag(form("lblBox", 0), form("lblBox", 1), 120, 30);
    EXPECT_EQ(form.log, "MouseDown0 MouseUp0 ");
}

TEST_F(Gestures, AReleaseThatCompletesAClickOnALabelClicksIt) {
    UserInput::MouseUp(form("lblBox", 1), {1, 0, 0, 0}, true);
    UserInput::MouseUp(form("lblBox", 1), {2, 0, 0, 0}, true);
    UserInput::MouseUp(form("lblBox", 1), {1, 0, 0, 0}, false);
    EXPECT_EQ(form.log, "MouseUp1 Click1 MouseUp1 MouseUp1 ");
}

TEST_F(Gestures, AKeyPressHandlerThatClearsKeyAsciiSwallowsTheKey) {
    EXPECT_FALSE(UserInput::KeyDown(form, &form("txtName"), 65, 0, 'a'));
    EXPECT_TRUE(UserInput::KeyDown(form, &form("txtName"), 88, 0, 'x'));
    EXPECT_EQ(form.log, "p97p120");
}

TEST_F(Gestures, TheFormSeesKeysFirstWhenItPreviewsThem) {
    form.SetProperty("KeyPreview", Variant(true));
    form.swallowFormPress = 'b';
    EXPECT_FALSE(UserInput::KeyDown(form, &form("txtName"), 65, 0, 'a'));
    EXPECT_TRUE(UserInput::KeyDown(form, &form("txtName"), 66, 0, 'b'));
    EXPECT_EQ(form.log, "fd65fp97p97fd66fp98");
}

TEST_F(Gestures, AKeyWithNoControlGoesToTheFormsOwnProcedures) {
    form.swallowFormPress = 13;
    EXPECT_TRUE(UserInput::KeyDown(form, nullptr, 13, 0, 13));
    EXPECT_EQ(form.log, "fd13fp13");
}

namespace {

// A form with a text box, an OK and a Cancel button and a plain one, logging focus and clicks.
struct Buttons : ::testing::Test {
    struct Dialog : Form {
        Dialog() : Form("frmDialog") {}
        std::string log;
        void Form_KeyDown(int& KeyCode, int) override { log += "fd" + std::to_string(KeyCode); }
    } form;

    void SetUp() override {
        form.SetLoaded(true);
        form.SetProperty("KeyPreview", Variant(true));
        for (const char* name : {"txtValue", "txtOther"})
            form.Add(name, ControlKind::TextBox);
        for (const char* name : {"cmdOK", "cmdCancel", "cmdMore"})
            form.Add(name, ControlKind::CommandButton);
        for (const char* name : {"txtValue", "txtOther", "cmdOK", "cmdCancel", "cmdMore"})
            for (const char* event : {"GotFocus", "LostFocus", "Click"})
                form.On(name, event, [this, name, event](EventArgs&) {
                    form.log += std::string(name) + "." + event + " ";
                });
    }
};

}  // namespace

TEST_F(Buttons, EnterClicksTheDefaultButtonAndEscapeTheCancelOneBeforeTheFormSeesThem) {
    form("cmdOK").SetProperty("Default", Variant(true));
    form("cmdCancel").SetProperty("Cancel", Variant(true));
    EXPECT_TRUE(UserInput::KeyDown(form, &form("txtValue"), 13, 0, 13));
    EXPECT_TRUE(UserInput::KeyDown(form, &form("txtValue"), 27, 0, 27));
    EXPECT_EQ(form.log, "cmdOK.Click cmdCancel.Click ");
}

TEST_F(Buttons, AFocusedButtonTakesEnterItself) {
    form("cmdOK").SetProperty("Default", Variant(true));
    UserInput::KeyDown(form, &form("cmdMore"), 13, 0, 13);
    EXPECT_EQ(form.log, "fd13");
}

TEST_F(Buttons, WithoutSuchButtonsOrWithThemDisabledTheKeysGoOnAsBefore) {
    UserInput::KeyDown(form, &form("txtValue"), 13, 0, 0);
    form("cmdCancel").SetProperty("Cancel", Variant(true));
    form("cmdCancel").SetProperty("Enabled", Variant(false));
    UserInput::KeyDown(form, &form("txtValue"), 27, 0, 0);
    EXPECT_EQ(form.log, "fd13fd27");
}

TEST_F(Buttons, SetFocusTakesTheFocusFromTheControlThatHadIt) {
    form("txtOther").SetFocus();
    form("txtValue").SetFocus();
    EXPECT_EQ(form.ActiveControl(), &form("txtValue"));
    // Given again, the control hears GotFocus again, and no LostFocus.
    form("txtValue").SetFocus();
    EXPECT_EQ(form.log,
              "txtOther.GotFocus txtOther.LostFocus txtValue.GotFocus txtValue.GotFocus ");
}

TEST_F(Buttons, TheUsersFocusIsTheFormsActiveControlUntilItLeaves) {
    UserInput::Focus(form("txtOther"));
    EXPECT_EQ(form.ActiveControl(), &form("txtOther"));
    form("txtValue").SetFocus();
    UserInput::Blur(form("txtValue"));
    EXPECT_EQ(form.ActiveControl(), nullptr);
    EXPECT_EQ(form.log,
              "txtOther.GotFocus txtOther.LostFocus txtValue.GotFocus txtValue.LostFocus ");
}

TEST_F(Buttons, TheFormNumbersItsControlsForTheTabKeyInTheOrderItAddsThem) {
    EXPECT_EQ(CDbl(form("txtValue").Property("TabIndex")), 0);
    EXPECT_EQ(CDbl(form("cmdMore").Property("TabIndex")), 4);
}
