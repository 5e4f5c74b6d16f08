#pragma once

// One text box of a record form: its index in `txtFields`, the column it is bound to
// (nullptr for a box the form computes) and the caption of its label.
struct RecordBox {
    int index;
    const char* column;
    const char* label;
};
