#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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
    // Every name, arrays without their indexes.
    std::vector<std::string> Names() const;

    // Makes a variable readable by its name; the variable must outlive the table's use.
    template <class T>
    void Declare(const std::string& name, const T& variable);

  private:
    std::map<std::string, std::function<Variant()>, NoCase> scalars_;
    std::map<std::string, std::function<Variant(int)>, NoCase> arrays_;
    std::map<std::string, std::function<Variant(int, int)>, NoCase> arrays2_;
};

// A variable's value as the program reads it.
inline Variant varValue(bool v) {
    return Variant(v);
}
inline Variant varValue(std::int16_t v) {
    return Variant::Integer(v);
}
inline Variant varValue(std::int32_t v) {
    return Variant::Long(v);
}
inline Variant varValue(double v) {
    return Variant::Double(v);
}
inline Variant varValue(const std::string& v) {
    return Variant(v);
}
inline Variant varValue(const Variant& v) {
    return v;
}
// An object variable reads as "Nothing" until it is set, then as "Object".
Variant objectValue(const void* object);
template <class T>
Variant varValue(const T* object) {
    return objectValue(object);
}
template <class T>
Variant varValue(const std::unique_ptr<T>& object) {
    return objectValue(object.get());
}

namespace vars_detail {
template <class T>
struct Indexed : std::false_type {};
template <class T>
struct Indexed<std::vector<T>> : std::true_type {};
template <class T, std::size_t N>
struct Indexed<std::array<T, N>> : std::true_type {};

[[noreturn]] void outOfRange();

template <class Array>
const auto& element(const Array& a, int i) {
    if (i < 0 || i >= static_cast<int>(a.size())) outOfRange();
    return a[static_cast<std::size_t>(i)];
}
}  // namespace vars_detail

template <class T>
void VarTable::Declare(const std::string& name, const T& variable) {
    using namespace vars_detail;
    const T* v = &variable;
    if constexpr (!Indexed<T>::value) {
        Add(name, [v] { return varValue(*v); });
    } else if constexpr (!Indexed<std::decay_t<decltype(variable[0])>>::value) {
        AddArray(name, [v](int i) { return varValue(element(*v, i)); });
    } else {
        AddArray2(name, [v](int i, int j) { return varValue(element(element(*v, i), j)); });
    }
}

// Registers a variable with the table of its owner at the owner's construction.
struct VarName {
    template <class T>
    VarName(VarTable& table, const char* name, const T& variable) {
        table.Declare(name, variable);
    }
};

// Declares a variable of the program's documents, zero or empty as the program creates
// them, and makes it readable by its own name in the Vars() of the class that declares it:
// a declaration is never without its name.
#define NAMED_VAR(Type, Name) \
    Type Name{};              \
    VarName Name##Named_ {    \
        Vars(), #Name, Name   \
    }
