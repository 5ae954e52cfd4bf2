#include "files/FileDigest.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Files {

FileDigest FileDigest::of(const std::string& bytes)
{
    XXH128_canonical_t hash;
    XXH128_canonicalFromHash(&hash, XXH3_128bits(bytes.data(), bytes.size()));
    return {true, std::string(reinterpret_cast<const char*>(hash.digest), sizeof hash.digest)};
}

} // namespace Files
