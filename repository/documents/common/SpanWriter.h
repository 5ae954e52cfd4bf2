#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Joins spans of an original text and other pieces. Adjacent spans are copied in one go, so that a few edits
// of a large file cost little more than a copy.
class SpanWriter
{
public:
    // The original must outlive the writer.
    explicit SpanWriter(const std::string& originalText) : original(originalText) {}

    // Makes room for a text about as long as the original.
    void reserve();

    void append(std::string_view piece);

    // A character that is between pieces: it continues a span when the original has the same there.
    void append(char c);

    std::size_t length() const { return written.size() + run.size(); }

    // The text; the writer is empty then.
    std::string take();

private:
    void flush();

    const std::string& original;
    std::string_view run; // of the original, not yet in `written`
    std::string written;
};

} // namespace Repository::Documents
