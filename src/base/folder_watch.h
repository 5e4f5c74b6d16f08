#pragma once

#include <string>

// Whether an absolute path names a folder now, as one stat tells. A folder asked about again
// and again (adding a folder points the file list at the file's folder once a file) is
// watched: the kernel sends the program a notice (SIGIO, through inotify) whenever a folder
// along the path changes the entry of the next one, is moved, removed or changes its
// permissions. While no such notice has come the answer is the one last looked up, with no
// system call; after one, the folder is looked up again. A path through a symbolic link is
// always looked up, as is every path when the notices cannot be had.
bool IsFolderNow(const std::string& path);
