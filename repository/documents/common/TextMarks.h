#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Where the text of a document, which is UTF-8, has its comments, and where its entries begin: the key, the
// header or the tag of each. In the order of the document; what is not written, as a group that only the
// names of others make, is not among them.
struct TextMarks
{
    struct Begin
    {
        std::string path;
        std::size_t offset;
        std::size_t end = 0; // of all of it, where something closes it
    };

    struct Comment
    {
        std::size_t offset;
        std::string text; // with the signs that make it one; of xml, the instructions too
    };

    std::string_view text; // as long as the document stays as it is
    std::vector<Begin> begins;
    std::vector<Comment> comments;

    // Of a new comment; empty where the format has none.
    std::string opening;
    std::string closing;
    bool mayFollowValue = true; // on its line

    // Whether comments right below the last entry belong to the section that it is in.
    bool endsInSection = false;
};

} // namespace Repository::Documents
