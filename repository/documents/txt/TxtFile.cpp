#include "repository/documents/txt/TxtFile.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/txt/TxtScanner.h"

#include <algorithm>

namespace Repository::Documents {

Outcome TxtFile::readStatements(bool)
{
    const std::string_view text = getText();
    const std::size_t nul = text.find('\0');
    if (nul != std::string_view::npos)
        return failAt(
            text.data() + nul,
            Reason::tr("there is a NUL character: it is a binary file, or UTF-16 without its mark"));
    Outcome outcome;
    Group latest;
    TxtScanner scanner(text, dialect);
    while (const std::optional<Statement> line = scanner.next()) {
        const std::uint32_t piece = add(none, pieces.chainedLast(), *line);
        if (line->isEntry())
            outcome = takeUp(*line, piece, latest);
        if (!outcome.ok())
            break;
    }
    return outcome;
}

Outcome TxtFile::takeUp(const Statement& line, std::uint32_t piece, Group& latest)
{
    const std::string encoded = line.plainKey ? std::string() : txtKeyPath(line.key(), dialect);
    const std::string_view path = line.plainKey ? line.key() : std::string_view(encoded);
    if (std::size_t(std::count(path.begin(), path.end(), '.')) >= deepestTxtPath)
        return failAt(line.key().data(),
                      Reason::tr("the path has more than %1 components", {std::to_string(deepestTxtPath)}));
    const PathEnds ends = splitLast(path);
    // Mostly the entries of a group are together.
    if (line.plainKey && ends.parent != latest.path)
        latest = {ends.parent, index.getOrCreate(ends.parent, true)};
    const std::uint32_t group = line.plainKey ? latest.id : index.getOrCreate(ends.parent, false);
    pieces[piece].node = index.getOrCreateNext(group, ends.last, line.plainKey);
    index.node(pieces[piece].node).entry = piece;
    style.learn(line);
    return {};
}

Statement TxtFile::scanOwn(std::string_view text) const
{
    return scanTxtEntry(text, dialect).value_or(Statement());
}

std::string TxtFile::findClash(std::uint32_t piece, const Statement& line) const
{
    const std::uint32_t previous = pieces[piece].previous;
    const bool losesTag = line.tags().empty() && !pieces[piece].line.tags().empty();
    if (losesTag && previous != none && pieces[previous].line.isEntry() &&
        wouldSwallow(pieces[previous].line, line.text, dialect))
        return Reason::tr("without its type tag the line would be read as part of the value above");
    const std::uint32_t next = pieces[piece].next;
    const bool swallows = next != none && wouldSwallow(line, pieces[next].line.text, dialect);
    return swallows ? Reason::tr("the line below it would be read as part of the value") : std::string();
}

} // namespace Repository::Documents
