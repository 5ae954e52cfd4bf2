#include "repository/transfer/TextInsertion.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/WrittenEntries.h"
#include "repository/transfer/PartWriter.h"
#include "repository/transfer/SubtreeReader.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace Repository {

using Documents::Entry;
using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::Values::toVariant;
using FrameworkCore::Values::Type;

namespace {

bool isBelow(std::string_view path, std::string_view group)
{
    return group.empty() ? !path.empty()
                         : path.size() > group.size() && path[group.size()] == '.' &&
                               path.substr(0, group.size()) == group;
}

// The one that an entry lies in, or is.
std::optional<std::string_view> outermostArray(const Documents::ArrayGroups& arrays, std::string_view path)
{
    if (arrays.contain({}))
        return std::string_view();
    for (std::size_t end = path.find('.'); !path.empty(); end = path.find('.', end + 1)) {
        if (arrays.contain(path.substr(0, end)))
            return path.substr(0, end);
        if (end == std::string_view::npos)
            break;
    }
    return {};
}

// Files of lines may come back to a group. Siblings keep their order.
void bringIntoTreeOrder(std::vector<Entry>& entries)
{
    std::unordered_map<std::string, std::size_t> places; // of all groups and entries, as they come first
    const auto placeOf = [&](std::string_view path) {
        return places.try_emplace(std::string(path), places.size()).first->second;
    };
    std::vector<std::pair<std::vector<std::size_t>, std::size_t>> keys;
    keys.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        std::vector<std::size_t> key;
        const std::string_view path = entries[i].path;
        for (std::size_t end = path.find('.'); !path.empty(); end = path.find('.', end + 1)) {
            key.push_back(placeOf(path.substr(0, end)));
            if (end == std::string_view::npos)
                break;
        }
        keys.emplace_back(std::move(key), i);
    }
    if (std::is_sorted(keys.begin(), keys.end()))
        return;
    std::sort(keys.begin(), keys.end());
    std::vector<Entry> ordered;
    ordered.reserve(entries.size());
    for (const auto& [key, place] : keys)
        ordered.push_back(std::move(entries[place]));
    entries = std::move(ordered);
}

std::vector<Entry> entriesOf(const Documents::Format& format, const Documents::Document& document)
{
    std::vector<Entry> entries;
    const bool isLinked = document.isLinked({});
    format.visitImport(document, [&](const Entry& entry) {
        if (!isLinked || document.originOf(entry.path) != Documents::Document::Origin::Reference)
            entries.push_back(entry);
    });
    if (entries.empty())
        entries.emplace_back(); // the group itself, where there is none yet
    if (format.isInTreeOrder())
        return entries;
    bringIntoTreeOrder(entries);
    // A group without entries has one that says so, which comes after it and says more.
    const auto isGroupAgain = [](const Entry& a, const Entry& b) {
        return a.path == b.path && a.value.type == Type::Group && b.value.type == Type::Group;
    };
    const auto last = std::unique(entries.rbegin(), entries.rend(), isGroupAgain);
    entries.erase(entries.begin(), last.base());
    return entries;
}

SubtreePart partOf(const Entry& entry)
{
    const bool isGroup = entry.value.type == Type::Group;
    const bool isFiner = FrameworkCore::Values::isFinerThanAttributes(entry.value);
    return {{},
            0,
            isGroup ? QVariant() : toVariant(entry.value),
            AccessMode::ReadWrite,
            isGroup,
            isFiner ? std::optional(entry.value) : std::nullopt};
}

} // namespace

TextInsertion::TextInsertion(const Documents::Format& textFormat, const Documents::Document& text,
                             std::size_t textSize, const Comments& textComments, QString place)
    : format(textFormat), document(text), size(textSize), comments(textComments), path(std::move(place)),
      entries(entriesOf(format, document)), arrays(entries)
{
}

