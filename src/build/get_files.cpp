// Imports from a text file or a database (`TextFiles`, `TextEdit`, `DBFiles`), bulk edit and
// export through the placement board.
#include "shell/products.h"

void Products::GetFiles() {
    // NOT BUILT YET: the text and database imports, bulk edit and export.
}
