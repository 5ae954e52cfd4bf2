#include "repository/documents/yaml/YamlBuilder.h"
#include "repository/documents/yaml/YamlScalar.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

// The part of a builder that reads keys.
namespace Repository::Documents {

bool YamlBuilder::expectsKey() const
{
    return frames.back().isMap && !frames.back().hasKey;
}

void YamlBuilder::startKey(const YamlEvent& event)
{
    Frame& frame = frames.back();
    frame.keyAnchor = nameOf(event.anchor);
    frame.hasKeyProperties = event.anchor.exists() || event.tag.exists();
    frame.keyText.clear();
    const std::size_t begin = event.begin();
    frame.tag = begin == YamlRange::npos || tree.node(frame.id).isFlow() ? Type::Group : readTag(begin);
    const std::size_t end = event.propertiesEnd(lastEnd);
    frame.keyStyle = event.style;
    frame.key = event.token.begin;
    if (event.isCollection()) {
        frame.keyStyle = YamlStyle::Flow;
        frame.key = std::min(begin, event.token.begin);
        keyDepth = 1;
        lastEnd = std::max(end, event.token.end);
        return;
    }
    if (event.kind == YamlEvent::Kind::Alias) {
        frame.keyStyle = YamlStyle::Flow;
        const auto anchor = anchors.find(nameOf(event.token));
        const bool isKnown = anchor != anchors.end() && anchor->second.node != noNode;
        if (isKnown && anchor->second.isKey) {
            std::string buffer;
            frame.keyText = tree.keyText(anchor->second.node, buffer);
        } else if (isKnown && tree.node(anchor->second.node).kind == YamlKind::Scalar) {
            const YamlNode& target = tree.node(anchor->second.node);
            const std::string_view spelled = tree.readValueText(anchor->second.node);
            frame.keyText = target.style == YamlStyle::Plain        ? decodeYamlPlain(spelled)
                            : target.isBlockScalar()                ? decodeYamlBlock(spelled, 0)
                            : !spelled.empty() && spelled[0] != '!' ? decodeYamlQuoted(spelled)
                                                                    : std::string(spelled);
            tree.node(anchor->second.node).isUsed = true;
            tree.node(anchor->second.node).namesKey = true;
            tree.noteAlias(anchor->second.node, event.token.begin);
        }
        return endKey(event.token.end);
    }
    if (!event.token.exists()) {
        const YamlNode& map = tree.node(frame.id);
        frame.key =
            skipYamlTrivia(source(), map.first == noNode ? std::max<std::size_t>(end, map.value) : end);
        if (map.isFlow() && frame.key < source().size() && source()[frame.key] == ',')
            frame.key = skipYamlTrivia(source(), frame.key + 1);
        if (frame.key < source().size() && source()[frame.key] == '?')
            frame.key = skipYamlBlanks(source(), frame.key + 1);
        frame.keyStyle = YamlStyle::Plain;
        if (frame.hasKeyProperties)
            frame.key = end;
        return endKey(frame.key);
    }
    std::size_t tokenEnd = event.token.end;
    if (event.style == YamlStyle::Literal || event.style == YamlStyle::Folded) {
        lastEnd = end;
        placeBlock(event, frame.key, tokenEnd);
    }
    endKey(tokenEnd);
}

// Of a key that is a collection, only its end and what its anchors hide are of interest.
void YamlBuilder::goOnInKey(const YamlEvent& event)
{
    if (event.anchor.exists())
        anchors[nameOf(event.anchor)] = Anchor();
    lastEnd = std::max(lastEnd, event.propertiesEnd(lastEnd));
    const bool isScalar = event.kind == YamlEvent::Kind::Scalar;
    if (isScalar && (event.style == YamlStyle::Literal || event.style == YamlStyle::Folded)) {
        std::size_t begin = 0;
        placeBlock(event, begin, lastEnd);
    } else if (event.token.exists() && event.token.end > event.token.begin) {
        lastEnd = std::max(lastEnd, event.token.end);
    }
    const bool endsBlock = event.isEnd() && event.token.exists() && event.token.begin == event.token.end;
    if (endsBlock) // whose last value may be empty
        lastEnd = endOfYamlIndicators(source(), lastEnd, event.token.begin);
    if (event.isCollection())
        ++keyDepth;
    else if (event.isEnd() && --keyDepth == 0)
        endKey(lastEnd);
}

void YamlBuilder::endKey(std::size_t end)
{
    Frame& frame = frames.back();
    frame.hasKey = true;
    frame.keyEnd = lastEnd = end;
    frame.hasMerge = frame.hasMerge || namesMerge(frame);
}

} // namespace Repository::Documents
