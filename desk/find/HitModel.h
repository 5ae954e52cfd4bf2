#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QAbstractTableModel>
#include <QVector>

#include <optional>

namespace Vantry {

class HitPlaces;

// What a search has found, a row each, with the value that is there now. Those of one that replaces can be
// checked, and are at first, unless their value cannot be replaced. GUI thread.
class HitModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using SearchHit = FrameworkCore::AppConfig::Interfaces::SearchHit;

    enum Column { PathColumn, ValueColumn, ReplacementColumn, PlaceColumn, ColumnCount };
    enum Role { PathRole = Qt::UserRole };

    // More are not listed.
    static constexpr int mostRows = 100'000;

    // Both outlive the model.
    HitModel(Repository& repository, HitPlaces& places, QObject* parent = nullptr);

    void clear(bool canBeChecked); // what comes then
    void add(const QVector<SearchHit>& hits);

    void tellValueChanged(int row); // so that views read it again

    const SearchHit& getHit(int row) const { return rows[row].hit; }
    QVector<SearchHit> getChecked() const;
    int getCheckedCount() const { return checkedCount; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    void checkedChanged();

private:
    struct Row
    {
        SearchHit hit;
        bool isChecked;
    };

    std::optional<QVariant> valueOf(const SearchHit& hit) const; // nothing once it is gone
    QString textOf(const Row& row, int column) const;
    QString toolTipOf(const Row& row, int column) const;

    Repository& repository;
    HitPlaces& places;
    QVector<Row> rows;
    bool areCheckable = false;
    int checkedCount = 0;
};

} // namespace Vantry
