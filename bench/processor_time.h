#pragma once

#include <sys/resource.h>

#include <ctime>

// The processor time of this process and of the children it waited for, in seconds: on a
// shared machine a steadier figure than wall time.
inline double processorSeconds() {
    timespec own{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    rusage children{};
    getrusage(RUSAGE_CHILDREN, &children);
    auto seconds = [](const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; };
    return own.tv_sec + own.tv_nsec / 1e9 + seconds(children.ru_utime) + seconds(children.ru_stime);
}

// The part of this process's processor time spent in the kernel on its behalf (system
// calls, page faults), in seconds.
inline double kernelSeconds() {
    rusage own{};
    getrusage(RUSAGE_SELF, &own);
    return own.ru_stime.tv_sec + own.ru_stime.tv_usec / 1e6;
}
