#include "toy_program.h"

#include <memory>
#include <string>

#include "base/convert.h"
#include "base/trap.h"
#include "forms/runtime.h"
#include "records/pane.h"

namespace {

// What the toy program counts, readable as module variables.
struct ToyState {
    int changes = 0;
    int clicks = 0;
    std::string keys;
    bool started = false;
};
ToyState toy;

class Main : public Form {
  public:
    Main() : Form("Main") {
        for (const char* name :
             {"cmdHello", "cmdAsk", "cmdWait", "cmdEnd", "cmdModal", "cmdDisabled", "cmdHidden",
              "cmdInput", "cmdOpen", "cmdPopup", "cmdLoop", "cmdPage", "cmdFault"})
            Add(name, ControlKind::CommandButton).SetCaption(name);
        Add("lblDone", ControlKind::Label);
        Add("txtName", ControlKind::TextBox);
        Add("chkOn", ControlKind::CheckBox);
        Add("lstItems", ControlKind::ListBox);
        Add("Slider1", ControlKind::Slider);
        Add("Wb1", ControlKind::Browser);
        for (int i = 0; i < 3; ++i) {
            Add("lblCell", ControlKind::Label, i).SetCaption("cell " + std::to_string(i));
            Add("mnuPop", ControlKind::Menu, i)
                .SetCaption(std::string("&") + "Choice " + std::to_string(i));
        }
        (*this)("lblCell", 1).SetProperty("DragMode", Variant::Integer(1));
        (*this)("cmdDisabled").SetEnabled(false);
        (*this)("cmdHidden").SetVisible(false);
        (*this)("mnuPop", 2).SetEnabled(false);
        Vars().Add("ContinueFlag", [this] { return Variant(ContinueFlag); });

        On("cmdHello", "Click", [](EventArgs&) { MsgBox("Hello"); });
        On("cmdAsk", "Click", [this](EventArgs&) {
            int answer = MsgBox("Sure?", vb::vbYesNo + vb::vbQuestion);
            (*this)("lblDone").SetCaption(answer == vb::vbYes ? "Yes" : "No");
        });
        On("cmdWait", "Click", [this](EventArgs&) {
            ContinueFlag = false;
            Pane& pane = Runtime::Current().ui().PaneFor(*this, "Wb1");
            pane.Navigate2("about:blank");
            pane.Write("<a href=CONTINUE>Click Here To Continue</a>");
            while (!ContinueFlag)
                Runtime::Current().WaitForUser();
            (*this)("lblDone").SetCaption("done");
        });
        On("cmdEnd", "Click", [](EventArgs&) {
            Runtime::Current().SaveSetting("Settings", "Ended", "yes");
            Trap::Ignoring()([] { Runtime::Current().End(); });
        });
        On("cmdModal", "Click", [this](EventArgs&) {
            Runtime& rt = Runtime::Current();
            rt.Show(rt.Get("Dialog"), vb::vbModal);
            (*this)("lblDone").SetCaption("back");
        });
        On("cmdInput", "Click", [this](EventArgs&) {
            (*this)("lblDone").SetCaption(
                "[" + Runtime::Current().ui().InputBox("Your name?", "", "") + "]");
        });
        On("cmdOpen", "Click", [this](EventArgs&) {
            CommonDialog dialog;
            dialog.DialogTitle = "Open a list";
            bool chosen = Runtime::Current().ui().ShowOpen(dialog);
            (*this)("lblDone").SetCaption(
                chosen ? dialog.FileName + " " + std::to_string(dialog.FilterIndex) : "cancelled");
        });
        On("cmdPopup", "Click", [this](EventArgs&) {
            Control* chosen = Runtime::Current().ui().PopupMenu(*this, "mnuPop");
            (*this)("lblDone").SetCaption(chosen ? chosen->Path() : "none");
        });
        On("cmdLoop", "Click", [this](EventArgs&) {
            for (int i = 0; i < 10; ++i)
                Runtime::Current().WaitForUser();
            (*this)("lblDone").SetCaption("looped");
        });
        On("cmdPage", "Click", [this](EventArgs&) {
            Runtime::Current()
                .ui()
                .PaneFor(*this, "Wb1")
                .Navigate2(Runtime::Current().AppPath() + "page.htm");
        });
        On("cmdFault", "Click", [](EventArgs&) { throw VbError(13, "Type mismatch"); });
        On("txtName", "Change", [](EventArgs&) { ++toy.changes; });
        On("chkOn", "Click", [](EventArgs&) { ++toy.clicks; });
        On("lstItems", "Click", [this](EventArgs&) {
            (*this)("lblDone").SetCaption(
                "item " + (*this)("lstItems").List((*this)("lstItems").ListIndex()));
        });
        On("Slider1", "Scroll", [this](EventArgs&) {
            (*this)("lblDone").SetCaption("slid " + CStr((*this)("Slider1").Value()));
        });
        On("lblCell", "Click", [this](EventArgs& e) {
            (*this)("lblDone").SetCaption("cell " + std::to_string(e.Index));
        });
        On("txtName", "KeyDown",
           [](EventArgs& e) { toy.keys += "down" + std::to_string(e.KeyCode) + " "; });
        On("txtName", "KeyPress",
           [](EventArgs& e) { toy.keys += "press" + std::to_string(e.KeyAscii) + " "; });
        On("txtName", "KeyUp",
           [](EventArgs& e) { toy.keys += "up" + std::to_string(e.KeyCode) + " "; });
        On("lblDone", "DragDrop",
           [this](EventArgs& e) { (*this)("lblDone").SetCaption("dropped " + e.Source->Path()); });
    }

