#include "fuzz/Target.h"
#include "fuzz/program/Exercises.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    return Fuzz::runTarget(Fuzz::exerciseMonitorLists, data, size);
}
