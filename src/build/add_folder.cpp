// Adding a folder, started by the link `Folder`.
#include "shell/products.h"

void Products::Folders() {
    // NOT BUILT YET: the folder import.
}
