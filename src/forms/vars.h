#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "base/variant.h"
#include "forms/control.h"

// Variables that the program's documents name, readable by name: "SearchCriteria",
// "Marks(3)", "FieldPlacement(2)", "FontSizeOf(0, 5)". Checks and the desktop read through it.
class VarTable {
  public:
    void Add(const std::string& name, std::function<Variant()> read);
    void AddArray(const std::string& name, std::function<Variant(int index)> read);
    // A two-dimensional array, read as "Name(i, j)".
    void AddArray2(const std::string& name, std::function<Variant(int i, int j)> read);
    bool Has(std::string_view expression) const;
    // 9 for an unknown name or an index out of range.
    Variant Get(std::string_view expression) const;

  private:
    std::map<std::string, std::function<Variant()>, NoCase> scalars_;
    std::map<std::string, std::function<Variant(int)>, NoCase> arrays_;
    std::map<std::string, std::function<Variant(int, int)>, NoCase> arrays2_;
};
