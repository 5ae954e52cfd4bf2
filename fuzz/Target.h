#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace Fuzz {

// The body of a fuzz target: runs the exercise on the fuzzer's bytes, and aborts with what is broken.
template <typename Exercise>
int runTarget(const Exercise& exercise, const unsigned char* data, std::size_t size)
{
    const std::string broken = exercise(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!broken.empty()) {
        std::fprintf(stderr, "%s\n", broken.c_str());
        std::abort();
    }
    return 0;
}

} // namespace Fuzz
