#include "shell/program_folder.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

// The folder itself, without the trailing separator (for a rename or a sibling's name).
fs::path bare(const std::string& folder) {
    fs::path p(folder);
    return p.has_filename() ? p : p.parent_path();
}

bool isExecutable(const fs::directory_entry& entry) {
    return entry.is_regular_file() &&
           (entry.status().permissions() & fs::perms::owner_exec) != fs::perms::none;
}

// Copies the data of from into to, every copy readable and writable by the user.
void copyData(const fs::path& from, const fs::path& to) {
    constexpr auto userRw = fs::perms::owner_read | fs::perms::owner_write;
    fs::create_directories(to);
    for (auto it = fs::recursive_directory_iterator(from); it != fs::recursive_directory_iterator();
         ++it) {
        // The top level holds the executables beside the data; they stay where they are.
        if (it.depth() == 0 && isExecutable(*it)) continue;
        const fs::path target = to / it->path().lexically_relative(from);
        if (it->is_directory()) {
            fs::create_directories(target);
            fs::permissions(target, userRw | fs::perms::owner_exec, fs::perm_options::add);
        } else if (it->is_regular_file()) {
            fs::copy_file(it->path(), target, fs::copy_options::overwrite_existing);
            fs::permissions(target, userRw, fs::perm_options::add);
        }
    }
}

}  // namespace

std::string ExecutableFolder() {
    std::error_code ec;
    auto exe = fs::read_symlink("/proc/self/exe", ec);
    return ec ? std::string("./") : exe.parent_path().string() + "/";
}

std::string UserProgramFolder() {
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    if (dataHome && *dataHome) return std::string(dataHome) + "/" + UserFolderName + "/";
    const char* home = std::getenv("HOME");
    if (home && *home) return std::string(home) + "/.local/share/" + UserFolderName + "/";
    return "";
}

bool FolderWritable(const std::string& folder) {
    return access(folder.c_str(), W_OK) == 0;
}

std::string ChooseProgramFolder(const std::string& shipped, bool shippedWritable,
                                const std::string& userFolder) {
    if (shippedWritable || userFolder.empty()) return shipped;
    const fs::path user = bare(userFolder);
    std::error_code ec;
    if (fs::is_directory(user, ec)) return userFolder;
    // The copy is made beside its place and renamed into it whole, so a start that was
    // cut short leaves no half copy to be taken for a finished one.
    const fs::path partial = user.string() + ".part";
    try {
        fs::remove_all(partial);
        copyData(bare(shipped), partial);
        fs::rename(partial, user);
        return userFolder;
    } catch (const fs::filesystem_error&) {
        fs::remove_all(partial, ec);
        return shipped;
    }
}

std::string ProgramFolder() {
    const std::string shipped = ExecutableFolder();
    return ChooseProgramFolder(shipped, FolderWritable(shipped), UserProgramFolder());
}
