#include "repository/documents/ini/IniDocument.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/ini/IniBraces.h"
#include "repository/documents/ini/IniInsertion.h"
#include "repository/documents/ini/IniRemoval.h"
#include "repository/documents/ini/IniSections.h"

namespace Repository::Documents {

namespace {

// The piece with which a node begins, if it is in one place of the file only.
std::uint32_t onlyBeginOf(const LineNode& node)
{
    if (!node.section)
        return node.entry;
    const bool isOnce = node.entry == HashIndex::none && node.section->deeper == 0;
    return isOnce ? node.section->header : HashIndex::none;
}

bool isIn(std::string_view path, std::string_view group)
{
    return startsWith(path, group) && (path.size() == group.size() || path[group.size()] == '.');
}

std::string asItIs(std::string_view path)
{
    return std::string(path);
}

} // namespace

// Whether a node is an entry of a section itself, and no group in braces has its name.
bool IniDocument::isOfSection(std::uint32_t node) const
{
    const LineNode& entry = file->index.node(node);
    return entry.entry != none && !entry.section && file->index.node(entry.parent).section &&
           IniBraces(getFile()).linesOf(node).empty();
}

Outcome IniDocument::insert(std::string_view path, const Value& value)
{
    if (IniBraces::holds(path, value, dialect))
        return editBraces([&](IniBraces& braces) { return braces.insert(path, value); }, asItIs,
                          [path](std::string_view entry) { return isIn(entry, path) ? "" : asItIs(entry); });
    return IniInsertion(getFile()).insert(path, value);
}

Outcome IniDocument::remove(std::string_view path)
{
    const std::uint32_t node = file->index.find(path);
    if (node == none || node == LineIndex::root)
        return refused(node == none ? Reason::tr("no such entry")
                                    : Reason::tr("the root of a file is not removed"));
    if (dialect.hasBraces && !isOfSection(node))
        return editBraces(
            [&](IniBraces& braces) { return braces.remove(piecesOf(file->index.find(path))); },
            [path](std::string_view entry) { return isIn(entry, path) ? "" : pathWithout(path, entry); },
            asItIs);
    const LineNode& removed = file->index.node(node);
    const bool sectionsMove =
        removed.hasHeader() && removed.number < file->index.countOfSections(file->index.findSibling(node, 1));
    Outcome outcome = IniRemoval(getFile(), node).run();
    // Other sections get new paths, with all that they hold.
    return outcome.ok() && sectionsMove ? reload(getBytes(), true) : outcome;
}

SiblingPlace IniDocument::placeOf(std::string_view path) const
{
    using Kind = SiblingPlace::Kind;
    const LineIndex& index = file->index;
    const LinePieces& pieces = file->pieces;
    const std::uint32_t id = index.find(path);
    if (id == none || id == LineIndex::root)
        return {Kind::Last, {}};
    const LineNode& node = index.node(id);
    const std::uint32_t begin = onlyBeginOf(node);
    if (begin == none)
        return {};
    if (pieces.chainedLast() == (node.section ? node.section->last : begin))
        return {Kind::Last, {}};
    const std::uint32_t above = pieces[begin].above;
    if (above == none)
        return {Kind::First, {}};
    if (!index.node(node.parent).section)
        return {};
    const LineSection& group = *index.node(node.parent).section;
    if (above == group.header) {
        const bool isFirst = group.deeper == (node.section ? 1 : 0);
        return {isFirst ? Kind::First : Kind::Unknown, {}};
    }
    std::uint32_t sibling = pieces[above].node;
    while (sibling != none && index.node(sibling).parent != node.parent)
        sibling = index.node(sibling).parent;
    if (sibling == none || onlyBeginOf(index.node(sibling)) == none)
        return {};
    return {Kind::After, index.pathOf(sibling)};
}

std::optional<std::string> IniDocument::withSpelling(const Statement& entry, std::string_view spelling) const
{
    const std::optional<Statement> line = file->getDialect().scanEntry(spelling);
    if (!line || line->begin > 0 || line->key() != entry.key())
        return std::nullopt;
    return std::string(entry.tags()).append(spelling);
}

std::string IniDocument::explainMisspelling(std::string_view spelling) const
{
    return Reason::tr("%1 is not a line of this entry", {quoted(spelling)});
}

std::vector<std::uint32_t> IniDocument::piecesOf(std::uint32_t node) const
{
    const LineIndex& index = file->index;
    const LinePieces& pieces = file->pieces;
    std::vector<std::uint32_t> found;
    const std::uint32_t entry = index.node(node).entry;
    if (!index.node(node).section) {
        if (entry != none)
            found.push_back(entry);
        const std::vector<std::uint32_t> lines = IniBraces(getFile()).linesOf(node);
        found.insert(found.end(), lines.begin(), lines.end());
        return found;
    }
    for (std::uint32_t piece = pieces.front(); piece != none; piece = pieces[piece].next) {
        if (piece == entry)
            found.push_back(piece);
        if (!pieces[piece].line.isHeader() || !index.isWithin(pieces[piece].node, node))
            continue;
        const std::uint32_t last = index.node(pieces[piece].node).section->last;
        found.push_back(piece);
        while (piece != last)
            found.push_back(piece = pieces[piece].next);
    }
    return found;
}

std::optional<LineDocument::NamePlace> IniDocument::nameIn(std::uint32_t node, std::size_t depth,
                                                           std::uint32_t piece) const
{
    const Statement& line = file->pieces[piece].line;
    if (!line.isHeader()) {
        const bool isNamed = line.isEntry() || line.kind == Statement::Kind::Open;
        const bool isOwn = isNamed && file->pieces[piece].node == node;
        return isOwn ? std::optional(NamePlace{line.keyBegin, line.keyBegin, line.keyEnd}) : std::nullopt;
    }
    if (dialect.sections == Dialect::Sections::Nested)
        return placeInPath(line, depth);
    const std::vector<SectionPart> parts = sectionParts(line.key(), dialect);
    if (depth >= parts.size())
        return std::nullopt;
    return NamePlace{line.keyBegin, line.keyBegin + parts[depth].begin, line.keyBegin + parts[depth].end};
}

std::string IniDocument::spellComponent(std::string_view name, const Statement& line,
                                        const NamePlace& place) const
{
    if (!line.isHeader())
        return spellKey(name);
    if (dialect.sections == Dialect::Sections::Nested)
        return decodePath(name);
    const std::string plain = decodeKey(name).value_or(std::string(name));
    const bool isQuoted = dialect.sections == Dialect::Sections::Subsection && line.text[place.last] == '"';
    return isQuoted ? quotedSubsection(plain) : spellSectionPart(plain, dialect);
}

std::string IniDocument::spellPath(std::string_view path, Statement::Kind kind) const
{
    if (kind == Statement::Kind::Header)
        return sectionName(path, dialect).value_or(std::string());
    return spellKey(splitLast(path).last);
}

std::string IniDocument::spellKey(std::string_view name) const
{
    const std::string key = decodeKey(name).value_or(std::string(name));
    return dialect.spelling && dialect.spelling->writeKey ? dialect.spelling->writeKey(key) : key;
}

std::optional<Outcome> IniDocument::rename(std::string_view path, std::string_view name)
{
    const std::uint32_t node = file->index.find(path);
    const std::string same = node == none || file->index.node(node).section
                                 ? std::string()
                                 : getFile().findSameKey(file->index.node(node).parent,
                                                         decodeKey(name).value_or(std::string()), node);
    if (!same.empty())
        return refused(Reason::tr("%1 has %2 there, which its program takes for the same key",
                                  {file->getDialect().fileNoun(), quoted(same)}));
    return LineDocument::rename(path, name);
}

// An edit that is made in the lines alone. The values must have the paths before it that those it leaves have
// after it.
Outcome IniDocument::editBraces(const std::function<Outcome(IniBraces&)>& edit, const PathChange& before,
                                const PathChange& after)
{
    const std::uint64_t wanted = hashOf(before);
    std::unique_ptr<LineFile> former = makeFile();
    former->load(getBytes(), true);
    former.swap(file);
    IniBraces braces(getFile());
    Outcome outcome = edit(braces);
    if (outcome.ok())
        outcome = reload(getBytes(), true);
    if (outcome.ok() && hashOf(after) != wanted)
        outcome =
            refused(Reason::tr("%1 would read other entries otherwise", {file->getDialect().fileNoun()}));
    if (!outcome.ok())
        file = std::move(former);
    return outcome;
}

// The excerpt of a section begins its name with a header.
Value IniDocument::placeholderOf(const Excerpt& excerpt) const
{
    const std::size_t name = excerpt.names.empty() ? 0 : excerpt.names.front().first;
    return name > 0 && excerpt.text[name - 1] == '[' ? Value() : Value{Type::String, std::string("x")};
}

std::uint32_t IniDocument::pieceOf(std::string_view path, const Value& placeholder) const
{
    return placeholder.type == Type::Group ? file->index.node(file->index.find(path)).section->header
                                           : file->findEntry(path);
}

} // namespace Repository::Documents
