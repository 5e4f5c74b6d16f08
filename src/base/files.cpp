#include "base/files.h"

#include <dirent.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>

#include "base/kept_listings.h"
#include "base/strings.h"
#include "base/vb_error.h"

namespace fs = std::filesystem;

std::string Dir(const std::string& path) {
    // A page's cells look up two or three pictures each: during a run from the kept listing.
    if (!IsRegularFile(path)) return {};
    return path.substr(path.rfind('/') + 1);  // a regular file's path never ends in "/"
}

void MkDir(const std::string& path) {
    KeptListings::forget();
    std::error_code ec;
    fs::path folder = fs::path(path);
    if (!folder.has_filename()) folder = folder.parent_path();
    if (fs::exists(folder, ec)) throw VbError(75);
    if (!fs::is_directory(folder.parent_path(), ec)) throw VbError(vberr::PathNotFound);
    if (!fs::create_directory(folder, ec)) throw VbError(75);
}

namespace {

// A file pattern as a Like pattern: only "*" and "?" are wild.
std::string likeOf(std::string_view part) {
    std::string like;
    for (char c : part) {
        if (c == '#' || c == '[')
            like += std::string("[") + c + "]";
        else
            like += c;
    }
    return like;
}

}  // namespace

bool MatchesPattern(const std::string& name, const std::string& patterns) {
    return FilePattern(patterns).matches(name);
}

FilePattern::FilePattern(const std::string& patterns) {
    std::size_t start = 0;
    while (start <= patterns.size()) {
        std::size_t end = patterns.find(';', start);
        if (end == std::string::npos) end = patterns.size();
        const std::string part = Trim(patterns.substr(start, end - start));
        if (part == "*.*") everyFile_ = true;
        if (!part.empty()) likes_.emplace_back(likeOf(part));
        start = end + 1;
    }
}

bool FilePattern::matches(std::string_view name) const {
    if (everyFile_) return true;
    for (const LikePattern& like : likes_)
        if (like.matches(name)) return true;
    return false;
}

void Kill(const std::string& pathPattern) {
    KeptListings::forget();
    const fs::path path(pathPattern);
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) throw VbError(vberr::PathNotFound);
    const FilePattern pattern(path.filename().string());
    std::vector<fs::path> doomed;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
        if (it->is_regular_file(ec) && pattern.matches(it->path().filename().string()))
            doomed.push_back(it->path());
    if (doomed.empty()) throw VbError(vberr::FileNotFound);
    for (const fs::path& file : doomed)
        if (!fs::remove(file, ec) || ec) throw VbError(75);
}

void FileCopy(const std::string& from, const std::string& to) {
    KeptListings::forget();
    std::error_code ec;
    if (!fs::is_regular_file(from, ec)) throw VbError(vberr::FileNotFound);
    const fs::path target(to);
    if (target.has_parent_path() && !fs::is_directory(target.parent_path(), ec))
        throw VbError(vberr::PathNotFound);
    if (!fs::copy_file(from, to, fs::copy_options::overwrite_existing, ec)) throw VbError(75);
}

void ReadToEnd(int fd, std::size_t size, std::string& into) {
    std::size_t ask = size + 1;  // one more, so that a short read tells the end
    for (;;) {
        const std::size_t at = into.size();
        into.resize(at + ask);
        const ssize_t got = ::read(fd, into.data() + at, ask);
        if (got < 0 && errno == EINTR) {
            into.resize(at);
            continue;
        }
        into.resize(at + static_cast<std::size_t>(got > 0 ? got : 0));
        if (got <= 0 || static_cast<std::size_t>(got) < ask) return;
        ask = 1 << 16;
    }
}

bool ReadFolder(
    const std::string& folder,
    const std::function<void(int folderFd, const char* name, unsigned char type)>& visit,
    struct stat* opened) {
    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr) return false;
    const int fd = ::dirfd(dir);
    if (opened != nullptr && ::fstat(fd, opened) != 0) {
        ::closedir(dir);
        return false;
    }
    while (const dirent* entry = ::readdir(dir))
        visit(fd, entry->d_name, entry->d_type);
    ::closedir(dir);
    return true;
}
