#include "repository/documents/yaml/YamlList.h"

#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

using Texts = std::vector<std::string>;

// A file of nothing but the list, where it begins in the same column.
std::unique_ptr<YamlFile> fileOf(std::string_view spelled, std::size_t column)
{
    const std::size_t indentation = spelled[0] == '-' ? column : 0;
    std::string text = std::string(indentation, ' ').append(spelled).append("\n");
    auto file = std::make_unique<YamlFile>(std::move(text), TextEncoding());
    const bool isList = file->readText().ok() && file->tree.node(file->tree.getRoot()).kind == YamlKind::List;
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

std::string spellNewYamlList(const Texts& list)
{
    YamlPlace place;
    place.inFlow = true;
    std::string text(1, '[');
    for (const std::string& item : list)
        text += (text.size() > 1 ? ", " : "") + spellYamlText(item, {}, place);
    return text += ']';
}

std::optional<std::string> spellYamlList(const Texts& list, std::string_view former, std::size_t column,
                                         const YamlPlace& place)
{
    const auto file = fileOf(former, column);
    if (!file)
        return {};
    const NodeId root = file->tree.getRoot();
    const Texts texts = std::get<Texts>(file->read(root).data);
    file->lineEnd = std::string(place.lineEnd);
    const auto begin = std::mismatch(texts.begin(), texts.end(), list.begin(), list.end());
    const auto end = std::mismatch(texts.rbegin(), std::reverse_iterator(begin.first), list.rbegin(),
                                   std::reverse_iterator(begin.second));
    const auto from = std::size_t(begin.first - texts.begin());
    const auto oldCount = std::size_t(end.first.base() - begin.first);
    const auto newCount = std::size_t(end.second.base() - begin.second);
    const std::size_t common = std::min(oldCount, newCount);
    YamlEditor editor(*file);
    for (std::size_t i = from; i < from + common; ++i) {
        const NodeId item = file->tree.elementAt(root, i);
        if (texts[i] != list[i])
            editor.replaceText(item, spellYamlText(list[i], file->tree.valueText(item), file->placeOf(item)));
    }
    const std::vector<std::string> added(begin.second + std::ptrdiff_t(common),
                                         begin.second + std::ptrdiff_t(newCount));
    if (!added.empty() && !editor.insertTexts(root, from + common, added).ok())
        return {};
    editor.removeElements(root, from + common, oldCount - common);
    std::string text = editor.apply();
    const std::size_t indentation = former[0] == '-' ? column : 0;
    if (former[0] == '-' && !list.empty() && text.compare(0, indentation, std::string(indentation, ' ')) != 0)
        return {};
    text.erase(0, list.empty() ? skipYamlTrivia(text, 0) : indentation);
    text.resize(text.find_last_not_of(" \t\r\n") + 1);
    return readYamlTexts(text, column) == list ? std::optional(std::move(text)) : std::nullopt;
}

} // namespace Repository::Documents
