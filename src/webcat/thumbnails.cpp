// The contact sheet of the current records, `tmpthumb.htm`.
#include "shell/products.h"

void Products::MakeThumbs() {
    // NOT BUILT YET: the thumbnails page.
}
