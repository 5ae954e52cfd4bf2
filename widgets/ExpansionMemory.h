#pragma once

#include <QModelIndex>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace Utilities::ModelViews {
class AttributeTreeViewModel;
}

namespace Widgets {

// The paths of the open items of the attribute tree, kept so that they can be opened again after the tree was
// read anew. GUI thread.
class ExpansionMemory
{
public:
    void add(const QString& path) { paths.insert(path); }
    void remove(const QString& path) { paths.remove(path); }
    void clear() { paths.clear(); }
    QStringList toList() const { return paths.values(); }

    struct SavedItem
    {
        QModelIndex item;
        QString path;
    };

    // The items to open again in the level of the item `start` and below: those that are in the list of saved
    // paths, also within closed ones, which show them open when they are opened. Of the items of a level
    // whose names begin with a saved name, whatever its case, only the first 66 from `start` on count as that
    // name's. Nothing is opened below those that are left out.
    static QVector<SavedItem> findSavedItems(const Utilities::ModelViews::AttributeTreeViewModel& model,
                                             const QModelIndex& start, const QStringList& savedPaths);

private:
    QSet<QString> paths;
};

} // namespace Widgets
