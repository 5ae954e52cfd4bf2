#include "fuzz/Exercises.h"
#include "repository/documents/xml/XmlScanner.h"

#include <expat.h>
#include <utility>
#include <vector>

namespace Fuzz {

using Repository::Documents::XmlScanner;

namespace {

// The offset of each tag, with true for one that opens an element.
using Tags = std::vector<std::pair<bool, std::size_t>>;

struct Parser
{
    explicit Parser(const char* encoding) : expat(XML_ParserCreate(encoding)) {}
    ~Parser() { XML_ParserFree(expat); }

    static void XMLCALL open(void* self, const XML_Char*, const XML_Char**) { add(self, true); }
    static void XMLCALL close(void* self, const XML_Char*) { add(self, false); }
    static void add(void* self, bool opens)
    {
        auto& parser = *static_cast<Parser*>(self);
        parser.tags.emplace_back(opens, std::size_t(XML_GetCurrentByteIndex(parser.expat)));
    }

    const XML_Parser expat;
    Tags tags;
};

} // namespace

XmlScannerCheck checkXmlScanner(const std::string& text)
{
    Tags scanned;
    XmlScanner scanner(text);
    for (auto event = scanner.next(); event != XmlScanner::Event::End; event = scanner.next()) {
        if (event == XmlScanner::Event::NotPlain)
            return {};
        scanned.emplace_back(event == XmlScanner::Event::Open, scanner.getPosition());
    }
    Parser parser("UTF-8");
    XML_SetUserData(parser.expat, &parser);
    XML_SetElementHandler(parser.expat, &Parser::open, &Parser::close);
    if (XML_Parse(parser.expat, text.data(), int(text.size()), XML_TRUE) != XML_STATUS_OK)
        return {true, "the parser refuses the text at " +
                          std::to_string(XML_GetCurrentByteIndex(parser.expat)) + ": " +
                          XML_ErrorString(XML_GetErrorCode(parser.expat))};
    return {true, scanned == parser.tags ? std::string() : "the parser finds other tags"};
}

std::string exerciseXmlScanner(std::string_view input)
{
    return checkXmlScanner(std::string(input)).fault;
}

} // namespace Fuzz
