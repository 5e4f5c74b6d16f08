#include "shell/module.h"

#include <memory>

#include "forms/runtime.h"

namespace {

// The variables before the program first starts, readable nowhere.
VarTable& unread() {
    static VarTable table;
    return table;
}

// The module of the running program; before any start, one over a table of its own. Asked
// for by nearly every statement, so it is a plain pointer rather than a guarded static.
std::unique_ptr<Module> current;
Module* running = nullptr;

}  // namespace

Module& Mod() {
    if (running == nullptr) {
        current = std::make_unique<Module>(unread());
        running = current.get();
    }
    return *running;
}

void startModule(Runtime& rt) {
    current = std::make_unique<Module>(rt.ModuleVars());
    running = current.get();
}
