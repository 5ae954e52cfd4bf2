#include "repository/fleet/EtcdBackend.h"

#include "repository/common/Texts.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/fleet/KeyCodec.h"
#include "repository/fleet/ValueCodec.h"

#include <map>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

constexpr std::size_t mostBytes = std::size_t(1) << 20; // of a value; a store takes 1.5 MiB in one request

// By path; nothing for a text that lineOf has not made.
std::optional<std::map<std::string, Value, TreeOrder>> parsed(const std::string& text)
{
    std::map<std::string, Value, TreeOrder> values;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find('\n', begin);
        const std::size_t blank = text.find(' ', begin);
        if (end == std::string::npos || blank > end)
            return {};
        const auto path = KeyCodec::pathOf(std::string_view(text).substr(begin, blank - begin));
        auto value = ValueCodec::decode(std::string_view(text).substr(blank + 1, end - blank - 1));
        if (!path || !value)
            return {};
        values.insert_or_assign(values.end(), *path, std::move(value->value));
        begin = end + 1;
    }
    return values;
}

} // namespace

std::string EtcdBackend::lineOf(const std::string& path, const Value& value)
{
    return KeyCodec::keyOf(path) + ' ' + ValueCodec::encode(value, {}) + '\n';
}

EtcdBackend::EtcdBackend(Description storeDescription, std::shared_ptr<StoreState> storeState)
    : Backend(std::move(storeDescription)), state(std::move(storeState))
{
}

Outcome EtcdBackend::refusal(const QString& reason) const
{
    return Outcome(StatusCode::BackendFailure, reason).in(description.filePath);
}

Backend::Changes EtcdBackend::take(const std::vector<SharedEntries::Arrival>& arrivals)
{
    const std::lock_guard lock(state->mutex);
    return {state->entries.take(arrivals), false};
}

Backend::Changes EtcdBackend::takeAll(std::vector<SharedEntries::Arrival> all)
{
    const std::lock_guard lock(state->mutex);
    return {state->entries.takeAll(std::move(all)), false};
}

void EtcdBackend::visitEntries(const std::function<void(const Documents::Entry&)>& visitor) const
{
    const std::lock_guard lock(state->mutex);
    state->entries.visit(visitor);
}

bool EtcdBackend::contains(const QString& path) const
{
    const std::lock_guard lock(state->mutex);
    return state->entries.contains(relative(path));
}

Backend::Progress EtcdBackend::getProgress() const
{
    const std::lock_guard lock(state->mutex);
    return {state->loaded, state->toLoad};
}

QString EtcdBackend::getState() const
{
    const std::lock_guard lock(state->mutex);
    const QStringList users = state->users.values();
    return users.isEmpty()
               ? state->describeLink()
               : Texts::tr("%1; open for %2").arg(state->describeLink(), users.join(QStringLiteral(", ")));
}

Backend::SiblingPosition EtcdBackend::positionOf(const QString& path) const
{
    const std::lock_guard lock(state->mutex);
    const auto before = state->entries.siblingBefore(relative(path));
    return before ? SiblingPosition{Documents::SiblingPlace::Kind::After, absolute(*before)}
                  : SiblingPosition{Documents::SiblingPlace::Kind::First, {}};
}

std::optional<Value> EtcdBackend::finerValueAt(const QString& path) const
{
    const std::lock_guard lock(state->mutex);
    const Value* const value = state->entries.find(relative(path));
    return value && Documents::isFinerThanAttributes(*value) ? std::optional(*value) : std::nullopt;
}

std::optional<std::string> EtcdBackend::spell(const QString& path) const
{
    const std::lock_guard lock(state->mutex);
    const Value* const value = state->entries.find(relative(path));
    return value && value->type != Type::Group ? std::optional(ValueCodec::encode(*value, {})) : std::nullopt;
}

// What is foreign cannot be edited, so that it needs not come back.
std::string EtcdBackend::getBytes() const
{
    const std::lock_guard lock(state->mutex);
    std::string text;
    state->entries.visitOwn(
        [&text](const std::string& path, const Value& value) { text += lineOf(path, value); });
    return text;
}

quint64 EtcdBackend::getRevision() const
{
    const std::lock_guard lock(state->mutex);
    return state->entries.getRevision();
}

Outcome EtcdBackend::checkOpen() const
{
    return closed ? Outcome(StatusCode::BackendFailure, Texts::tr("its backend is being closed")) : Outcome();
}

Outcome EtcdBackend::checkEdit(const std::string& path, const Value& value) const
{
    Outcome outcome = checkOpen();
    if (outcome.ok() && isLocked())
        outcome = refuseLocked();
    if (outcome.ok())
        outcome = state->checkWritable();
    if (!outcome.ok())
        return outcome;
    if (state->entries.isForeign(path))
        return Outcome(StatusCode::NotWritable,
                       Texts::tr("another program has written it in a form that is not known here"))
            .advise(Texts::tr("use that program to change it"));
    if (ValueCodec::encode(value, {}).size() > mostBytes)
        return Outcome(StatusCode::BackendFailure, Texts::tr("it is larger than 1 MiB, which a store "
                                                             "does not take as one value"));
    return outcome;
}

