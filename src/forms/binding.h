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
    // Binds the box to column `field` of the set (by position). Rebinding replaces.
    void Bind(Control& box, Recordset& rs, int field);
    void Clear() { bound_.clear(); }
    // Shows the current row (or empty boxes when there is none).
    void Refresh();
    // Called for every property write of the form: writes a bound box's change through.
    void Changed(Control& box, std::string_view property);

  private:
    struct Bound {
        Control* box;
        Recordset* rs;
        int field;
    };
    std::vector<Bound> bound_;
    bool showing_ = false;
};
