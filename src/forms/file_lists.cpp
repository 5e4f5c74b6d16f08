#include "forms/file_lists.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <ctime>
#include <memory>
#include <mutex>

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

// What a folder's entry is, links followed: a link that leads nowhere is Missing.
enum class Kind { File, Folder, LinkToFolder, Missing };

struct Entry {
    std::string name;
    Kind kind;
};
using Listing = std::vector<Entry>;

// The classic lists sort ignoring case; names that differ only in case keep a fixed order:
// by the name with a-z upper-cased, then by the name itself. A folder of 30,000 files is
// sorted by it, so each name's upper-cased form is made once, not once a comparison.
void sortListed(Listing& entries) {
    struct Keyed {
        std::string upper;
        Entry* entry;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(entries.size());
    for (Entry& entry : entries) {
        std::string upper = entry.name;
        for (char& c : upper)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        keyed.push_back({std::move(upper), &entry});
    }
    std::sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) {
        const int order = a.upper.compare(b.upper);
        return order != 0 ? order < 0 : a.entry->name < b.entry->name;
    });
    Listing sorted;
    sorted.reserve(entries.size());
    for (Keyed& k : keyed)
        sorted.push_back(std::move(*k.entry));
    entries = std::move(sorted);
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

// A listing of at least this many entries is kept: a large folder is often listed again
// (adding a folder lists it for the seeker's folder list, its file list and `File1`), and
// reading a small one costs about as much as the look-up that tells it is unchanged.
constexpr std::size_t KeptFrom = 256;

bool earlier(const timespec& a, const timespec& b) {
    return a.tv_sec != b.tv_sec ? a.tv_sec < b.tv_sec : a.tv_nsec < b.tv_nsec;
}

// Whether every later change of the folder's entries must change its status: a change stamps
// the folder with the kernel's coarse clock, truncated to what the file system keeps. In
// memory (tmpfs) that is to the nanosecond, so a status stamped before the reading began
// differs from the status after any change that follows; on the usual disk file systems it
// is kept two seconds clear, for those that keep whole seconds. Other file systems (on the
// network, whose server stamps the changes with its own clock) are never trusted.
bool stampsEveryChange(int folderFd, const struct stat& status, const timespec& began) {
    constexpr long Tmpfs = 0x01021994, Ext = 0xEF53, Xfs = 0x58465342, Btrfs = 0x9123683E;
    struct statfs fs {};
    if (::fstatfs(folderFd, &fs) != 0) return false;
    if (fs.f_type == Tmpfs) return earlier(status.st_mtim, began) && earlier(status.st_ctim, began);
    if (fs.f_type != Ext && fs.f_type != Xfs && fs.f_type != Btrfs) return false;
    return status.st_mtim.tv_sec + 2 < began.tv_sec && status.st_ctim.tv_sec + 2 < began.tv_sec;
}

bool sameStatus(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_mode == b.st_mode &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec &&
           a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
}

// The last large listing read, with the status of its folder when the reading began. It is
// given again only while one stat of the folder finds that status unchanged: any entry made,
// removed or renamed in the folder, or a change of its permissions, changes it. A listing
// with a symbolic link (or an entry whose kind the file system did not tell) is not kept, as
// what the link leads to can change with no change to the folder.
struct KeptListing {
    std::mutex lock;
    std::string folder;
    struct stat status {};
    std::shared_ptr<const Listing> entries;
};

KeptListing& kept() {
    static KeptListing k;
    return k;
}

// Each entry of a folder that is not hidden, with its kind, sorted as the lists sort, read in
// one pass of readdir (the file system's own kind of an entry spares a look-up). A folder
// that cannot be read has no entries.
std::shared_ptr<const Listing> listing(const std::string& folder) {
    KeptListing& k = kept();
    {
        std::lock_guard<std::mutex> guard(k.lock);
        struct stat now {};
        if (k.entries && k.folder == folder && ::stat(folder.c_str(), &now) == 0 &&
            sameStatus(now, k.status))
            return k.entries;
    }
    timespec began{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &began);
    struct stat status {};
    auto entries = std::make_shared<Listing>();
    bool keep = true;
    ReadFolder(
        folder,
        [&](int fd, const char* name, unsigned char type) {
            if (name[0] == '.') return;  // hidden, "." and ".."
            if (type == DT_LNK || type == DT_UNKNOWN)
                keep = false;
            else if (keep && entries->empty())
                keep = stampsEveryChange(fd, status, began);
            entries->push_back({name, kindOf(fd, name, type)});
        },
        &status);
    sortListed(*entries);
    if (keep && entries->size() >= KeptFrom) {
        std::lock_guard<std::mutex> guard(k.lock);
        k.folder = folder;
        k.status = status;
        k.entries = entries;
    }
    return entries;
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
    const auto entries = listing(folder);
    for (const Entry& entry : *entries) {
        if (entry.kind != Kind::Folder && entry.kind != Kind::LinkToFolder) continue;
        const fs::path p = fs::path(folder) / entry.name;
        if (entry.kind == Kind::LinkToFolder) {
            if (chain.empty()) chain = resolvedChain(folder);
            fs::path target = fs::canonical(p, ec);
            if (ec || std::find(chain.begin(), chain.end(), target) != chain.end()) continue;
        }
        found.push_back(p.string());
    }
    return found;
}

std::vector<std::string> files(const std::string& folder, const std::string& pattern) {
    std::vector<std::string> found;
    const FilePattern fits(pattern);
    const auto entries = listing(folder);
    // Room for every entry at once: a folder of 30,000 files moves no names as the list grows.
    found.reserve(entries->size());
    for (const Entry& entry : *entries)
        if (entry.kind == Kind::File && fits.matches(entry.name)) found.push_back(entry.name);
    if (found.size() < found.capacity() / 2) found.shrink_to_fit();
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
