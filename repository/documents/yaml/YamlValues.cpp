#include "repository/documents/yaml/YamlValues.h"

#include "repository/documents/yaml/YamlLinks.h"
#include "repository/documents/yaml/YamlList.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

Outcome YamlValues::check(std::string_view path, NodeId id) const
{
    const YamlNode& node = tree.node(id);
    const std::string_view text = tree.getOriginal();
    if (node.kind == YamlKind::Merge)
        return outcomeAt(
            text, node.value,
            Reason::tr("%1 names what is merged into its map; change that instead", {quoted(path)}));
    const bool isBelowCollection = node.hasKey && node.keyStyle > YamlStyle::Double;
    const bool hasNoPlace = isBelowCollection && node.value == node.valueEnd; // its ":" may be one of the key
    const bool mayGetColon = file.isInFlow(id) && !hasYamlBreak(tree.text(node.key, node.keyEnd));
    if ((node.lacksColon && !mayGetColon) || hasNoPlace)
        return outcomeAt(text, node.key,
                         Reason::tr("the key of %1 has no \":\" that a value could follow", {quoted(path)}));
    if (node.isShared)
        return YamlLinks(file).explainCopy(path, id);
    if (node.namesKey) {
        Outcome place = outcomeAt(text, tree.findAliasOf(id));
        place.error =
            Reason::tr("%1 is also a key, by its alias at line %2, whose entry would get another name",
                       {quoted(path), std::to_string(place.line)});
        return place;
    }
    for (NodeId item = node.kind == YamlKind::List ? node.first : noNode; item != noNode;
         item = tree.node(item).next) {
        if (tree.node(item).isAlias || tree.node(item).isUsed)
            return outcomeAt(
                text, tree.node(item).begin,
                Reason::tr("an element of %1 is an alias or has one, which would be lost", {quoted(path)}));
    }
    return {};
}

bool YamlValues::hasLinkedElements(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    if (node.kind != YamlKind::List || node.isShared || node.isAlias || tree.isEdited(id))
        return false;
    NodeId item = node.first;
    while (item != noNode && !tree.node(item).isAlias && !tree.node(item).isUsed)
        item = tree.node(item).next;
    return item != noNode;
}

bool YamlValues::isTextSpelling(NodeId id, std::string_view spelling) const
{
    const YamlNode& node = tree.node(id);
    if (node.hasKey || node.tag != Type::Group || isYamlList(spelling))
        return false;
    if (node.isAlias && spelling == tree.readValueText(id))
        return file.readShown(id).type == Type::String;
    return node.isTagged || readYamlScalar(spelling, 0).type == Type::String;
}

// As the first of its line in a block; libfyaml takes nothing but plain values and brackets there.
bool YamlValues::isBehindTab(NodeId id) const
{
    const std::string_view text = tree.getOriginal();
    const std::size_t value = tree.node(id).value;
    const std::size_t line = findYamlLine(text, value);
    return !file.isInFlow(id) && skipYamlBlanks(text, line) == value &&
           text.substr(line, value - line).find('\t') != std::string_view::npos;
}

Outcome YamlValues::checkKind(std::string_view path, NodeId id, std::string_view spelling) const
{
    const YamlNode& node = tree.node(id);
    const bool isFirstText = !node.isText && node.parent != noNode &&
                             tree.node(node.parent).kind == YamlKind::Sequence &&
                             tree.node(node.parent).nonTexts == 1;
    if (isFirstText && isTextSpelling(id, spelling))
        return refused(Reason::tr(
            "%1 cannot become a text: all elements of its list would be texts, which are one value",
            {quoted(path)}));
    if (isBehindTab(id) && spelling.find_first_of("\"'!|>") == 0)
        return outcomeAt(tree.getOriginal(), node.value,
                         Reason::tr("%1 is indented by a tab, behind which no value can have quotes or a "
                                    "tag; indent it by blanks",
                                    {quoted(path)}));
    const std::string_view present = file.bareText(id);
    const std::size_t column = columnOfYaml(tree.getOriginal(), node.value);
    if (isYamlList(present) && !isYamlList(spelling) && hasYamlListComment(present, column))
        return refused(Reason::tr("%1 is a list with comments, which would be lost", {quoted(path)}));
    const std::string_view comment = commentOfYamlBlock(present);
    if (!comment.empty() && commentOfYamlBlock(spelling) != comment)
        return refused(Reason::tr("%1 is a block with %2 on its first line, which would be lost, since what "
                                  "it would become cannot be one",
                                  {quoted(path), quoted(comment)}));
    return {};
}

