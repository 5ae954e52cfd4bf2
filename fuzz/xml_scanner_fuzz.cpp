#include "fuzz/XmlScannerCheck.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const Fuzz::XmlScannerCheck check =
        Fuzz::checkXmlScanner(std::string(reinterpret_cast<const char*>(data), size));
    if (!check.fault.empty()) {
        std::fprintf(stderr, "%s\n", check.fault.c_str());
        std::abort();
    }
    return 0;
}
