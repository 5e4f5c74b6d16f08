#include "base/convert.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "base/vb_error.h"

namespace {

// The classic error number a call throws, 0 when it throws none.
template <class F>
int errorOf(F&& f) {
    try {
        f();
    } catch (const VbError& e) {
        return e.Number();
    }
    return 0;
}

}  // namespace

// Strict conversion

TEST(StrictConversion, PlainNumberText) {
    EXPECT_DOUBLE_EQ(CDbl(Variant("12.5")), 12.5);
    EXPECT_DOUBLE_EQ(CDbl(Variant("-3")), -3.0);
    EXPECT_DOUBLE_EQ(CDbl(Variant(".5")), 0.5);
    EXPECT_DOUBLE_EQ(CDbl(Variant("5.")), 5.0);
}

TEST(StrictConversion, BlanksAroundAreAllowed) {
    EXPECT_DOUBLE_EQ(CDbl(Variant("  42  ")), 42.0);
}

TEST(StrictConversion, CurrencySignAndSeparators) {
    EXPECT_DOUBLE_EQ(CDbl(Variant("$1,234.57")), 1234.57);
    EXPECT_DOUBLE_EQ(CDbl(Variant("$12.")), 12.0);
    EXPECT_DOUBLE_EQ(CDbl(Variant("$.5")), 0.5);
}

TEST(StrictConversion, SignBeforeOrAfterCurrencySign) {
    EXPECT_DOUBLE_EQ(CDbl(Variant("-$5")), -5.0);
    EXPECT_DOUBLE_EQ(CDbl(Variant("$-5")), -5.0);
}

TEST(StrictConversion, TrailingSign) {
    EXPECT_DOUBLE_EQ(CDbl(Variant("5-")), -5.0);
    EXPECT_DOUBLE_EQ(CDbl(Variant("5+")), 5.0);
}

TEST(StrictConversion, Exponent) {
    EXPECT_DOUBLE_EQ(CDbl(Variant("1.5E3")), 1500.0);
    EXPECT_DOUBLE_EQ(CDbl(Variant("2e-2")), 0.02);
}

TEST(StrictConversion, EmptyTextIsTypeMismatch) {
    EXPECT_EQ(errorOf([] { CDbl(Variant("")); }), 13);
    EXPECT_EQ(errorOf([] { CDbl(Variant("   ")); }), 13);
}

TEST(StrictConversion, NonNumericTextIsTypeMismatch) {
    EXPECT_EQ(errorOf([] { CDbl(Variant("abc")); }), 13);
    EXPECT_EQ(errorOf([] { CDbl(Variant("12.50 each")); }), 13);
    EXPECT_EQ(errorOf([] { CDbl(Variant("1.2.3")); }), 13);
    EXPECT_EQ(errorOf([] { CDbl(Variant(".")); }), 13);
    EXPECT_EQ(errorOf([] { CDbl(Variant("$")); }), 13);
    EXPECT_EQ(errorOf([] { CDbl(Variant("1e")); }), 13);
}

TEST(StrictConversion, SeparatorMustStandBetweenDigits) {
    EXPECT_EQ(errorOf([] { CDbl(Variant(",5")); }), 13);
    EXPECT_EQ(errorOf([] { CDbl(Variant("5,")); }), 13);
    EXPECT_EQ(errorOf([] { CDbl(Variant("1.2,5")); }), 13);
}

TEST(StrictConversion, NullIsInvalidUseOfNull) {
    EXPECT_EQ(errorOf([] { CDbl(Variant::Null()); }), 94);
    EXPECT_EQ(errorOf([] { CInt(Variant::Null()); }), 94);
    EXPECT_EQ(errorOf([] { CCur(Variant::Null()); }), 94);
}

TEST(StrictConversion, EmptyIsZero) {
    EXPECT_DOUBLE_EQ(CDbl(Variant()), 0.0);
    EXPECT_EQ(CInt(Variant()), 0);
    EXPECT_EQ(CLng(Variant()), 0);
}

TEST(StrictConversion, TrueIsMinusOne) {
    EXPECT_EQ(CInt(Variant(true)), -1);
    EXPECT_DOUBLE_EQ(CDbl(Variant(false)), 0.0);
}

TEST(StrictConversion, HugeNumberTextOverflows) {
    EXPECT_EQ(errorOf([] { CDbl(Variant("1e999")); }), 6);
}

TEST(StrictConversion, TinyNumberTextIsZero) {
    EXPECT_DOUBLE_EQ(CDbl(Variant("1e-999")), 0.0);
}

