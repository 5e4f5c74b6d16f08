#pragma once

#include <string>

#include "base/variant.h"

// Money on the stock forms: a box's text read by the strict conversion into the Currency
// kind, so that sums stay exact in whole ten-thousandths; sums use the loose addition.
Variant money(const std::string& text);
Variant moneyLess(const Variant& a, const Variant& b);  // a - b
Variant moneyTimes(const Variant& a, double factor);
// Division by zero is the fault 11.
Variant moneyOver(const Variant& a, double divisor);

// A stage value of the order hand-over (`OrderOpen`) is n: an empty stage is 0, a text
// that is no number is no stage.
bool stageIs(const Variant& stage, int n);
