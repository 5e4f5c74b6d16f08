#include "shell/products_part.h"

#include "shell/products.h"

VarTable& ProductsPart::Vars() {
    return P.Vars();
}

Control& ProductsPart::operator()(std::string_view name, int index) const {
    return P(name, index);
}

void ProductsPart::onClick(std::string_view control, std::function<void()> procedure) {
    P.On(control, "Click", [procedure = std::move(procedure)](EventArgs&) { procedure(); });
}
