#include "base/variant.h"

#include <gtest/gtest.h>

TEST(VariantValue, NullIsNotEmptyText) {
    EXPECT_FALSE(Variant::Null() == Variant(""));
    EXPECT_TRUE(Variant::Null().IsNull());
    EXPECT_FALSE(Variant("").IsNull());
}

TEST(VariantValue, NullIsNotZero) {
    EXPECT_FALSE(Variant::Null() == Variant(0));
    EXPECT_FALSE(Variant::Null() == Variant::Integer(0));
}

TEST(VariantValue, NullEqualsNullAndEmptyEqualsEmpty) {
    EXPECT_TRUE(Variant::Null() == Variant::Null());
    EXPECT_TRUE(Variant() == Variant());
    EXPECT_FALSE(Variant() == Variant::Null());
}

TEST(VariantValue, EmptyIsNotNull) {
    Variant v;
    EXPECT_TRUE(v.IsEmpty());
    EXPECT_FALSE(v.IsNull());
    EXPECT_EQ(v.Type(), VarType::Empty);
}

TEST(VariantValue, CurrencyKeepsFourDecimals) {
    const Variant c = Variant::Currency(12.34567);
    EXPECT_EQ(c.Type(), VarType::Currency);
    EXPECT_EQ(c.CurrencyScaled(), 123457);
    EXPECT_DOUBLE_EQ(c.Number(), 12.3457);
}

TEST(VariantValue, CurrencyFromScaledIsExact) {
    const Variant c = Variant::CurrencyFromScaled(10001);
    EXPECT_DOUBLE_EQ(c.Number(), 1.0001);
    EXPECT_TRUE(c == Variant::Currency(1.0001));
}

TEST(VariantValue, EqualityNeedsTheSameKind) {
    EXPECT_FALSE(Variant::Integer(5) == Variant::Long(5));
    EXPECT_FALSE(Variant(5.0) == Variant("5"));
    EXPECT_TRUE(Variant::Long(5) == Variant(5));
    EXPECT_TRUE(Variant("abc") == Variant(std::string("abc")));
    EXPECT_FALSE(Variant("abc") == Variant("ABC"));
}

TEST(VariantValue, TrueIsMinusOne) {
    EXPECT_DOUBLE_EQ(Variant(true).Number(), -1.0);
    EXPECT_DOUBLE_EQ(Variant(false).Number(), 0.0);
    EXPECT_EQ(Variant(true).Type(), VarType::Boolean);
}

TEST(VariantValue, IntegerHoldsSixteenBits) {
    EXPECT_EQ(Variant::Integer(-32768).Number(), -32768);
    EXPECT_EQ(Variant::Integer(32767).Type(), VarType::Integer);
}

TEST(VariantValue, DateIsANumberKindTextIsNot) {
    EXPECT_TRUE(Variant::Date(45000).IsNumberKind());
    EXPECT_TRUE(Variant(true).IsNumberKind());
    EXPECT_FALSE(Variant("5").IsNumberKind());
    EXPECT_FALSE(Variant().IsNumberKind());
    EXPECT_FALSE(Variant::Null().IsNumberKind());
}

TEST(VariantValue, TypeNamesAreTheClassicOnes) {
    EXPECT_STREQ(TypeName(VarType::Null), "Null");
    EXPECT_STREQ(TypeName(VarType::Currency), "Currency");
    EXPECT_STREQ(TypeName(Variant("x").Type()), "String");
}
