// The free-format reader (Input # and Line Input #) on any file content.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

#include "base/textio.h"
#include "base/vb_error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = "/tmp/fuzz-free-format-" + std::to_string(getpid()) + ".txt";
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    // Values first, then the same text again line by line: both readers reach the end.
    for (bool lines : {false, true}) {
        try {
            TextFileReader reader(path);
            while (!reader.eof())
                lines ? reader.lineInput() : reader.input();
            reader.close();
        } catch (const VbError&) {
        }
    }
    return 0;
}
