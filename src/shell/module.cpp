#include "shell/module.h"

#include <memory>

#include "forms/runtime.h"

namespace {

// The variables before the program first starts, readable nowhere.
VarTable& unread() {
    static VarTable table;
    return table;
}

std::unique_ptr<Module>& current() {
    static std::unique_ptr<Module> module = std::make_unique<Module>(unread());
    return module;
}

}  // namespace

Module& Mod() {
    return *current();
}

void startModule(Runtime& rt) {
    current() = std::make_unique<Module>(rt.ModuleVars());
}
