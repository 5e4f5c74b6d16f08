#include "base/format.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "base/vb_error.h"
#include "vb_expect.h"

namespace {
constexpr const char* kMoney = "$#,###.##";
constexpr const char* kMoney00 = "$#,###.00";
}  // namespace

TEST(MoneyMask, WholeNumberKeepsThePoint) {
    EXPECT_EQ(Format(Variant(12), kMoney), "$12.");
}

TEST(MoneyMask, NoLeadingZero) {
    EXPECT_EQ(Format(Variant(0.5), kMoney), "$.5");
}

TEST(MoneyMask, ThousandsAndRounding) {
    EXPECT_EQ(Format(Variant(1234.567), kMoney), "$1,234.57");
}

TEST(MoneyMask, ZeroIsDollarAndPoint) {
    EXPECT_EQ(Format(Variant(0), kMoney), "$.");
}

TEST(MoneyMask, NoTrailingZeros) {
    EXPECT_EQ(Format(Variant(12.5), kMoney), "$12.5");
    EXPECT_EQ(Format(Variant(12.999), kMoney), "$13.");
}

TEST(MoneyMask, HalfRoundsUpOnTheDecimalValue) {
    EXPECT_EQ(Format(Variant(1.005), kMoney), "$1.01");
    EXPECT_EQ(Format(Variant(0.125), kMoney), "$.13");
    EXPECT_EQ(Format(Variant(2.675), kMoney), "$2.68");
}

TEST(MoneyMask, MillionsGetTwoSeparators) {
    EXPECT_EQ(Format(Variant(1234567.891), kMoney), "$1,234,567.89");
}

TEST(MoneyMask, NegativeGetsMinusBeforeDollar) {
    EXPECT_EQ(Format(Variant(-12.5), kMoney), "-$12.5");
}

TEST(MoneyMask, NumericTextIsFormattedAsNumber) {
    EXPECT_EQ(Format(Variant("1234.5"), kMoney), "$1,234.5");
    EXPECT_EQ(Format(Variant("$1,234.57"), kMoney), "$1,234.57");
}

TEST(MoneyMask, NonNumericTextIsUnchanged) {
    EXPECT_EQ(Format(Variant("call us"), kMoney), "call us");
}

TEST(MoneyMask, NullAndEmptyGiveEmptyText) {
    EXPECT_EQ(Format(Variant::Null(), kMoney), "");
    EXPECT_EQ(Format(Variant(), kMoney), "");
}

TEST(MoneyMask, CurrencyValueIsExact) {
    EXPECT_EQ(Format(Variant::Currency(19.995), kMoney), "$20.");
    EXPECT_EQ(Format(Variant::Currency(1234.5), kMoney), "$1,234.5");
}

TEST(MoneyMask, CurrencyKeepsItsSmallDecimalsAndGroupsLargeAmounts) {
    EXPECT_EQ(Format(Variant::Currency(1234567.0502), "$ #,###.00"), "$ 1,234,567.05");
    EXPECT_EQ(Format(Variant::Currency(-0.0501), "$ #,###.00"), "-$ .05");
    EXPECT_EQ(Format(Variant::Currency(100), "$ #,###.00"), "$ 100.00");
    EXPECT_EQ(Format(Variant::Currency(0), "$ #,###.00"), "$ .00");
}

TEST(MoneyMaskTwoDecimals, WholeNumber) {
    EXPECT_EQ(Format(Variant(12), kMoney00), "$12.00");
}

TEST(MoneyMaskTwoDecimals, NoLeadingZero) {
    EXPECT_EQ(Format(Variant(0.5), kMoney00), "$.50");
}

TEST(MoneyMaskTwoDecimals, Zero) {
    EXPECT_EQ(Format(Variant(0), kMoney00), "$.00");
}

TEST(MoneyMaskTwoDecimals, Rounding) {
    EXPECT_EQ(Format(Variant(1234.567), kMoney00), "$1,234.57");
    EXPECT_EQ(Format(Variant(9999.999), kMoney00), "$10,000.00");
}

TEST(MoneyMaskWithBlank, BlankAfterDollar) {
    EXPECT_EQ(Format(Variant(12), "$ #,###.00"), "$ 12.00");
    EXPECT_EQ(Format(Variant(1500), "$ #,###.00"), "$ 1,500.00");
}

TEST(ZeroPaddedMask, PadsToSixDigits) {
    EXPECT_EQ(Format(Variant(42), "000000"), "000042");
}

TEST(ZeroPaddedMask, LongerNumberIsKept) {
    EXPECT_EQ(Format(Variant(1234567), "000000"), "1234567");
}

TEST(ZeroPaddedMask, HalfRoundsUp) {
    EXPECT_EQ(Format(Variant(2.5), "000000"), "000003");
    EXPECT_EQ(Format(Variant(2.4), "000000"), "000002");
}

TEST(ZeroPaddedMask, NumericText) {
    EXPECT_EQ(Format(Variant("17"), "000000"), "000017");
}

TEST(DateMasks, TwoDigitYear) {
    EXPECT_EQ(Format(Variant::Date(DateSerial(2024, 3, 5)), "MM/DD/YY"), "03/05/24");
}

TEST(DateMasks, FourDigitYear) {
    EXPECT_EQ(Format(Variant::Date(DateSerial(2024, 3, 5)), "MM/DD/YYYY"), "03/05/2024");
}

TEST(DateMasks, ShortDate) {
    EXPECT_EQ(Format(Variant::Date(DateSerial(2024, 11, 25)), "Short Date"), "11/25/2024");
}

TEST(DateMasks, DateTextIsReformatted) {
    EXPECT_EQ(Format(Variant("3/5/2024"), "MM/DD/YYYY"), "03/05/2024");
}

TEST(DateMasks, NullGivesEmptyText) {
    EXPECT_EQ(Format(Variant::Null(), "MM/DD/YY"), "");
}

TEST(UnknownMask, IsInvalidProcedureCall) {
    try {
        Format(Variant(1), "Fancy");
        FAIL() << "no fault";
    } catch (const VbError& e) {
        EXPECT_EQ(e.Number(), 5);
    }
}

TEST(DateMask, ANumberBeyondTheLastDateIsOverflow) {
    EXPECT_VBERROR(Format(Variant("1e300"), "MM/DD/YYYY"), 6);
    EXPECT_VBERROR(Format(Variant::Double(-1e300), "MM/DD/YY"), 6);
    EXPECT_EQ(Format(Variant("2958465"), "MM/DD/YYYY"), "12/31/9999");
}
