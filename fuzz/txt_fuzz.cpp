#include "fuzz/DocumentExercise.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Fuzz::exerciseOrAbort("txt", data, size);
    return 0;
}
