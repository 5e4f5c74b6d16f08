#include "forms/runtime.h"

#include <algorithm>

#include "base/vb_error.h"

namespace {
Runtime* running = nullptr;
constexpr int ObjectNotSet = 91;
}  // namespace

Runtime::Runtime(Ui& ui, SettingsStore& settings, std::string appPath, std::string title)
    : ui_(ui), settings_(settings), appPath_(std::move(appPath)), title_(std::move(title)) {
    running = this;
    setUi(&ui_);
}

Runtime::~Runtime() {
    if (running == this) running = nullptr;
    if (theUi() == &ui_) setUi(nullptr);
}

Runtime& Runtime::Current() {
    if (!running) throw VbError(ObjectNotSet, "Object variable or With block variable not set");
    return *running;
}

std::string Runtime::GetSetting(const std::string& section, const std::string& key,
                                const std::string& defaultValue) const {
    return settings_.Read(title_, section, key).value_or(defaultValue);
}

void Runtime::SaveSetting(const std::string& section, const std::string& key,
                          const std::string& value) {
    settings_.Write(title_, section, key, value);
}

void Runtime::DeleteSetting(const std::string& section, const std::string& key) {
    settings_.Remove(title_, section, key);
}

void Runtime::Register(const std::string& name, Factory factory) {
    factories_[name] = std::move(factory);
}

Form& Runtime::Create(const std::string& name) {
    auto it = factories_.find(name);
    if (it == factories_.end()) throw VbError(vberr::ControlArrayElementMissing, "no form " + name);
    forms_.push_back(it->second());
    return *forms_.back();
}

std::vector<std::string> Runtime::RegisteredNames() const {
    std::vector<std::string> names;
    for (const auto& [name, factory] : factories_)
        names.push_back(name);
    return names;
}

Form& Runtime::Get(const std::string& name) {
    auto it = defaults_.find(name);
    if (it != defaults_.end()) return *it->second;
    Form& form = Create(name);
    defaults_[name] = &form;
    return form;
}

Form* Runtime::Loaded(const std::string& name) const {
    for (const auto& f : forms_)
        if (f->IsLoaded() && !NoCase{}(f->Name(), name) && !NoCase{}(name, f->Name()))
            return f.get();
    return nullptr;
}

std::vector<Form*> Runtime::LoadedForms() const {
    std::vector<Form*> loaded;
    for (const auto& f : forms_)
        if (f->IsLoaded()) loaded.push_back(f.get());
    return loaded;
}

void Runtime::Load(Form& form) {
    if (form.IsLoaded()) return;
    form.SetLoaded(true);
    form.Form_Load();
}

void Runtime::Activate(Form& form) {
    if (form.IsLoaded()) form.Form_Activate();
}

void Runtime::Show(Form& form, int modal) {
    Load(form);
    if (!form.IsLoaded()) return;  // the form unloaded itself while loading
    form.SetProperty("Visible", Variant(true));
    ui_.FormShown(form, modal == vb::vbModal);
    Activate(form);
    if (modal != vb::vbModal) return;
    while (form.IsLoaded() && form.Visible())
        WaitForUser();
}

void Runtime::Hide(Form& form) {
    if (!form.Visible()) return;
    form.SetProperty("Visible", Variant(false));
    ui_.FormHidden(form);
}

bool Runtime::Unload(Form& form, int unloadMode) {
    if (!form.IsLoaded()) return true;
    int cancel = 0;
    form.Form_QueryUnload(cancel, unloadMode);
    if (cancel) return false;
    form.Form_Unload(cancel);
    if (cancel) return false;
    Hide(form);
    form.SetLoaded(false);
    // The instance goes; a later use of the form's name makes a fresh one. It is freed only
    // once none of its procedures can still be running.
    auto it =
        std::find_if(forms_.begin(), forms_.end(), [&](const auto& f) { return f.get() == &form; });
    if (it != forms_.end()) {
        retired_.push_back(std::move(*it));
        forms_.erase(it);
    }
    for (auto d = defaults_.begin(); d != defaults_.end();)
        d = d->second == &form ? defaults_.erase(d) : std::next(d);
    return true;
}

void Runtime::End() {
    ended_ = true;
    throw ProgramEnded{};
}

void Runtime::SetMousePointer(int pointer) {
    mousePointer_ = pointer;
    ui_.MousePointerChanged(pointer);
}
