// Changing the pictures' path, started by the link `ChangePicPath`; filled by the bulk tools.
#include "shell/products.h"

void Products::ChP() {}
