#include "search_form_cycles.h"

#include <chrono>
#include <stdexcept>

#include "forms/runtime.h"
#include "forms/settings.h"
#include "resident_memory.h"
#include "scripted_user.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/program.h"

namespace {

// A user who answers every box with its default and, in the only wait expected, presses
// Cancel on the search form.
class CancellingUi : public ScriptedUser {
  public:
    void WaitForUser() override {
        Form* search = Runtime::Current().Loaded("Search");
        if (!search) {
            stuck = true;
            throw ProgramEnded{};
        }
        (*search)("cmdCancel").Raise("Click");
    }

    bool stuck = false;
};

}  // namespace

SearchFormCycles runSearchFormCycles(const std::string& appDir, const std::string& cataloguePath,
                                     int times) {
    CancellingUi ui;
    MemorySettings settings;
    settings.Write(ProgramTitle, "Options", "Show Tips at Startup", "0");
    settings.Write(ProgramTitle, "Settings", "DBName", cataloguePath);
    Runtime rt(ui, settings, appDir, ProgramTitle);
    RegisterForms(rt);
    try {
        SubMain();
        rt.CollectRetired();
        SearchFormCycles result;
        result.residentBeforeMiB = residentMiB();
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < times; ++i) {
            (*Mod().MainForm)("cmdDetSearch").Raise("Click");
            rt.CollectRetired();
        }
        const auto end = std::chrono::steady_clock::now();
        result.msPerCycle = std::chrono::duration<double, std::milli>(end - start).count() / times;
        result.residentAfterMiB = residentMiB();
        return result;
    } catch (const ProgramEnded&) {
        throw std::runtime_error(ui.stuck ? "the program waited for a user action it was not given"
                                          : "the program ended");
    }
}
