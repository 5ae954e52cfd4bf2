#include "desk/text/TextRows.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"

#include <algorithm>

namespace Vantry {

TextRows::TextRows(BackendText whole) : content(std::move(whole))
{
    const QString& text = content.text;
    int line = 1;
    for (int begin = 0; begin < text.size() || line == 1;) {
        int end = begin;
        while (end < text.size() && text[end] != QLatin1Char('\n') && text[end] != QLatin1Char('\r'))
            ++end;
        int number = line++;
        do {
            int length = std::min(end - begin, longestRow);
            if (length < end - begin && text[begin + length].isLowSurrogate())
                --length;
            rows.push_back({begin, length, number});
            longest = std::max(longest, length);
            begin += length;
            number = 0;
        } while (begin < end);
        const bool isPair =
            end + 1 < text.size() && text[end] == QLatin1Char('\r') && text[end + 1] == QLatin1Char('\n');
        begin = end + (isPair ? 2 : 1);
    }
    lineCount = line - 1;
}

QString TextRows::getText(int row) const
{
    const Row& shown = rows[std::size_t(row)];
    return content.text.mid(shown.offset, shown.length);
}

int TextRows::findRow(int offset) const
{
    const auto after = std::upper_bound(rows.begin(), rows.end(), offset,
                                        [](int place, const Row& row) { return place < row.offset; });
    return std::max(int(after - rows.begin()) - 1, 0);
}

std::vector<const TextRows::TextSpan*> TextRows::getValues(int row) const
{
    const Row& shown = rows[std::size_t(row)];
    const auto& values = content.values;
    auto value = std::partition_point(values.begin(), values.end(), [&shown](const TextSpan& span) {
        return span.offset + span.length < shown.offset;
    });
    std::vector<const TextSpan*> found;
    for (; value != values.end() && value->offset <= shown.offset + shown.length; ++value)
        found.push_back(&*value);
    return found;
}

const TextRows::TextSpan* TextRows::findValue(int row, int column) const
{
    const int place = getOffset(row) + column;
    const TextSpan* last = nullptr;
    for (const TextSpan* const value : getValues(row)) {
        last = value;
        if (place <= value->offset + value->length)
            return value;
    }
    if (last)
        return last;
    const auto& values = content.values;
    const auto next = std::partition_point(values.begin(), values.end(),
                                           [place](const TextSpan& value) { return value.offset < place; });
    return next == values.end() ? nullptr : &*next;
}

const TextRows::TextSpan* TextRows::findPath(const QString& path) const
{
    const auto& values = content.values;
    const auto found = std::find_if(values.begin(), values.end(),
                                    [&path](const TextSpan& span) { return span.path == path; });
    return found == values.end() ? nullptr : &*found;
}

const TextRows::TextSpan* TextRows::findBelow(const QString& path) const
{
    const auto& values = content.values;
    const auto found = std::find_if(values.begin(), values.end(), [&path](const TextSpan& span) {
        return FrameworkCore::AppConfig::isAtOrBelow(span.path, path);
    });
    return found == values.end() ? nullptr : &*found;
}

} // namespace Vantry
