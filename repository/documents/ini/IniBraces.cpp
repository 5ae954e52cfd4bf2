#include "repository/documents/ini/IniBraces.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TypeTag.h"

namespace Repository::Documents {

namespace {

using Kind = Statement::Kind;

constexpr std::string_view step = "    ";

} // namespace

bool IniBraces::holds(std::string_view path, const Value& value, const Dialect& dialect)
{
    const auto components = splitPath(path);
    return dialect.hasBraces && components && components->size() > (value.type == Type::Group ? 1 : 2);
}

std::vector<std::uint32_t> IniBraces::linesOf(std::uint32_t group) const
{
    std::vector<std::uint32_t> lines;
    int depth = 0;
    for (std::uint32_t piece = file.dialect.hasBraces ? pieces.front() : none; piece != none;
         piece = pieces[piece].next) {
        const Kind kind = pieces[piece].line.kind;
        if (kind == Kind::Header)
            depth = 0;
        if (kind == Kind::Open && (depth > 0 || pieces[piece].node == group))
            ++depth;
        if (depth > 0)
            lines.push_back(piece);
        if (kind == Kind::Close && depth > 0)
            --depth;
    }
    return lines;
}

// That of the first line in the group, or one step more than the line that opens it.
std::string IniBraces::indentIn(std::uint32_t group, std::uint32_t opening) const
{
    const Statement& line = pieces[opening].line;
    const std::uint32_t first = pieces[opening].below;
    if (first != none && (pieces[first].line.isEntry() || pieces[first].line.kind == Kind::Open))
        return std::string(pieces[first].line.indent());
    if (index.node(group).section)
        return file.style.indent;
    return std::string(line.indent()).append(step);
}

// Empty where the value cannot be spelled.
std::string IniBraces::entryText(std::string_view name, const Value& value, const std::string& indent) const
{
    const std::optional<std::string> key = decodeKey(splitNumber(name).name);
    const std::string draft =
        indent + key.value_or(std::string()) + file.style.separator + file.style.lineEnd;
    const auto write = [&](const std::string& text) {
        const std::optional<Statement> line = scanSingle(text, file.dialect);
        const bool isEntry = line && line->isEntry() && line->isSeparated() && key && line->key() == *key &&
                             file.explainName(draft).empty();
        return isEntry ? file.getDialect().write(*line, value, file.style) : std::nullopt;
    };
    std::optional<std::string> text = value.type == Type::ByteArray ? std::nullopt : write(draft);
    if (!text)
        text = write(indent + writeTypeTag(file.dialect.comments.front(), value.type) + file.style.lineEnd +
                     draft);
    return std::move(text).value_or(std::string());
}

Outcome IniBraces::insert(std::string_view path, const Value& value)
{
    const bool isGroup = value.type == Type::Group;
    if (index.find(path) != none)
        return refused(isGroup ? Reason::tr("there is such a group already")
                               : Reason::tr("there is such an entry already"));
    const NumberedPath numbered = numberedPath(path);
    if (numbered.number != (isGroup ? 0 : index.countOfEntries(index.find(numbered.first))) + 1)
        return refused(Reason::tr("there is no %1 before it",
                                  {quoted(joinNumber(numbered.first, numbered.number - 1))}));
    std::vector<std::string_view> missing; // groups, the outermost last
    std::string_view parent = isGroup ? path : splitLast(path).parent;
    while (index.find(parent) == none) {
        missing.push_back(splitLast(parent).last);
        parent = splitLast(parent).parent;
    }
    const std::uint32_t group = index.find(parent);
    const bool isSection = group != LineIndex::root && index.node(group).hasHeader();
    const std::vector<std::uint32_t> lines = linesOf(group);
    if (!isSection && lines.empty())
        return refused(
            Reason::tr("%1 has groups in braces only within a section, and there is no %2",
                       {file.getDialect().fileNoun(), quoted(missing.empty() ? parent : missing.back())}));

    std::string indent = indentIn(group, isSection ? index.node(group).section->header : lines.front());
    std::string text;
    std::string closing;
    for (auto name = missing.rbegin(); name != missing.rend(); ++name) {
        const std::string key = decodeKey(*name).value_or(std::string());
        const std::string opening = indent + key + " = {" + file.style.lineEnd;
        const std::optional<Statement> line = scanSingle(opening, file.dialect);
        if (!line || line->kind != Kind::Open || line->key() != key || key.empty() ||
            !file.explainName(opening).empty())
            return refused(
                Reason::tr("%1 cannot hold a group %2", {file.getDialect().fileNoun(), quoted(*name)}));
        text += opening;
        closing = indent + '}' + file.style.lineEnd + closing;
        indent += step;
    }
    if (!isGroup) {
        const std::string entry = entryText(splitLast(path).last, value, indent);
        if (entry.empty())
            return refused(
                Reason::tr("%1 cannot hold %2 as %3", {file.getDialect().fileNoun(), quoted(toText(value)),
                                                       quoted(splitLast(path).last)}));
        text += entry;
    }
    text += closing;
    std::string reason = file.findRefusal(text);
    if (!reason.empty())
        return refused(std::move(reason));
    const std::uint32_t last = isSection ? index.node(group).section->last : lines.back();
    std::string present(pieces[last].line.text);
    if (!endsLine(present))
        present += file.style.lineEnd;
    file.overwrite(last, isSection ? present + text : text + present);
    return {};
}

Outcome IniBraces::remove(const std::vector<std::uint32_t>& lines)
{
    for (const std::uint32_t piece : lines)
        file.takePiece(piece);
    return {};
}

} // namespace Repository::Documents
