#include "repository/documents/json/PlainJson.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonTrivia.h"

#include <algorithm>

namespace Repository::Documents {

std::string plainJson(std::string_view text)
{
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t comment = skipComment(text, at);
        if (comment > at) {
            plain.resize(plain.find_last_not_of(" \t") + 1);
            const bool isAlone = endsLine(plain);
            at = std::min(comment, text.size());
            if (isAlone && at < text.size() && isLineEnd(text[at]))
                at = textLineAt(text, at).end;
            continue;
        }
        const std::size_t next = skipTrivia(text, at + 1);
        const bool isLast = text[at] == ',' && next < text.size() && (text[next] == '}' || text[next] == ']');
        const std::size_t end = text[at] == '"' ? findStringEnd(text, at) : at + 1;
        if (!isLast)
            plain += text.substr(at, end - at);
        at = end;
    }
    return plain;
}

} // namespace Repository::Documents
