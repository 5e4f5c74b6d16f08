#include "store/catalogue_builder.h"

#include <fstream>
#include <sstream>

#include "base/strings.h"
#include "base/vb_error.h"
#include "store/sqlite_file.h"

void buildCatalogue(const std::string& path, const std::string& appDir,
                    const std::vector<std::string>& scriptFiles) {
    auto file = SqliteFile::create(path);
    for (const auto& script : scriptFiles) {
        std::ifstream in(script, std::ios::binary);
        if (!in) throw VbError(vberr::FileNotFound, "File not found: " + script);
        std::ostringstream text;
        text << in.rdbuf();
        file->execScript(Replace(text.str(), "$APP", appDir));
    }
}
