#include "repository/documents/dialects/JoinedSpelling.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/dialects/Brackets.h"

#include <algorithm>
#include <functional>

namespace Repository::Documents {

namespace {

using Reading = Spelling::Reading;

bool isComment(std::string_view content)
{
    const std::string_view trimmed = trimBlanks(content);
    return !trimmed.empty() && (trimmed.front() == '#' || trimmed.front() == ';');
}

void forEachLine(std::string_view lines, const std::function<void(std::string_view)>& visitor)
{
    for (std::size_t at = 0; at < lines.size();) {
        const TextLine line = textLineAt(lines, at);
        visitor(line.content);
        at = line.end;
    }
}

bool hasLines(std::string_view spelled)
{
    return spelled.find_first_of("\r\n") != std::string_view::npos;
}

Reading readSystemd(std::string_view spelled)
{
    Reading reading;
    reading.isText = hasLines(spelled);
    forEachLine(spelled, [&reading](std::string_view content) {
        if (isComment(content) && !reading.text.empty())
            return;
        const bool goesOn = endsInBackslash(content);
        if (goesOn)
            content.remove_suffix(1);
        reading.text += content;
        if (goesOn)
            reading.text += ' ';
    });
    reading.text = std::string(trimBlanks(reading.text));
    return reading;
}

Reading readSamba(std::string_view spelled)
{
    Reading reading;
    reading.isText = hasLines(spelled);
    std::string joined;
    forEachLine(spelled, [&joined](std::string_view content) {
        const std::string_view trimmed = trimBlanks(content);
        const bool goesOn = !trimmed.empty() && trimmed.back() == '\\';
        joined += goesOn ? content.substr(0, std::size_t(trimmed.end() - content.begin()) - 1) : content;
    });
    for (const char c : trimBlanks(joined)) {
        if (!isBlank(c) || reading.text.empty() || !isBlank(reading.text.back()))
            reading.text += c;
    }
    return reading;
}

// What Python's strip takes for blanks: those of Unicode, and the control characters that separate.
bool isPythonBlank(char32_t c)
{
    return (c >= 0x09 && c <= 0x0D) || (c >= 0x1C && c <= 0x20) || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
           c == 0x3000;
}

std::string_view trimPythonBlanks(std::string_view text)
{
    std::size_t begin = text.size(); // of the first character that is not blank
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t size = std::max<std::size_t>(utf8Length(text.substr(at)), 1);
        if (!isPythonBlank(utf8CodePoint(text.substr(at, size)))) {
            begin = std::min(begin, at);
            end = at + size;
        }
        at += size;
    }
    return begin < end ? text.substr(begin, end - begin) : std::string_view();
}

// Whether comments that begin with such a mark follow lines of a value. One that follows the separator of a
// single line is not in its value.
bool hasCommentsAfterLines(std::string_view spelled, std::string_view marks)
{
    return findCommentAfterBlank(spelled, hasLines(spelled) ? 0 : 1, marks) < spelled.size();
}

Reading readPythonWith(std::string_view marks, std::string_view spelled)
{
    Reading reading;
    reading.isText = hasLines(spelled);
    bool isFirst = true;
    forEachLine(spelled, [&](std::string_view content) {
        if (!isFirst && isComment(content))
            return;
        if (!isFirst)
            reading.text += '\n';
        const std::size_t from = reading.isText ? 0 : 1;
        reading.text += trimPythonBlanks(content.substr(0, findCommentAfterBlank(content, from, marks)));
        isFirst = false;
    });
    return reading;
}

Reading readPython(std::string_view spelled)
{
    return readPythonWith({}, spelled);
}

Reading readCommentedPython(std::string_view spelled)
{
    return readPythonWith(";", spelled);
}

Reading readSupervisor(std::string_view spelled)
{
    return readPythonWith(";#", spelled);
}

Reading readPlain(std::string_view spelled)
{
    return {std::string(spelled)};
}

std::vector<std::string> writePlain(std::string_view text, std::string_view)
{
    return {std::string(text)};
}

// Whether a "%" is neither "%%" nor the beginning of "%(name)s".
bool hasLoosePercent(std::string_view text)
{
    for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 2)) {
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (next != '%' && !(next == '(' && text.find(")s", at) != std::string_view::npos))
            return true;
    }
    return false;
}

// Programs read with interpolation of "%" or without. What the value had before tells how it is read, and
// without any "%" there both must give the text.
std::vector<std::string> writePython(std::string_view text, std::string_view before)
{
    const bool hasPercent = text.find('%') != std::string_view::npos;
    if (hasPercent &&
        (before.find('%') == std::string_view::npos || (hasLoosePercent(text) && !hasLoosePercent(before))))
        return {};
    return {std::string(text)};
}

// The comments within its lines have no place among others.
std::vector<std::string> writeCommentedPython(std::string_view text, std::string_view before)
{
    return hasCommentsAfterLines(before, ";") ? std::vector<std::string>() : writePython(text, before);
}

std::vector<std::string> writeSupervisor(std::string_view text, std::string_view before)
{
    return hasCommentsAfterLines(before, ";#") ? std::vector<std::string>() : writePython(text, before);
}

std::string explainPython(std::string_view text)
{
    return text.find('%') == std::string_view::npos
               ? std::string()
               : Reason::tr("for some programs a \"%\" refers to another value in a file of configparser, "
                            "and for others it is a mere character");
}

} // namespace

const Spelling systemdSpelling{readSystemd, writePlain};
const Spelling sambaSpelling{readSamba, writePlain, nullptr, nullptr, nullptr, nullptr, explainBracket};
const Spelling pythonSpelling{readPython, writePython, explainPython};
const Spelling commentedPythonSpelling{readCommentedPython, writeCommentedPython, explainPython};
const Spelling supervisorSpelling{readSupervisor, writeSupervisor, explainPython};
const Spelling plainSpelling{readPlain, writePlain};

} // namespace Repository::Documents
