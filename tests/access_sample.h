#pragma once

#include <fstream>
#include <sstream>
#include <string>

// The real Access file of the tests (tests/data/access, with its licence).
inline std::string accessSample() {
    return std::string(TEST_DATA_DIR) + "/access/node-adodb.mdb";
}

// Writes a copy of the sample whose one user table, Users, is named MSysU in the file's
// catalogue, so that every table of the copy reads as a system table.
inline void writeSystemTablesOnly(const std::string& path) {
    std::ifstream in(accessSample(), std::ios::binary);
    std::ostringstream whole;
    whole << in.rdbuf();
    std::string bytes = whole.str();
    const std::string users("U\0s\0e\0r\0s\0", 10), renamed("M\0S\0y\0s\0U\0", 10);
    bytes.replace(bytes.find(users), users.size(), renamed);
    std::ofstream(path, std::ios::binary) << bytes;
}
