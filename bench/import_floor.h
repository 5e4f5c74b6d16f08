#pragma once

#include <string>

// The least the store can do for an import run: the statements the run makes (an UPDATE of
// four columns by rowid for a known stock number, an INSERT of six for a new one), prepared
// once, found through a hash of the stock numbers and committed every 2,000 rows, on a copy
// of the catalogue, with the procedure's own work left out. Returns the processor seconds,
// or -1 when the file cannot be opened.
double importFloorSeconds(const std::string& catalogue, const std::string& importFile);
