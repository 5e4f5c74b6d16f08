#pragma once

#include <fstream>

// The resident memory of this process now, in MiB.
inline double residentMiB() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0, resident = 0;
    statm >> pages >> resident;
    return static_cast<double>(resident) * 4096.0 / (1024.0 * 1024.0);
}
