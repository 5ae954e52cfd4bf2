#include "repository/documents/common/ValueSpans.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/common/TextLine.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

// The length of a byte-order mark, and of a character that is in no surrogate pair.
struct Units
{
    std::size_t mark = 0;
    std::size_t size = 1;
};

Units unitsOf(std::string_view bytes)
{
    if (startsWith(bytes, utf8ByteOrderMark))
        return {utf8ByteOrderMark.size(), 1};
    return startsWith(bytes, "\xFF\xFE") || startsWith(bytes, "\xFE\xFF") ? Units{2, 2} : Units{};
}

// A piece of the bytes, which begins with a whole character.
std::string decoded(std::string_view bytes, const Units& units, std::size_t begin, std::size_t end)
{
    begin = std::max(begin, units.mark);
    std::string piece(bytes.substr(0, units.mark));
    piece += bytes.substr(begin, std::max(begin, end) - begin);
    TextEncoding().decode(piece, {});
    return piece;
}

// The byte at which a column of a line begins; that of its end for one beyond it.
std::size_t offsetOfColumn(std::string_view content, std::size_t column)
{
    std::size_t at = 0;
    for (; column > 1 && at < content.size(); --column)
        at += std::max<std::size_t>(utf8Length(content.substr(at)), 1);
    return at;
}

} // namespace

Outcome placeInFile(std::string_view bytes, std::size_t offset)
{
    const Units units = unitsOf(bytes);
    if (units.size == 1)
        return outcomeAt(bytes, offset);
    const std::string before = decoded(bytes, units, 0, offset);
    return outcomeAt(before, before.size());
}

ValueSpans::ValueSpans(const Document& document) : text(document.getBytes())
{
    document.visitSpans([this](const std::string& path, Span span) { values.push_back({path, span}); });
    std::stable_sort(values.begin(), values.end(),
                     [](const Value& a, const Value& b) { return a.span.offset < b.span.offset; });
    decode();
}

void ValueSpans::decode()
{
    const Units units = unitsOf(text);
    if (units.size == 1) {
        text.erase(0, units.mark);
        for (Value& value : values)
            value.span.offset -= std::min(units.mark, value.span.offset);
        return;
    }
    const std::string bytes = std::move(text);
    text.clear();
    std::size_t known = 0;
    for (Value& value : values) {
        const std::size_t end = value.span.offset + value.span.length;
        text += decoded(bytes, units, known, value.span.offset);
        known = value.span.offset;
        value.span = {text.size(), decoded(bytes, units, known, end).size()};
    }
    text += decoded(bytes, units, known, bytes.size());
}

// The value before that one; of several that share their bytes, as aliases do, the first.
const ValueSpans::Value* ValueSpans::firstOfSame(std::vector<Value>::const_iterator next) const
{
    if (next == values.begin())
        return nullptr;
    auto value = std::prev(next);
    while (value != values.begin() && std::prev(value)->span.offset == value->span.offset)
        --value;
    return &*value;
}

const ValueSpans::Value* ValueSpans::find(std::size_t line, std::size_t column) const
{
    TextLine there;
    std::size_t begin = 0;
    for (std::size_t number = 1;; ++number) {
        there = textLineAt(text, begin);
        if (number == line)
            break;
        if (there.end >= text.size())
            return nullptr;
        begin = there.end;
    }
    const std::size_t at = begin + offsetOfColumn(there.content, column);
    const auto next =
        std::upper_bound(values.begin(), values.end(), at,
                         [](std::size_t offset, const Value& value) { return offset < value.span.offset; });
    const Value* const before = firstOfSame(next);
    const std::size_t lineEnd = begin + there.content.size();
    if (before && at <= before->span.offset + before->span.length)
        return before;
    if (next != values.end() && next->span.offset <= lineEnd)
        return &*next;
    if (before && before->span.offset + before->span.length >= begin)
        return before;
    return next == values.end() ? nullptr : &*next;
}

} // namespace Repository::Documents
