#include "repository/documents/common/LineFile.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/ValueLines.h"

namespace Repository::Documents {

namespace {

void addCommentLines(std::vector<TextMarks::Comment>& comments, std::string_view lines, std::size_t offset,
                     const LineDialect& dialect)
{
    for (std::size_t at = 0; at < lines.size(); at = textLineAt(lines, at).end) {
        const std::string_view content = textLineAt(lines, at).content;
        if (dialect.isComment(content))
            comments.push_back({offset + at + indentOf(content), std::string(trimBlanks(content))});
    }
}

} // namespace

TextMarks LineFile::getMarks() const
{
    const LineDialect& dialect = getDialect();
    TextMarks marks{original, {}, {}, std::string(1, dialect.commentSign()), {}, dialect.hasCommentsAfter()};
    const auto offsetOf = [this](std::string_view part) {
        return std::size_t(part.data() - original.data());
    };
    const auto beginOf = [&](std::uint32_t piece) {
        const Statement& line = pieces[piece].line;
        return offsetOf(line.text) + line.begin + line.indent().size();
    };
    const auto endOf = [&](std::uint32_t piece) -> std::size_t { // where comments below it are in the section
        const std::string_view text = pieces[piece].line.text;
        const std::size_t size = sectionEndAfter(piece);
        return size == 0 ? 0 : offsetOf(text) + text.size() + size;
    };
    walkPaths([&](const std::string& path, const LineNode& node) {
        if (node.entry != none)
            marks.begins.push_back({path, beginOf(node.entry)});
        else if (node.hasHeader())
            marks.endsInSection = true;
        if (node.entry == none && node.hasHeader())
            marks.begins.push_back({path, beginOf(node.section->header), endOf(node.section->last)});
    });
    for (std::uint32_t piece = pieces.front(); piece != none; piece = pieces[piece].next) {
        const Statement& line = pieces[piece].line;
        const std::size_t offset = offsetOf(line.text);
        if (line.kind == Statement::Kind::Trivia) {
            addCommentLines(marks.comments, line.text, offset, dialect);
            continue;
        }
        if (line.isEntry()) // those between its lines have their place above it elsewhere
            addCommentLines(marks.comments, ownComments(line, dialect), offset, dialect);
        const std::string_view after = dialect.commentAfter(line);
        if (!after.empty())
            marks.comments.push_back({offsetOf(after) + indentOf(after), std::string(trimBlanks(after))});
    }
    return marks;
}

} // namespace Repository::Documents
