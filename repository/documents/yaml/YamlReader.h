#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/yaml/YamlEvent.h"

#include <memory>
#include <string_view>

namespace Repository::Documents {

// Reads a text of YAML 1.2 step by step. All that is known here of the library that does so lies behind this.
class YamlReader
{
public:
    // The text must stay where it is.
    explicit YamlReader(std::string_view yaml);
    ~YamlReader();
    YamlReader(const YamlReader&) = delete;
    YamlReader& operator=(const YamlReader&) = delete;

    // False at the end, and where the text is not YAML.
    bool next(YamlEvent& event);

    // Why the text is not YAML, when all is read.
    Outcome getOutcome() const { return outcome; }

private:
    struct Parser;

    bool fail();

    std::string_view text;
    std::unique_ptr<Parser> parser;
    Outcome outcome;
};

} // namespace Repository::Documents
