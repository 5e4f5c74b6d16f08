// Imports from a text file or a database (`TextFiles`, `TextEdit`, `DBFiles`); filled by the bulk
// tools.
#include "shell/products.h"

void Products::GetFiles() {}
