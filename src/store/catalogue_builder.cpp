#include "store/catalogue_builder.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/strings.h"
#include "base/vb_error.h"
#include "store/sqlite_file.h"

namespace {

void runScripts(SqliteFile& file, const std::string& appDir,
                const std::vector<std::string>& scriptFiles) {
    for (const auto& script : scriptFiles) {
        std::ifstream in(script, std::ios::binary);
        if (!in) throw VbError(vberr::FileNotFound, "File not found: " + script);
        std::ostringstream text;
        text << in.rdbuf();
        file.execScript(Replace(text.str(), "$APP", appDir));
    }
}

}  // namespace

void buildCatalogue(const std::string& path, const std::string& appDir,
                    const std::vector<std::string>& scriptFiles) {
    runScripts(*SqliteFile::create(path), appDir, scriptFiles);
}

void copyCatalogue(const std::string& prebuilt, const std::string& path, const std::string& appDir,
                   const std::vector<std::string>& scriptFiles) {
    std::error_code ec;
    std::filesystem::copy_file(prebuilt, path, std::filesystem::copy_options::overwrite_existing,
                               ec);
    if (ec) throw VbError(vberr::FileNotFound, "File not found: " + prebuilt);
    if (!scriptFiles.empty()) runScripts(*SqliteFile::open(path), appDir, scriptFiles);
}
