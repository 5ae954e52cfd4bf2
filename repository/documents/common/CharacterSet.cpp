#include "repository/documents/common/CharacterSet.h"

#include "repository/documents/common/Values.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iconv.h>
#include <memory>

namespace Repository::Documents::CharacterSet {

namespace {

// By the beginnings of their names; a file must not choose among all that the library can load.
constexpr std::array<std::string_view, 15> offered{"iso-8859-", "iso_8859-", "windows-125", "cp125", "cp437",
                                                   "cp85",      "cp86",      "ibm4",        "ibm8",  "koi8-",
                                                   "big5",      "latin",     "shift_jis",   "euc-",  "gb"};

struct Converter
{
    Converter(const char* to, const char* from) : handle(iconv_open(to, from)) {}
    ~Converter()
    {
        if (isOpen())
            iconv_close(handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return handle != iconv_t(-1); } // NOLINT: the library's own mark of a failure

    const iconv_t handle;
};

Conversion convert(const char* to, const char* from, std::string_view source)
{
    const Converter converter(to, from);
    Conversion result;
    if (!converter.isOpen()) {
        result.failedAt = 0;
        return result;
    }
    std::array<char, 16384> buffer;
    std::string copy(source); // the library takes no const text
    char* at = copy.data();
    std::size_t left = copy.size();
    while (left > 0) {
        char* written = buffer.data();
        std::size_t room = buffer.size();
        const std::size_t done = iconv(converter.handle, &at, &left, &written, &room);
        const int error = errno;
        result.text.append(buffer.data(), buffer.size() - room);
        if (done == std::size_t(-1) && error != E2BIG) {
            result.failedAt = source.size() - left;
            break;
        }
    }
    return result;
}

} // namespace

bool isKnown(std::string_view name)
{
    const std::string lower = lowered(name);
    const auto isLetter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    const bool isOffered = std::any_of(offered.begin(), offered.end(), [&lower](std::string_view beginning) {
        return startsWith(lower, beginning);
    });
    return isOffered && std::all_of(lower.begin(), lower.end(), isLetter) &&
           Converter("UTF-8", lower.c_str()).isOpen();
}

Conversion toUtf8(const std::string& name, std::string_view bytes)
{
    return convert("UTF-8", name.c_str(), bytes);
}

Conversion fromUtf8(const std::string& name, std::string_view text)
{
    return convert(name.c_str(), "UTF-8", text);
}

} // namespace Repository::Documents::CharacterSet
