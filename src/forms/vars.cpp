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

bool VarTable::Has(std::string_view expression) const {
    auto open = expression.find('(');
    if (open == std::string_view::npos) return scalars_.count(expression) > 0;
    return arrays_.count(expression.substr(0, open)) > 0;
}

Variant VarTable::Get(std::string_view expression) const {
    auto open = expression.find('(');
    if (open == std::string_view::npos) {
        auto it = scalars_.find(expression);
        if (it == scalars_.end()) throw VbError(vberr::SubscriptOutOfRange, "no variable " + std::string(expression));
        return it->second();
    }
    auto it = arrays_.find(expression.substr(0, open));
    auto close = expression.find(')', open);
    if (it == arrays_.end() || close == std::string_view::npos)
        throw VbError(vberr::SubscriptOutOfRange, "no variable " + std::string(expression));
    return it->second(CInt(Variant(Trim(expression.substr(open + 1, close - open - 1)))));
}
