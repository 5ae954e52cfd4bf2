#include "repository/merge/ElementNode.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/merge/DocumentChanges.h"

#include <algorithm>
#include <iterator>

namespace Repository {

using Documents::Document;
using Documents::Entry;
using Documents::splitLast;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::uint64_t mixed(std::uint64_t first, std::uint64_t second)
{
    std::uint64_t both = first * 0x9E3779B97F4A7C15U + second;
    both = (both ^ (both >> 30)) * 0xBF58476D1CE4E5B9U;
    return both ^ (both >> 27);
}

std::uint64_t digestOf(std::string_view text)
{
    return std::hash<std::string_view>()(text);
}

std::uint64_t digestOf(const Value& value)
{
    return mixed(std::uint64_t(value.type), digestOf(FrameworkCore::Values::toText(value)));
}

// Members may come in any order, elements may not.
void complete(ElementNode& node)
{
    if (node.isArray && node.value.type == Type::StringList) {
        for (const std::string& text : std::get<std::vector<std::string>>(node.value.data))
            node.children.push_back({Documents::joinPath(node.path, std::to_string(node.children.size())),
                                     {Type::String, text},
                                     false,
                                     false,
                                     {},
                                     0});
    }
    node.content = node.isArray ? 1 : digestOf(node.value);
    for (ElementNode& child : node.children) {
        complete(child);
        if (node.isArray)
            node.content = mixed(node.content, child.content);
        else if (!child.isCopy)
            node.content += mixed(digestOf(splitLast(child.path).last), child.content);
    }
}

void appendEntries(std::vector<Entry>& entries, const ElementNode& node, std::size_t prefix)
{
    const std::optional<bool> isArray =
        node.value.type == Type::Group ? std::optional(node.isArray) : std::nullopt;
    entries.push_back({node.path.substr(std::min(prefix, node.path.size())), node.value, isArray});
    if (node.value.type == Type::StringList)
        return;
    for (const ElementNode& child : node.children)
        appendEntries(entries, child, prefix);
}

void appendValues(std::vector<std::uint64_t>& values, const ElementNode& node, std::uint64_t place)
{
    if (node.children.empty())
        values.push_back(mixed(place, digestOf(node.value)));
    for (const ElementNode& child : node.children) {
        if (child.isCopy)
            continue;
        appendValues(values, child, mixed(place, digestOf(splitLast(child.path).last)));
    }
}

std::vector<std::uint64_t> valuesIn(const ElementNode& node)
{
    std::vector<std::uint64_t> values;
    appendValues(values, node, 0);
    std::sort(values.begin(), values.end());
    return values;
}

} // namespace

std::vector<Entry> ElementNode::entries() const
{
    std::vector<Entry> all;
    appendEntries(all, *this, path.empty() ? 0 : path.size() + 1);
    return all;
}

std::map<std::string, ElementNode> readNodes(const Document& document, const std::set<std::string>& paths)
{
    std::map<std::string, ElementNode> nodes;
    const bool isLinked = document.isLinked({});
    std::vector<ElementNode*> open; // each in the one before; only the last one grows
    if (paths.count({}) > 0) {
        open.push_back(&nodes[{}]);
        open.back()->isArray = document.isArray({}).value_or(false);
    }
    document.visit([&](const Entry& entry) {
        const bool isArray = (entry.value.type == Type::Group || entry.value.type == Type::StringList) &&
                             document.isArray(entry.path).value_or(false);
        while (!open.empty() && !isWithin(entry.path, open.back()->path))
            open.pop_back();
        if (open.empty() && paths.count(entry.path) == 0)
            return;
        const bool isCopy = isLinked && document.originOf(entry.path) == Document::Origin::Copy;
        ElementNode node{entry.path, entry.value, isArray, isCopy, {}, 0};
        if (entry.path.empty()) {
            open.back()->value = entry.value;
            return;
        }
        ElementNode& place = open.empty() ? nodes[entry.path] : open.back()->children.emplace_back();
        place = std::move(node);
        open.push_back(&place);
    });
    for (auto& [path, node] : nodes)
        complete(node);
    return nodes;
}

std::size_t countCommonValues(const ElementNode& one, const ElementNode& other)
{
    const auto values = valuesIn(one);
    const auto others = valuesIn(other);
    std::vector<std::uint64_t> common;
    std::set_intersection(values.begin(), values.end(), others.begin(), others.end(),
                          std::back_inserter(common));
    return 2 * common.size() >= std::max(values.size(), others.size()) ? common.size() : 0;
}

} // namespace Repository
