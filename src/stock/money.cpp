#include "stock/money.h"

#include <cmath>

#include "base/convert.h"
#include "base/vb_error.h"

namespace {

constexpr int DivisionByZero = 11;

Variant scaled(double tenThousandths) {
    // Halves go to the even neighbour, as the Currency kind rounds.
    return Variant::CurrencyFromScaled(static_cast<std::int64_t>(std::nearbyint(tenThousandths)));
}

}  // namespace

Variant money(const std::string& text) {
    return CCur(Variant(text));
}

Variant moneyLess(const Variant& a, const Variant& b) {
    return Variant::CurrencyFromScaled(CCur(a).CurrencyScaled() - CCur(b).CurrencyScaled());
}

Variant moneyTimes(const Variant& a, double factor) {
    return scaled(static_cast<double>(CCur(a).CurrencyScaled()) * factor);
}

Variant moneyOver(const Variant& a, double divisor) {
    if (divisor == 0) throw VbError(DivisionByZero, "Division by zero");
    return scaled(static_cast<double>(CCur(a).CurrencyScaled()) / divisor);
}

bool stageIs(const Variant& stage, int n) {
    return IsNumeric(stage) && CDbl(stage) == n;
}
