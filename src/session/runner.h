#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

class Runtime;

// What the runner runs: the program's forms and its entry. The runner itself knows no
// program, so that it can run toy forms as well.
struct ProgramHooks {
    std::function<void(Runtime&)> registerForms;
    std::function<void()> subMain;
    // The program's title: the application name of its stored settings.
    std::string title;
};

// Where the runner finds the shipped data of its build.
struct RunnerOptions {
    // The staged program folder: every file in it is copied into each script's folder.
    std::string programDir;
    // The folder with empty.mde and sample.sql, from which each catalogue is made.
    std::string fixturesDir;
    std::string catalogueName = "tandrel2004.mde";
};

// The outcome of one script.
struct ScriptResult {
    bool passed = false;
    std::string file;
    int line = 0;
    std::string text;     // the line
    std::string message;  // what was expected and found
    // "ok FILE" or "FAIL FILE:LINE: TEXT: MESSAGE", one line.
    std::string report() const;
};

// Runs one script in this process, in a fresh program folder that is removed afterwards.
ScriptResult runScriptText(const std::string& name, const std::string& text,
                           const ProgramHooks& hooks, const RunnerOptions& options);
ScriptResult runScriptFile(const std::string& file, const ProgramHooks& hooks,
                           const RunnerOptions& options);

// Runs each file (each in a child process of its own when `isolate`), prints one line per
// file and "N passed, N failed"; 0 when all passed, else 1.
int runScriptFiles(const std::vector<std::string>& files, const ProgramHooks& hooks,
                   const RunnerOptions& options, std::ostream& out, bool isolate = true);