TEST(IntegerConversion, HalvesGoToEvenNeighbour) {
    EXPECT_EQ(CInt(Variant(2.5)), 2);
    EXPECT_EQ(CInt(Variant(3.5)), 4);
    EXPECT_EQ(CInt(Variant(-2.5)), -2);
    EXPECT_EQ(CInt(Variant("0.5")), 0);
    EXPECT_EQ(CInt(Variant(2.6)), 3);
}

TEST(IntegerConversion, OutsideSixteenBitsOverflows) {
    EXPECT_EQ(errorOf([] { CInt(Variant(32768)); }), 6);
    EXPECT_EQ(errorOf([] { CInt(Variant(-32769)); }), 6);
    EXPECT_EQ(errorOf([] { CInt(Variant(32767.5)); }), 6);
    EXPECT_EQ(CInt(Variant(32767)), 32767);
    EXPECT_EQ(CInt(Variant(-32768)), -32768);
}

TEST(IntegerConversion, TextWithCurrencySign) {
    EXPECT_EQ(CInt(Variant("$1,200")), 1200);
}

TEST(LongConversion, HalvesGoToEvenNeighbour) {
    EXPECT_EQ(CLng(Variant(2.5)), 2);
    EXPECT_EQ(CLng(Variant(3.5)), 4);
    EXPECT_EQ(CLng(Variant(-2.5)), -2);
}

TEST(LongConversion, OutsideThirtyTwoBitsOverflows) {
    EXPECT_EQ(errorOf([] { CLng(Variant(2147483648.0)); }), 6);
    EXPECT_EQ(CLng(Variant(2147483647.0)), 2147483647);
    EXPECT_EQ(CLng(Variant(-2147483648.0)), -2147483647 - 1);
}

TEST(CurrencyConversion, KeepsFourDecimals) {
    const Variant c = CCur(Variant("1.23456"));
    EXPECT_EQ(c.Type(), VarType::Currency);
    EXPECT_EQ(c.CurrencyScaled(), 12346);
}

TEST(CurrencyConversion, ReadsMaskedMoney) {
    EXPECT_EQ(CCur(Variant("$1,234.57")).CurrencyScaled(), 12345700);
}

TEST(CurrencyConversion, OutOfRangeOverflows) {
    EXPECT_EQ(errorOf([] { CCur(Variant(1e16)); }), 6);
}

TEST(BooleanConversion, NumbersAndWords) {
    EXPECT_TRUE(CBool(Variant(5)));
    EXPECT_FALSE(CBool(Variant(0.0)));
    EXPECT_TRUE(CBool(Variant("True")));
    EXPECT_FALSE(CBool(Variant("false")));
    EXPECT_TRUE(CBool(Variant("-1")));
    EXPECT_EQ(errorOf([] { CBool(Variant("yes")); }), 13);
}

TEST(NumericTest, TextThatConvertsIsNumeric) {
    EXPECT_TRUE(IsNumeric(Variant("$1,234.57")));
    EXPECT_TRUE(IsNumeric(Variant(" 12 ")));
    EXPECT_FALSE(IsNumeric(Variant("12 each")));
    EXPECT_FALSE(IsNumeric(Variant("")));
}

TEST(NumericTest, EmptyIsNumericNullIsNot) {
    EXPECT_TRUE(IsNumeric(Variant()));
    EXPECT_FALSE(IsNumeric(Variant::Null()));
}

TEST(NumericTest, NumbersAreNumericDatesAreNot) {
    EXPECT_TRUE(IsNumeric(Variant(3.5)));
    EXPECT_TRUE(IsNumeric(Variant(true)));
    EXPECT_FALSE(IsNumeric(Variant::Date(45000)));
}

// Prefix reading

TEST(PrefixReading, DollarSignGivesZero) {
    EXPECT_DOUBLE_EQ(Val("$5"), 0.0);
}

TEST(PrefixReading, TakesLeadingNumberOfText) {
    EXPECT_DOUBLE_EQ(Val("12.50 each"), 12.5);
}

TEST(PrefixReading, EmptyTextGivesZero) {
    EXPECT_DOUBLE_EQ(Val(""), 0.0);
}

TEST(PrefixReading, LeadingBlanksAreSkipped) {
    EXPECT_DOUBLE_EQ(Val("   7"), 7.0);
}

TEST(PrefixReading, SeparatorEndsTheNumber) {
    EXPECT_DOUBLE_EQ(Val("1,234"), 1.0);
}

TEST(PrefixReading, SignAndExponent) {
    EXPECT_DOUBLE_EQ(Val("-3.5kg"), -3.5);
    EXPECT_DOUBLE_EQ(Val("+4"), 4.0);
    EXPECT_DOUBLE_EQ(Val("1e3x"), 1000.0);
    EXPECT_DOUBLE_EQ(Val("2D2"), 200.0);
    EXPECT_DOUBLE_EQ(Val("5e"), 5.0);
}

