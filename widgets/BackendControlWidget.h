#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QWidget>

#include <memory>

namespace Utilities {
class ComboBoxToAttributeMapper;
}

namespace Widgets {

namespace Ui {
class BackendControlWidget;
}

// The page on which a backend is created or loaded, and one or all of them are saved. Without a repository it
// does nothing. GUI thread.
class BackendControlWidget : public QWidget
{
    Q_OBJECT

public:
    explicit BackendControlWidget(QWidget* parent = nullptr);
    ~BackendControlWidget() override;

private slots:
    void on_btnCreateBackend_clicked();
    void on_btnSaveBackend_clicked();
    void on_btnRefreshBackendList_clicked();
    void on_btnRefreshBackendTypeList_clicked();

private:
    QString buildBackendsPath() const;
    QStringList namesToSave() const;

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    std::unique_ptr<Ui::BackendControlWidget> ui;
    std::shared_ptr<Utilities::ComboBoxToAttributeMapper> mapper;
};

} // namespace Widgets
