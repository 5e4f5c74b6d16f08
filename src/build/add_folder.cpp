// Adding a folder, started by the link `Folder`.
#include "build/bulk.h"

void Bulk::Folders() {
    // NOT BUILT YET: the folder import.
}
