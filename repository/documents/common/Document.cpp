#include "repository/documents/common/Document.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/common/TextEncoding.h"

#include <algorithm>
#include <new>

namespace Repository::Documents {

Outcome outcomeAt(std::string_view text, std::size_t offset, std::string error)
{
    Outcome fault{std::move(error), 1, 1};
    std::size_t lineStart =
        startsWith(text.substr(0, offset), utf8ByteOrderMark) ? utf8ByteOrderMark.size() : 0;
    for (std::size_t i = 0; i < std::min(offset, text.size()); ++i) {
        const bool pair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (text[i] == '\n' || (text[i] == '\r' && !pair)) {
            ++fault.line;
            lineStart = i + 1;
        }
    }
    for (std::size_t i = lineStart; i < std::min(offset, text.size()); ++fault.column)
        i += std::max<std::size_t>(utf8Length(text.substr(i)), 1);
    return fault;
}

void Document::visitSpans(const SpanVisitor& visitor) const
{
    visit([&](const Entry& entry) {
        if (const auto span = locate(entry.path))
            visitor(entry.path, *span);
    });
}

std::string Document::comment(std::string_view path) const
{
    const auto written = excerpt(path);
    return written ? joinComments(written->above, written->after) : std::string();
}

TextEncoding Document::getEncoding() const
{
    return {};
}

Outcome Document::endRun(std::string&)
{
    return {};
}

void Document::parseAgain(std::string bytes)
{
    if (!parse(std::move(bytes)).ok())
        throw std::bad_alloc();
}

Outcome Document::replaceAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& refused)
{
    std::string before = getBytes();
    refused = 0;
    Outcome outcome = remove(path);
    if (outcome.ok()) {
        const auto element = insertElement(path, entries); // elements behind it have moved up
        outcome = element ? *element : insertAll(path, entries, refused);
    }
    if (!outcome.ok())
        parseAgain(std::move(before));
    return outcome;
}

Outcome Document::insertAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& refused)
{
    std::string before = getBytes();
    const auto place = [path](const Entry& entry) {
        return entry.path.empty() ? std::string(path) : joinPath(path, entry.path);
    };
    beginRun();
    Outcome outcome;
    for (refused = 0; refused < entries.size(); ++refused) {
        outcome = insert(place(entries[refused]), entries[refused].value);
        if (!outcome.ok())
            break;
    }
    if (outcome.ok()) {
        std::string lacking;
        outcome = endRun(lacking);
        const auto isLacking = [&](const Entry& entry) { return place(entry) == lacking; };
        refused = std::size_t(std::find_if(entries.begin(), entries.end(), isLacking) - entries.begin());
    }
    if (!outcome.ok())
        parseAgain(std::move(before));
    return outcome;
}

} // namespace Repository::Documents
