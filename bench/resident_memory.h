#pragma once

#include <fstream>
#include <string>

// The resident memory of this process now, in MiB.
inline double residentMiB() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0, resident = 0;
    statm >> pages >> resident;
    return static_cast<double>(resident) * 4096.0 / (1024.0 * 1024.0);
}

// The most resident memory this process has had so far (its high-water mark), in MiB.
inline double peakResidentMiB() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") {
            double kib = 0;
            status >> kib;
            return kib / 1024.0;
        }
    return 0;
}
