#include "base/trap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/vb_error.h"

TEST(TrapStatements, FailingStatementIsReportedWithTheTag) {
    std::vector<std::string> reported;
    Trap on("(Form) Products::Sub cmdNext_Click",
            [&](const std::string& tag) { reported.push_back(tag); });
    const bool ok = on([] { throw VbError(vberr::NoCurrentRecord); });
    EXPECT_FALSE(ok);
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0], "(Form) Products::Sub cmdNext_Click");
}

TEST(TrapStatements, NextStatementRunsAfterAFailure) {
    int reports = 0;
    int value = 0;
    Trap on("tag", [&](const std::string&) { ++reports; });
    on([&] { throw VbError(vberr::TypeMismatch); });
    const bool ok = on([&] { value = 7; });
    EXPECT_TRUE(ok);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(reports, 1);
}

TEST(TrapStatements, ErrHoldsTheNumberAndDescription) {
    Err().Clear();
    Trap on("tag", [](const std::string&) {});
    on([] { throw VbError(vberr::FileNotFound); });
    EXPECT_EQ(Err().Number, 53);
    EXPECT_EQ(Err().Description, "File not found");
}

TEST(TrapStatements, FailedStatementLeavesItsTargetUnchanged) {
    int target = 1;
    Trap on = Trap::Ignoring();
    on([&] {
        const int computed = 2;
        if (computed) throw VbError(vberr::Overflow);
        target = computed;
    });
    EXPECT_EQ(target, 1);
}

TEST(TrapStatements, IgnoringTrapCallsNoReporterButKeepsErr) {
    Err().Clear();
    Trap on = Trap::Ignoring();
    const bool ok = on([] { throw VbError(vberr::Overflow); });
    EXPECT_FALSE(ok);
    EXPECT_EQ(Err().Number, 6);
}

TEST(TrapStatements, ReporterSeesTheFaultInErr) {
    Err().Clear();
    int seen = 0;
    Trap on("tag", [&](const std::string&) { seen = Err().Number; });
    on([] { throw VbError(vberr::PathNotFound); });
    EXPECT_EQ(seen, 76);
}

TEST(TrapStatements, OtherExceptionsAreTrappedToo) {
    Err().Clear();
    int reports = 0;
    Trap on("tag", [&](const std::string&) { ++reports; });
    EXPECT_FALSE(on([] { throw std::runtime_error("boom"); }));
    EXPECT_EQ(reports, 1);
    EXPECT_NE(Err().Number, 0);
}

TEST(TrapStatements, AFailingReporterDoesNotEndTheProcedure) {
    Trap on("tag", [](const std::string&) { throw VbError(vberr::Overflow); });
    EXPECT_NO_THROW(on([] { throw VbError(vberr::TypeMismatch); }));
    int after = 0;
    on([&] { after = 1; });
    EXPECT_EQ(after, 1);
}

TEST(TrapHandled, TheHandlerSeesTheNumberAndResumesAtTheNextStatement) {
    std::vector<int> seen;
    int value = 0;
    Trap on = Trap::Handled([&](int number) {
        seen.push_back(number);
        return Trap::Resume::Next;
    });
    EXPECT_FALSE(on([] { throw VbError(vberr::NoCurrentRecord); }));
    EXPECT_TRUE(on([&] { value = 1; }));
    EXPECT_EQ(seen, std::vector<int>{3021});
    EXPECT_EQ(value, 1);
    EXPECT_EQ(Err().Number, 3021);
}

TEST(TrapHandled, AgainRepeatsTheFailedStatementAfterTheHandlerMendedIt) {
    bool open = false;
    int runs = 0;
    Trap on = Trap::Handled([&](int number) {
        if (number != vberr::ObjectClosed) return Trap::Resume::Next;
        open = true;
        return Trap::Resume::Again;
    });
    EXPECT_TRUE(on([&] {
        ++runs;
        if (!open) throw VbError(vberr::ObjectClosed);
    }));
    EXPECT_EQ(runs, 2);
}

TEST(TrapHandled, ExitPassesOverEveryLaterStatement) {
    int value = 0;
    Trap on = Trap::Handled([](int) { return Trap::Resume::Exit; });
    on([] { throw VbError(vberr::ObjectOpen); });
    EXPECT_TRUE(on.Exited());
    EXPECT_FALSE(on([&] { value = 1; }));
    EXPECT_EQ(value, 0);
}

TEST(TrapHandled, AFaultInsideTheHandlerLeavesTheProcedure) {
    int runs = 0, value = 0;
    Trap on = Trap::Handled([](int) -> Trap::Resume { throw VbError(vberr::ObjectOpen); });
    on([&] {
        ++runs;
        throw VbError(vberr::ObjectClosed);
    });
    on([&] { value = 1; });
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(value, 0);
    EXPECT_TRUE(on.Exited());
}

TEST(TrapHandled, TheProgramsEndPassesThroughTheHandler) {
    Trap on = Trap::Handled([](int) -> Trap::Resume { throw ProgramEnded{}; });
    EXPECT_THROW(on([] { throw VbError(vberr::ObjectOpen); }), ProgramEnded);
}
