#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/kept_listings.h"
#include "base/trap.h"
#include "forms/binding.h"
#include "forms/form.h"
#include "forms/settings.h"
#include "forms/ui.h"
#include "forms/vars.h"

// The running program: its forms, its Ui and settings services, its module variables and
// the two ways of letting events run. One exists while the program runs.
class Runtime {
  public:
    Runtime(Ui& ui, SettingsStore& settings, std::string appPath, std::string title);
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    // The running program; 91 when none runs.
    static Runtime& Current();

    Ui& ui() { return ui_; }
    // The program folder with its trailing separator.
    const std::string& AppPath() const { return appPath_; }
    const std::string& Title() const { return title_; }

    // Settings of this program, all values text.
    std::string GetSetting(const std::string& section, const std::string& key,
                           const std::string& defaultValue = "") const;
    void SaveSetting(const std::string& section, const std::string& key, const std::string& value);
    void DeleteSetting(const std::string& section, const std::string& key);

    using Factory = std::function<std::unique_ptr<Form>()>;
    void Register(const std::string& name, Factory factory);
    bool Registered(const std::string& name) const { return factories_.count(name) > 0; }
    std::vector<std::string> RegisteredNames() const;
    // The form's default instance, made on first use (not loaded by this).
    Form& Get(const std::string& name);
    // A further instance of a registered form, as New makes it.
    Form& Create(const std::string& name);
    // The loaded instance of that name, or nullptr.
    Form* Loaded(const std::string& name) const;
    std::vector<Form*> LoadedForms() const;

    void Load(Form& form);
    // Loads if needed, shows and activates. Modal: returns once the form is hidden or
    // unloaded, the user acting meanwhile.
    void Show(Form& form, int modal = vb::vbDefault);
    void Hide(Form& form);
    // QueryUnload, then Unload; false when either cancelled.
    bool Unload(Form& form, int unloadMode = 1);
    void Activate(Form& form);

    // Events let run write through the program's own calls, which keep the listings right.
    void LetEventsRun() { ui_.LetEventsRun(); }
    // The user may change files with other programs meanwhile: no folder listing is kept.
    void WaitForUser() {
        KeptListings::forget();
        RowsAwaited::showAll();
        ui_.WaitForUser();
    }
    // Ends the process at once: nothing is closed in order.
    [[noreturn]] void End();
    bool Ended() const { return ended_; }

    int MousePointer() const { return mousePointer_; }
    void SetMousePointer(int pointer);

    VarTable& ModuleVars() { return moduleVars_; }

    // Frees the forms unloaded so far; only where no procedure of theirs runs.
    void CollectRetired() { retired_.clear(); }

  private:
    Ui& ui_;
    SettingsStore& settings_;
    std::string appPath_, title_;
    std::map<std::string, Factory, NoCase> factories_;
    std::vector<std::unique_ptr<Form>> forms_;
    std::map<std::string, Form*, NoCase> defaults_;
    std::vector<std::unique_ptr<Form>> retired_;
    VarTable moduleVars_;
    int mousePointer_ = 0;
    bool ended_ = false;
};
