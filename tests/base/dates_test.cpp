#include "base/dates.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/variant.h"
#include "base/vb_error.h"
#include "vb_expect.h"

TEST(DateSerials, EpochIsDayZero) {
    EXPECT_DOUBLE_EQ(DateSerial(1899, 12, 30), 0.0);
}

TEST(DateSerials, KnownDays) {
    EXPECT_DOUBLE_EQ(DateSerial(1900, 1, 1), 2.0);
    EXPECT_DOUBLE_EQ(DateSerial(2000, 1, 1), 36526.0);
    EXPECT_DOUBLE_EQ(DateSerial(2024, 1, 1), 45292.0);
}

TEST(DateSerials, MonthsAndDaysRollOver) {
    EXPECT_DOUBLE_EQ(DateSerial(2023, 13, 1), DateSerial(2024, 1, 1));
    EXPECT_DOUBLE_EQ(DateSerial(2024, 3, 0), DateSerial(2024, 2, 29));
    EXPECT_DOUBLE_EQ(DateSerial(2024, 0, 1), DateSerial(2023, 12, 1));
}

TEST(DateSerials, TwoDigitYearsAreWindowed) {
    EXPECT_DOUBLE_EQ(DateSerial(24, 1, 1), DateSerial(2024, 1, 1));
    EXPECT_DOUBLE_EQ(DateSerial(95, 1, 1), DateSerial(1995, 1, 1));
}

TEST(DateSerials, SplitGivesTheCalendarDay) {
    int y = 0, m = 0, d = 0;
    splitDate(DateSerial(2024, 2, 29) + 0.75, y, m, d);
    EXPECT_EQ(y, 2024);
    EXPECT_EQ(m, 2);
    EXPECT_EQ(d, 29);
    splitDate(-1.0, y, m, d);
    EXPECT_EQ(y, 1899);
    EXPECT_EQ(m, 12);
    EXPECT_EQ(d, 29);
}

TEST(DateFormats, NotesDate) {
    EXPECT_EQ(formatDate(DateSerial(2009, 7, 4), "MM/DD/YY"), "07/04/09");
}

TEST(DateFormats, OfferedDate) {
    EXPECT_EQ(formatDate(DateSerial(2009, 7, 4), "MM/DD/YYYY"), "07/04/2009");
}

TEST(DateFormats, ShortDateHasNoLeadingZeros) {
    EXPECT_EQ(shortDate(DateSerial(2009, 7, 4)), "7/4/2009");
    EXPECT_EQ(formatDate(DateSerial(2009, 7, 4), "Short Date"), "7/4/2009");
}

TEST(DateFormats, TimeIsIgnoredByTheMasks) {
    EXPECT_EQ(formatDate(DateSerial(2009, 7, 4) + 0.99, "MM/DD/YY"), "07/04/09");
}

TEST(DateFormats, UnknownMaskFails) {
    EXPECT_THROW(formatDate(1, "DD.MM.YYYY"), VbError);
}

TEST(DateFormats, GeneralDateShowsTheTimeWhenThereIsOne) {
    EXPECT_EQ(generalDate(DateSerial(2024, 3, 5)), "3/5/2024");
    EXPECT_EQ(generalDate(DateSerial(2024, 3, 5) + 0.5), "3/5/2024 12:00:00 PM");
    EXPECT_EQ(generalDate(DateSerial(2024, 3, 5) + 0.25), "3/5/2024 6:00:00 AM");
    EXPECT_EQ(generalDate(0), "12:00:00 AM");
}

TEST(DateParsing, USShortDate) {
    double serial = 0;
    ASSERT_TRUE(parseDate("7/4/2009", serial));
    EXPECT_DOUBLE_EQ(serial, DateSerial(2009, 7, 4));
}

TEST(DateParsing, TwoDigitYearsBelowThirtyAreThisCentury) {
    double serial = 0;
    ASSERT_TRUE(parseDate("07/04/09", serial));
    EXPECT_DOUBLE_EQ(serial, DateSerial(2009, 7, 4));
    ASSERT_TRUE(parseDate("01/02/29", serial));
    EXPECT_DOUBLE_EQ(serial, DateSerial(2029, 1, 2));
}

