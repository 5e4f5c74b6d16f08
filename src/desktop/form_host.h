#pragma once

#include <QObject>
#include <map>
#include <memory>

class Form;
class QWidget;

namespace desktop {

class FormWindow;
class QtUi;

// The windows of the running program: one per form that is shown, made when the form is
// first shown and taken down once the form is unloaded. It also tells the program when the
// user brings another of its forms to the front (Form_Activate).
class FormHost : public QObject {
    Q_OBJECT
  public:
    explicit FormHost(QtUi& ui);
    ~FormHost() override;

    QtUi& ui() const { return ui_; }
    void shown(Form& form, bool modal);
    void hidden(Form& form);
    FormWindow* windowOf(const Form& form) const;
    // The window that dialogs stand over: the visible window with a menu bar, else any.
    QWidget* mainWindow() const;

    // A window of the form became the active one.
    void activated(Form& form);
    // A call into the program has returned: windows of unloaded forms may go now.
    void dispatched();

  private:
    void collect();

    QtUi& ui_;
    std::map<const Form*, std::unique_ptr<FormWindow>> windows_;
    const Form* active_ = nullptr;
    bool collectPending_ = false;
};

}  // namespace desktop
