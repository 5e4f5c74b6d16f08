// Builds a catalogue file from SQL scripts: make-catalogue OUT APP_DIR SCRIPT...
// "$APP" in a script stands for the program folder, so sample pictures resolve.
#include <cstdio>

#include "base/vb_error.h"
#include "store/catalogue_builder.h"

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr,
                     "usage: make-catalogue OUT_FILE APP_DIR SCRIPT.sql [SCRIPT.sql ...]\n");
        return 2;
    }
    std::vector<std::string> scripts(argv + 3, argv + argc);
    try {
        buildCatalogue(argv[1], argv[2], scripts);
    } catch (const VbError& e) {
        std::fprintf(stderr, "make-catalogue: %s\n", e.Description().c_str());
        return 1;
    }
    return 0;
}