Outcome TextInsertion::run(Transaction& transaction, TransferReport& report)
{
    const Node& there = transaction.getNodes().nearest(path);
    const bool hasEntries =
        !entries.empty() && (!entries.back().path.empty() || entries.back().value.type != Type::Group);
    const std::string type =
        there.backend && hasEntries ? there.backend->getDescription().type.toStdString() : std::string();
    const bool isAlike =
        type == format.getName() && format.takesText(entries) && !format.declaresNames(document);
    const bool isNew = !there.hasPath(path);
    const auto whole = isAlike && isNew ? document.excerpt({}) : std::nullopt;
    const bool takesPlaces = isAlike || (!isNew && !comments.empty() && Documents::findFormat(type));
    const Places places = takesPlaces ? newPlaces(transaction.getNodes(), *there.backend) : Places();
    if (isAlike)
        written = &document;
    else if (!places.empty())
        translate(*there.backend, places);
    PartWriter writer(transaction, whole || places.empty() ? path : there.getPath(), report, entries.size());
    Outcome outcome;
    std::size_t wholeEnd = 0;
    for (std::size_t i = 0; outcome.ok() && i < entries.size(); ++i) {
        if (i >= wholeEnd && !writer.isNew())
            outcome = beginWhole(writer, transaction.getNodes(), places, i, wholeEnd);
        const Entry& entry = entries[i];
        const bool isGroup = entry.value.type == Type::Group;
        const bool holdsOthers = i + 1 < entries.size() && isBelow(entries[i + 1].path, entry.path);
        if (outcome.ok() && !(isGroup && holdsOthers))
            outcome = writer.add(joinedPath(path, entry.path), partOf(entry));
    }
    const bool isWritten = outcome.ok() && ((whole && writer.isNew() && writer.writeExcerpt(*whole)) ||
                                            writer.writeCommented(comments));
    if (outcome.ok() && !isWritten)
        outcome = writer.writeDocuments();
    if (outcome.ok())
        writer.finish();
    return outcome;
}

// A copy of the file with all that is new, as the file would have it written, and with the comments.
void TextInsertion::translate(const Backend& target, const Places& places)
{
    const std::string type = target.getDescription().type.toStdString();
    placeInWritten = pathBytes(pathAfter(path, target.getName().size()));
    auto copy = Documents::makeDocument(type);
    copy->parseAgain(target.getBytes());
    Comments carried;
    for (const auto& [begin, place] : places) {
        std::vector<Entry> below(entries.begin() + std::ptrdiff_t(begin),
                                 entries.begin() + std::ptrdiff_t(place.end));
        for (Entry& entry : below)
            entry.path.erase(0, std::min(place.top.size() + 1, entry.path.size()));
        const std::string there = Documents::joinPath(placeInWritten, place.top);
        std::size_t refused = 0;
        if (!copy->insertAll(there, below, refused).ok())
            return;
        for (Documents::CarriedComment& comment : Documents::commentsBelow(place.top, comments)) {
            comment.path = comment.path.empty() ? there : Documents::joinPath(there, comment.path);
            carried.push_back(std::move(comment));
        }
    }
    std::string text = copy->getBytes();
    Documents::addComments(
        text, [&] { return Documents::makeDocument(type); }, carried);
    copy->parseAgain(std::move(text));
    translated = std::move(copy);
    written = translated.get();
}

std::size_t TextInsertion::endOf(std::size_t begin, std::string_view group) const
{
    std::size_t end = begin + 1;
    while (end < entries.size() && isBelow(entries[end].path, group))
        ++end;
    return end;
}

