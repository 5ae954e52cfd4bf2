#include "repository/documents/common/Latin1.h"

#include "repository/documents/common/Values.h"

namespace Repository::Documents {

std::optional<std::string> fromLatin1(std::string_view bytes)
{
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (FrameworkCore::Values::beginsWithSurrogate(bytes.substr(at)))
            return std::nullopt;
        appendUtf8(text, static_cast<unsigned char>(bytes[at]));
    }
    return text;
}

std::optional<std::string> toLatin1(std::string_view text)
{
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8Length(text.substr(at));
        const char32_t code = length == 0 ? 0x100 : utf8CodePoint(text.substr(at, length));
        if (code > 0xFF)
            return std::nullopt;
        bytes += static_cast<char>(static_cast<unsigned char>(code));
        at += length;
    }
    return FrameworkCore::Values::isAscii(text) || isLatin1(bytes) ? std::optional(bytes) : std::nullopt;
}

bool isLatin1(std::string_view text)
{
    bool hasOtherBytes = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8Length(text.substr(at));
        if (length > 1 || FrameworkCore::Values::beginsWithSurrogate(text.substr(at)))
            return false;
        hasOtherBytes = hasOtherBytes || length == 0;
        ++at;
    }
    return hasOtherBytes;
}

} // namespace Repository::Documents
