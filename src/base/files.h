#pragma once

#include <string>

// The classic Dir of one path: the file's name without its folder when the path names an
// existing file, "" otherwise (also for an empty path or a folder).
std::string Dir(const std::string& path);

// The classic MkDir: makes one folder. Its parent missing is VbError 76; a folder or file
// already there is VbError 75.
void MkDir(const std::string& path);
