#include "repository/documents/common/ExcerptText.h"

#include "repository/documents/common/TextLine.h"

namespace Repository::Documents {

namespace {

// A line's content in place of its former indentation; one that is less indented or empty stays as it is, but
// not one of blanks, which may be in a text.
void appendIndentation(std::string& text, std::string_view line, std::string_view before,
                       std::string_view indentation, std::size_t& at)
{
    if (!startsWith(line, before) || textLineAt(line, 0).content.empty())
        return;
    text += indentation;
    at += before.size();
}

} // namespace

std::string excerptText(const Excerpt& excerpt, std::string_view name, std::string_view indentation)
{
    const std::string_view whole = excerpt.text;
    std::string text;
    text.reserve(whole.size() + excerpt.lines.size() * indentation.size());
    std::size_t at = 0;
    auto place = excerpt.names.begin();
    const auto appendUpTo = [&](std::size_t end) {
        for (; place != excerpt.names.end() && place->second <= end; ++place) {
            (text += whole.substr(at, place->first - at)) += name;
            at = place->second;
        }
        text += whole.substr(at, end - at);
        at = end;
    };
    for (const std::size_t line : excerpt.lines) {
        appendUpTo(line);
        appendIndentation(text, whole.substr(line), excerpt.indentation, indentation, at);
    }
    appendUpTo(whole.size());
    return text;
}

std::string withLineEnds(std::string text, const Excerpt& excerpt, std::string_view lineEnd)
{
    if (excerpt.lineEnd == lineEnd)
        return text;
    std::string changed;
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        const bool hasEnd = line.content.size() < line.end - at;
        (changed += line.content) += hasEnd ? lineEnd : std::string_view();
        at = line.end;
    }
    return changed;
}

void findLines(Excerpt& excerpt)
{
    for (std::size_t at = textLineAt(excerpt.text, 0).end; at < excerpt.text.size();
         at = textLineAt(excerpt.text, at).end)
        excerpt.lines.push_back(at);
}

std::string indentedLines(std::string_view lines, std::string_view before, std::string_view indentation)
{
    std::string text;
    for (std::size_t at = 0; at < lines.size();) {
        const std::size_t end = textLineAt(lines, at).end;
        std::size_t from = at;
        appendIndentation(text, lines.substr(at, end - at), before, indentation, from);
        text += lines.substr(from, end - from);
        at = end;
    }
    return text;
}

std::string joinComments(std::string_view above, std::string_view after)
{
    std::string joined;
    for (const std::string_view part : {above, after}) {
        for (std::size_t at = 0; at < part.size();) {
            const TextLine line = textLineAt(part, at);
            const std::string_view content = trimBlanks(line.content);
            if (!content.empty())
                (joined += joined.empty() ? "" : "\n") += content;
            at = line.end;
        }
    }
    return joined;
}

} // namespace Repository::Documents
