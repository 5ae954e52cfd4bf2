#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/SyntaxTree.h"
#include "repository/documents/yaml/YamlSpelling.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// The text of a whole sequence of texts.

// Whether a value begins like a sequence.
bool isYamlList(std::string_view spelled);

// Nothing for what is no sequence of texts. The column of a block sequence is that of its first line.
std::optional<std::vector<std::string>> readYamlTexts(std::string_view spelled, std::size_t column);

// Up to the end of its last element, after which comments may follow that edits have left.
std::size_t endOfYamlTexts(std::string_view spelled, std::size_t column);

// Whether there is a comment in it.
bool hasYamlListComment(std::string_view spelled, std::size_t column);

class YamlTree;

// The first line of comments between elements at the end of a block sequence that are not in its new list;
// npos without one.
std::size_t findCommentOfYamlElements(const YamlTree& tree, NodeId list,
                                      const std::vector<std::string>& former,
                                      const std::vector<std::string>& texts);

// A new list in brackets. Its texts are valid UTF-8.
std::string spellNewYamlList(const std::vector<std::string>& list);

class YamlEditor;
class YamlFile;

// Edits that make a list of texts another one; elements that both share at the beginning or end stay. An
// anchor that is in use does, too.
Outcome editYamlList(YamlEditor& editor, const YamlFile& file, NodeId list,
                     const std::vector<std::string>& former, const std::vector<std::string>& texts);

// A list in the form of the former one, of which elements that both share at the beginning or end keep their
// bytes; nothing where it cannot have that form.
std::optional<std::string> spellYamlList(const std::vector<std::string>& list, std::string_view former,
                                         std::size_t column, const YamlPlace& place);

} // namespace Repository::Documents
