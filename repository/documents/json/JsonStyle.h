#pragma once

#include "repository/documents/json/JsonTree.h"

#include <string>

namespace Repository::Documents {

// How the author of a json file lays it out, as far as an edit has to know when no sibling shows it.
struct JsonStyle
{
    std::string lineEnd = "\n";
    std::string indentation = "    "; // one step
    std::string colon = ": ";         // between a key and its value
    bool oneLine = false;             // all of it is in one line
};

// The style of a text as it was read. Looks at the beginning of the text only.
JsonStyle detectStyle(const JsonTree& tree);

// The blanks before the line on which a node begins.
std::string lineIndentation(const JsonTree& tree, NodeId id);

// What is between the key of a member and its value; empty when it is more than a colon and single
// blanks.
std::string colonOf(const JsonTree& tree, NodeId member);

} // namespace Repository::Documents