std::optional<std::string> YamlValues::spell(NodeId id, const Value& value, Type tag) const
{
    const YamlNode& node = tree.node(id);
    const bool isAlias = node.isAlias && !tree.isEdited(id);
    const std::string_view former = isAlias ? std::string_view() : file.bareText(id);
    const YamlPlace place = file.placeOf(id);
    const bool wasList = node.kind == YamlKind::List || isYamlList(former);
    if (value.type == Type::StringList) {
        const auto& list = std::get<std::vector<std::string>>(value.data);
        if (!std::all_of(list.begin(), list.end(), [](const auto& text) { return isUtf8(text); }))
            return {};
        const std::size_t column = columnOfYaml(tree.getOriginal(), node.value);
        auto alike = wasList && !isAlias ? spellYamlList(list, former, column, place) : std::nullopt;
        if (!alike && former.find('#') != std::string_view::npos && wasList)
            return {};
        return alike ? std::move(alike) : std::optional(spellNewYamlList(list));
    }
    const std::string_view body = wasList ? std::string_view() : former;
    auto spelled =
        tag == Type::Group ? spellYamlValue(value, body, place) : spellTaggedYamlValue(value, body, place);
    const bool holds = spelled && Documents::isSame(file.readAs(id, *spelled, tag), value);
    return holds ? std::move(spelled) : std::nullopt;
}

bool YamlValues::wasRead(NodeId id, const Value& value) const
{
    const YamlNode& node = tree.node(id);
    if (!tree.isEdited(id))
        return false;
    if (node.isAlias)
        return Documents::isSame(file.readShown(id), value);
    return Documents::isSame(file.readAs(id, tree.readValueText(id), node.tag), value);
}

void YamlValues::noteText(NodeId id, bool isText)
{
    YamlNode& node = tree.node(id);
    if (node.parent == noNode || node.isText == isText || node.hasKey)
        return;
    node.isText = isText;
    std::uint32_t& nonTexts = tree.node(node.parent).nonTexts;
    nonTexts = isText ? nonTexts - 1 : nonTexts + 1;
}

std::string YamlValues::withLead(NodeId id, const std::string& spelling) const
{
    const YamlNode& node = tree.node(id);
    const std::string_view text = tree.getOriginal();
    if (node.value == node.valueEnd && !spelling.empty()) {
        const bool isName = node.key == node.keyEnd || text[node.key] == '*'; // a ":" would go on with it
        const bool isBehindBlank = node.value > 0 && isYamlBlank(text[node.value - 1]);
        return (!node.lacksColon ? isBehindBlank ? "" : " " : isName ? " : " : ": ") + spelling;
    }
    const bool isBehindColon = node.hasKey && text[node.value - 1] == ':' &&
                               (node.keyStyle == YamlStyle::Plain || spelling.find('!') == 0);
    const bool isBehindAnchor =
        node.begin < node.value && !isYamlBlank(text[node.value - 1]) && !isYamlBreak(text[node.value - 1]);
    if ((isBehindColon || isBehindAnchor) && !spelling.empty() && spelling[0] != '[')
        return ' ' + spelling;
    const bool wasBlockList = node.kind == YamlKind::List && node.style == YamlStyle::Block && !node.isAlias;
    const bool isIndentless = wasBlockList && node.parent != noNode && node.hasKey &&
                              columnOfYaml(text, node.value) <= file.blockAround(id);
    return isIndentless && (spelling.empty() || spelling[0] != '-' || !isYamlList(spelling)) ? ' ' + spelling
                                                                                             : spelling;
}

void YamlValues::put(NodeId id, const std::string& spelling)
{
    putText(id, withLead(id, spelling));
}

void YamlValues::putText(NodeId id, std::string text)
{
    tree.setText(id, YamlPart::Value, std::move(text));
    noteText(id, isTextSpelling(id, file.bareText(id)));
}

void YamlValues::restore(NodeId id)
{
    tree.restoreValue(id);
    const YamlNode& node = tree.node(id);
    if (node.kind == YamlKind::Scalar)
        noteText(id, isTextSpelling(id, tree.readValueText(id)));
}

bool YamlValues::isSpelling(NodeId id, std::string_view spelling) const
{
    const std::size_t around = file.blockAround(id);
    const bool isBlockList = isYamlList(spelling) && spelling[0] == '-';
    const std::size_t column = columnOfYaml(tree.getOriginal(), tree.node(id).value);
    if (file.isInFlow(id) && (isBlockList || startsWith(spelling, "|") || startsWith(spelling, ">")))
        return false;
    std::string text;
    if (file.isInFlow(id))
        text = "{k: " + std::string(spelling) + '}';
    else
        text = std::string(around, ' ') + "k:" + (isBlockList ? '\n' + std::string(column, ' ') : " ") +
               std::string(spelling);
    YamlFile whole(std::move(text), TextEncoding());
    if (!whole.readText(true).ok() || whole.tree.node(whole.tree.getRoot()).kind != YamlKind::Map)
        return false;
    const YamlNode& root = whole.tree.node(whole.tree.getRoot());
    const NodeId value = root.first;
    // Which line ends are those of a block, what follows it decides. Behind a list may be comments that were
    // in it.
    const auto ended = [&](std::string_view read) {
        return whole.tree.node(value).isBlockScalar() ? read.substr(0, read.find_last_not_of("\r\n") + 1)
               : isBlockList                          ? read.substr(0, endOfYamlTexts(read, column))
                                                      : read;
    };
    return root.count == 1 && whole.tree.node(value).isLeaf() &&
           whole.tree.node(value).kind != YamlKind::Merge && !whole.tree.node(value).isAlias &&
           ended(whole.tree.readValueText(value)) == ended(spelling);
}

} // namespace Repository::Documents
