// Where the values of a backend are in its text, and parts of what has changed in that.

#include "repository/backends/DocumentBackend.h"
#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/common/ValueSpans.h"
#include "repository/merge/UnifiedDiff.h"

#include <algorithm>
#include <set>

namespace Repository {

using Documents::Document;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

// Of the entry, or of the first one below it that has a value.
std::optional<Documents::Span> locateFirst(const Document& document, const std::string& path)
{
    auto span = document.locate(path);
    if (span || !(path.empty() || document.contains(path)))
        return span;
    std::string first;
    bool isFound = false;
    document.visit([&](const Documents::Entry& entry) {
        if (isFound || entry.value.type == FrameworkCore::Values::Type::Group || !isWithin(entry.path, path))
            return;
        first = entry.path;
        isFound = true;
    });
    return isFound ? document.locate(first) : std::nullopt;
}

} // namespace

Outcome DocumentBackend::locate(const QString& path, TextPlace& place) const
{
    const std::string entry = relative(path);
    std::optional<Documents::Span> span;
    std::string text;
    {
        const std::lock_guard lock(mutex);
        if (content.isDamaged())
            return damage();
        const Document& document = content.getDocument();
        span = locateFirst(document, entry);
        if (!span)
            return {StatusCode::NotFound, QStringLiteral("there is no value")};
        text = content.getText();
        if (isReadable(description.accessMode))
            place.comment = QString::fromStdString(document.comment(entry));
    }
    const auto position = Documents::placeInFile(text, span->offset);
    place.position = {description.filePath, int(position.line), int(position.column)};
    return {};
}

// Parsed without the lock, which writers wait for.
Outcome DocumentBackend::findAt(int line, int column, QString& path) const
{
    const EditedDocument copy = getCopy();
    const Documents::ValueSpans spans(copy.getDocument());
    const auto* const found = spans.find(std::size_t(line), std::size_t(std::max(column, 1)));
    if (!found)
        return Outcome(StatusCode::NotFound, QStringLiteral("there is no value at the line or after it"))
            .in(description.filePath, line, std::max(column, 1));
    path = absolute(found->path);
    return {};
}

Outcome DocumentBackend::getReadableText(BackendText& text) const
{
    if (!isReadable(description.accessMode))
        return {StatusCode::NotReadable, QStringLiteral("the values of its file may not be read")};
    const EditedDocument copy = getCopy();
    const Documents::ValueSpans spans(copy.getDocument());
    std::set<std::string> unsaved;
    if (copy.hasEdits()) {
        for (DocumentChange& change :
             EditedDocument::changesBetween(copy.getType(), copy.getBase(), copy.getText()))
            unsaved.insert(std::move(change.path));
    }
    const std::string& bytes = spans.getText();
    const bool isUtf8 = Documents::isUtf8(bytes);
    std::size_t known = 0;
    const auto appendUpTo = [&](std::size_t end) {
        const char* const begin = bytes.data() + known;
        const int size = int(end - known);
        text.text += isUtf8 ? QString::fromUtf8(begin, size) : QString::fromLatin1(begin, size);
        known = end;
    };
    text.text.reserve(int(bytes.size()));
    text.values.reserve(int(spans.getValues().size()));
    for (const auto& [path, span] : spans.getValues()) {
        appendUpTo(span.offset);
        const int offset = text.text.size();
        appendUpTo(span.offset + span.length);
        text.values.append({absolute(path), offset, text.text.size() - offset, unsaved.count(path) > 0});
    }
    appendUpTo(bytes.size());
    return {};
}

std::vector<std::string> DocumentBackend::relativePaths(const Part& part) const
{
    std::vector<std::string> paths;
    for (const QString& path : part.paths)
        paths.push_back(relative(path));
    return paths;
}

Outcome DocumentBackend::textWith(Hunks which, const QStringList& hunks, std::string& text) const
{
    // In the encoding of what is edited, as a diff is one text.
    Documents::TextEncoding encoding;
    std::string before = content.getBase();
    std::string after = content.getText();
    Documents::TextEncoding().decode(before, {});
    encoding.decode(after, {});
    int found = 0;
    text = encoding.encode(withHunks(before, after, [&](const std::string& hunk) {
        const bool isThis = hunks.contains(QString::fromStdString(hunk));
        found += isThis ? 1 : 0;
        return isThis == (which == Hunks::These);
    }));
    return found == hunks.size() ? Outcome()
                                 : refusal(QStringLiteral("its changes are others by now"))
                                       .advise(QStringLiteral("look at them again"));
}

} // namespace Repository
