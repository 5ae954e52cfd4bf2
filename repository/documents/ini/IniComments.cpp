#include "repository/documents/ini/IniComments.h"

#include <algorithm>
#include <array>

namespace Repository::Documents {

namespace {

// Sections that unit and desktop files begin with, as far as others do not.
constexpr std::array<std::string_view, 20> sections{
    "Unit",      "Service", "Socket",  "Timer",         "Mount",      "Automount",    "Swap",
    "Slice",     "Scope",   "Install", "Match",         "NetDev",     "Manager",      "Journal",
    "Container", "Pod",     "Kube",    "Desktop Entry", "Icon Theme", "D-BUS Service"};
constexpr std::string_view desktopAction = "Desktop Action ";

} // namespace

IniComments iniCommentsOf(std::string_view firstSection)
{
    const bool known = std::find(sections.begin(), sections.end(), firstSection) != sections.end() ||
                       firstSection.substr(0, desktopAction.size()) == desktopAction;
    return known ? IniComments::OwnLines : IniComments::AfterValues;
}

} // namespace Repository::Documents
