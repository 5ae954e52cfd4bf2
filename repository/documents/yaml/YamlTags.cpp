#include "repository/documents/common/TypeTag.h"
#include "repository/documents/yaml/YamlBuilder.h"
#include "repository/documents/yaml/YamlTokens.h"
#include "repository/documents/yaml/YamlTypes.h"

#include <algorithm>

// The part of a builder that finds out what says the type of a value.
namespace Repository::Documents {

// Above the line on which an element has its "-" or a key begins; what is further to the right there has
// none.
Type YamlBuilder::readTag(std::size_t begin) const
{
    if (!mayHaveTags)
        return Type::Group;
    const Frame& frame = frames.back();
    const std::size_t line = findYamlLine(source(), begin);
    std::string_view before = source().substr(line, begin - line);
    before = before.substr(skipYamlBlanks(before, 0));
    before = before.substr(0, before.find_last_not_of(" \t") + 1);
    if (!before.empty() && before != (frame.isMap ? "?" : "-"))
        return Type::Group;
    const bool isFirst = !frame.isMap && tree.node(frame.id).count == 0;
    const std::size_t end = isFirst && !before.empty() ? frame.before : lastEnd;
    const bool isAtLine = findYamlLine(source(), end) == end;
    const std::size_t from = isAtLine ? end : skipYamlLine(source(), end); // not behind another entry
    const std::string_view above = line > from ? source().substr(from, line - from) : std::string_view();
    if (!endsInTypeTag(above))
        return Type::Group;
    const std::string_view last = above.substr(0, above.find_last_not_of("\r\n") + 1);
    return *readTypeTag(last.substr(last.find_last_of("\r\n") + 1));
}

// Those of a document, in front of its "---".
void YamlBuilder::readDirectives(std::size_t begin, std::size_t end)
{
    tagPrefixes.clear();
    for (std::size_t at = begin; at < end; at = skipYamlLine(source(), at)) {
        if (source()[at] != '%')
            continue;
        tree.noteDirective();
        std::vector<std::string> words;
        const std::string_view line = source().substr(0, findYamlLineEnd(source(), at));
        for (at = skipYamlBlanks(line, at); at < line.size() && line[at] != '#';
             at = skipYamlBlanks(line, at)) {
            const std::size_t wordEnd = std::min(line.find_first_of(" \t", at), line.size());
            words.emplace_back(line.substr(at, wordEnd - at));
            at = wordEnd;
        }
        if (words.size() >= 3 && words[0] == "%TAG")
            tagPrefixes[words[1]] = words[2];
    }
}

// The type that a tag names, whose handle may have another meaning in its document; Group for none. Only with
// "!!" it is read and written as one.
Type YamlBuilder::typeOf(const YamlRange& range)
{
    constexpr std::string_view core = "tag:yaml.org,2002:";
    const std::string_view tag = source().substr(range.begin, range.end - range.begin);
    const std::string handle(tag.substr(0, std::max<std::size_t>(tag.find('!', 1) + 1, 1)));
    const auto found = startsWith(tag, "!<") ? tagPrefixes.end() : tagPrefixes.find(handle);
    if (found == tagPrefixes.end())
        return typeOfYamlTag(tag);
    const std::string resolved = found->second + std::string(tag.substr(handle.size()));
    const Type type =
        startsWith(resolved, core) ? typeOfYamlTag("!!" + resolved.substr(core.size())) : Type::Group;
    if (handle != "!!" && type != Type::Group && type != Type::String && fault.ok())
        fault =
            outcomeAt(source(), range.begin,
                      Reason::tr("%1 says a type by a %TAG directive, where it is not understood; write %2",
                                 {quoted(tag), quoted("!!" + resolved.substr(core.size()))}));
    return handle == "!!" ? type : Type::Group;
}

} // namespace Repository::Documents
