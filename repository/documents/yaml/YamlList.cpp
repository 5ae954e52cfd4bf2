#include "repository/documents/yaml/YamlList.h"

#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

using Texts = std::vector<std::string>;

// A file of nothing but the list, where it begins in the same column.
std::unique_ptr<YamlFile> fileOf(std::string_view spelled, std::size_t column,
                                 std::string_view lineEnd = "\n")
{
    const std::size_t indentation = spelled[0] == '-' ? column : 0;
    std::string text = std::string(indentation, ' ').append(spelled).append(lineEnd);
    auto file = std::make_unique<YamlFile>(std::move(text), TextEncoding());
    const bool isList =
        file->readText(true).ok() && file->tree.node(file->tree.getRoot()).kind == YamlKind::List;
    return isList ? std::move(file) : nullptr;
}

} // namespace

bool isYamlList(std::string_view spelled)
{
    if (spelled.empty() || (spelled[0] != '[' && spelled[0] != '-'))
        return false;
    return spelled[0] == '[' || spelled.size() == 1 || isYamlBlank(spelled[1]) || isYamlBreak(spelled[1]);
}

std::optional<Texts> readYamlTexts(std::string_view spelled, std::size_t column)
{
    const auto file = fileOf(spelled, column);
    return file ? std::optional(std::get<Texts>(file->read(file->tree.getRoot()).data)) : std::nullopt;
}

std::size_t endOfYamlTexts(std::string_view spelled, std::size_t column)
{
    const auto file = fileOf(spelled, column);
    if (!file)
        return spelled.size();
    const YamlNode& list = file->tree.node(file->tree.getRoot());
    return std::min<std::size_t>(list.valueEnd - list.value, spelled.size());
}

bool hasYamlListComment(std::string_view spelled, std::size_t column)
{
    const auto file = fileOf(spelled, column);
    if (!file)
        return hasYamlComment(spelled, 0, spelled.size());
    const YamlTree& tree = file->tree;
    std::size_t at = 0;
    for (NodeId id = tree.node(tree.getRoot()).first; id != noNode; id = tree.node(id).next) {
        if (hasYamlComment(tree.getOriginal(), at, tree.node(id).begin) ||
            !commentOfYamlBlock(tree.readValueText(id)).empty())
            return true;
        at = tree.node(id).valueEnd;
    }
    return hasYamlComment(tree.getOriginal(), at, tree.getOriginal().size());
}

std::size_t findCommentOfYamlElements(const YamlTree& tree, NodeId list, const Texts& former,
                                      const Texts& texts)
{
    if (tree.node(list).isFlow() || texts.empty() || texts.size() >= former.size())
        return std::string::npos;
    const auto changed = std::mismatch(texts.begin(), texts.end(), former.begin()).first;
    if (changed != texts.end() && texts.back() == former.back())
        return std::string::npos;
    const std::string_view text = tree.getOriginal();
    for (std::size_t i = texts.size(); i < former.size(); ++i) {
        const std::size_t tail = skipYamlTail(text, tree.node(tree.elementAt(list, i - 1)).valueEnd);
        const std::size_t comment = text.find('#', tail);
        if (comment < tree.node(tree.elementAt(list, i)).begin)
            return comment;
    }
    return std::string::npos;
}

std::string spellNewYamlList(const Texts& list)
{
    YamlPlace place;
    place.inFlow = true;
    std::string text(1, '[');
    for (const std::string& item : list)
        text += (text.size() > 1 ? ", " : "") + spellYamlText(item, {}, place);
    return text += ']';
}

Outcome editYamlList(YamlEditor& editor, const YamlFile& file, NodeId list, const Texts& former,
                     const Texts& texts)
{
    const auto begin = std::mismatch(former.begin(), former.end(), texts.begin(), texts.end());
    const auto end = std::mismatch(former.rbegin(), std::reverse_iterator(begin.first), texts.rbegin(),
                                   std::reverse_iterator(begin.second));
    const auto from = std::size_t(begin.first - former.begin());
    const auto oldCount = std::size_t(end.first.base() - begin.first);
    const auto newCount = std::size_t(end.second.base() - begin.second);
    const std::size_t common = std::min(oldCount, newCount);
    const YamlTree& tree = file.tree;
    for (std::size_t i = from; i < from + oldCount; ++i) {
        const NodeId item = tree.elementAt(list, i);
        const YamlNode& node = tree.node(item);
        if (i < from + common && former[i] == texts[i])
            continue;
        if (node.isUsed) {
            const Outcome place = outcomeAt(tree.getOriginal(), tree.findAliasOf(item));
            return outcomeAt(tree.getOriginal(), node.begin,
                             Reason::tr("the anchor of element %1 is used at line %2",
                                        {std::to_string(i), std::to_string(place.line)}));
        }
        const std::string_view spelled = node.isAlias ? std::string_view() : tree.readValueText(item);
        if (i < from + common)
            editor.replace(node.begin, node.valueEnd,
                           std::string(tree.text(node.begin, node.value)) +
                               spellYamlText(texts[i], spelled, file.placeOf(item)));
    }
    const Texts added(begin.second + std::ptrdiff_t(common), begin.second + std::ptrdiff_t(newCount));
    const Outcome outcome = added.empty() ? Outcome() : editor.insertTexts(list, from + common, added);
    if (!outcome.ok() || oldCount == common)
        return outcome;
    const std::size_t kept = from + common;
    if (kept > 0 && end.first == former.rbegin() && !tree.node(list).isFlow() &&
        findCommentOfYamlElements(tree, list, former, texts) == std::string::npos) {
        const std::size_t valueEnd = tree.node(tree.elementAt(list, kept - 1)).valueEnd;
        editor.replace(skipYamlTail(tree.getOriginal(), valueEnd), tree.node(list).valueEnd, {});
    } else {
        editor.removeElements(list, kept, oldCount - common);
    }
    return outcome;
}

std::optional<std::string> spellYamlList(const Texts& list, std::string_view former, std::size_t column,
                                         const YamlPlace& place)
{
    const auto file = fileOf(former, column, place.lineEnd);
    if (!file)
        return {};
    const NodeId root = file->tree.getRoot();
    file->lineEnd = std::string(place.lineEnd);
    YamlEditor editor(*file);
    if (!editYamlList(editor, *file, root, std::get<Texts>(file->read(root).data), list).ok())
        return {};
    std::string text = editor.apply();
    const std::size_t indentation = former[0] == '-' ? column : 0;
    if (former[0] == '-' && !list.empty() && text.compare(0, indentation, std::string(indentation, ' ')) != 0)
        return {};
    text.erase(0, list.empty() ? skipYamlTrivia(text, 0) : indentation);
    text.resize(text.find_last_not_of("\r\n") + 1);
    return readYamlTexts(text, column) == list ? std::optional(std::move(text)) : std::nullopt;
}

} // namespace Repository::Documents
