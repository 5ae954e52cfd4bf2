#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QPersistentModelIndex>

namespace TestSupport {

// Numbers of children as a view knows them: asked once, from then on kept by row signals alone.
class ToldCounts
{
public:
    explicit ToldCounts(const QAbstractItemModel& watchedModel) : model(watchedModel)
    {
        const auto add = [this](const QModelIndex& parent, int difference) {
            const auto known = counts.find(parent);
            if (known != counts.end())
                *known += difference;
        };
        QObject::connect(
            &model, &QAbstractItemModel::rowsInserted, &context,
            [add](const QModelIndex& parent, int first, int last) { add(parent, last - first + 1); });
        QObject::connect(
            &model, &QAbstractItemModel::rowsRemoved, &context,
            [add](const QModelIndex& parent, int first, int last) { add(parent, first - last - 1); });
    }

    void ask(const QModelIndex& parent)
    {
        if (!counts.contains(parent))
            counts.insert(parent, model.rowCount(parent));
    }

    // Empty when the model agrees with all that it has told.
    QString firstWrong() const
    {
        for (auto known = counts.begin(); known != counts.end(); ++known) {
            const bool isGone = !known.key().isValid() && known.key() != top;
            const int actual = model.rowCount(known.key());
            if (!isGone && actual != *known)
                return QStringLiteral("\"%1\" has %2 rows, told were %3")
                    .arg(known.key().data().toString(), QString::number(actual), QString::number(*known));
        }
        return {};
    }

private:
    const QAbstractItemModel& model;
    QHash<QPersistentModelIndex, int> counts;
    QPersistentModelIndex top;
    QObject context;
};

} // namespace TestSupport
