#include "repository/documents/common/EncodedNames.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/Document.h"

namespace Repository::Documents {

bool EncodedNames::areNeededBy(std::string_view path)
{
    for (std::size_t at = path.find_first_of("@#"); at != std::string_view::npos;
         at = path.find_first_of("@#", at + 1)) {
        if (at == 0 || path[at - 1] == '.')
            return true;
    }
    return false;
}

std::string EncodedNames::toDocument(std::string_view path)
{
    return path.empty() ? std::string() : mapPath(path, encodeKey);
}

std::string EncodedNames::fromDocument(std::string_view path)
{
    return mapPath(path, [](std::string_view component) {
        return decodeKey(component).value_or(std::string(component));
    });
}

std::string EncodedNames::asPlainKeys(std::string_view path)
{
    return mapPath(path, [](std::string_view component) {
        std::string key(component);
        if (splitNumber(component).number > 1)
            key.replace(key.size() - 1, 1, "%5D");
        if (component.front() == '@')
            key.replace(0, 1, "%40");
        else if (component.front() == '#')
            key.replace(0, 1, "%23");
        return key;
    });
}

bool EncodedNames::isDeclaredIn(const Document& document)
{
    return document.spell(member) == quoted(form);
}

} // namespace Repository::Documents
