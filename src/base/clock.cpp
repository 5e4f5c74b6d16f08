#include "base/clock.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "base/dates.h"

Clock::~Clock() = default;

double Clock::Date() const {
    return std::trunc(Now());
}

double SystemClock::Now() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const double day = DateSerial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
    return day + (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / 86400.0;
}

namespace {

SystemClock& systemClock() {
    static SystemClock clock;
    return clock;
}

Clock*& currentClock() {
    static Clock* clock = nullptr;
    return clock;
}

}  // namespace

Clock& theClock() {
    Clock* clock = currentClock();
    return clock ? *clock : systemClock();
}

void setClock(Clock* clock) {
    currentClock() = clock;
}
