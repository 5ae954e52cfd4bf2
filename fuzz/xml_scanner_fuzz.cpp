#include "fuzz/Target.h"
#include "fuzz/XmlScannerCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    return Fuzz::runTarget(
        [](std::string_view input) { return Fuzz::checkXmlScanner(std::string(input)).fault; }, data, size);
}
