#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "store/sqlite_file.h"

// What SQLite makes of a value written to a column, by the column's declared type, so that a
// write need not read back what it wrote. Only the plain cases are told; for the others (a
// text written to a column that turns number-like texts into numbers) nothing.
enum class Affinity : std::uint8_t { Text, Numeric, Integer, Real, Blob };
Affinity affinityOf(const std::string& declared);
std::optional<StoredValue> storedAfter(Affinity affinity, const StoredValue& written);
// A column's default as the table declares it (pragma table_info's text, Null for none): the
// value of a plain literal, or nothing when it is an expression.
std::optional<StoredValue> literalDefault(const StoredValue& declared);

// How a table takes writes, column by column in the order a record set loaded them.
struct WriteRules {
    struct Column {
        Affinity affinity = Affinity::Blob;
        bool key = false;                    // the rowid under another name
        std::optional<StoredValue> initial;  // what an added row gets; nothing when not plain
    };
    std::vector<Column> columns;

    // The row an insert of `values` into `written` columns leaves, as reading it back gives
    // it, the key 0 until the file gives it, made in `row` (whose room a run of inserts
    // reuses); false when that is not plain.
    bool added(const std::vector<int>& written, const std::vector<StoredValue>& values,
               std::vector<StoredValue>& row) const;
    // The values an update of `written` columns leaves; nothing when that is not plain.
    std::optional<std::vector<StoredValue>> updated(const std::vector<int>& written,
                                                    const std::vector<StoredValue>& values) const;
};
