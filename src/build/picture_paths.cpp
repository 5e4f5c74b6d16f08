// Changing the pictures' path, started by the link `ChangePicPath`.
#include "shell/products.h"

void Products::ChP() {
    // NOT BUILT YET: the picture path change.
}
