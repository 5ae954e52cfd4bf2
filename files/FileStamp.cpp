#include "files/FileStamp.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Files {

FileStamp FileStamp::of(const std::string& bytes)
{
    XXH128_canonical_t digest;
    XXH128_canonicalFromHash(&digest, XXH3_128bits(bytes.data(), bytes.size()));
    return {true, std::string(reinterpret_cast<const char*>(digest.digest), sizeof digest.digest)};
}

} // namespace Files
