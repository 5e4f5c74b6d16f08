#pragma once

#include <chrono>

#include "base/trap.h"

class DataControl;

// Groups the writes of a long run through a data control into transactions. A run that lets
// events run between records commits first, so that whatever the user does meanwhile finds
// the file free and every record written so far stays written, as it would one by one.
class WriteBatch {
  public:
    // Opens the first transaction; faults go to `on`.
    WriteBatch(DataControl& data, Trap& on);
    // Commits what is open.
    ~WriteBatch();
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

    // Between two records: once a screen's refresh time has passed since events last ran,
    // commits, lets events run and opens the next transaction.
    void betweenRecords();

  private:
    using Clock = std::chrono::steady_clock;
    DataControl& data_;
    Trap& on_;
    Clock::time_point lastEvents_;
};
