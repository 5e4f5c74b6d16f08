#pragma once

#include <cstdio>
#include <functional>
#include <string>

#include "base/trap.h"
#include "forms/runtime.h"
#include "forms/settings.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/program.h"

// Starts the program headless on a catalogue, with the tip of the day off, and runs `use`
// on its main form. False, with a line on stderr naming the benchmark, when the program
// ended before `use` did or `use` says its run went wrong.
inline bool withProgram(Ui& user, const std::string& appDir, const std::string& catalogue,
                        const char* bench, const std::function<bool(Products&)>& use) {
    MemorySettings settings;
    settings.Write(ProgramTitle, "Settings", "DBName", catalogue);
    settings.Write(ProgramTitle, "Options", "Show Tips at Startup", "0");
    Runtime rt(user, settings, appDir, ProgramTitle);
    RegisterForms(rt);
    try {
        SubMain();
        return use(*Mod().MainForm);
    } catch (const ProgramEnded&) {
        std::fprintf(stderr, "%s: the program ended before the run did\n", bench);
        return false;
    }
}
