#include "fuzz/Exercises.h"

#include <cstdio>
#include <cstdlib>

// A fuzz target: runs the exercise of its subject on the fuzzer's bytes, and aborts with what is broken.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static const Fuzz::Exercise exercise = Fuzz::EXERCISE;
    const std::string broken = exercise({reinterpret_cast<const char*>(data), size});
    if (!broken.empty()) {
        std::fprintf(stderr, "%s\n", broken.c_str());
        std::abort();
    }
    return 0;
}
