// Imports from a text file or a database (`TextFiles`, `TextEdit`, `DBFiles`), bulk edit and
// export through the placement board.
#include "build/bulk.h"

void Bulk::GetFiles() {
    // NOT BUILT YET: the text and database imports, bulk edit and export.
}
