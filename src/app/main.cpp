// The program without a screen: it starts as the desktop program does, then walks every
// product with the Next button and checks that the item page was written for each.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/console_ui.h"
#include "base/convert.h"
#include "forms/runtime.h"
#include "forms/settings.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/program.h"

namespace {

// The folder of the running executable, with its trailing separator.
std::string programFolder() {
    std::error_code ec;
    auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::string("./") : exe.parent_path().string() + "/";
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// Walks the products from the first to the last; false when a page was missing.
bool walk(Products& form) {
    const std::string page = CStr(Mod().AppDir) + "page.htm";
    const long count = form.adoPrimaryRS->RecordCount();
    bool allWritten = true;
    for (long i = 0; i < count; ++i) {
        if (i > 0) {
            std::filesystem::remove(page);
            form.cmdNext_Click();
        }
        const std::string stockNo = textOf(form.adoPrimaryRS->Fields("StockNo").Value());
        const bool written = readFile(page).find("alt=\"" + stockNo + "\"") != std::string::npos;
        allWritten = allWritten && written;
        std::printf("%-24s %-12s page.htm %s\n", form("lblStatus").Caption().c_str(),
                    stockNo.c_str(), written ? "written" : "MISSING");
    }
    return allWritten;
}

}  // namespace

int main() {
    ConsoleUi ui;
    MemorySettings settings;
    Runtime rt(ui, settings, programFolder(), ProgramTitle);
    RegisterForms(rt);
    bool ok = false;
    try {
        SubMain();
        if (Products* form = Mod().MainForm) {
            std::printf("Catalogue: %s\n", Mod().DBName.c_str());
            ok = walk(*form);
            form->mnuFileExit_Click();
        }
    } catch (const ProgramEnded&) {
    }
    return ok ? 0 : 1;
}
