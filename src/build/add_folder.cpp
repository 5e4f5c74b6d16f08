// Adding a folder, started by the link `Folder`; filled by the bulk tools.
#include "shell/products.h"

void Products::Folders() {}
