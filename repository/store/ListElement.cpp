#include "repository/store/ListElement.h"

#include "repository/common/PathRules.h"

namespace Repository {

std::optional<int> elementIndex(QStringView name)
{
    bool isNumber = false;
    const int index = name.toString().toInt(&isNumber);
    return isNumber && QString::number(index) == name && index >= 0 ? std::optional(index) : std::nullopt;
}

std::optional<ListElement> ListElement::at(const QString& path)
{
    if (path.isEmpty() || !path.back().isDigit())
        return {};
    const QStringView list = parentPath(path);
    const auto index = elementIndex(pathAfter(path, list.size()));
    return index && !list.isEmpty() ? std::optional(ListElement{list.toString(), *index}) : std::nullopt;
}

bool ListElement::isList(const Node* node)
{
    return node && node->isAttribute() && node->value.getType() == QMetaType::QStringList;
}

QVariant ListElement::readFrom(const Node* node) const
{
    const QStringList texts = isList(node) ? node->value.toVariant().toStringList() : QStringList();
    return index < texts.size() ? QVariant(texts[index]) : QVariant();
}

} // namespace Repository
