#pragma once

#include <cstdint>
#include <string_view>

namespace Repository::Documents {

// Where comments are in an ini file. The readers of many files take what follows a ";" or "#" with blanks
// on both sides for one; those of unit and desktop files know comments on lines of their own only, and
// "ExecStart=/bin/a ; /bin/b" is one value there.
enum class IniComments : std::uint8_t { AfterValues, OwnLines };

// What the first section that is not indented says of a file.
IniComments iniCommentsOf(std::string_view firstSection);

} // namespace Repository::Documents
