// What the file makes of a written value, told without reading it back.
#include "store/write_rules.h"

#include <gtest/gtest.h>

namespace {

StoredValue text(const std::string& t) {
    return {StoredValue::Type::Text, 0, 0, t};
}

StoredValue real(double r) {
    return {StoredValue::Type::Real, 0, r, {}};
}

StoredValue whole(std::int64_t i) {
    return {StoredValue::Type::Integer, i, 0, {}};
}

std::string shown(const std::optional<StoredValue>& v) {
    if (!v) return "unknown";
    switch (v->type) {
        case StoredValue::Type::Null:
            return "null";
        case StoredValue::Type::Integer:
            return "int " + std::to_string(v->i);
        case StoredValue::Type::Real:
            return "real " + std::to_string(v->r);
        case StoredValue::Type::Text:
            return "text " + v->text;
    }
    return "";
}

TEST(WriteRules, TheDeclaredTypeGivesTheColumnsAffinityAsTheEngineReadsIt) {
    EXPECT_EQ(affinityOf("INTEGER"), Affinity::Integer);
    EXPECT_EQ(affinityOf("bigint"), Affinity::Integer);
    EXPECT_EQ(affinityOf("LONGTEXT"), Affinity::Text);
    EXPECT_EQ(affinityOf("VARCHAR(20)"), Affinity::Text);
    EXPECT_EQ(affinityOf(""), Affinity::Blob);
    EXPECT_EQ(affinityOf("DOUBLE"), Affinity::Real);
    EXPECT_EQ(affinityOf("MONEY"), Affinity::Numeric);
    EXPECT_EQ(affinityOf("YESNO"), Affinity::Numeric);
    EXPECT_EQ(affinityOf("LONG"), Affinity::Numeric);
    EXPECT_EQ(affinityOf("DATETIME"), Affinity::Numeric);
}

TEST(WriteRules, AWholeRealBecomesAWholeNumberInANumericColumnAndAnIntegerARealInARealOne) {
    EXPECT_EQ(shown(storedAfter(Affinity::Numeric, real(5.0))), "int 5");
    EXPECT_EQ(shown(storedAfter(Affinity::Numeric, real(-0.0))), "int 0");
    EXPECT_EQ(shown(storedAfter(Affinity::Numeric, real(2.5))), "real 2.500000");
    EXPECT_EQ(shown(storedAfter(Affinity::Integer, real(1e15))), "int 1000000000000000");
    EXPECT_EQ(shown(storedAfter(Affinity::Numeric, real(1e19))), "unknown");
    EXPECT_EQ(shown(storedAfter(Affinity::Real, whole(7))), "real 7.000000");
    EXPECT_EQ(shown(storedAfter(Affinity::Text, text("12"))), "text 12");
    EXPECT_EQ(shown(storedAfter(Affinity::Blob, text("12"))), "text 12");
    EXPECT_EQ(shown(storedAfter(Affinity::Real, StoredValue{})), "null");
}

TEST(WriteRules, ATextThatMayTurnIntoANumberOrANumberIntoATextIsLeftToReadingBack) {
    EXPECT_EQ(shown(storedAfter(Affinity::Numeric, text("1.50"))), "unknown");
    EXPECT_EQ(shown(storedAfter(Affinity::Text, whole(3))), "unknown");
    EXPECT_EQ(shown(storedAfter(Affinity::Text, real(3.5))), "unknown");
}

TEST(WriteRules, OnlyALiteralDefaultIsTold) {
    EXPECT_EQ(shown(literalDefault(StoredValue{})), "null");
    EXPECT_EQ(shown(literalDefault(text("NULL"))), "null");
    EXPECT_EQ(shown(literalDefault(text("0"))), "int 0");
    EXPECT_EQ(shown(literalDefault(text("-3"))), "int -3");
    EXPECT_EQ(shown(literalDefault(text("'none'"))), "text none");
    EXPECT_EQ(shown(literalDefault(text("'it''s'"))), "unknown");
    EXPECT_EQ(shown(literalDefault(text("CURRENT_TIMESTAMP"))), "unknown");
    EXPECT_EQ(shown(literalDefault(text("(1+2)"))), "unknown");
    EXPECT_EQ(shown(literalDefault(text("0.5"))), "unknown");
    EXPECT_EQ(shown(literalDefault(text("--1"))), "unknown");
}

TEST(WriteRules, AnAddedRowTakesTheDefaultsOfTheColumnsNotWrittenAndNoneWhenOneIsNotPlain) {
    WriteRules rules;
    rules.columns = {{Affinity::Integer, true, StoredValue{}},
                     {Affinity::Text, false, text("none")},
                     {Affinity::Numeric, false, std::nullopt}};
    std::vector<StoredValue> row{text("from an earlier row")};
    ASSERT_TRUE(rules.added({2}, {real(4.0)}, row));
    ASSERT_EQ(row.size(), 3u);
    EXPECT_EQ(shown(row[0]), "int 0");
    EXPECT_EQ(shown(row[1]), "text none");
    EXPECT_EQ(shown(row[2]), "int 4");
    EXPECT_FALSE(rules.added({1}, {text("x")}, row));
    EXPECT_FALSE(rules.updated({2}, {text("4")}));
    EXPECT_EQ(shown(rules.updated({1}, {text("x")})->front()), "text x");
}

}  // namespace
