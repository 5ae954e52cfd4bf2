#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/HostExport.h"

#include <QAbstractListModel>
#include <QStringList>

#include <memory>

namespace Utilities::ModelViews {

// A flat list of the paths that match a pattern, whatever their case; the source of completions. It is a
// snapshot that lists the first 1,000 paths, upper levels first, and more as a view asks for them. GUI
// thread.
class VANTRY_HOST_EXPORT AttributeModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The pattern is a path that ends in "*". Without a repository it is that of the process.
    AttributeModel(const QString& pattern, QObject* parent,
                   const std::shared_ptr<RepositoryInterface>& repository = nullptr);
    ~AttributeModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    QStringList findPaths(int limit) const;

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::TreeInterface> tree;
    const QString pattern;
    QStringList paths;
    bool complete = false;
    bool isSettled = false;  // the turn of the event loop in which the model was made is over
    bool isFetching = false; // rows are being added; those who hear of it must not ask for more
};

} // namespace Utilities::ModelViews
