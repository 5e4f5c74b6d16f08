#include <gtest/gtest.h>

#include "base/convert.h"
#include "base/format.h"
#include "stock/money.h"
#include "vb_expect.h"

TEST(Money, AHundredLinesOfTenCentsMakeTenExactly) {
    Variant sum = money("0");
    for (int i = 0; i < 100; ++i)
        sum = Add(sum, money("0.10"));
    EXPECT_EQ(sum, money("10"));
    EXPECT_EQ(Format(sum, "$#,###.##"), "$10.");
}

TEST(Money, AMaskedTextReadsBackAsItsNumber) {
    EXPECT_EQ(money("$1,234.5"), Variant::Currency(1234.5));
    EXPECT_EQ(money("$.5"), Variant::Currency(0.5));
}

TEST(Money, TextThatIsNoNumberIsATypeMismatch) {
    EXPECT_VBERROR(money("ten"), 13);
    EXPECT_VBERROR(money(""), 13);
}

TEST(Money, DivisionByNoQuantityIsAFault) {
    EXPECT_VBERROR(moneyOver(money("10"), 0), 11);
    EXPECT_EQ(moneyOver(money("103.5"), 4), Variant::Currency(25.875));
}

TEST(Money, DifferenceAndProductStayInTenThousandths) {
    EXPECT_EQ(moneyLess(money("0.3"), money("0.1")), Variant::Currency(0.2));
    EXPECT_EQ(moneyTimes(money("50"), 0.08), Variant::Currency(4));
}

TEST(Money, StagesAreNumbersAndAnEmptyStageIsNought) {
    EXPECT_TRUE(stageIs(Variant::Integer(2), 2));
    EXPECT_TRUE(stageIs(Variant(), 0));
    EXPECT_FALSE(stageIs(Variant(""), 0));
    EXPECT_FALSE(stageIs(Variant::Integer(7), 1));
}
