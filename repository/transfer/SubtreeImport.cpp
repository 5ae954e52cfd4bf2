#include "repository/transfer/SubtreeImport.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"
#include "repository/store/Refusals.h"
#include "repository/transfer/PartWriter.h"
#include "repository/transfer/SubtreeReader.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace Repository {

using Documents::Entry;
using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
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

} // namespace

SubtreeImport::SubtreeImport(AttributeStore& attributes, const QString& rootPath, const QString& textType)
    : store(attributes), path(rootPath), type(textType), format(Documents::findFormat(type.toStdString()))
{
}

Outcome SubtreeImport::run(const QByteArray& text, TransferReport& report) const
{
    if (!format)
        return Refusals::noType(type);
    const std::string bytes = text.toStdString();
    const auto document = Documents::makeDocument(Documents::recogniseDialect(type.toStdString(), {}, bytes));
    const Documents::Outcome parsed = document->parse(bytes);
    if (!parsed.ok())
        return {StatusCode::BackendFailure, QStringLiteral("the text is not %1: line %2, column %3: %4")
                                                .arg(type)
                                                .arg(parsed.line)
                                                .arg(parsed.column)
                                                .arg(QString::fromStdString(parsed.error))};
    if (!path.isEmpty() && !isValidPath(path))
        return Refusals::invalidPath(path);
    const auto stepName = [this] { return QStringLiteral("Import %1").arg(path); };
    return store.changeAll(stepName, {path},
                           [&](Transaction& transaction) { return put(*document, transaction, report); });
}

Outcome SubtreeImport::put(const Documents::Document& document, Transaction& transaction,
                           TransferReport& report) const
{
    std::vector<Entry> entries;
    format->visitImport(document, [&](const Entry& entry) { entries.push_back(entry); });
    if (!format->isInTreeOrder())
        bringIntoTreeOrder(entries);
    const Documents::ArrayGroups arrays(entries);
    PartWriter writer(transaction, path, report, entries.size());
    Outcome outcome;
    std::size_t wholeEnd = 0;
    for (std::size_t i = 0; outcome.ok() && i < entries.size(); ++i) {
        const Entry& entry = entries[i];
        if (i >= wholeEnd && !writer.isNew())
            outcome = beginWhole(writer, entries, arrays, i, wholeEnd);
        const bool isGroup = entry.value.type == Type::Group;
        const bool holdsOthers = i + 1 < entries.size() && isBelow(entries[i + 1].path, entry.path);
        if (outcome.ok() && !(isGroup && (holdsOthers || entry.path.empty())))
            outcome = writer.add(
                joinedPath(path, entry.path),
                {{}, 0, isGroup ? QVariant() : toVariant(entry.value), AccessMode::ReadWrite, isGroup});
    }
    if (outcome.ok())
        outcome = writer.writeDocuments();
    if (outcome.ok())
        writer.finish();
    return outcome;
}

// An array replaces what is in its place; where nothing is yet, it comes with all that is new around it.
Outcome SubtreeImport::beginWhole(PartWriter& writer, const std::vector<Entry>& entries,
                                  const Documents::ArrayGroups& arrays, std::size_t begin,
                                  std::size_t& end) const
{
    const std::string& first = entries[begin].path;
    const auto endOf = [&](std::string_view group) {
        std::size_t last = begin + 1;
        while (last < entries.size() && isBelow(entries[last].path, group))
            ++last;
        return last;
    };
    const QString missing = writer.firstMissing(joinedPath(path, first));
    const auto array = outermostArray(arrays, first);
    if (array && (missing.isEmpty() || isBelow(pathBytes(missing), pathBytes(joinedPath(path, *array))))) {
        end = endOf(*array);
        return writer.beginWhole(joinedPath(path, *array));
    }
    const bool isList = entries[begin].value.type == Type::StringList;
    if (isList && missing.isEmpty() && writer.isGroup(joinedPath(path, first))) {
        end = begin + 1;
        return writer.beginWhole(joinedPath(path, first));
    }
    if (missing.isEmpty())
        return {};
    const std::string top = pathBytes(pathAfter(missing, path.size()));
    const std::size_t topEnd = endOf(top);
    const bool hasArrays =
        std::any_of(entries.begin() + std::ptrdiff_t(begin), entries.begin() + std::ptrdiff_t(topEnd),
                    [&](const Entry& entry) { return outermostArray(arrays, entry.path).has_value(); });
    end = hasArrays ? topEnd : end;
    return hasArrays ? writer.beginWhole(missing) : Outcome();
}

} // namespace Repository
