#include "forms/file_lists.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/files.h"
#include "base/strings.h"
#include "base/vb_error.h"

namespace fs = std::filesystem;

namespace FileLists {

namespace {

// The classic lists sort ignoring case; names that differ only in case keep a fixed order.
bool listedBefore(const std::string& a, const std::string& b) {
    const std::string ua = UCase(a), ub = UCase(b);
    return ua != ub ? ua < ub : a < b;
}

bool hidden(const fs::path& name) {
    const std::string s = name.string();
    return !s.empty() && s[0] == '.';
}

// Every folder that the path passes through, as the file system resolves it.
std::vector<fs::path> resolvedChain(const fs::path& folder) {
    std::vector<fs::path> chain;
    std::error_code ec;
    fs::path walked;
    for (const fs::path& part : folder) {
        walked /= part;
        fs::path real = fs::canonical(walked, ec);
        if (!ec) chain.push_back(real);
    }
    return chain;
}

}  // namespace

std::string folderPath(const std::string& path) {
    std::error_code ec;
    fs::path p = fs::absolute(fs::path(path.empty() ? "." : path), ec).lexically_normal();
    if (ec || !fs::is_directory(p, ec)) throw VbError(vberr::PathNotFound, "Path not found");
    std::string s = p.string();
    while (s.size() > 1 && s.back() == '/')
        s.pop_back();
    return s;
}

std::vector<std::string> subfolders(const std::string& folder) {
    std::vector<std::string> found;
    std::error_code ec;
    std::vector<fs::path> chain;  // made on the first symbolic link met
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path& p = it->path();
        if (hidden(p.filename()) || !it->is_directory(ec)) continue;
        if (it->is_symlink(ec)) {
            if (chain.empty()) chain = resolvedChain(folder);
            fs::path target = fs::canonical(p, ec);
            if (ec || std::find(chain.begin(), chain.end(), target) != chain.end()) continue;
        }
        found.push_back(p.string());
    }
    std::sort(found.begin(), found.end(), listedBefore);
    return found;
}

std::vector<std::string> files(const std::string& folder, const std::string& pattern) {
    std::vector<std::string> found;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        std::string name = it->path().filename().string();
        if (hidden(name) || it->is_directory(ec) || !it->exists(ec)) continue;
        if (MatchesPattern(name, pattern)) found.push_back(std::move(name));
    }
    std::sort(found.begin(), found.end(), listedBefore);
    return found;
}

std::vector<std::string> drives() {
    return {"/"};
}

std::string driveOf(const std::string&) {
    return "/";
}

std::string ancestor(const std::string& folder, int up) {
    fs::path p(folder);
    for (int i = 0; i < up; ++i) {
        if (p == p.root_path()) return "";
        p = p.parent_path();
    }
    return p.string();
}

}  // namespace FileLists
