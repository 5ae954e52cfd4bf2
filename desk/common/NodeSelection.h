#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QObject>
#include <QPointer>

#include <memory>

class QAbstractItemView;

namespace Vantry {

// Which node of the repository is selected in a window: in the list, table or tree that had the keyboard
// last, or else in the tree. GUI thread.
class NodeSelection : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The window outlives it.
    NodeSelection(std::shared_ptr<Repository> repository, const QWidget& window);

    QString getPath() const; // empty without one

private:
    void follow(QWidget* focused);

    std::shared_ptr<Repository> repository;
    const QWidget& window;
    QPointer<QAbstractItemView> view; // with nodes
};

} // namespace Vantry