// Where nothing is yet in a file of the same type. None where these are too many to have the file read for
// each of them. What is missing in an array comes with all of that.
TextInsertion::Places TextInsertion::newPlaces(const NodeWriter& nodes, const Backend& target) const
{
    Places places;
    for (std::size_t i = 0; i < entries.size();) {
        const std::string& first = entries[i].path;
        const QString place = joinedPath(path, first);
        const Node& there = nodes.nearest(place);
        const QString known = there.getPath();
        const std::size_t knownSize = pathBytes(pathAfter(known, path.size())).size();
        const std::string top = first.substr(0, first.find('.', knownSize + 1));
        const auto array = outermostArray(arrays, first);
        const bool isNew = there.backend == &target && known.size() < place.size() && !top.empty() &&
                           !(array && isBelow(top, *array));
        const std::size_t next = isNew ? endOf(i, top) : i + 1;
        if (isNew)
            places[i] = {next, top};
        i = next;
    }
    return Documents::canTakeExcerpts(places.size(), size + target.getBytes().size()) ? places : Places();
}

Outcome TextInsertion::beginWhole(PartWriter& writer, const NodeWriter& nodes, const Places& places,
                                  std::size_t begin, std::size_t& end) const
{
    Outcome outcome = writer.endWhole();
    const auto place = places.find(begin);
    auto excerpt = place == places.end() || !written
                       ? std::nullopt
                       : written->excerpt(Documents::joinPath(placeInWritten, place->second.top));
    if (!outcome.ok())
        return outcome;
    if (!excerpt)
        return beginArrays(writer, nodes, begin, end);
    end = place->second.end;
    return writer.beginWhole(joinedPath(path, place->second.top), std::move(excerpt));
}

// Whether the array that comes has the same entries of the same types as the one that is there.
bool TextInsertion::isOfOneShape(const NodeWriter& nodes, std::string_view array, std::size_t begin,
                                 std::size_t end) const
{
    const QString place = joinedPath(path, std::string(array));
    const Node* const there = nodes.find(place);
    if (!there || !there->backend || there->backend->isArray(place) == false)
        return false;
    const SubtreeReader reader(nodes.getTree(), *there);
    std::unordered_map<std::string, Type> types;
    for (const SubtreePart& part : reader.getParts())
        types.emplace(pathBytes(pathAfter(part.fullPath, path.size())), part.exact().type);
    std::size_t known = 0;
    for (std::size_t i = begin; i < end; ++i) {
        const auto found = types.find(entries[i].path);
        if (found != types.end() && found->second == entries[i].value.type)
            ++known;
        else if (entries[i].value.type != Type::Group || endOf(i, entries[i].path) == i + 1)
            return false;
    }
    return known == types.size() && reader.check(true).ok();
}

// An array replaces what is in its place, unless that differs in nothing but values; where nothing is yet, it
// comes with all that is new around it.
Outcome TextInsertion::beginArrays(PartWriter& writer, const NodeWriter& nodes, std::size_t begin,
                                   std::size_t& end) const
{
    const std::string& first = entries[begin].path;
    const QString missing = writer.firstMissing(joinedPath(path, first));
    const auto array = outermostArray(arrays, first);
    if (array && (missing.isEmpty() || isBelow(pathBytes(missing), pathBytes(joinedPath(path, *array))))) {
        end = endOf(begin, *array);
        return isOfOneShape(nodes, *array, begin, end) ? Outcome()
                                                       : writer.beginWhole(joinedPath(path, *array));
    }
    const bool isList = entries[begin].value.type == Type::StringList;
    if (isList && missing.isEmpty() && writer.isGroup(joinedPath(path, first))) {
        end = begin + 1;
        return writer.beginWhole(joinedPath(path, first));
    }
    if (missing.isEmpty())
        return {};
    const std::string top = pathBytes(pathAfter(missing, path.size()));
    const std::size_t topEnd = endOf(begin, top);
    const bool hasArrays =
        std::any_of(entries.begin() + std::ptrdiff_t(begin), entries.begin() + std::ptrdiff_t(topEnd),
                    [&](const Entry& entry) { return outermostArray(arrays, entry.path).has_value(); });
    end = hasArrays ? topEnd : end;
    return hasArrays ? writer.beginWhole(missing) : Outcome();
}

} // namespace Repository
