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
    // The text must stay where it is. libfyaml refuses empty elements of a list in the column of its key, and
    // block scalars that begin on a line of their own, further in than their text; they are read where it is
    // shown a null for each element, and a line break before each scalar.
    static bool hasGaps(std::string_view yaml);
    explicit YamlReader(std::string_view yaml, bool fillsGaps = false);
    ~YamlReader();
    YamlReader(const YamlReader&) = delete;
    YamlReader& operator=(const YamlReader&) = delete;

    // False at the end, and where the text is not YAML.
    bool next(YamlEvent& event);

    // Why the text is not YAML, when all is read.
    Outcome getOutcome() const { return outcome; }

private:
    struct Parser;

    // What is only in the text that is read.
    struct Fill
    {
        std::size_t begin;
        std::size_t length;
        std::size_t before; // the length of all before it
    };

    void fillGaps();
    bool fail();
    std::size_t placeInRead(const Outcome& fault) const;
    std::size_t inText(std::size_t at) const;
    YamlRange inText(YamlRange range) const;

    std::string_view text;
    std::vector<Fill> fills;
    std::string filled;
    std::unique_ptr<Parser> parser;
    std::size_t lastEnd = 0; // of what was read
    Outcome outcome;
};

} // namespace Repository::Documents
