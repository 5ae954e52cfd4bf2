#pragma once

#include <string>

namespace Fuzz {

// What became of a text that was read without the parser and with it.
struct XmlScannerCheck
{
    bool isPlain = false; // the scanner has read it to its end
    std::string fault;    // what the parser says otherwise then; empty when they agree
};

XmlScannerCheck checkXmlScanner(const std::string& text);

} // namespace Fuzz
