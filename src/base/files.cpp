#include "base/files.h"

#include <filesystem>

#include "base/vb_error.h"

namespace fs = std::filesystem;

std::string Dir(const std::string& path) {
    std::error_code ec;
    if (path.empty() || !fs::is_regular_file(path, ec)) return {};
    return fs::path(path).filename().string();
}

void MkDir(const std::string& path) {
    std::error_code ec;
    fs::path folder = fs::path(path);
    if (!folder.has_filename()) folder = folder.parent_path();
    if (fs::exists(folder, ec)) throw VbError(75);
    if (!fs::is_directory(folder.parent_path(), ec)) throw VbError(vberr::PathNotFound);
    if (!fs::create_directory(folder, ec)) throw VbError(75);
}
