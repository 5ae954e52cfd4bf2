#include "repository/history/TextDelta.h"

#define XXH_INLINE_ALL
#include <algorithm>
#include <xxhash.h>

namespace Repository {

namespace {

std::string replaced(std::string_view text, std::size_t offset, std::size_t length, std::string_view by)
{
    std::string result;
    result.reserve(text.size() - length + by.size());
    result.append(text.substr(0, offset)).append(by).append(text.substr(offset + length));
    return result;
}

} // namespace

TextDelta::TextDelta(std::string_view before, std::string_view after)
    : digestBefore(digestOf(before)), digestAfter(digestOf(after))
{
    const std::size_t shorter = std::min(before.size(), after.size());
    const auto firstEnd = before.begin() + std::ptrdiff_t(shorter);
    offset = std::size_t(std::mismatch(before.begin(), firstEnd, after.begin()).first - before.begin());
    const auto lastEnd = before.rbegin() + std::ptrdiff_t(shorter - offset);
    const auto tail =
        std::size_t(std::mismatch(before.rbegin(), lastEnd, after.rbegin()).first - before.rbegin());
    removed = before.substr(offset, before.size() - offset - tail);
    inserted = after.substr(offset, after.size() - offset - tail);
}

TextDelta::Digest TextDelta::digestOf(std::string_view text)
{
    const XXH128_hash_t hash = XXH3_128bits(text.data(), text.size());
    return {hash.low64, hash.high64, text.size()};
}

bool TextDelta::isSame(const Digest& a, const Digest& b)
{
    return a.low == b.low && a.high == b.high && a.length == b.length;
}

std::optional<std::string> TextDelta::undo(std::string_view after) const
{
    if (!isSame(digestOf(after), digestAfter))
        return {};
    return replaced(after, offset, inserted.size(), removed);
}

std::optional<std::string> TextDelta::redo(std::string_view before) const
{
    if (!isSame(digestOf(before), digestBefore))
        return {};
    return replaced(before, offset, removed.size(), inserted);
}

} // namespace Repository
