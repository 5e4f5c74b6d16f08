#pragma once

#include <string>
#include <vector>

// The drive, folder and file lists read the real file system. A folder list holds the full
// paths of its folder's subfolders, a file list the names of its folder's files that match
// its pattern; both sorted as the classic lists sort, ignoring case. Names that begin with
// a dot are hidden files here and are left out, as hidden files are.
namespace FileLists {

// The folder as the lists keep it: absolute, without "." or "..", and without a trailing
// separator unless it is the root. 76 (path not found) when it is no folder.
std::string folderPath(const std::string& path);

// The subfolders of a folder, full paths. A folder that cannot be read lists nothing. A
// symbolic link that leads back to the folder itself or to one of the folders above it
// is left out, so a walk down the lists always ends.
std::vector<std::string> subfolders(const std::string& folder);

// The files of a folder whose names match one of the patterns, separated by ";" ("*.jpg;
// *.gif"): "*" any run of characters, "?" one character, letters in any case, and "*.*"
// every file. A folder that cannot be read lists nothing.
std::vector<std::string> files(const std::string& folder, const std::string& pattern);

// The drives of this machine: one, the root, since the platform has no drive letters.
std::vector<std::string> drives();
// The drive of a path, as the drive list names it.
std::string driveOf(const std::string& path);

// The folder `up` levels above a folder (0 the folder itself); "" above the root.
std::string ancestor(const std::string& folder, int up);

}  // namespace FileLists
