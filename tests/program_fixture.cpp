#include "program_fixture.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "shell/module.h"
#include "shell/program.h"

namespace fs = std::filesystem;

void ProgramUi::FormShown(Form& form, bool isModal) {
    shown.push_back(form.Name());
    if (isModal) modal.push_back(&form);
}

void ProgramUi::WaitForUser() {
    if (onWait) {
        onWait();
        return;
    }
    if (modal.empty()) return;
    Form* form = modal.back();
    modal.pop_back();
    Runtime::Current().Unload(*form);
}

ProgramTest::ProgramTest() {
    // The data files that ship beside the program; not the catalogue nor the executable.
    const fs::path shipped(PROGRAM_FILES_DIR);
    for (const char* name : {"Pictures", "Help", "Media", "Pages", "TIPOFDAY.TXT", "textpic.jpg",
                             "webpage.jpg", "music.jpg", "exepic.jpg"}) {
        if (fs::exists(shipped / name))
            fs::copy(shipped / name, fs::path(appDir()) / name, fs::copy_options::recursive);
    }
    rt = std::make_unique<Runtime>(ui, settings, appDir(), title);
    RegisterForms(*rt);
    startModule(*rt);
}

ProgramTest::~ProgramTest() = default;

void ProgramTest::addProduct(const std::string& stockNo, const std::string& picture,
                             const std::string& extraColumns, const std::string& extraValues) {
    std::string pic = picture.empty() ? "NULL" : "'" + picture + "'";
    cat.sql("INSERT INTO Products (StockNo, Picture" +
            (extraColumns.empty() ? "" : ", " + extraColumns) + ") VALUES ('" + stockNo + "', " +
            pic + (extraValues.empty() ? "" : ", " + extraValues) + ");");
}

Products& ProgramTest::start() {
    try {
        SubMain();
    } catch (const ProgramEnded&) {
    }
    return form();
}

Products& ProgramTest::form() const {
    return *Mod().MainForm;
}

std::string ProgramTest::page() const {
    std::ifstream in(appDir() + "page.htm", std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> ProgramTest::pageLines() const {
    std::vector<std::string> lines;
    std::string text = page();
    std::size_t from = 0;
    while (from < text.size()) {
        std::size_t end = text.find("\r\n", from);
        if (end == std::string::npos) {
            lines.push_back(text.substr(from) + "<no line end>");
            break;
        }
        lines.push_back(text.substr(from, end - from));
        from = end + 2;
    }
    return lines;
}

void ProgramTest::setting(const std::string& section, const std::string& key,
                          const std::string& value) {
    settings.Write(title, section, key, value);
}

std::string ProgramTest::saved(const std::string& section, const std::string& key) const {
    return settings.Read(title, section, key).value_or("<none>");
}
