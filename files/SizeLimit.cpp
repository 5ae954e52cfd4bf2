#include "files/SizeLimit.h"

#include "files/Reason.h"

#include <atomic>
#include <cstdlib>

namespace Files {

namespace {

constexpr const char* variable = "VANTRY_MAX_FILE_SIZE";

std::uint64_t bounded(std::uint64_t bytes)
{
    return bytes == 0 || bytes > SizeLimit::most ? SizeLimit::most : bytes;
}

std::uint64_t initialLimit()
{
    constexpr std::uint64_t usual = 256 * SizeLimit::bytesInMiB;
    const char* const text = std::getenv(variable);
    char* end = nullptr;
    const std::uint64_t given = text ? std::strtoull(text, &end, 10) : 0;
    if (given == 0 || *end != '\0')
        return usual;
    return bounded(given > SizeLimit::most ? SizeLimit::most : given * SizeLimit::bytesInMiB);
}

std::atomic<std::uint64_t>& limit()
{
    static std::atomic<std::uint64_t> bytes(initialLimit());
    return bytes;
}

} // namespace

std::uint64_t SizeLimit::get()
{
    return limit();
}

void SizeLimit::set(std::uint64_t bytes)
{
    limit() = bounded(bytes);
}

std::string SizeLimit::refusal()
{
    const std::string size = std::to_string(get() / bytesInMiB);
    return get() < most ? Reason::tr("it is larger than the limit of %1 MiB, which %2 (in MiB) raises",
                                     {size, variable})
                        : Reason::tr("it is larger than the limit of %1 MiB", {size});
}

} // namespace Files
