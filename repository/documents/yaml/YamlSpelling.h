#pragma once

#include "repository/documents/common/Values.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// What the surroundings of a value let its spelling be.
struct YamlPlace
{
    std::string_view lineEnd = "\n";
    std::size_t indentation = 0; // of the block around it
    std::size_t step = 2;        // by which lines in it are indented
    bool inFlow = false;
    bool mayBreak = true;       // a text may become one of several lines
    bool isBeforeBlank = false; // an empty line follows, which the text must not take up
    bool endsFile = false;      // no line end follows
};

// The text of a scalar as it is spelled, with a tag that names a type in front of it or without. The
// indentation is that of the block around it.
std::string decodeYamlScalar(std::string_view spelled, std::size_t indentation);

// The value of a scalar as it is spelled.
Value readYamlScalar(std::string_view spelled, std::size_t indentation);

// What is in front of a scalar: a tag that names its type, and the blanks after it.
std::string_view tagOfYamlScalar(std::string_view spelled);

// The comment on the first line of a block scalar; empty for none, and of anything else.
std::string_view commentOfYamlBlock(std::string_view spelled);

// A text in the style of the former spelling, empty for none, where that can hold it. It is valid UTF-8.
std::string spellYamlText(std::string_view text, std::string_view former, const YamlPlace& place);

// A key, which has no line breaks; where the former one was no text for some readers, it may be none either.
std::string spellYamlKey(std::string_view key, std::string_view former, bool inFlow);

// A value that is no list; nothing where YAML has no form for it.
std::optional<std::string> spellYamlValue(const Value& value, std::string_view former,
                                          const YamlPlace& place);

// The same of a value whose type a comment above it names.
std::optional<std::string> spellTaggedYamlValue(const Value& value, std::string_view former,
                                                const YamlPlace& place);

} // namespace Repository::Documents
