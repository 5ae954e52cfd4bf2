#include "repository/transfer/SubtreeExport.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"
#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/EncodedNames.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/Refusals.h"
#include "repository/transfer/SubtreeReader.h"
#include "repository/transfer/WrittenSubtree.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <unordered_set>

namespace Repository {

using Documents::Document;
using Documents::Entry;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::Reason;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::string placeBelow(const std::string& prefix, const std::string& path)
{
    return prefix.empty() || path.empty() ? prefix + path : Documents::joinPath(prefix, path);
}

bool isOfOneFormat(const QString& a, const QString& b)
{
    return Documents::formatOf(a.toStdString()) == Documents::formatOf(b.toStdString());
}

// Marks a group that looks like an array and is a plain group.
void markGroups(std::vector<Entry>& entries, const std::function<bool(std::string_view path)>& isArray)
{
    const Documents::ArrayGroups lookAlikes(entries);
    std::vector<std::string> groups;
    for (const std::string_view path : lookAlikes.getPaths()) {
        if (!isArray(path))
            groups.emplace_back(path);
    }
    for (std::string& group : groups) {
        const auto isIn = [&](const Entry& entry) {
            return entry.path.size() > group.size() && entry.path.compare(0, group.size(), group) == 0 &&
                   (group.empty() || entry.path[group.size()] == '.');
        };
        const auto first = std::find_if(entries.begin(), entries.end(), isIn);
        entries.insert(first, {std::move(group), Value(), false});
    }
}

// Texts of xml stay where they are among the elements.
Documents::NumberedComponent numberedName(std::string_view component)
{
    return component.front() == '#' ? Documents::NumberedComponent{component, 1}
                                    : Documents::splitNumber(component);
}

// Whether all entries of one name come in the order of their numbers.
bool areNumbersInOrder(const std::vector<Entry>& entries)
{
    std::unordered_set<std::string> seen;
    for (const Entry& entry : entries) {
        const std::string_view path = entry.path;
        for (std::size_t end = path.find('.'); !path.empty(); end = path.find('.', end + 1)) {
            const std::string_view place = path.substr(0, end);
            const auto numbered = numberedName(Documents::splitLast(place).last);
            const std::string_view group = Documents::splitLast(place).parent;
            const auto before = [&] {
                return Documents::joinPath(group, Documents::joinNumber(numbered.name, numbered.number - 1));
            };
            if (seen.emplace(place).second && numbered.number > 1 && seen.count(before()) == 0)
                return false;
            if (end == std::string_view::npos)
                break;
        }
    }
    return true;
}

// Entries of one name come one after the other, since some formats number them by their order.
void orderByNumbers(std::vector<Entry>& entries)
{
    using Step = std::pair<std::size_t, std::size_t>; // of a name, when it comes first, and the number
    std::unordered_map<std::string, std::size_t> places;
    std::vector<std::pair<std::vector<Step>, std::size_t>> keys;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        std::vector<Step> key;
        const std::string_view path = entries[i].path;
        for (std::size_t end = path.find('.'); !path.empty(); end = path.find('.', end + 1)) {
            const auto ends = Documents::splitLast(path.substr(0, end));
            const auto numbered = numberedName(ends.last);
            const auto place =
                places.try_emplace(Documents::joinPath(ends.parent, numbered.name), places.size());
            key.emplace_back(place.first->second, numbered.number);
            if (end == std::string_view::npos)
                break;
        }
        keys.emplace_back(std::move(key), i);
    }
    std::sort(keys.begin(), keys.end());
    std::vector<Entry> ordered;
    ordered.reserve(entries.size());
    for (const auto& [key, place] : keys)
        ordered.push_back(std::move(entries[place]));
    entries = std::move(ordered);
}

} // namespace

SubtreeExport::SubtreeExport(AttributeTree& attributes, QString rootPath, const QString& textType)
    : tree(attributes), path(std::move(rootPath)), type(textType), name(nameOf(path).toStdString()),
      writtenType(type.toStdString()), format(Documents::findFormat(writtenType))
{
}

