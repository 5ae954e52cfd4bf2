#include "host/Shared/Completer/TreeModelCompleter.h"

#include "host/Shared/Completer/CompletionPopup.h"
#include "host/Utilities/ModelViews/AttributeModel.h"
#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"

#include <QAbstractItemView>
#include <QAbstractProxyModel>

namespace Shared::Completer {

using Utilities::ModelViews::AttributeModel;
using Utilities::ModelViews::Widgets::LongTextDelegate;

TreeModelCompleter::TreeModelCompleter(QAbstractItemModel* model, QObject* parent,
                                       const QString& pathSeparator, Qt::CaseSensitivity caseSensitivity)
    : QCompleter(parent), separator(pathSeparator)
{
    setCaseSensitivity(caseSensitivity);
    setCompletionRole(Qt::DisplayRole);
    setPopup(new CompletionPopup); // owned by the completer, which gives it a delegate of its own
    popup()->setItemDelegate(new LongTextDelegate(popup(), Qt::ElideMiddle));
    replaceModel(model);
}

void TreeModelCompleter::replaceModel(QAbstractItemModel* newModel)
{
    // What setModel does, without its new set-up of the popup, which would flicker with each keystroke.
    static_cast<QAbstractProxyModel*>(completionModel())->setSourceModel(newModel);
    setCompletionMode(offersWholePaths() ? UnfilteredPopupCompletion : PopupCompletion);
}

QStringList TreeModelCompleter::splitPath(const QString& path) const
{
    return separator.isEmpty() || offersWholePaths() ? QStringList{path} : path.split(separator);
}

QString TreeModelCompleter::pathFromIndex(const QModelIndex& index) const
{
    QStringList components;
    for (QModelIndex item = index; item.isValid(); item = item.parent())
        components.prepend(item.data(completionRole()).toString());
    return components.join(separator);
}

bool TreeModelCompleter::offersWholePaths() const
{
    return qobject_cast<const AttributeModel*>(model()) != nullptr;
}

} // namespace Shared::Completer
