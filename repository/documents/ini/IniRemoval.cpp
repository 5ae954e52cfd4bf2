#include "repository/documents/ini/IniRemoval.h"

#include "repository/documents/common/ComponentCodec.h"

namespace Repository::Documents {

IniRemoval::IniRemoval(IniFile& iniFile, std::uint32_t node)
    : file(iniFile), pieces(iniFile.pieces), index(iniFile.index), top(node)
{
    for (const std::uint32_t id : index.subtree(top)) {
        if (index.node(id).section)
            going.push_back(id);
    }
}

Outcome IniRemoval::run()
{
    setGoing(true);
    Outcome outcome = check();
    if (outcome.ok())
        takeComments();
    setGoing(false);
    if (!outcome.ok())
        return outcome;
    if (index.node(top).hasHeader())
        --index.node(index.findSibling(top, 1)).section->headers;
    const std::uint32_t entry = index.node(top).entry;
    if (entry != none) {
        // Above it is another entry of the section or its header, or nothing at the root.
        LineSection& section = *index.node(index.node(top).parent).section;
        if (section.last == entry)
            section.last = pieces[entry].above;
        file.takeEntry(top);
    }
    takeSections();
    return {};
}

void IniRemoval::setGoing(bool isGoing)
{
    for (const std::uint32_t section : going)
        index.node(section).section->going = isGoing;
}

Outcome IniRemoval::check() const
{
    if (!entryCanGo() || !sectionsCanGo())
        return refused(Reason::tr("without it the line below would be read as part of the value above"));
    if (!frontCanGo())
        return refused(Reason::tr("without it the file would begin like a file of another encoding"));
    return {};
}

bool IniRemoval::frontCanGo() const
{
    const std::uint32_t entry = index.node(top).entry;
    std::uint32_t front = pieces.front();
    while (front != none && (entry == front || (pieces[front].node != none && file.goes(front)))) {
        const LinePiece& piece = pieces[front];
        front = pieces[piece.line.isHeader() ? index.node(piece.node).section->last : front].next;
    }
    return front == none || file.encoding.mayBegin(pieces[front].line.text);
}

bool IniRemoval::entryCanGo() const
{
    const std::uint32_t entry = index.node(top).entry;
    if (entry == none || pieces[entry].above == none || pieces[entry].below == none)
        return true;
    const std::uint32_t above = pieces[entry].above;
    return !wouldSwallow(pieces[above].line, pieces[pieces[entry].below].line,
                         file.triviaBelow(above) | file.triviaBelow(entry), file.dialect);
}

bool IniRemoval::sectionsCanGo() const
{
    for (const std::uint32_t id : going) {
        const LineSection& section = *index.node(id).section;
        const std::uint32_t below = section.header == none ? none : pieces[section.last].below;
        // Only an indented header can be taken for the end of the value above.
        if (below == none || pieces[below].line.indent().empty() || file.goes(below))
            continue;
        std::uint32_t above = pieces[section.header].above;
        while (above != none && file.goes(above))
            above = pieces[above].above;
        if (above != none &&
            wouldSwallow(pieces[above].line, pieces[below].line, {true, false}, file.dialect))
            return false;
    }
    return true;
}

// Those at the end of each section, and all between two.
void IniRemoval::takeComments()
{
    for (const std::uint32_t id : going) {
        const LineSection& section = *index.node(id).section;
        if (section.header == none)
            continue;
        const std::uint32_t below = pieces[section.last].below;
        const bool isBetween = below != none && file.goes(below);
        file.takeTrivia(section.last, 0, isBetween ? std::string::npos : file.sectionEndAfter(section.last));
    }
}

void IniRemoval::takeSections()
{
    for (const std::uint32_t id : going) {
        LineSection& section = *index.node(id).section;
        if (section.header == none)
            continue;
        const std::uint32_t end = pieces[section.last].next;
        for (std::uint32_t at = section.header; at != end;) {
            const std::uint32_t piece = at;
            at = pieces[at].next;
            const std::uint32_t entry = pieces[piece].line.isEntry() ? pieces[piece].node : none;
            file.takePiece(piece);
            if (entry == none)
                continue;
            index.node(entry).entry = none;
            index.prune(entry);
        }
        section.header = section.last = none;
    }
    // Dropping one may drop those around it that only led to it.
    for (auto id = going.rbegin(); id != going.rend(); ++id) {
        if (index.node(*id).parent != none)
            index.prune(*id);
    }
}

} // namespace Repository::Documents
