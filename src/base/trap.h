#pragma once

#include <functional>
#include <string>
#include <utility>

#include "base/vb_error.h"

// The runtime's error state: the number and description of the last trapped fault.
struct ErrState {
    int Number = 0;
    std::string Description;
    void Clear() {
        Number = 0;
        Description.clear();
    }
};
ErrState& Err();

// Thrown by the program's End: it unwinds every procedure at once, past every Trap, to the
// program's entry.
struct ProgramEnded {};

// Runs the statements of one procedure so that a failing statement never aborts it.
// A report-and-resume procedure hands each trapped fault to its reporter with the
// procedure's tag and goes on with the next statement; an ignoring procedure passes
// over the fault in silence. Either way the fault is left in Err().
//
//     Trap on("(Form) Products::Sub cmdNext_Click", Errhandler);
//     on([&] { adoPrimaryRS->MoveNext(); });
//     on([&] { mbDataChanged = false; });
class Trap {
public:
    using Reporter = std::function<void(const std::string& tag)>;

    Trap(std::string tag, Reporter reporter) : tag_(std::move(tag)), reporter_(std::move(reporter)) {}
    static Trap Ignoring() { return Trap({}, nullptr); }

    // Runs one statement; false when it failed.
    template <class Statement>
    bool operator()(Statement&& statement) {
        try {
            statement();
            return true;
        } catch (const ProgramEnded&) {
            throw;
        } catch (const VbError& e) {
            fault(e.Number(), e.Description());
        } catch (const std::exception& e) {
            fault(51, e.what());  // internal error
        } catch (...) {
            fault(51, "Internal error");
        }
        return false;
    }

private:
    void fault(int number, const std::string& description);

    std::string tag_;
    Reporter reporter_;
};
