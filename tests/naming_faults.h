#pragma once

#include <string>
#include <vector>

// Every test fails on a statement that names a control, property or form the program does
// not have, unless the test expects it: inside the scope of an ExpectNamingFaults such
// faults are collected instead.
class ExpectNamingFaults {
  public:
    ExpectNamingFaults();
    ~ExpectNamingFaults();
    ExpectNamingFaults(const ExpectNamingFaults&) = delete;
    ExpectNamingFaults& operator=(const ExpectNamingFaults&) = delete;

    // "340 no control Products.cmdSelectAll", one per fault seen so far.
    std::vector<std::string> seen;

  private:
    ExpectNamingFaults* outer_;
};
