#include "repository/documents/common/SpanWriter.h"

#include <functional>
#include <utility>

namespace Repository::Documents {

void SpanWriter::reserve()
{
    written.reserve(original.size() + original.size() / 16);
}

void SpanWriter::append(std::string_view piece)
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

void SpanWriter::append(char c)
{
    const char* const next = run.data() + run.size();
    if (!run.empty() && next != original.data() + original.size() && *next == c) {
        run = std::string_view(run.data(), run.size() + 1);
        return;
    }
    flush();
    written += c;
}

std::string SpanWriter::take()
{
    flush();
    return std::exchange(written, {});
}

void SpanWriter::flush()
{
    written.append(run);
    run = {};
}

} // namespace Repository::Documents
