// Changing the pictures' path, started by the link `ChangePicPath`.
#include "build/bulk.h"

void Bulk::ChP() {
    // NOT BUILT YET: the picture path change.
}