TEST(DateParsing, TwoDigitYearsFromThirtyAreLastCentury) {
    double serial = 0;
    ASSERT_TRUE(parseDate("01/02/30", serial));
    EXPECT_DOUBLE_EQ(serial, DateSerial(1930, 1, 2));
    ASSERT_TRUE(parseDate("12/31/99", serial));
    EXPECT_DOUBLE_EQ(serial, DateSerial(1999, 12, 31));
}

TEST(DateParsing, IsoDate) {
    double serial = 0;
    ASSERT_TRUE(parseDate(" 2024-02-29 ", serial));
    EXPECT_DOUBLE_EQ(serial, DateSerial(2024, 2, 29));
}

TEST(DateParsing, DateWithTime) {
    double serial = 0;
    ASSERT_TRUE(parseDate("3/5/2024 6:00:00 PM", serial));
    EXPECT_DOUBLE_EQ(serial, DateSerial(2024, 3, 5) + 0.75);
}

TEST(DateParsing, GeneralDateReadsBack) {
    const double original = DateSerial(2024, 3, 5) + (13 * 3600 + 4 * 60 + 5) / 86400.0;
    double serial = 0;
    ASSERT_TRUE(parseDate(generalDate(original), serial));
    EXPECT_NEAR(serial, original, 1e-9);
}

TEST(DateParsing, ImpossibleDaysAreRejected) {
    double serial = 0;
    EXPECT_FALSE(parseDate("2/30/2024", serial));
    EXPECT_FALSE(parseDate("13/1/2024", serial));
    EXPECT_FALSE(parseDate("2023-02-29", serial));
}

TEST(DateParsing, NonDatesAreRejected) {
    double serial = 0;
    EXPECT_FALSE(parseDate("", serial));
    EXPECT_FALSE(parseDate("abc", serial));
    EXPECT_FALSE(parseDate("12", serial));
    EXPECT_FALSE(parseDate("7/4/2009x", serial));
    EXPECT_FALSE(parseDate("7/4", serial));
}

TEST(DateConversion, DateTextIsParsed) {
    EXPECT_DOUBLE_EQ(CDate(Variant("7/4/2009")), DateSerial(2009, 7, 4));
}

TEST(DateConversion, NumbersAreSerials) {
    EXPECT_DOUBLE_EQ(CDate(Variant(36526)), 36526.0);
    EXPECT_DOUBLE_EQ(CDate(Variant::Date(1.5)), 1.5);
}

TEST(DateConversion, NonDateTextIsTypeMismatch) {
    try {
        CDate(Variant("tomorrow"));
        FAIL() << "no fault";
    } catch (const VbError& e) {
        EXPECT_EQ(e.Number(), 13);
    }
}

TEST(DateConversion, NullIsInvalidUseOfNull) {
    try {
        CDate(Variant::Null());
        FAIL() << "no fault";
    } catch (const VbError& e) {
        EXPECT_EQ(e.Number(), 94);
    }
}

TEST(DateRange, YearsOneHundredToNineThousandNineHundredNinetyNineAreDates) {
    EXPECT_EQ(formatDate(DateSerial(100, 1, 1), "MM/DD/YYYY"), "01/01/100");
    EXPECT_EQ(formatDate(DateSerial(9999, 12, 31) + 0.99, "MM/DD/YYYY"), "12/31/9999");
    EXPECT_EQ(shortDate(DateSerial(100, 1, 1) - 0.5), "1/1/100");
}

TEST(DateRange, ASerialOutsideIsOverflowWhereverItIsReadAsADate) {
    for (double serial :
         {DateSerial(9999, 12, 31) + 1, DateSerial(100, 1, 1) - 1, 1e300, -1e300,
          std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        SCOPED_TRACE(serial);
        EXPECT_VBERROR(formatDate(serial, "MM/DD/YY"), 6);
        EXPECT_VBERROR(shortDate(serial), 6);
        EXPECT_VBERROR(generalDate(serial), 6);
        EXPECT_VBERROR(CDate(Variant::Double(serial)), 6);
    }
}
