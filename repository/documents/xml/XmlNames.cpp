#include "repository/documents/xml/XmlNames.h"

#include "repository/documents/common/ComponentCodec.h"

#include <algorithm>
#include <functional>

namespace Repository::Documents {

namespace {

// What may follow a name in a tag.
bool endsName(char c)
{
    return c == '>' || c == '=' || c == '/' || c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

// A name in which nothing needs to be encoded for a path.
bool isPlain(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](char c) { return c > ' ' && c < 0x7F && c != '.'; });
}

} // namespace

XmlNames::XmlNames()
{
    entries.push_back({0, 0, 0, 0, none});
}

std::uint32_t XmlNames::intern(std::string_view name)
{
    if (name.empty())
        return none;
    const std::uint32_t hash = HashIndex::hashOf(name);
    const auto known = index.find(hash, [this, name](std::uint32_t id) { return nameOf(id) == name; });
    if (known != HashIndex::none)
        return known;
    const auto id = static_cast<std::uint32_t>(entries.size());
    const auto size = static_cast<std::uint32_t>(name.size());
    Entry entry{append(name), size, 0, size, none};
    entry.component = entry.name;
    if (!isPlain(name)) {
        const std::string component = encodeKey(name);
        entry.component = append(component);
        entry.componentSize = static_cast<std::uint32_t>(component.size());
    }
    entries.push_back(entry);
    index.insert(hash, id);
    return id;
}

std::uint32_t XmlNames::internFront(std::string_view tag)
{
    const std::uint32_t expected = entries[latest].follower;
    const std::string_view name = nameOf(expected);
    if (expected != none && name.size() < tag.size() && endsName(tag[name.size()]) &&
        tag.compare(0, name.size(), name) == 0)
        return latest = expected;
    const auto end = std::find_if(tag.begin(), tag.end(), endsName);
    const std::uint32_t id = intern(tag.substr(0, std::size_t(end - tag.begin())));
    entries[latest].follower = id;
    return latest = id;
}

std::optional<std::uint32_t> XmlNames::find(std::string_view name) const
{
    if (name.empty())
        return none;
    const auto id = index.find(HashIndex::hashOf(name),
                               [this, name](std::uint32_t other) { return nameOf(other) == name; });
    return id == HashIndex::none ? std::nullopt : std::optional(id);
}

std::uint32_t XmlNames::append(std::string_view text)
{
    const auto at = static_cast<std::uint32_t>(letters.size());
    letters += text;
    return at;
}

} // namespace Repository::Documents
