#include "base/clock.h"

#include <gtest/gtest.h>

#include "base/dates.h"

namespace {

// Puts the system clock back whatever a test did.
struct ClockTest : ::testing::Test {
    ~ClockTest() override { setClock(nullptr); }
};

}  // namespace

TEST_F(ClockTest, FixedClockGivesItsSerial) {
    FixedClock fixed(DateSerial(2024, 3, 5) + 0.5);
    setClock(&fixed);
    EXPECT_DOUBLE_EQ(theClock().Now(), DateSerial(2024, 3, 5) + 0.5);
}

TEST_F(ClockTest, DateDropsTheTime) {
    FixedClock fixed(DateSerial(2024, 3, 5) + 0.75);
    EXPECT_DOUBLE_EQ(fixed.Date(), DateSerial(2024, 3, 5));
}

TEST_F(ClockTest, FixedClockCanBeMoved) {
    FixedClock fixed(100);
    setClock(&fixed);
    fixed.set(200.25);
    EXPECT_DOUBLE_EQ(theClock().Date(), 200.0);
}

TEST_F(ClockTest, NullRestoresTheSystemClock) {
    FixedClock fixed(100);
    setClock(&fixed);
    setClock(nullptr);
    // Any run of these tests is well after 2020.
    EXPECT_GT(theClock().Now(), DateSerial(2020, 1, 1));
    EXPECT_NE(dynamic_cast<SystemClock*>(&theClock()), nullptr);
}

TEST_F(ClockTest, SystemClockTimeIsAFractionOfADay) {
    SystemClock system;
    const double now = system.Now();
    EXPECT_GE(now - system.Date(), 0.0);
    EXPECT_LT(now - system.Date(), 1.0);
}
