#pragma once

#include "repository/documents/common/Document.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// A comment on its way into a text of another format, without the signs that make it one.
struct CarriedComment
{
    std::string path;           // of the entry that it is about, or empty for the root
    bool isAtEnd = false;       // of that, behind all in it
    std::string last;           // of these in front of it, by its path in that
    bool isBehind = false;      // on the line of the entry, and else above it
    bool isApart = false;       // from the entry by a blank line
    bool isInstruction = false; // of xml, which has no place in another format
    std::vector<std::string> lines;
};

// All comments of a text, each with the entry that follows it, or in front of it on its line. Type tags are
// none.
std::vector<CarriedComment> commentsOf(const TextMarks& marks);

// Those about an entry and all below it, with paths relative to it; for the empty path all.
std::vector<CarriedComment> commentsBelow(std::string_view path, std::vector<CarriedComment> comments);

// An empty document of some type.
using DocumentMaker = std::function<std::unique_ptr<Document>()>;

// Puts comments into a text of that type, at the entries of their paths. Returns how many of them it cannot
// hold: all in a format without comments.
std::size_t addComments(std::string& text, const DocumentMaker& makeDocument,
                        const std::vector<CarriedComment>& comments);

// How many of the comments a text has not which had others before and has these now.
std::size_t countMissing(const std::vector<CarriedComment>& comments,
                         const std::vector<CarriedComment>& before, const std::vector<CarriedComment>& now);

} // namespace Repository::Documents