Outcome SubtreeExport::run(QByteArray& text, TransferReport& report)
{
    if (!format)
        return Refusals::noType(type);
    std::vector<Entry> entries;
    std::optional<WrittenSubtree> written;
    {
        const std::shared_lock lock(tree.structure);
        const Node* const root = tree.nodeOf(path);
        if (!root)
            return Refusals::notFound();
        isWholeFile = root->isBackendRoot();
        SubtreeReader reader(tree, *root);
        const Outcome outcome = reader.check(false);
        if (!outcome.ok())
            return outcome;
        reader.addDeclarations(*format);
        const Backend* const writer = reader.getWriter();
        entries = entriesOf(*root, reader.takeParts());
        if (writer && isOfOneFormat(writer->getDescription().type, type))
            written.emplace(*writer, path, name, entries);
    }
    const auto sources = backendsTouching(tree, path);
    if (std::any_of(sources.begin(), sources.end(), [](const auto& source) { return source->isPrivate(); }))
        report.setPrivate();
    if (const auto same = written ? written->textOf(type.toStdString()) : std::nullopt) {
        text = QByteArray::fromStdString(*same);
        return TransferProgress(report, entries.size()).advance() ? Outcome() : TransferProgress::cancelled();
    }
    for (const auto& source : sources) {
        takeComments(*source);
        if (source->countTags(isAtOrBelow(path, source->getName()) ? path : source->getName()) > 0)
            report.setTagsLeftOut();
    }
    return writeAsRead(entries, text, report);
}

// Those at and below the path, and for a whole file those at its end.
void SubtreeExport::takeComments(const Backend& source)
{
    const QString& root = source.getName();
    const std::string own = isAtOrBelow(path, root) ? pathBytes(path.mid(root.size() + 1)) : std::string();
    const std::string above = isAtOrBelow(path, root) ? std::string() : pathBytes(root.mid(path.size() + 1));
    const Documents::Format* const encoding = isWholeFile ? source.getNameEncoding() : nullptr;
    for (Documents::CarriedComment& comment : Documents::commentsBelow(own, source.getComments())) {
        std::string below = comment.path;
        if (const auto original = encoding ? encoding->originalOf({below, {}, {}}) : std::nullopt)
            below = original->path;
        comment.path = placeBelow(above, below);
        comments.push_back(std::move(comment));
    }
}

// At the places that their entries have in the text.
template <typename Place>
void SubtreeExport::addComments(QByteArray& text, TransferReport& report, const Place& place) const
{
    if (comments.empty())
        return;
    std::vector<Documents::CarriedComment> placed = comments;
    for (Documents::CarriedComment& comment : placed)
        comment.path = place(comment.path);
    std::string bytes = text.toStdString();
    const std::size_t leftOut = Documents::addComments(
        bytes, [&] { return Documents::makeDocument(writtenType); }, placed);
    const QByteArray commented = QByteArray::fromStdString(bytes);
    const bool isAlike = dialectOf(commented) == dialectOf(text);
    report.setCommentsLeftOut(int(isAlike ? leftOut : comments.size()));
    if (isAlike)
        text = commented;
}

std::string SubtreeExport::dialectOf(const QByteArray& text) const
{
    constexpr int beginning = 16384;
    return Documents::recogniseDialect(type.toStdString(), {}, text.left(beginning).toStdString());
}

// A text that begins like a file of a dialect is written in that, since it is read in it.
Outcome SubtreeExport::writeAsRead(std::vector<Entry>& entries, QByteArray& text, TransferReport& report)
{
    Outcome outcome = write(entries, text, report);
    std::string read = dialectOf(text);
    if (!outcome.ok() || read == writtenType)
        return outcome;
    format = Documents::findFormat(read);
    writtenType = std::move(read);
    return write(entries, text, report);
}

// With the names that a file which encodes them is about.
std::vector<Entry> SubtreeExport::entriesOf(const Node& root, std::vector<SubtreePart> parts) const
{
    std::vector<Entry> entries;
    entries.reserve(parts.size());
    for (const SubtreePart& part : parts)
        entries.push_back({pathBytes(part.path()), part.exact(), {}});
    std::vector<SubtreePart>().swap(parts); // a great subtree is not held twice
    markGroups(entries, [&](std::string_view group) {
        const QString fullPath = joinedPath(path, group);
        const Node* const node = tree.nodeOf(fullPath);
        return !node || !node->backend || node->backend->isArray(fullPath).value_or(true);
    });
    const Documents::Format* const encoding = isWholeFile ? root.backend->getNameEncoding() : nullptr;
    if (!encoding)
        return entries;
    std::vector<Entry> originals;
    originals.reserve(entries.size());
    for (const Entry& entry : entries) {
        if (auto original = encoding->originalOf(entry))
            originals.push_back(*std::move(original));
    }
    return originals;
}

