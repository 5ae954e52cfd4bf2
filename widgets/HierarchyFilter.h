#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

namespace Utilities::ModelViews {
class AttributeTreeViewModel;
}

namespace Widgets {

// What the four filter boxes offer: the names below a search path, level by level. The first level is taken
// when the filter is filled, the others when a box asks for them. GUI thread.
class HierarchyFilter
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // Without a repository there is nothing below the first level.
    explicit HierarchyFilter(std::shared_ptr<RepositoryInterface> repository);

    // Takes the names of the first level from a tree that shows the search path, and forgets all others.
    void fill(const Utilities::ModelViews::AttributeTreeViewModel& model, const QString& searchPath);

    // The names one level below the item that lies in these rows, one for each level from the first; no row
    // gives the first level. Empty when a row is out of range.
    QStringList names(const QVector<int>& rows);

    // The search path that shows what is chosen: one text for each box that has a current entry.
    QString filterPath(const QStringList& chosenTexts) const;

private:
    std::shared_ptr<RepositoryInterface> repository;
    QString searchPathText;
    QStringList levelOneItems;
    QMap<QVector<int>, QStringList> lowerItems; // names below the item that lies in these rows
};

} // namespace Widgets
