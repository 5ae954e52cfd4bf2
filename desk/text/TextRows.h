#pragma once

#include "host/FrameworkCore/AppConfig/TextInterface.h"

#include <memory>
#include <vector>

namespace Vantry {

// A text and its values by the rows that are shown of it: a line each, of a very long one several. Does not
// change once it is made, which may be on any thread.
class TextRows
{
public:
    using BackendText = FrameworkCore::AppConfig::Interfaces::BackendText;
    using TextSpan = FrameworkCore::AppConfig::Interfaces::TextSpan;

    static constexpr int longestRow = 1000; // in QChars

    explicit TextRows(BackendText whole);

    int size() const { return int(rows.size()); }
    int getLineCount() const { return lineCount; }
    int getLongest() const { return longest; } // of the rows, in QChars
    QString getText(int row) const;
    int getLine(int row) const { return rows[std::size_t(row)].line; } // 0 where a line goes on
    int getOffset(int row) const { return rows[std::size_t(row)].offset; }

    // The row that an offset of the text is in.
    int findRow(int offset) const;

    // The values of which something is in the row.
    std::vector<const TextSpan*> getValues(int row) const;

    // The value that is there, else on the row the next one or else the last, and where the row has none, the
    // next one; null without any.
    const TextSpan* findValue(int row, int column) const;

    // Null when it is not in the text.
    const TextSpan* findPath(const QString& path) const;

    // The first value at or below the path; null where there is none.
    const TextSpan* findBelow(const QString& path) const;

private:
    struct Row
    {
        int offset = 0;
        int length = 0;
        int line = 0;
    };

    const BackendText content;
    std::vector<Row> rows;
    int lineCount = 0;
    int longest = 0;
};

} // namespace Vantry