Outcome SubtreeExport::write(std::vector<Entry>& entries, QByteArray& text, TransferReport& report) const
{
    TransferProgress progress(report, entries.size());
    if (!areNumbersInOrder(entries))
        orderByNumbers(entries);
    const std::size_t count = entries.size();
    if (const auto whole = format->writeWhole(entries)) {
        const bool isEncoded = entries.size() > count;
        text = QByteArray::fromStdString(*whole);
        addComments(text, report, [&](const std::string& place) {
            return isEncoded ? Documents::EncodedNames::pathInWhole(place, entries) : place;
        });
        return progress.advance() ? Outcome() : TransferProgress::cancelled();
    }
    if (const std::string reason = format->explainRefusal(entries); !reason.empty())
        return refusal({}, reason);
    const auto saysMore = [](const Entry& entry) { return entry.isArray.has_value(); };
    const bool isPlain = std::none_of(entries.begin(), entries.end(), saysMore);
    const auto document = format->makeDocument();
    std::string prefix;
    Outcome outcome(StatusCode::BackendFailure, {});
    if (isPlain)
        outcome = fill(*document, entries, prefix, progress);
    if (outcome.ok()) {
        text = QByteArray::fromStdString(document->getBytes());
        addComments(text, report, [&](const std::string& place) { return placeBelow(prefix, place); });
        return outcome;
    }
    if (outcome == StatusCode::Cancelled)
        return outcome;
    outcome = writeEncoded(entries, text, progress);
    if (outcome.ok())
        addComments(text, report, [&](const std::string& place) {
            return format->encodedEntry({place, {}, {}}).path;
        });
    return outcome;
}

Outcome SubtreeExport::fill(Document& document, const std::vector<Entry>& entries, std::string& prefix,
                            TransferProgress& progress) const
{
    prefix = format->rootOf(entries, name);
    if (isWholeFile && !prefix.empty())
        return refusal({}, Reason::tr("its name is not in the file"));
    document.beginRun();
    for (const Entry& entry : entries) {
        if (!progress.advance())
            return TransferProgress::cancelled();
        const std::string place = placeBelow(prefix, entry.path);
        const bool isGroup = entry.value.type == Type::Group;
        Documents::Outcome inserted = document.insert(place, entry.value);
        if (!inserted.ok() && place.empty() && !isGroup && !isWholeFile) {
            prefix = name;
            inserted = document.insert(prefix, entry.value);
        }
        if (!inserted.ok() && !(isGroup && place.empty()))
            return refusal(entry.path, inserted.error);
    }
    std::string refused;
    const Documents::Outcome ended = document.endRun(refused);
    refused.erase(0, prefix.empty() ? 0 : prefix.size() + 1);
    return ended.ok() ? Outcome() : refusal(refused, ended.error);
}

// What the format has no form for, in its encoding of names.
Outcome SubtreeExport::writeEncoded(const std::vector<Entry>& entries, QByteArray& text,
                                    TransferProgress& progress) const
{
    const auto document = format->makeDocument();
    document->beginRun();
    for (const Entry& entry : entries) {
        if (!progress.advance())
            return TransferProgress::cancelled();
        const Entry encoded = format->encodedEntry(entry);
        const Documents::Outcome inserted = document->insert(encoded.path, encoded.value);
        if (!inserted.ok())
            return refusal(entry.path, inserted.error);
    }
    std::string refused;
    const Documents::Outcome ended = document->endRun(refused);
    if (!ended.ok())
        return refusal(refused, ended.error);
    std::string bytes = document->getBytes();
    format->declareNames(bytes);
    text = QByteArray::fromStdString(bytes);
    return {};
}

Outcome SubtreeExport::refusal(const std::string& place, const std::string& error) const
{
    return Outcome(StatusCode::BackendFailure, QString::fromStdString(error))
        .of(Outcome::Operation::Change, joinedPath(path, place));
}

} // namespace Repository
