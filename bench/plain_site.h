#pragma once

#include <string>

// The plain writer: the program's site files, byte for byte, written straight from the
// catalogue's rows with the template's lines and the benchmark's layout as constants.
void writePlainSite(const std::string& folder, const std::string& templateFile,
                    const std::string& catalogue);
