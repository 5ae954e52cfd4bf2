// Where the values of a backend are in its text, and parts of what has changed in that.

#include "repository/backends/DocumentBackend.h"
#include "repository/common/Texts.h"
#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/ComponentCodec.h"
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

// Of the entry, or of the first one below it that has a value. An element of which the document knows no
// place of its own is where its list is.
std::optional<Documents::Span> locateFirst(const Document& document, const std::string& path)
{
    auto span = document.locate(path);
    if (span)
        return span;
    const Documents::PathEnds ends = Documents::splitLast(path);
    const bool isEntry = path.empty() || document.contains(path);
    const auto index = isEntry ? std::nullopt : Documents::readIndex(ends.last);
    if (!isEntry && !index)
        return span;
    std::string first;
    bool isFound = false;
    document.visit([&](const Documents::Entry& entry) {
        const auto* const texts = std::get_if<std::vector<std::string>>(&entry.value.data);
        const bool isElement = index && texts && entry.path == ends.parent && *index < texts->size();
        const bool isBelow =
            entry.value.type != FrameworkCore::Values::Type::Group && isWithin(entry.path, path);
        if (isFound || !(isElement || isBelow))
            return;
        first = entry.path;
        isFound = true;
    });
    return isFound ? document.locate(first) : std::nullopt;
}

// A text as people read it, and where in it the bytes at the ends of values are. Values may share their
// bytes.
class PeopleText
{
public:
    explicit PeopleText(const Documents::ValueSpans& spans)
    {
        for (const auto& value : spans.getValues()) {
            bytes.push_back(value.span.offset);
            bytes.push_back(value.span.offset + value.span.length);
        }
        bytes.push_back(spans.getText().size());
        std::sort(bytes.begin(), bytes.end());
        bytes.erase(std::unique(bytes.begin(), bytes.end()), bytes.end());
        read(spans.getText());
    }

    const QString& getText() const { return text; }

    // Of one of these bytes, in QChars.
    int place(std::size_t byte) const
    {
        return places[std::size_t(std::lower_bound(bytes.begin(), bytes.end(), byte) - bytes.begin())];
    }

private:
    void read(const std::string& whole)
    {
        const bool isUtf8 = Documents::isUtf8(whole);
        std::size_t known = 0;
        text.reserve(int(whole.size()));
        places.reserve(bytes.size());
        for (const std::size_t byte : bytes) {
            const char* const begin = whole.data() + known;
            const int size = int(byte - known);
            text += isUtf8 ? QString::fromUtf8(begin, size) : QString::fromLatin1(begin, size);
            places.push_back(text.size());
            known = byte;
        }
    }

    QString text;
    std::vector<std::size_t> bytes; // in order
    std::vector<int> places;        // of each
};

} // namespace

Outcome DocumentBackend::locate(const QString& path, TextPlace& place) const
{
    const std::string entry = relative(path);
    std::optional<Documents::Span> span;
    std::string text;
    std::optional<std::string> base; // where it differs
    {
        const std::lock_guard lock(mutex);
        if (content.isDamaged())
            return damage();
        const Document& document = content.getDocument();
        span = locateFirst(document, entry);
        if (!span)
            return {StatusCode::NotFound, Texts::tr("there is no value")};
        text = content.getText();
        if (content.hasEdits())
            base = content.getBase();
        if (isReadable(description.accessMode))
            place.comment = QString::fromStdString(document.comment(entry));
    }
    // Some know comments only as they were read; parsed without the lock, which writers wait for.
    if (base && place.comment.isEmpty() && isReadable(description.accessMode))
        place.comment = QString::fromStdString(getCopy().getDocument().comment(entry));
    const auto position = Documents::placeInFile(text, span->offset);
    place.position = {description.filePath, int(position.line), int(position.column)};
    const LineBefore onDisk = base ? lineBefore(*base, text, position.line) : LineBefore{position.line, true};
    place.lineOnDisk = int(onDisk.line);
    place.isOnDisk = onDisk.isThere;
    return {};
}

// Parsed without the lock, which writers wait for.
Outcome DocumentBackend::findAt(int line, int column, QString& path) const
{
    const EditedDocument copy = getCopy();
    const std::size_t edited = copy.hasEdits()
                                   ? lineBefore(copy.getText(), copy.getBase(), std::size_t(line)).line
                                   : std::size_t(line);
    const Documents::ValueSpans spans(copy.getDocument());
    const auto* const found = spans.find(edited, std::size_t(std::max(column, 1)));
    if (!found)
        return Outcome(StatusCode::NotFound, Texts::tr("there is no value at the line or after it"))
            .in(description.filePath, line, std::max(column, 1));
    path = absolute(found->path);
    return {};
}

Outcome DocumentBackend::getReadableText(BackendText& text) const
{
    if (!isReadable(description.accessMode))
        return {StatusCode::NotReadable, Texts::tr("the values of its file may not be read")};
    const EditedDocument copy = getCopy();
    const Documents::ValueSpans spans(copy.getDocument());
    std::set<std::string> unsaved;
    if (copy.hasEdits()) {
        for (DocumentChange& change :
             EditedDocument::changesBetween(copy.getType(), copy.getBase(), copy.getText()))
            unsaved.insert(std::move(change.path));
    }
    const PeopleText people(spans);
    text.values.reserve(int(spans.getValues().size()));
    for (const auto& [path, span] : spans.getValues()) {
        const int offset = people.place(span.offset);
        const int length = people.place(span.offset + span.length) - offset;
        text.values.append({absolute(path), offset, length, unsaved.count(path) > 0});
    }
    text.text = people.getText();
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
    return found == hunks.size()
               ? Outcome()
               : refusal(Texts::tr("its changes are others by now")).advise(Texts::tr("look at them again"));
}

} // namespace Repository
