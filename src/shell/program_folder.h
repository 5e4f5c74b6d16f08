#pragma once

#include <string>

// Where the program keeps its catalogue and the files it writes. The program folder is the
// executable's; installed for every user it cannot be written, so each user works in a
// copy of its data in their own folder, made on the first start and used from then on.
// Every folder given or returned here ends with its separator.

// The name of the user's folders of the program: its data, and its settings' folder.
constexpr const char* UserFolderName = "catalogue-manager";

// The folder of the running executable.
std::string ExecutableFolder();

// The user's own copy: $XDG_DATA_HOME/catalogue-manager/, else
// ~/.local/share/catalogue-manager/; empty when neither variable is set.
std::string UserProgramFolder();

// True when the program may make and change files in folder.
bool FolderWritable(const std::string& folder);

// The shipped folder when it is writable. Otherwise userFolder: when it does not exist yet,
// the shipped folder is first copied into it (sub-folders included, the executables
// beside the data left out), writable by the user. A copy that cannot be made leaves the
// shipped folder in use.
std::string ChooseProgramFolder(const std::string& shipped, bool shippedWritable,
                                const std::string& userFolder);

// The program folder of this run: the executable's folder chosen as above.
std::string ProgramFolder();
