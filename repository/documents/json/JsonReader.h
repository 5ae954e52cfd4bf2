#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/json/JsonMembers.h"
#include "repository/documents/json/JsonTree.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Reads json with comments and trailing commas. simdjson, which checks encoding and strings, gives the
// tokens; comments are blanked for it in a copy of equal length, so that offsets are those of the original.
class JsonReader
{
public:
    // Containers in containers; a limit for whoever walks the tree, not for this reader.
    static constexpr std::size_t maximumDepth = 1000;
    static constexpr std::size_t maximumSize = 0xFFFFFF00;

    JsonReader(JsonTree& syntaxTree, JsonMembers& treeMembers) : tree(syntaxTree), members(treeMembers) {}

    // Reads the text of an empty tree; a text without any value is good, too.
    Outcome read();

    // Reads the object or array from that offset to the end into a new scalar; false when there is none, and
    // the node is to be removed.
    bool readInto(NodeId scalar, std::size_t start);

private:
    enum class Expected { Value, Element, Member, Colon, Separator, Nothing };

    bool scan(const std::string& text, std::size_t start);
    bool take(std::string_view text, std::size_t at, std::size_t nextToken);
    bool takeKey(std::string_view text, std::size_t at, std::size_t nextToken);
    bool takeValue(std::string_view text, std::size_t at, std::size_t nextToken);
    bool takeWord(std::string_view text, std::size_t at, std::size_t nextToken);
    bool takeSeparator(std::string_view text, std::size_t at);
    bool checkEscapes(std::string_view text, std::size_t at, std::size_t end);
    bool open(JsonKind kind, std::size_t at);
    bool close(std::size_t at);
    bool addScalar(JsonKind kind, std::size_t at, std::size_t end);
    JsonNode newNode(JsonKind kind, std::size_t at) const;
    bool inObject() const;

    bool fail(std::size_t at, std::string message);
    bool failEncoding(std::string_view text);
    bool failString(std::string_view text);
    bool failUnexpected(std::string_view text, std::size_t at);
    std::string expectation() const;

    JsonTree& tree;
    JsonMembers& members;
    std::string fault; // and where it is
    std::size_t faultOffset = 0;
    Expected expected = Expected::Value;
    NodeId top = noNode;     // the node that the outermost container becomes, when it is there already
    NodeId current = noNode; // the container that is being read
    NodeId latest = noNode;  // the value that was read last
    std::size_t depth = 0;
    std::size_t leading = 0; // where the parts of the next node begin
    std::size_t label = 0;
};

} // namespace Repository::Documents
