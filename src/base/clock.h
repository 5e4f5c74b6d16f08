#pragma once

// Today's date and time as a service, so that a test can fix them.
class Clock {
  public:
    virtual ~Clock();
    // Now as a date serial: days since 1899-12-30, the fraction the time of day.
    virtual double Now() const = 0;
    // Now without its time.
    double Date() const;
};

// The machine's local time.
class SystemClock : public Clock {
  public:
    double Now() const override;
};

// A clock that stands still at the serial it is given.
class FixedClock : public Clock {
  public:
    explicit FixedClock(double serial) : serial_(serial) {}
    void set(double serial) { serial_ = serial; }
    double Now() const override { return serial_; }

  private:
    double serial_;
};

// The clock the program reads. setClock does not take ownership; nullptr restores the
// system clock.
Clock& theClock();
void setClock(Clock* clock);
