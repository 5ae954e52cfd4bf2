#pragma once

#include "files/FilesExport.h"

#include <cstdint>
#include <string>

namespace Files {

// How large a file may be that is read whole, so that a file of terabytes is refused instead of taking all
// memory. One number for the process, 256 MiB unless the environment gives VANTRY_MAX_FILE_SIZE in MiB. Any
// thread.
class VANTRY_FILES_EXPORT SizeLimit
{
public:
    static constexpr std::uint64_t bytesInMiB = 1024 * 1024;
    // No text beyond this can be held by all parts of the program.
    static constexpr std::uint64_t most = 2047 * bytesInMiB;

    static std::uint64_t get();
    // Larger limits than the most, and 0, mean the most.
    static void set(std::uint64_t bytes);

    // Why a file is not read, with the limit and how to raise it.
    static std::string refusal();
};

} // namespace Files
