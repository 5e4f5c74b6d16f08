#pragma once

#include <string>
#include <vector>

// Makes a fresh catalogue file at `path` from SQL script files, with every "$APP" in them
// replaced by `appDir` (the program folder with its trailing separator).
void buildCatalogue(const std::string& path, const std::string& appDir,
                    const std::vector<std::string>& scriptFiles);

// The same from a catalogue built before (the empty one of the build): the file is copied
// and only the further scripts run, which is far cheaper than making the tables again.
void copyCatalogue(const std::string& prebuilt, const std::string& path, const std::string& appDir,
                   const std::vector<std::string>& scriptFiles);
