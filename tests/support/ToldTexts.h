#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QPersistentModelIndex>

namespace TestSupport {

// Texts of cells as someone knows them who reads a cell once, and again whenever the model tells of a change.
class ToldTexts
{
public:
    explicit ToldTexts(const QAbstractItemModel& watchedModel)
    {
        QObject::connect(&watchedModel, &QAbstractItemModel::dataChanged, &context,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             const QModelIndex parent = first.parent();
                             for (int row = first.row(); row <= last.row(); ++row) {
                                 for (int column = first.column(); column <= last.column(); ++column)
                                     readAgain(first.model()->index(row, column, parent));
                             }
                         });
    }

    void read(const QModelIndex& index) { texts.insert(index, index.data().toString()); }

    int countWrong() const
    {
        int wrong = 0;
        for (auto known = texts.begin(); known != texts.end(); ++known)
            wrong += known.key().isValid() && *known != known.key().data().toString() ? 1 : 0;
        return wrong;
    }

private:
    void readAgain(const QModelIndex& index)
    {
        const auto known = texts.find(index);
        if (known != texts.end())
            *known = index.data().toString();
    }

    QHash<QPersistentModelIndex, QString> texts;
    QObject context;
};

} // namespace TestSupport
