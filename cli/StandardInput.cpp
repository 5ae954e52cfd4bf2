#include "cli/StandardInput.h"

#include "files/SizeLimit.h"
#include "repository/backends/FileFormat.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace CommandLine {

namespace {

StandardInput readAll()
{
    StandardInput input;
    constexpr std::size_t pieceSize = 65536;
    std::string piece(pieceSize, '\0');
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, piece.data(), piece.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            input.error = QString::fromLocal8Bit(std::strerror(errno));
        if (count <= 0)
            break;
        input.bytes.append(piece, 0, std::size_t(count));
        if (input.bytes.size() > Files::SizeLimit::get()) {
            input.error = QString::fromStdString(Files::SizeLimit::refusal());
            break;
        }
    }
    input.format = Repository::FileFormat::ofContent({}, input.bytes);
    return input;
}

} // namespace

const StandardInput& StandardInput::read()
{
    static const StandardInput input = readAll();
    return input;
}

} // namespace CommandLine