    void Form_Load() override {
        Pane& pane = Runtime::Current().ui().PaneFor(*this, "Wb1");
        pane.BeforeNavigate2 = [this](const std::string& url, bool& cancel) {
            if (url == "about:blankCONTINUE") {
                cancel = true;
                ContinueFlag = true;
            }
        };
        (*this)("lstItems").AddItem("apple");
        (*this)("lstItems").AddItem("pear");
        SetProperty("KeyPreview", Variant(true));
    }

    void Form_KeyDown(int& KeyCode, int) override {
        toy.keys += "form" + std::to_string(KeyCode) + " ";
        if (KeyCode == 27) KeyCode = 0;  // the form keeps Escape to itself
    }
    void Form_KeyPress(int& KeyAscii) override {
        toy.keys += "formpress" + std::to_string(KeyAscii) + " ";
    }

    void Form_QueryUnload(int& Cancel, int UnloadMode) override {
        if (UnloadMode == 0 && (*this)("chkOn").Value().Number() == 1) Cancel = 1;
    }

    bool ContinueFlag = false;
};

class Dialog : public Form {
  public:
    Dialog() : Form("Dialog") {
        Add("cmdOK", ControlKind::CommandButton).SetCaption("OK");
        On("cmdOK", "Click", [this](EventArgs&) { Runtime::Current().Hide(*this); });
    }
};

}  // namespace

ProgramHooks toyProgram() {
    ProgramHooks hooks;
    hooks.title = "Toy";
    hooks.registerForms = [](Runtime& rt) {
        rt.Register("Main", [] { return std::make_unique<Main>(); });
        rt.Register("Dialog", [] { return std::make_unique<Dialog>(); });
        rt.ModuleVars().Add("Changes", [] { return Variant(toy.changes); });
        rt.ModuleVars().Add("Clicks", [] { return Variant(toy.clicks); });
        rt.ModuleVars().Add("Keys", [] { return Variant(toy.keys); });
        rt.ModuleVars().Add("Started", [] { return Variant(toy.started); });
        rt.ModuleVars().Add("Nothing", [] { return Variant::Null(); });
    };
    hooks.subMain = [] {
        toy = ToyState{};
        toy.started = true;
        Runtime& rt = Runtime::Current();
        rt.Show(rt.Get("Main"));
    };
    return hooks;
}
