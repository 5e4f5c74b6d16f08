#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/fold.h"
#include "forms/control.h"
#include "forms/vars.h"

// A form: a named set of controls, its event procedures and its own properties (Caption,
// Visible, WindowState, Left, Top, Width, Height, Enabled, KeyPreview). The lifecycle
// procedures are virtual; the Runtime calls them on Load, Show, Activate and Unload.
class Form {
  public:
    explicit Form(std::string name);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const std::string& Name() const { return name_; }

    Control& Add(const std::string& name, ControlKind kind, int index = -1);
    // 340 "no control" when the form has no such control or array element.
    Control& operator()(std::string_view name, int index = -1) const;
    Control* Find(std::string_view name, int index = -1) const;
    const std::vector<std::unique_ptr<Control>>& Controls() const { return controls_; }

    using Handler = std::function<void(EventArgs&)>;
    // The procedure of a control's event ("cmdNext", "Click"); arrays share one procedure.
    void On(std::string_view control, std::string_view event, Handler handler);
    // A control's Click procedure: a procedure of the form itself, without arguments.
    template <class F>
    void OnClick(std::string_view control, void (F::*procedure)()) {
        F* self = static_cast<F*>(this);
        On(control, "Click", [self, procedure](EventArgs&) { (self->*procedure)(); });
    }
    bool HasHandler(std::string_view control, std::string_view event) const;
    // Changes whenever a procedure is set: what a control learnt of its procedures holds
    // while it stays the same.
    unsigned HandlersVersion() const { return handlersVersion_; }
    void RaiseEvent(Control& control, std::string_view event, EventArgs& args);

    Variant Property(std::string_view name) const;
    void SetProperty(std::string_view name, const Variant& value);
    std::string Caption() const;
    void SetCaption(const std::string& s) { SetProperty("Caption", Variant(s)); }
    bool Visible() const;
    int WindowState() const;
    double Num(std::string_view name) const;
    void SetNum(std::string_view name, double v) { SetProperty(name, Variant::Double(v)); }

    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_QueryUnload(int& /*Cancel*/, int /*UnloadMode*/) {}
    virtual void Form_Unload(int& /*Cancel*/) {}
    // The form's own key procedures; with KeyPreview they see keys before the control.
    virtual void Form_KeyDown(int& /*KeyCode*/, int /*Shift*/) {}
    virtual void Form_KeyPress(int& /*KeyAscii*/) {}
    bool KeyPreview() const { return Property("KeyPreview").BoolValue(); }

    // The control that has the keyboard focus, or nullptr.
    Control* ActiveControl() const { return active_; }
    void SetActiveControl(Control* c) { active_ = c; }

    bool IsLoaded() const { return loaded_; }
    void SetLoaded(bool loaded) { loaded_ = loaded; }

    // Variables of the form that the program's documents name.
    VarTable& Vars() { return vars_; }
    const VarTable& Vars() const { return vars_; }

    // Told of every property write: the control, or nullptr for the form itself.
    using Observer = std::function<void(Form&, Control*, std::string_view property)>;
    void Observe(Observer observer) { observers_.push_back(std::move(observer)); }
    void NotifyChanged(Control* control, std::string_view property);

  private:
    // Find without the entries of found_.
    Control* lookUp(std::string_view name, int index) const;

    std::string name_;
    std::vector<std::unique_ptr<Control>> controls_;
    // The controls by their folded name, each name's in the order they were added: a
    // procedure names its controls at every statement.
    std::unordered_map<std::string, std::vector<Control*>, FoldedHash, FoldedEqual> byName_;
    // The controls last found, by where the name asked for lies in memory: the procedures name
    // their controls with the same constant texts again and again. An entry counts only for
    // the same name and index, so a text that has moved or changed is looked up as before.
    struct Found {
        const char* name = nullptr;
        Control* control = nullptr;
    };
    mutable std::array<Found, 64> found_{};
    // The procedures by "control_event", A-Z folded; shared, so that a procedure that
    // replaces its own entry runs to its end.
    std::unordered_map<std::string, std::shared_ptr<const Handler>, FoldedHash, FoldedEqual>
        handlers_;
    unsigned handlersVersion_ = 1;
    std::string eventKey_;  // RaiseEvent's key, kept to spare an allocation per event
    std::map<std::string, Variant, NoCase> props_;
    std::vector<Observer> observers_;
    VarTable vars_;
    bool loaded_ = false;
    Control* active_ = nullptr;
};
