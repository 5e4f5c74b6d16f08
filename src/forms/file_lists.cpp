#include "forms/file_lists.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/files.h"
#include "base/folder_watch.h"
#include "base/vb_error.h"

namespace fs = std::filesystem;

namespace FileLists {

namespace {

// The classic lists sort ignoring case; names that differ only in case keep a fixed order:
// by the name with a-z upper-cased, then by the name itself. A folder of 30,000 files is
// sorted by it, so each name's upper-cased form is made once, not once a comparison.
void sortListed(std::vector<std::string>& names) {
    struct Keyed {
        std::string upper;
        std::string* name;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) {
        std::string upper = name;
        for (char& c : upper)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        keyed.push_back({std::move(upper), &name});
    }
    std::sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) {
        const int order = a.upper.compare(b.upper);
        return order != 0 ? order < 0 : *a.name < *b.name;
    });
    std::vector<std::string> sorted;
    sorted.reserve(names.size());
    for (Keyed& k : keyed)
        sorted.push_back(std::move(*k.name));
    names = std::move(sorted);
}

// An absolute path with no empty, "." or ".." part is already what normalising makes of it:
// the usual case of a folder set again and again, as adding a folder does for every file.
bool plainAbsolute(std::string_view s) {
    if (s.empty() || s[0] != '/') return false;
    if (s.size() == 1) return true;
    std::size_t start = 1;
    while (start <= s.size()) {
        std::size_t end = s.find('/', start);
        if (end == std::string_view::npos) end = s.size();
        const std::string_view part = s.substr(start, end - start);
        if (part.empty() || part == "." || part == "..") return false;
        start = end + 1;
    }
    return true;
}

// What a folder's entry is, links followed: a link that leads nowhere is Missing.
enum class Kind { File, Folder, LinkToFolder, Missing };

Kind kindOf(int dirFd, const char* name, unsigned char type) {
    if (type == DT_DIR) return Kind::Folder;
    if (type != DT_LNK && type != DT_UNKNOWN) return Kind::File;
    struct stat st {};
    if (fstatat(dirFd, name, &st, 0) != 0) return Kind::Missing;
    if (!S_ISDIR(st.st_mode)) return Kind::File;
    if (type == DT_LNK) return Kind::LinkToFolder;
    // The file system did not tell the kind: whether the name itself is a link.
    if (fstatat(dirFd, name, &st, AT_SYMLINK_NOFOLLOW) != 0) return Kind::Missing;
    return S_ISLNK(st.st_mode) ? Kind::LinkToFolder : Kind::Folder;
}

// Each entry of a folder that is not hidden, with its kind, in one pass of readdir: the
// file system's own kind of an entry spares a look-up, and a folder of 30,000 files makes
// no path object per file. A folder that cannot be read has no entries.
template <class Visit>
void eachEntry(const std::string& folder, Visit visit) {
    ReadFolder(folder, [&](int fd, const char* name, unsigned char type) {
        if (name[0] != '.') visit(name, kindOf(fd, name, type));  // hidden, "." and ".."
    });
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
    if (plainAbsolute(path)) {
        // No path object, which would split the path into parts first; and a folder set again
        // and again is looked up again only when something along its path has changed.
        if (!IsFolderNow(path)) throw VbError(vberr::PathNotFound, "Path not found");
        return path;
    }
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
    eachEntry(folder, [&](const char* name, Kind kind) {
        if (kind != Kind::Folder && kind != Kind::LinkToFolder) return;
        const fs::path p = fs::path(folder) / name;
        if (kind == Kind::LinkToFolder) {
            if (chain.empty()) chain = resolvedChain(folder);
            fs::path target = fs::canonical(p, ec);
            if (ec || std::find(chain.begin(), chain.end(), target) != chain.end()) return;
        }
        found.push_back(p.string());
    });
    sortListed(found);
    return found;
}

std::vector<std::string> files(const std::string& folder, const std::string& pattern) {
    std::vector<std::string> found;
    const FilePattern fits(pattern);
    eachEntry(folder, [&](const char* name, Kind kind) {
        if (kind == Kind::File && fits.matches(name)) found.emplace_back(name);
    });
    sortListed(found);
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
