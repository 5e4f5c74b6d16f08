#include "forms/vars.h"

#include "base/convert.h"
#include "base/strings.h"
#include "base/vb_error.h"

void VarTable::Add(const std::string& name, std::function<Variant()> read) {
    scalars_[name] = std::move(read);
}

void VarTable::AddArray(const std::string& name, std::function<Variant(int)> read) {
    arrays_[name] = std::move(read);
}

void VarTable::AddArray2(const std::string& name, std::function<Variant(int, int)> read) {
    arrays2_[name] = std::move(read);
}

bool VarTable::Has(std::string_view expression) const {
    auto open = expression.find('(');
    if (open == std::string_view::npos) return scalars_.count(expression) > 0;
    auto name = expression.substr(0, open);
    return expression.find(',', open) == std::string_view::npos ? arrays_.count(name) > 0
                                                                : arrays2_.count(name) > 0;
}

Variant VarTable::Get(std::string_view expression) const {
    auto unknown = [&] {
        return VbError(vberr::SubscriptOutOfRange, "no variable " + std::string(expression));
    };
    auto open = expression.find('(');
    if (open == std::string_view::npos) {
        auto it = scalars_.find(expression);
        if (it == scalars_.end()) throw unknown();
        return it->second();
    }
    auto close = expression.find(')', open);
    if (close == std::string_view::npos) throw unknown();
    auto name = expression.substr(0, open);
    auto indexes = expression.substr(open + 1, close - open - 1);
    auto index = [](std::string_view text) { return CInt(Variant(Trim(text))); };
    auto comma = indexes.find(',');
    if (comma == std::string_view::npos) {
        auto it = arrays_.find(name);
        if (it == arrays_.end()) throw unknown();
        return it->second(index(indexes));
    }
    auto it = arrays2_.find(name);
    if (it == arrays2_.end()) throw unknown();
    return it->second(index(indexes.substr(0, comma)), index(indexes.substr(comma + 1)));
}

std::vector<std::string> VarTable::Names() const {
    std::vector<std::string> names;
    for (const auto& [name, read] : scalars_)
        names.push_back(name);
    for (const auto& [name, read] : arrays_)
        names.push_back(name);
    for (const auto& [name, read] : arrays2_)
        names.push_back(name);
    return names;
}

Variant objectValue(const void* object) {
    return Variant(object ? "Object" : "Nothing");
}

void vars_detail::outOfRange() {
    throw VbError(vberr::SubscriptOutOfRange);
}
