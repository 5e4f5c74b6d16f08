#include "build/write_batch.h"

#include "forms/runtime.h"
#include "records/data_control.h"

namespace {

// Often enough for the screen to follow and a click to be taken at once.
constexpr auto EventInterval = std::chrono::milliseconds(30);

}  // namespace

WriteBatch::WriteBatch(DataControl& data, Trap& on)
    : data_(data), on_(on), lastEvents_(Clock::now()) {
    on_([&] { data_.BeginTrans(); });
}

WriteBatch::~WriteBatch() {
    on_([&] { data_.CommitTrans(); });
}

void WriteBatch::betweenRecords() {
    if (Clock::now() - lastEvents_ < EventInterval) return;
    on_([&] { data_.CommitTrans(); });
    on_([&] { Runtime::Current().LetEventsRun(); });
    on_([&] { data_.BeginTrans(); });
    lastEvents_ = Clock::now();
}
