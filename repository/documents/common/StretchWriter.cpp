#include "repository/documents/common/StretchWriter.h"

#include <functional>
#include <utility>

namespace Repository::Documents {

StretchWriter::StretchWriter(const std::string& originalText) : original(originalText)
{
}

void StretchWriter::reserve()
{
    written.reserve(original.size() + original.size() / 16);
}

void StretchWriter::append(std::string_view piece)
{
    const std::less<const char*> before;
    if (piece.empty())
        return;
    if (before(piece.data(), original.data()) || !before(piece.data(), original.data() + original.size())) {
        flush();
        written.append(piece);
        return;
    }
    if (run.data() + run.size() != piece.data()) {
        flush();
        run = piece.substr(0, 0);
    }
    run = std::string_view(run.data(), run.size() + piece.size());
}

void StretchWriter::append(char c)
{
    const char* const next = run.data() + run.size();
    if (!run.empty() && next != original.data() + original.size() && *next == c) {
        run = std::string_view(run.data(), run.size() + 1);
        return;
    }
    flush();
    written += c;
}

std::string StretchWriter::take()
{
    flush();
    return std::exchange(written, {});
}

void StretchWriter::flush()
{
    written.append(run);
    run = {};
}

} // namespace Repository::Documents
