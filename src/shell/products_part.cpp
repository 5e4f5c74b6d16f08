#include "shell/products_part.h"

#include "shell/products.h"

VarTable& ProductsPart::Vars() {
    return P.Vars();
}

Control& ProductsPart::operator()(std::string_view name, int index) const {
    return P(name, index);
}
