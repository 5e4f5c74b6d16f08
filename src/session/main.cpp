// session-runner FILE...: runs each session script against the headless program, each in a
// fresh program folder, prints one line per file and "N passed, N failed".
#include <iostream>
#include <string>
#include <vector>

#include "session/runner.h"
#include "shell/program.h"

int main(int argc, char** argv) {
    std::vector<std::string> files;
    bool isolate = true;
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--in-process")
            isolate = false;
        else
            files.push_back(arg);
    }
    if (files.empty()) {
        std::cerr << "usage: session-runner [--in-process] FILE...\n";
        return 2;
    }
    ProgramHooks hooks;
    hooks.registerForms = RegisterForms;
    hooks.subMain = SubMain;
    hooks.title = ProgramTitle;
    RunnerOptions options;
    options.programDir = SESSION_PROGRAM_DIR;
    options.fixturesDir = SESSION_FIXTURES_DIR;
    return runScriptFiles(files, hooks, options, std::cout, isolate);
}
