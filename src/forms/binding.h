#pragma once

#include <string>
#include <vector>

#include "forms/control.h"
#include "records/recordset.h"

// Text boxes and check boxes bound to the columns of a record set. After every move they
// show the current row; a change to a bound box, typed or set by the program, goes into the
// row's pending edit, which the next move saves. A value the store refuses leaves the row
// as it was, silently.
class Binding {
  public:
    Binding() = default;
    ~Binding();
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;

    // Binds the box to column `field` of the set (by position). Rebinding replaces.
    void Bind(Control& box, Recordset& rs, int field);
    void Clear();
    // Shows the current row (or empty boxes when there is none).
    void Refresh();
    // The row moved. Outside a stretch of moves (RowsAwaited) it is Refresh; inside one a
    // box whose writing runs no procedure is shown the row at its next use instead.
    void Moved();
    // Shows the box the current row now (the box calls it at its first use after a move).
    void Show(const Control& box);
    // Called for every property write of the form: writes a bound box's change through.
    void Changed(Control& box, std::string_view property);

  private:
    struct Bound {
        Control* box;
        Recordset* rs;
        int field;
    };
    void show(const Bound& b);
    // Shows every box that still awaits its row.
    void settle();
    friend class RowsAwaited;
    std::vector<Bound> bound_;
    bool showing_ = false;
    bool awaiting_ = false;
};

// A stretch of the program with no user acting that moves through many rows (collecting a
// site's items, writing its pages): the bound boxes follow the row at their next use rather
// than at every move, so a box nobody reads costs nothing. Its end, and every moment the
// user's window may draw or act (Runtime::LetEventsRun, Runtime::WaitForUser), shows every
// awaited row, so what anybody sees is what every move showing it would have left.
class RowsAwaited {
  public:
    RowsAwaited();
    ~RowsAwaited();
    RowsAwaited(const RowsAwaited&) = delete;
    RowsAwaited& operator=(const RowsAwaited&) = delete;

    static bool active();
    // Shows every awaited row of every binding.
    static void showAll();
};
