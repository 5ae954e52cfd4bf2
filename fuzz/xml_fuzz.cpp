#include "fuzz/DocumentExercise.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Fuzz::exerciseOrAbort("xml", data, size);
    return 0;
}