TEST(PrefixReading, SecondPointEndsTheNumber) {
    EXPECT_DOUBLE_EQ(Val("1.2.3"), 1.2);
}

TEST(PrefixReading, LoneSignOrPointGivesZero) {
    EXPECT_DOUBLE_EQ(Val("-"), 0.0);
    EXPECT_DOUBLE_EQ(Val("."), 0.0);
    EXPECT_DOUBLE_EQ(Val(".5"), 0.5);
}

TEST(PrefixReading, LetterStartGivesZero) {
    EXPECT_DOUBLE_EQ(Val("abc12"), 0.0);
}

// Loose addition

TEST(LooseAddition, NumberAndNumericTextAdd) {
    const Variant sum = Add(Variant(5), Variant("2.5"));
    EXPECT_EQ(sum.Type(), VarType::Double);
    EXPECT_DOUBLE_EQ(sum.Number(), 7.5);
}

TEST(LooseAddition, NumberAndNonNumericTextIsTypeMismatch) {
    EXPECT_EQ(errorOf([] { Add(Variant(5), Variant("abc")); }), 13);
    EXPECT_EQ(errorOf([] { Add(Variant(""), Variant::Integer(1)); }), 13);
}

TEST(LooseAddition, TwoTextsAreJoined) {
    const Variant sum = Add(Variant("1"), Variant("2"));
    EXPECT_EQ(sum.Type(), VarType::String);
    EXPECT_EQ(sum.Str(), "12");
}

TEST(LooseAddition, TextAndEmptyGiveTheText) {
    EXPECT_EQ(Add(Variant("5"), Variant()), Variant("5"));
    EXPECT_EQ(Add(Variant(), Variant("abc")), Variant("abc"));
}

TEST(LooseAddition, NullOnEitherSideGivesNull) {
    EXPECT_TRUE(Add(Variant::Null(), Variant(5)).IsNull());
    EXPECT_TRUE(Add(Variant("x"), Variant::Null()).IsNull());
    EXPECT_TRUE(Add(Variant::Null(), Variant()).IsNull());
}

TEST(LooseAddition, EmptyAndEmptyIsIntegerZero) {
    EXPECT_EQ(Add(Variant(), Variant()), Variant::Integer(0));
}

TEST(LooseAddition, EmptyAndNumberIsTheNumber) {
    EXPECT_EQ(Add(Variant(), Variant::Long(9)), Variant::Long(9));
}

TEST(LooseAddition, IntegerOverflowBecomesLong) {
    const Variant sum = Add(Variant::Integer(32767), Variant::Integer(1));
    EXPECT_EQ(sum.Type(), VarType::Long);
    EXPECT_DOUBLE_EQ(sum.Number(), 32768.0);
    EXPECT_EQ(Add(Variant::Integer(2), Variant::Integer(3)), Variant::Integer(5));
}

TEST(LooseAddition, LongOverflowBecomesDouble) {
    const Variant sum = Add(Variant::Long(2147483647), Variant::Long(1));
    EXPECT_EQ(sum.Type(), VarType::Double);
    EXPECT_DOUBLE_EQ(sum.Number(), 2147483648.0);
}

TEST(LooseAddition, ResultIsTheWiderKind) {
    EXPECT_EQ(Add(Variant::Integer(1), Variant::Long(2)).Type(), VarType::Long);
    EXPECT_EQ(Add(Variant::Long(1), Variant::Single(0.5f)).Type(), VarType::Single);
    EXPECT_EQ(Add(Variant::Single(1), Variant(0.5)).Type(), VarType::Double);
    EXPECT_EQ(Add(Variant(true), Variant::Integer(1)), Variant::Integer(0));
}

TEST(LooseAddition, CurrencyStaysCurrencyWithWholeNumbers) {
    const Variant sum = Add(Variant::Currency(1.25), Variant::Long(2));
    EXPECT_EQ(sum.Type(), VarType::Currency);
    EXPECT_EQ(sum.CurrencyScaled(), 32500);
    EXPECT_EQ(Add(Variant::Currency(0.1), Variant::Currency(0.2)).CurrencyScaled(), 3000);
}

TEST(LooseAddition, CurrencyWithDoubleOrTextIsDouble) {
    EXPECT_EQ(Add(Variant::Currency(1.25), Variant(1.0)).Type(), VarType::Double);
    EXPECT_EQ(Add(Variant::Currency(1.25), Variant("1")).Type(), VarType::Double);
}

TEST(LooseAddition, DatePlusDaysIsADate) {
    const Variant sum = Add(Variant::Date(DateSerial(2024, 2, 28)), Variant::Integer(2));
    EXPECT_EQ(sum.Type(), VarType::Date);
    EXPECT_DOUBLE_EQ(sum.Number(), DateSerial(2024, 3, 1));
}

