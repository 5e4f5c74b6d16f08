#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/strings.h"

// The classic Dir of one path: the file's name without its folder when the path names an
// existing file, "" otherwise (also for an empty path or a folder).
std::string Dir(const std::string& path);

// The classic MkDir: makes one folder. Its parent missing is VbError 76; a folder or file
// already there is VbError 75.
void MkDir(const std::string& path);

// Whether a file name fits a file pattern: several may stand separated by ";" ("*.jpg;
// *.gif"); "*" is any run of characters, "?" one character, letters in any case, and "*.*"
// every file. Only "*" and "?" are wild: "#" and "[" in a name stand for themselves.
bool MatchesPattern(const std::string& name, const std::string& patterns);
// The same for many names against one pattern (a folder's files), its parts read once.
class FilePattern {
  public:
    explicit FilePattern(const std::string& patterns);
    bool matches(std::string_view name) const;

  private:
    bool everyFile_ = false;
    std::vector<LikePattern> likes_;  // each part as a Like pattern
};

// The classic Kill: deletes every file that the last part of the path fits. A missing
// folder is VbError 76, nothing that fits 53, a file that cannot go 75.
void Kill(const std::string& pathPattern);

// The classic FileCopy: a byte copy that replaces the target. A missing source is 53, a
// missing target folder 76.
void FileCopy(const std::string& from, const std::string& to);

// The rest of an open descriptor's file, appended to `into`. `size` is the size the file is
// known to have: a file still that size takes one read.
void ReadToEnd(int fd, std::size_t size, std::string& into);

// Every entry of a folder in one pass of the file system's listing, "." and ".." included:
// `visit` gets the folder's open descriptor (to look further at an entry), the name, and the
// kind the listing gives (a dirent type; DT_UNKNOWN when it does not tell). False when the
// folder cannot be read. `opened`, if given, gets the status of the folder opened, taken
// before the first entry is read.
bool ReadFolder(
    const std::string& folder,
    const std::function<void(int folderFd, const char* name, unsigned char type)>& visit,
    struct stat* opened = nullptr);
