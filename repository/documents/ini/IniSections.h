#pragma once

#include "repository/documents/common/Dialect.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Where the name of a section ends that begins at this place, after the "[", and where the rest of the line;
// none and the end of the content where it is not closed.
std::size_t findSectionEnd(std::string_view content, std::size_t begin, const Dialect& dialect);

// The place of one component of a section's path in the section's name, where the name itself is not a path.
// The quotes of a subsection belong to it.
struct SectionPart
{
    std::size_t begin;
    std::size_t end;
};
std::vector<SectionPart> sectionParts(std::string_view name, const Dialect& dialect);
std::string spellSectionPart(std::string_view name, const Dialect& dialect);
std::string quotedSubsection(std::string_view name);

// The path of a section by its name, which is what is between the outer brackets, and the name for a path
// without numbers; nothing where the dialect has none.
std::string sectionPath(std::string_view name, const Dialect& dialect);
std::optional<std::string> sectionName(std::string_view path, const Dialect& dialect);

} // namespace Repository::Documents
