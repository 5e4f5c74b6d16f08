#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/vb_error.h"

// A fault that a statement on a hot path gives back instead of throwing (an import's
// counter past its largest value, a write to the key): number 0 for none. A trapped
// statement that returns one is handled as if it had thrown it.
struct Fault {
    int number = 0;
};

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

// A statement that names a control, property or form the program does not have (the classic
// 340 and 438) is always a mistake of ours, never a condition of the program. The program
// traps it like any other fault; tests watch for it so that such a mistake fails them.
bool IsNamingFault(int number);
using NamingFaultWatcher = std::function<void(int number, const std::string& description)>;
// The watcher told of every naming fault a Trap catches; nullptr for none. The previous one.
NamingFaultWatcher WatchNamingFaults(NamingFaultWatcher watcher);

// A stretch of a procedure that knowingly steps over the elements of a control array that
// do not exist (a loop over 1 to 30 on an array without 1 and 17): its naming faults are the
// procedure's own, so no watcher hears of them while it lives.
class SteppingOverMissingElements {
  public:
    SteppingOverMissingElements();
    ~SteppingOverMissingElements();
    SteppingOverMissingElements(const SteppingOverMissingElements&) = delete;
    SteppingOverMissingElements& operator=(const SteppingOverMissingElements&) = delete;
};

// Runs the statements of one procedure so that a failing statement never aborts it.
// A report-and-resume procedure hands each trapped fault to its reporter with the
// procedure's tag and goes on with the next statement; an ignoring procedure passes
// over the fault in silence. Either way the fault is left in Err().
//
//     Trap on("(Form) Products::Sub cmdNext_Click", Errhandler);
//     on([&] { adoPrimaryRS->MoveNext(); });
//     on([&] { mbDataChanged = false; });
//
// A procedure whose handler does more than report gives the trap that handler instead: it
// sees the fault's number and says how the procedure goes on.
//
//     Trap on = Trap::Handled([&](int number) {
//         if (number != vberr::ObjectClosed) return Resume::Next;
//         adoPrimaryRS->Open();
//         return Resume::Again;
//     });
class Trap {
  public:
    using Reporter = std::function<void(const std::string& tag)>;
    // After a fault: the next statement, the failed one once more, or out of the procedure
    // (every later statement of this trap is then passed over).
    enum class Resume { Next, Again, Exit };
    using Handler = std::function<Resume(int number)>;

    Trap(std::string tag, Reporter reporter)
        : tag_(std::move(tag)), reporter_(std::move(reporter)) {}
    static Trap Ignoring() { return Trap({}, nullptr); }
    static Trap Handled(Handler handler) {
        Trap trap({}, nullptr);
        trap.handler_ = std::move(handler);
        return trap;
    }

    // Runs one statement; false when it failed or the procedure was left.
    template <class Statement>
    bool operator()(Statement&& statement) {
        while (!exited_) {
            try {
                if constexpr (std::is_same_v<std::invoke_result_t<Statement&>, Fault>) {
                    const Fault given = statement();
                    if (given.number == 0) return true;
                    if (fault(given.number, vbErrorDescription(given.number)) != Resume::Again)
                        return false;
                    continue;
                } else {
                    statement();
                    return true;
                }
            } catch (const ProgramEnded&) {
                throw;
            } catch (const VbError& e) {
                if (fault(e.Number(), e.Description()) != Resume::Again) return false;
            } catch (const std::exception& e) {
                if (fault(51, e.what()) != Resume::Again) return false;  // internal error
            } catch (...) {
                if (fault(51, "Internal error") != Resume::Again) return false;
            }
        }
        return false;
    }

    // True once a handler has left the procedure.
    bool Exited() const { return exited_; }

  private:
    Resume fault(int number, std::string_view description);

    std::string tag_;
    Reporter reporter_;
    Handler handler_;
    bool exited_ = false;
};
