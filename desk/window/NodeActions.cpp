#include "desk/window/NodeActions.h"

#include "desk/common/Confirmation.h"
#include "desk/common/WaitCursor.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"

#include <QAction>
#include <QLocale>
#include <QMenu>

namespace Vantry {

using FrameworkCore::AppConfig::isWritable;
using FrameworkCore::AppConfig::joinedPath;
using FrameworkCore::AppConfig::nameOf;
using FrameworkCore::AppConfig::parentPath;
using FrameworkCore::AppConfig::pathSeparator;
using Utilities::ModelViews::AttributeTreeViewModelUtils;
using Dialogs = Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;

namespace {

QString besidePath(const QString& path, const QString& name)
{
    return joinedPath(parentPath(path).toString(), name);
}

} // namespace

NodeActions::NodeActions(std::shared_ptr<Repository> attributes, SelectedPath selected, QMenu& menu,
                         QWidget& mainWindow)
    : QObject(&menu), repository(std::move(attributes)), selectedPath(std::move(selected)), window(mainWindow)
{
    forNodes = {add(menu, tr("Re&name..."), "renameNode", &NodeActions::rename),
                add(menu, tr("&Move..."), "moveNode", &NodeActions::move),
                add(menu, tr("&Duplicate..."), "duplicateNode", &NodeActions::duplicate),
                add(menu, tr("De&lete..."), "deleteNode", &NodeActions::remove)};
    forNodes[0]->setShortcut(Qt::SHIFT + Qt::Key_F2);
    forNodes[2]->setShortcut(Qt::CTRL + Qt::Key_D);
    forAttributes = {add(menu, tr("&Set to Null"), "setNull", &NodeActions::setNull)};
    revertAction = add(menu, tr("Re&vert to What Is Saved"), "revertNode", &NodeActions::revert);
    auto& elements = *menu.addMenu(tr("&Array Element"));
    forElements = {add(elements, tr("Insert &Before"), "insertBefore", &NodeActions::insertBefore),
                   add(elements, tr("Insert &After"), "insertAfter", &NodeActions::insertAfter),
                   add(elements, tr("Move &Up"), "moveUp", &NodeActions::moveUp),
                   add(elements, tr("Move &Down"), "moveDown", &NodeActions::moveDown)};
    forElements[2]->setShortcut(Qt::CTRL + Qt::SHIFT + Qt::Key_Up);
    forElements[3]->setShortcut(Qt::CTRL + Qt::SHIFT + Qt::Key_Down);
}

QAction* NodeActions::add(QMenu& menu, const QString& text, const char* name, Action action)
{
    QAction* const added = menu.addAction(text, this, [this, action] {
        const QString path = selectedPath();
        if (!path.isEmpty())
            (this->*action)(path);
    });
    added->setObjectName(QLatin1String(name));
    return added;
}

void NodeActions::offer()
{
    const QString path = selectedPath();
    const auto node = repository->getTreeInterface()->getNodeInformation(path);
    const auto enable = [](const QList<QAction*>& actions, bool isPossible) {
        for (QAction* const action : actions)
            action->setEnabled(isPossible);
    };
    const bool isNode = node.exists && !node.isBackendRoot;
    enable(forNodes, isNode);
    enable(forElements, isNode && isElement(path));
    enable(forAttributes, node.isAttribute && isWritable(node.accessMode));
    const auto edited = repository->getChangesInterface()->getEditedBackends();
    revertAction->setEnabled(edited.contains(node.backend));
}

// In an array all are numbered, without a gap.
bool NodeActions::isElement(const QString& path) const
{
    const auto tree = repository->getTreeInterface();
    const QString array = parentPath(path).toString();
    const int count = tree->getChildCount(array);
    bool isNumber = false;
    nameOf(path).toUInt(&isNumber);
    return isNumber && tree->getLastChildNames(array, 1) == QStringList(QString::number(count - 1));
}

void NodeActions::rename(const QString& path)
{
    bool isChosen = false;
    const QString name = Dialogs(&window).showSingleTextDialog(
        tr("Rename"), tr("New name, in which a \".\" is written %2E:"), nameOf(path), isChosen);
    if (!isChosen || name.isEmpty() || name == nameOf(path))
        return;
    if (name.contains(pathSeparator))
        Dialogs::ShowWarningMessage(&window, tr("Not Renamed"),
                                    tr("'%1' is a path. In a name a \".\" is written %2E; "
                                       "to put the node elsewhere, choose Move.")
                                        .arg(name));
    else
        moveTo(path, besidePath(path, name));
}

void NodeActions::move(const QString& path)
{
    bool isChosen = false;
    const QString target = Dialogs(&window).showSingleTextDialog(tr("Move"), tr("New path:"), path, isChosen);
    if (isChosen && !target.isEmpty() && target != path)
        moveTo(path, target);
}

void NodeActions::moveTo(const QString& path, const QString& target)
{
    if (AttributeTreeViewModelUtils().moveAttribute(path, target))
        emit selectRequested(target);
}

// An element is doubled after itself; all else needs another name.
void NodeActions::duplicate(const QString& path)
{
    QString name;
    if (isElement(path)) {
        name = QString::number(nameOf(path).toInt() + 1);
    } else {
        const auto tree = repository->getTreeInterface();
        for (int number = 2; name.isEmpty() || tree->getNodeInformation(besidePath(path, name)).exists;
             ++number)
            name = nameOf(path) + QLatin1Char('-') + QString::number(number);
        bool isChosen = false;
        name =
            Dialogs(&window).showSingleTextDialog(tr("Duplicate"), tr("Name of the copy:"), name, isChosen);
        if (!isChosen || name.isEmpty())
            return;
    }
    if (AttributeTreeViewModelUtils().copyAttribute(path, besidePath(path, name)))
        emit selectRequested(besidePath(path, name));
}

void NodeActions::remove(const QString& path)
{
    FrameworkCore::AppConfig::Interfaces::PathSearch search;
    search.pattern = path + QStringLiteral(".*");
    search.limit = 10000;
    const int below = repository->getTreeInterface()->findPaths(search).size();
    QString question = tr("Delete this?");
    if (below == search.limit)
        question =
            tr("Delete this and the more than %1 entries below it?").arg(QLocale().toString(below - 1));
    else if (below > 0)
        question = below == 1 ? tr("Delete this and the entry below it?")
                              : tr("Delete this and the %1 entries below it?").arg(QLocale().toString(below));
    Confirmation confirmation(Confirmation::Act::Delete, tr("Delete"), question, &window);
    confirmation.setSubject(path);
    if (confirmation.ask(tr("&Delete")))
        AttributeTreeViewModelUtils().deleteAttributeTree(path);
}

void NodeActions::setNull(const QString& path)
{
    const WaitCursor cursor;
    repository->getWriterInterface()->retype(path, {});
}

void NodeActions::revert(const QString& path)
{
    const WaitCursor cursor;
    repository->getChangesInterface()->revert(path);
}

// An empty value of the type that its neighbour has.
void NodeActions::insert(const QString& path, int offset)
{
    const auto attribute = repository->getReaderInterface()->getAttribute(path);
    const int type = attribute ? attribute->getValue().userType() : int(QMetaType::QString);
    const auto value = FrameworkCore::Values::convertVariant({}, type);
    const QString inserted = besidePath(path, QString::number(nameOf(path).toInt() + offset));
    constexpr int createBefore = 4;
    constexpr int readWrite = 3;
    if (repository->getWriterInterface()->create(inserted, value.value_or(QString()), createBefore,
                                                 readWrite))
        emit selectRequested(inserted);
}

void NodeActions::reorder(const QString& path, int offset)
{
    const int index = nameOf(path).toInt() + offset;
    const int count = repository->getTreeInterface()->getChildCount(parentPath(path).toString());
    if (index >= 0 && index < count)
        moveTo(path, besidePath(path, QString::number(index)));
}

} // namespace Vantry
