#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/yaml/YamlEvent.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Reads a text of YAML 1.2 step by step. All that is known here of the library that does so lies behind this.
class YamlReader
{
public:
    // The text must stay where it is. libfyaml refuses empty elements of a list in the column of its key;
    // they are read where it is shown a null for each.
    static bool hasEmptyElements(std::string_view yaml);
    explicit YamlReader(std::string_view yaml, bool fillsElements = false);
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
    YamlRange inText(YamlRange range) const;

    std::string_view text;
    std::vector<std::size_t> fills; // where nulls are in the text that is read
    std::string filled;
    std::unique_ptr<Parser> parser;
    Outcome outcome;
};

} // namespace Repository::Documents
