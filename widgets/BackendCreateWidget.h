#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QDialog>
#include <QMutex>

#include <future>
#include <memory>

namespace Widgets {

namespace Ui {
class BackendCreateWidget;
}

// The dialog in which a new backend is created below a place of the tree; it deletes itself when closed. A
// thread of Qt's global pool creates the backend while the GUI thread waits under a busy window. Without a
// repository it does nothing. GUI thread.
class BackendCreateWidget : public QDialog
{
    Q_OBJECT

public:
    // The path is that of the node below which the backend shall be.
    BackendCreateWidget(QWidget* parent, const QString& path);
    ~BackendCreateWidget() override;

    // Creates the backend that the fields describe; false when the repository refuses it. On the worker
    // thread, and only while the GUI thread leaves the fields alone.
    bool createBackendInBackground();

signals:
    void backendCreatedSuccess(); // once, after the dialog has closed

private slots:
    void on_btnCancel_clicked() { close(); }
    void on_btnCreate_clicked();
    void on_btnBackendFileBrowse_clicked();

private:
    void refreshBackendTypes();
    void alignFields();
    bool createWhileWaiting();
    void runCreation();

    using Creation = std::packaged_task<bool()>;

    std::unique_ptr<Ui::BackendCreateWidget> ui;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    QMutex handOver; // guards what the worker takes over
    std::shared_ptr<Creation> creation;
};

} // namespace Widgets
