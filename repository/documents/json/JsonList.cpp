#include "repository/documents/json/JsonList.h"

#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonTrivia.h"

namespace Repository::Documents {

JsonListElement readElement(std::string_view text, std::size_t at)
{
    const std::size_t value = skipGap(text, at);
    if (text[value] != '"')
        return {at, value, 0, value};
    const std::size_t valueEnd = findStringEnd(text, value);
    return {at, value, valueEnd, skipGap(text, valueEnd)};
}

std::vector<std::string> decodeList(std::string_view array)
{
    std::vector<std::string> list;
    for (JsonListElement element = readElement(array, 1); element.exists();) {
        list.push_back(decodeString(array.substr(element.value, element.valueEnd - element.value)));
        element = readElement(array, element.end + (array[element.end] == ',' ? 1 : 0));
    }
    return list;
}

bool isLongList(const std::vector<std::string>& list)
{
    constexpr std::size_t longestLine = 80;
    std::size_t length = 0;
    for (const std::string& text : list)
        length += text.size() + 4;
    return length > longestLine;
}

} // namespace Repository::Documents
