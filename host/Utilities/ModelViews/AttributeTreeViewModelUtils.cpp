#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"

#include "host/Utilities/HostLog.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/TextFile.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QAbstractItemModel>

namespace Utilities::ModelViews {

using FrameworkCore::AppConfig::AccessMode;

AttributeTreeViewModelUtils::AttributeTreeViewModelUtils() : attributes(GetAppConfigRepositoryInterface())
{
}

QString AttributeTreeViewModelUtils::retriveAttributePathFromIndex(const QModelIndex& index) const
{
    QStringList names;
    for (QModelIndex item = index.siblingAtColumn(0); item.isValid(); item = item.parent())
        names.prepend(item.data(Qt::DisplayRole).toString());
    return names.join(QLatin1Char('.'));
}

QStringList AttributeTreeViewModelUtils::extractStringsFromModel(const QAbstractItemModel* model,
                                                                 const QModelIndex& parent) const
{
    if (const auto* const tree = qobject_cast<const AttributeTreeViewModel*>(model))
        return tree->childNames(parent); // at once, since there may be a million
    QStringList texts;
    const int count = model ? model->rowCount(parent) : 0;
    texts.reserve(count);
    for (int row = 0; row < count; ++row)
        texts.append(model->index(row, 0, parent).data(Qt::DisplayRole).toString());
    return texts;
}

bool AttributeTreeViewModelUtils::readTextFile(const QString& fileName, QString& content,
                                               QString& errorText) const
{
    errorText = TextFile::read(fileName, content);
    return errorText.isEmpty();
}

bool AttributeTreeViewModelUtils::writeTxtFile(const QString& text, const QString& fileName) const
{
    const QString error = TextFile::write(fileName, text);
    if (!error.isEmpty())
        logFailure(error);
    return error.isEmpty();
}

QString AttributeTreeViewModelUtils::TrimAttributeName(const QString& text, const QString& characters)
{
    int begin = 0;
    int end = text.size();
    while (begin < end && characters.contains(text.at(begin)))
        ++begin;
    while (begin < end && characters.contains(text.at(end - 1)))
        --end;
    return text.mid(begin, end - begin);
}

AccessMode AttributeTreeViewModelUtils::GetBackendAccessMode(const QString& text)
{
    if (text == QLatin1String("read-only"))
        return AccessMode::ReadOnly;
    if (text == QLatin1String("write-only"))
        return AccessMode::WriteOnly;
    if (text == QLatin1String("read-write"))
        return AccessMode::ReadWrite;
    return AccessMode::None;
}

} // namespace Utilities::ModelViews
