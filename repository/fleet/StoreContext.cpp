#include "repository/fleet/StoreContext.h"

#include "host/FrameworkCore/Values/Text.h"
#include "host/FrameworkCore/Values/Utf8.h"
#include "repository/fleet/KeyCodec.h"
#include "repository/fleet/ValueCodec.h"

#include <QUuid>

namespace Repository {

using FrameworkCore::Values::startsWith;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

constexpr std::string_view attributes = "a/";
constexpr std::string_view sessions = "s/";
constexpr std::string_view metaBegin = R"({"format":1,"id":")";

// What follows the two; nothing where it does not begin so.
std::optional<std::string_view> after(std::string_view key, std::string_view prefix, std::string_view kind)
{
    if (!startsWith(key, prefix) || !startsWith(key.substr(prefix.size()), kind))
        return {};
    return key.substr(prefix.size() + kind.size());
}

// Of the keys that begin so; the prefix ends with a "/".
std::string endOf(std::string prefix)
{
    ++prefix.back();
    return prefix;
}

// A text that was written in no form that is known here, as it is.
Value foreignValue(const std::string& text)
{
    return {FrameworkCore::Values::isUtf8(text) ? Type::String : Type::ByteArray, text};
}

} // namespace

std::string StoreContext::attributeKey(std::string_view path) const
{
    return prefix + std::string(attributes) + KeyCodec::keyOf(path);
}

std::string StoreContext::keysEnd() const
{
    return endOf(prefix);
}

std::string StoreContext::attributesEnd() const
{
    return endOf(prefix + std::string(attributes));
}

std::optional<SharedEntries::Arrival> StoreContext::readAttribute(const std::string& key,
                                                                  const std::optional<std::string>& value,
                                                                  std::int64_t revision) const
{
    const auto name = after(key, prefix, attributes);
    auto path = name ? KeyCodec::pathOf(*name) : std::nullopt;
    if (!path)
        return {};
    SharedEntries::Arrival arrival{*std::move(path), {}, revision, false};
    if (!value)
        return arrival;
    arrival.stored.revision = revision;
    if (auto decoded = ValueCodec::decode(*value)) {
        arrival.stored.value = std::move(decoded->value);
        arrival.isOwn = startsWith(decoded->writer, session);
    } else {
        arrival.stored.value = foreignValue(*value);
        arrival.stored.isForeign = true;
    }
    return arrival;
}

std::optional<std::string> StoreContext::readSession(const std::string& key) const
{
    const auto name = after(key, prefix, sessions);
    return name ? std::optional(std::string(*name)) : std::nullopt;
}

std::string StoreContext::newMeta()
{
    return std::string(metaBegin) + QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString() + "\"}";
}

bool StoreContext::isKnownFormat(std::string_view meta)
{
    return startsWith(meta, metaBegin);
}

bool StoreContext::pause(std::chrono::milliseconds time) const
{
    std::unique_lock lock(state->mutex);
    return state->changed.wait_for(lock, time, [this] { return state->isStopping; });
}

} // namespace Repository
