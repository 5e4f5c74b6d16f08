#include "base/kept_listings.h"

#include <dirent.h>
#include <errno.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "base/files.h"

namespace {

using FolderId = std::pair<dev_t, ino_t>;

// Names looked up by a string_view, with no string made for the lookup.
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
};
template <class T>
using ByName = std::unordered_map<std::string, T, NameHash, std::equal_to<>>;

struct Kept {
    int runs = 0;
    // A folder as the program spells it, and the folder it is (none when it is missing).
    ByName<std::optional<FolderId>> folders;
    // The names in each folder read, with their kind as the listing gives it.
    std::map<FolderId, ByName<unsigned char>> listings;
    // The file last written whole, still open, with its length on disk; its newest
    // contents may still wait in `behind` for a write the next rewrite makes needless.
    std::string writerPath;
    int writer = -1;
    long long writerSize = 0;
    std::string behind;
    bool waiting = false;

    // Puts the waiting contents in place of the file's. Nobody is left to hear of a fault
    // here: the file then keeps its previous whole contents, as the item view it is.
    void settle() {
        if (!waiting) return;
        waiting = false;
        std::size_t done = 0;
        while (done < behind.size()) {
            const ssize_t wrote = ::pwrite(writer, behind.data() + done, behind.size() - done,
                                           static_cast<off_t>(done));
            if (wrote < 0 && errno == EINTR) continue;
            if (wrote <= 0) return;
            done += static_cast<std::size_t>(wrote);
        }
        const auto size = static_cast<long long>(done);
        if (size < writerSize && ::ftruncate(writer, static_cast<off_t>(size)) != 0) return;
        writerSize = size;
    }
    void dropWriter() {
        if (writer >= 0) {
            settle();
            ::close(writer);
        }
        writer = -1;
        waiting = false;
        writerPath.clear();
    }
    ~Kept() { dropWriter(); }
    void clear() {
        folders.clear();
        listings.clear();
        dropWriter();
    }
};

Kept& kept() {
    static Kept k;
    return k;
}

bool statRegular(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// The folder part and name of a path: "a/b.jpg" is "a" and "b.jpg", "b.jpg" is "." and it.
std::pair<std::string_view, std::string_view> split(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return {".", path};
    return {path.substr(0, slash == 0 ? 1 : slash), path.substr(slash + 1)};
}

const std::optional<FolderId>& folderOf(Kept& k, std::string_view folder) {
    if (auto at = k.folders.find(folder); at != k.folders.end()) return at->second;
    auto& id = k.folders[std::string(folder)];
    struct stat status {};
    if (::stat(std::string(folder).c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        id = FolderId{status.st_dev, status.st_ino};
    return id;
}

// The folder's names, read now if they were not; nullptr when it cannot be listed.
const ByName<unsigned char>* listingOf(Kept& k, std::string_view folder, const FolderId& id) {
    if (auto at = k.listings.find(id); at != k.listings.end()) return &at->second;
    ByName<unsigned char> names;
    if (!ReadFolder(std::string(folder),
                    [&](int, const char* name, unsigned char type) { names.emplace(name, type); }))
        return nullptr;
    return &(k.listings[id] = std::move(names));
}

}  // namespace

KeptListings::KeptListings() {
    kept().runs += 1;
}

KeptListings::~KeptListings() {
    Kept& k = kept();
    if (--k.runs == 0) k.clear();
}

void KeptListings::forget() {
    kept().clear();
}

bool IsRegularFile(const std::string& path) {
    Kept& k = kept();
    if (path.empty()) return false;
    if (k.runs == 0) return statRegular(path);
    const auto [folder, name] = split(path);
    if (name.empty() || name == "." || name == "..") return statRegular(path);
    const std::optional<FolderId>& id = folderOf(k, folder);
    if (!id) return false;
    const auto* names = listingOf(k, folder, *id);
    if (names == nullptr) return statRegular(path);
    const auto at = names->find(name);
    if (at == names->end()) return false;
    if (at->second == DT_REG) return true;
    // A link or a kind the listing does not tell: the file itself says.
    return (at->second == DT_LNK || at->second == DT_UNKNOWN) && statRegular(path);
}

void NoteWritten(const std::string& path) {
    Kept& k = kept();
    if (k.runs == 0) return;
    const auto [folder, name] = split(path);
    const std::optional<FolderId>& id = folderOf(k, folder);
    if (!id) return;
    if (auto at = k.listings.find(*id); at != k.listings.end()) {
        if (auto known = at->second.find(name); known != at->second.end())
            known->second = DT_REG;
        else
            at->second.emplace(std::string(name), DT_REG);
    }
}

bool KeepWriter(const std::string& path, int fd, long long size) {
    Kept& k = kept();
    if (k.runs == 0) return false;
    k.dropWriter();
    k.writer = fd;
    k.writerPath = path;
    k.writerSize = size;
    return true;
}

bool WriteBehind(const std::string& path, int fd, long long size, std::string& contents) {
    Kept& k = kept();
    if (k.runs == 0 || static_cast<long long>(contents.size()) > size) return false;
    if (!KeepWriter(path, fd, size)) return false;
    k.behind.swap(contents);
    k.waiting = true;
    return true;
}

int TakeKeptWriter(const std::string& path, long long& size, bool rewrite) {
    Kept& k = kept();
    if (k.writer < 0) return -1;
    if (k.writerPath != path) {
        k.dropWriter();
        return -1;
    }
    // Rewritten whole, the waiting contents would be overwritten unread.
    if (rewrite)
        k.waiting = false;
    else
        k.settle();
    k.writerPath.clear();
    size = k.writerSize;
    return std::exchange(k.writer, -1);
}

void SettleWrites() {
    kept().settle();
}
