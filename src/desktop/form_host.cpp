#include "desktop/form_host.h"

#include <QMainWindow>
#include <QTimer>
#include <algorithm>

#include "desktop/form_window.h"
#include "desktop/guard.h"
#include "desktop/qt_ui.h"
#include "forms/runtime.h"
#include "forms/user_input.h"

namespace desktop {

FormHost::FormHost(QtUi& ui) : ui_(ui) {}

FormHost::~FormHost() = default;

FormWindow* FormHost::windowOf(const Form& form) const {
    auto it = windows_.find(&form);
    return it == windows_.end() ? nullptr : it->second.get();
}

void FormHost::shown(Form& form, bool modal) {
    auto& window = windows_[&form];
    if (!window) window = std::make_unique<FormWindow>(form, *this);
    active_ = &form;
    window->showWindow(modal);
}

void FormHost::hidden(Form& form) {
    if (FormWindow* window = windowOf(form)) window->hideWindow();
    if (active_ == &form) active_ = nullptr;
    dispatched();
}

QWidget* FormHost::mainWindow() const {
    QWidget* any = nullptr;
    for (const auto& [form, window] : windows_) {
        QWidget* w = window->window();
        if (!w || !w->isVisible()) continue;
        if (qobject_cast<QMainWindow*>(w)) return w;
        if (!any) any = w;
    }
    return any;
}

void FormHost::activated(Form& form) {
    if (active_ == &form || !form.IsLoaded() || !form.Visible()) return;
    active_ = &form;
    guarded([&] { UserInput::Activate(form); });
    dispatched();
}

void FormHost::dispatched() {
    if (collectPending_) return;
    collectPending_ = true;
    QTimer::singleShot(0, this, [this] {
        collectPending_ = false;
        collect();
    });
}

void FormHost::collect() {
    // Never while a procedure of the program runs: its window may be on the call stack.
    if (dispatchDepth() > 0) {
        QTimer::singleShot(50, this, [this] { dispatched(); });
        return;
    }
    std::vector<Form*> loaded;
    try {
        loaded = Runtime::Current().LoadedForms();
    } catch (...) {
        return;
    }
    for (auto it = windows_.begin(); it != windows_.end();) {
        const bool isLoaded = std::find(loaded.begin(), loaded.end(), it->first) != loaded.end();
        it = isLoaded ? std::next(it) : windows_.erase(it);
    }
    // No procedure runs and nothing shows the unloaded forms any more: they can go, with
    // whatever their controls hold (a form's record sets, its lists).
    ui_.keepPanesOf(loaded);
    Runtime::Current().CollectRetired();
}

}  // namespace desktop
