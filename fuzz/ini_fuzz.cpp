#include "fuzz/DocumentExercise.h"
#include "fuzz/Target.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    return Fuzz::runTarget([](std::string_view input) { return Fuzz::DocumentExercise("ini", input).run(); },
                           data, size);
}
