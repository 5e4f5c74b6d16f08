#include "naming_faults.h"

#include <gtest/gtest.h>

#include "base/trap.h"

namespace {

ExpectNamingFaults*& expecting() {
    static ExpectNamingFaults* current = nullptr;
    return current;
}

std::string shown(int number, const std::string& description) {
    return std::to_string(number) + " " + description;
}

// Installed before any test runs, in every test program this file is part of.
const bool watching = [] {
    WatchNamingFaults([](int number, const std::string& description) {
        if (ExpectNamingFaults* e = expecting()) {
            e->seen.push_back(shown(number, description));
            return;
        }
        ADD_FAILURE() << "a statement names what the program does not have: error "
                      << shown(number, description);
    });
    return true;
}();

}  // namespace

ExpectNamingFaults::ExpectNamingFaults() : outer_(expecting()) {
    (void)watching;
    expecting() = this;
}

ExpectNamingFaults::~ExpectNamingFaults() {
    expecting() = outer_;
}