TEST(LooseAddition, MaskedMoneyTextAddsToANumber) {
    EXPECT_DOUBLE_EQ(Add(Variant("$1,234.57"), Variant(1.0)).Number(), 1235.57);
}

// Text form

TEST(TextForm, WholeAndFractionalNumbers) {
    EXPECT_EQ(CStr(Variant(5)), "5");
    EXPECT_EQ(CStr(Variant(12.25)), "12.25");
    EXPECT_EQ(CStr(Variant(-3.0)), "-3");
    EXPECT_EQ(CStr(Variant::Integer(-7)), "-7");
}

TEST(TextForm, LeadingZeroBeforeThePoint) {
    EXPECT_EQ(CStr(Variant(0.5)), "0.5");
    EXPECT_EQ(CStr(Variant(-0.25)), "-0.25");
}

TEST(TextForm, FifteenSignificantDigits) {
    EXPECT_EQ(CStr(Variant(0.1 + 0.2)), "0.3");
    EXPECT_EQ(CStr(Variant(1.0 / 3.0)), "0.333333333333333");
    EXPECT_EQ(CStr(Variant(123456789012345.0)), "123456789012345");
}

TEST(TextForm, ExponentFormForVeryLargeAndSmall) {
    EXPECT_EQ(CStr(Variant(1e16)), "1E+16");
    EXPECT_EQ(CStr(Variant(1.5e-7)), "1.5E-07");
    EXPECT_EQ(CStr(Variant(0.0001)), "0.0001");
}

TEST(TextForm, SingleHasSevenDigits) {
    EXPECT_EQ(CStr(Variant::Single(0.1f)), "0.1");
    EXPECT_EQ(CStr(Variant::Single(1.0f / 3.0f)), "0.3333333");
}

TEST(TextForm, CurrencyHasAtMostFourDecimals) {
    EXPECT_EQ(CStr(Variant::Currency(12.5)), "12.5");
    EXPECT_EQ(CStr(Variant::Currency(1.23456)), "1.2346");
    EXPECT_EQ(CStr(Variant::Currency(-0.05)), "-0.05");
    EXPECT_EQ(CStr(Variant::Currency(3)), "3");
}

TEST(TextForm, BooleanWords) {
    EXPECT_EQ(CStr(Variant(true)), "True");
    EXPECT_EQ(CStr(Variant(false)), "False");
}

TEST(TextForm, DateIsTheShortDate) {
    EXPECT_EQ(CStr(Variant::Date(DateSerial(2024, 3, 5))), "3/5/2024");
}

TEST(TextForm, EmptyIsEmptyTextNullFails) {
    EXPECT_EQ(CStr(Variant()), "");
    EXPECT_EQ(errorOf([] { CStr(Variant::Null()); }), 94);
}

TEST(TextForm, TextBoxShowsNullAsEmpty) {
    EXPECT_EQ(textOf(Variant::Null()), "");
    EXPECT_EQ(textOf(Variant(2.5)), "2.5");
    EXPECT_EQ(textOf(Variant("abc")), "abc");
}

TEST(LooseAddition, ADatePushedPastTheLastDayIsOverflow) {
    EXPECT_EQ(errorOf([] { Add(Variant::Date(DateSerial(9999, 12, 31)), Variant::Integer(1)); }),
              6);
    EXPECT_EQ(errorOf([] { Add(Variant::Date(45000), Variant::Double(1e300)); }), 6);
    EXPECT_EQ(errorOf([] { Add(Variant::Date(45000), Variant::Double(-1e6)); }), 6);
    EXPECT_EQ(errorOf([] { Add(Variant::Date(45000), Variant::Double(1e6)); }), 0);
}

TEST(TextForm, ADateOutOfRangeIsOverflow) {
    EXPECT_EQ(errorOf([] { CStr(Variant::Date(1e300)); }), 6);
    EXPECT_EQ(errorOf([] { CStr(Variant::Date(-1e7)); }), 6);
}

TEST(CompareListed, OrdersNumbersByValueAndOtherTextsIgnoringCase) {
    EXPECT_LT(compareListed("2", "10"), 0);
    EXPECT_GT(compareListed("10", "9.5"), 0);
    EXPECT_EQ(compareListed("2.0", "2"), 0);
    EXPECT_EQ(compareListed("Beads", "bEADS"), 0);
    EXPECT_LT(compareListed("a3", "B1"), 0);
    // A number beside a text that is none compares as text.
    EXPECT_LT(compareListed("10", "9a"), 0);
    EXPECT_GT(compareListed("9a", "10"), 0);
}
