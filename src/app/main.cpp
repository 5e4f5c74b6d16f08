// The program without a screen: it starts as the desktop program does, then walks every
// product with the Next button and checks that the item page was written for each. The
// catalogue is the one of the program folder, or the file named as the one argument. A
// catalogue it cannot open ends the run with one line on the error stream and status 2.
// With --report it runs one report file instead (app/report_command.h).
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/console_ui.h"
#include "app/report_command.h"
#include "base/convert.h"
#include "base/vb_error.h"
#include "forms/runtime.h"
#include "forms/settings.h"
#include "records/product_statements.h"
#include "records/store.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/program.h"
#include "shell/program_folder.h"

namespace {

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

// Why the main form found no product list: the fault of opening the catalogue as it does.
VbError openFault(const std::string& path) {
    try {
        auto conn = CreateConnection();
        conn->SetCursorLocation(ado::adUseClient);
        conn->Open(connectionText(path));
        CreateRecordset()->Open(StatementA, *conn);
    } catch (const VbError& e) {
        return e;
    }
    return VbError(vberr::ObjectClosed);
}

int cannotOpen(const std::string& path, const VbError& e) {
    const std::string why =
        e.Description().empty() ? vbErrorDescription(e.Number()) : e.Description();
    std::fprintf(stderr, "catalogue-headless: cannot open the catalogue %s: %s (error %d)\n",
                 path.c_str(), why.c_str(), e.Number());
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::string(argv[1]) == "--report")
        return runReportCommand(std::vector<std::string>(argv + 1, argv + argc), ProgramFolder());
    ConsoleUi ui;
    MemorySettings settings;
    // The catalogue named on the command line reaches the main form as a saved choice does.
    if (argc > 1) settings.Write(ProgramTitle, "Settings", "DBName", argv[1]);
    Runtime rt(ui, settings, ProgramFolder(), ProgramTitle);
    RegisterForms(rt);
    bool ok = false;
    try {
        SubMain();
        if (Products* form = Mod().MainForm) {
            std::printf("Catalogue: %s\n", Mod().DBName.c_str());
            if (!form->adoPrimaryRS || form->adoPrimaryRS->State() != ado::adStateOpen)
                return cannotOpen(Mod().DBName, openFault(Mod().DBName));
            ok = walk(*form);
            form->mnuFileExit_Click();
        }
    } catch (const ProgramEnded&) {
    } catch (const VbError& e) {
        // A catalogue that opened and then failed on reading, such as a truncated file.
        return cannotOpen(Mod().DBName, e);
    }
    return ok ? 0 : 1;
}