Outcome EtcdBackend::setOne(const std::string& path, const Value& value)
{
    Outcome outcome = checkEdit(path, value);
    if (!outcome.ok())
        return outcome;
    if (!state->entries.find(path))
        return Outcome(StatusCode::NotFound, Texts::tr("the store has no such entry"));
    edit(path, value);
    return outcome;
}

void EtcdBackend::edit(const std::string& path, const std::optional<Value>& value)
{
    state->entries.edit(path, value);
    hasEdited = true;
}

Outcome EtcdBackend::checkInsertion(const std::string& path, const Value& value) const
{
    if (!KeyCodec::isPath(path))
        return Outcome(StatusCode::BackendFailure, Texts::tr("a name in it is not one that files can have"))
            .advise(Texts::tr("write %, ; and control characters in names as %25, %3B and so on, with two "
                              "upper-case hex digits"));
    const Value* const present = state->entries.find(path);
    if (present && present->type != Type::Group && value.type != Type::Group)
        return Outcome(StatusCode::AlreadyExists, Texts::tr("it exists already"));
    return checkEdit(path, value);
}

// A group in which something lies needs no entry.
void EtcdBackend::insertChecked(const std::string& path, const Value& value)
{
    if (value.type != Type::Group || !state->entries.contains(path))
        edit(path, value);
}

Outcome EtcdBackend::removeAll(const std::string& path)
{
    const std::vector<std::string> paths = state->entries.pathsWithin(path);
    if (paths.empty())
        return Outcome(StatusCode::NotFound, Texts::tr("the store has no such entry"));
    for (const std::string& each : paths) {
        Outcome outcome = checkEdit(each, {});
        if (!outcome.ok())
            return outcome;
    }
    for (const std::string& each : paths)
        edit(each, std::nullopt);
    return {};
}

std::optional<Outcome> EtcdBackend::set(const QString& path, const Value& value)
{
    const std::lock_guard lock(state->mutex);
    if (isEditing)
        return {};
    Outcome outcome = setOne(relative(path), value);
    state->work.notify_all();
    return outcome;
}

void EtcdBackend::beginEdit()
{
    const std::lock_guard lock(state->mutex);
    isEditing = true;
    hasEdited = false;
    state->entries.beginBatch();
}

void EtcdBackend::endEdit()
{
    const std::lock_guard lock(state->mutex);
    isEditing = false;
    state->entries.endBatch();
    state->work.notify_all();
}

Outcome EtcdBackend::write(const QString& path, const Value& value)
{
    const std::lock_guard lock(state->mutex);
    return setOne(relative(path), value);
}

Outcome EtcdBackend::insert(const QString& path, const Value& value)
{
    const std::lock_guard lock(state->mutex);
    const std::string place = relative(path);
    Outcome outcome = checkInsertion(place, value);
    if (outcome.ok())
        insertChecked(place, value);
    return outcome;
}

Outcome EtcdBackend::remove(const QString& path)
{
    const std::lock_guard lock(state->mutex);
    return removeAll(relative(path));
}

Outcome EtcdBackend::respell(const QString& path, const std::string& spelling)
{
    const auto decoded = ValueCodec::decode(spelling);
    return decoded ? write(path, decoded->value) : refusal(Texts::tr("it was not spelt by a store"));
}

// Edits what differs, so that the store is written no more than that. To take back what was edited just now
// is possible at any time.
Outcome EtcdBackend::replaceText(std::string bytes)
{
    const auto wanted = parsed(bytes);
    if (!wanted)
        return refusal(Texts::tr("it is not the text of a store"));
    const std::lock_guard lock(state->mutex);
    Outcome outcome = checkOpen();
    if (outcome.ok() && !hasEdited)
        outcome = state->checkWritable();
    if (!outcome.ok())
        return outcome;
    SharedEntries& entries = state->entries;
    std::vector<std::string> unwanted;
    entries.visitOwn([&](const std::string& path, const Value&) {
        if (wanted->count(path) == 0)
            unwanted.push_back(path);
    });
    for (const std::string& path : unwanted)
        entries.edit(path, std::nullopt);
    for (const auto& [path, value] : *wanted) {
        const Value* const present = entries.find(path);
        if (!present || !isSame(*present, value))
            entries.edit(path, value);
    }
    return outcome;
}

Outcome EtcdBackend::insertAll(const QString& path, const std::vector<Documents::Entry>& list,
                               std::size_t& refused)
{
    const std::lock_guard lock(state->mutex);
    const std::string root = relative(path);
    const auto placeOf = [&root](const Documents::Entry& entry) {
        return entry.path.empty() ? root : Documents::joinPath(root, entry.path);
    };
    for (refused = 0; refused < list.size(); ++refused) {
        const Outcome outcome = checkInsertion(placeOf(list[refused]), list[refused].value);
        if (!outcome.ok())
            return outcome;
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        const bool isLeading = list[i].value.type == Type::Group && i + 1 < list.size() &&
                               isWithin(list[i + 1].path, list[i].path);
        if (!isLeading)
            insertChecked(placeOf(list[i]), list[i].value);
    }
    return {};
}

Outcome EtcdBackend::replaceAll(const QString& path, const std::vector<Documents::Entry>& list,
                                std::size_t& refused)
{
    refused = 0;
    const Outcome outcome = remove(path);
    return outcome.ok() ? insertAll(path, list, refused) : outcome;
}

} // namespace Repository
