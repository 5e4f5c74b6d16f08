#include "store/scratch_folder.h"

#include <unistd.h>

std::filesystem::path scratchFolder() {
    static const std::filesystem::path folder = [] {
        const std::filesystem::path memory = "/dev/shm";
        std::error_code ec;
        if (std::filesystem::is_directory(memory, ec) && ::access(memory.c_str(), W_OK) == 0)
            return memory;
        return std::filesystem::temp_directory_path();
    }();
    return folder;
}
