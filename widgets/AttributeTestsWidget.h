#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QWidget>

#include <memory>

namespace Widgets {

namespace Ui {
class AttributeTestsWidget;
}

// The page that measures how fast the repository creates and updates attributes and notifies. The watchers
// that a run registers stay registered. GUI thread.
class AttributeTestsWidget : public QWidget
{
    Q_OBJECT

public:
    explicit AttributeTestsWidget(QWidget* parent = nullptr);
    ~AttributeTestsWidget() override;

private slots:
    void on_btnCreate_clicked();
    void on_btnUpdate_clicked();
    void on_btnReadCounter_clicked();

private:
    using Repository = std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface>;

    // Begins a run with the count that was entered. Null without a valid count or a repository, which the
    // page or the log reports.
    Repository beginRun(int& count);

    std::unique_ptr<Ui::AttributeTestsWidget> ui;
};

} // namespace Widgets
