#pragma once

#include <filesystem>

// Where throwaway catalogues go (the tests' and the scripted sessions'): a memory file
// system when the machine has one (/dev/shm), where the disk syncs that make every write
// durable cost nothing, else the system's temporary folder.
std::filesystem::path scratchFolder();
