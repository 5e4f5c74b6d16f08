// The contact sheet of the current records, `tmpthumb.htm`.
#include "webcat/web_catalogue.h"

void WebCatalogue::MakeThumbs() {
    // NOT BUILT YET: the thumbnails page.
}
