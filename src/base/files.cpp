#include "base/files.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

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

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool fits(std::string_view name, std::string_view pattern) {
    // The last star tried and where in the name it took up matching.
    std::size_t n = 0, p = 0, star = std::string_view::npos, resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || lower(pattern[p]) == lower(name[n]))) {
            ++n;
            ++p;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

}  // namespace

bool MatchesPattern(const std::string& name, const std::string& patterns) {
    std::string_view rest = patterns;
    for (;;) {
        const std::size_t semi = rest.find(';');
        if (fits(name, rest.substr(0, semi))) return true;
        if (semi == std::string_view::npos) return false;
        rest.remove_prefix(semi + 1);
    }
}

std::vector<std::string> FilesMatching(const std::string& folder, const std::string& patterns) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (it->is_regular_file(ec) && MatchesPattern(name, patterns)) names.push_back(name);
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                            [](char x, char y) { return lower(x) < lower(y); });
    });
    return names;
}

void Kill(const std::string& pathPattern) {
    const fs::path path(pathPattern);
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) throw VbError(vberr::PathNotFound);
    const std::vector<std::string> names = FilesMatching(folder.string(), path.filename().string());
    if (names.empty()) throw VbError(vberr::FileNotFound);
    for (const std::string& name : names)
        if (!fs::remove(folder / name, ec) || ec) throw VbError(75);
}

void FileCopy(const std::string& from, const std::string& to) {
    std::error_code ec;
    if (!fs::is_regular_file(from, ec)) throw VbError(vberr::FileNotFound);
    const fs::path target(to);
    if (target.has_parent_path() && !fs::is_directory(target.parent_path(), ec))
        throw VbError(vberr::PathNotFound);
    if (!fs::copy_file(from, to, fs::copy_options::overwrite_existing, ec)) throw VbError(75);
}
