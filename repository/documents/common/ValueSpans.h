#pragma once

#include "repository/documents/common/Document.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Repository::Documents {

// The text of a document as people read it, in UTF-8 without a byte-order mark, and where the values are in
// it. The text of a file that is in no encoding of Unicode is as it is in the file.
class ValueSpans
{
public:
    struct Value
    {
        std::string path;
        Span span;
    };

    explicit ValueSpans(const Document& document);

    const std::string& getText() const { return text; }
    const std::vector<Value>& getValues() const { return values; } // in the order of the text

    // The value that a line and a column mean, both from 1: the one that is there, else on this line the next
    // one or else the last, and where there is none on it, the next one. Null without any.
    const Value* find(std::size_t line, std::size_t column) const;

private:
    void decode();
    const Value* firstOfSame(std::vector<Value>::const_iterator next) const;

    std::string text;
    std::vector<Value> values;
};

// Line and column of a byte of a file in any encoding, as outcomeAt.
Outcome placeInFile(std::string_view bytes, std::size_t offset);

} // namespace Repository::Documents
