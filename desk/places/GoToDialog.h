#pragma once

#include "desk/common/LatestTask.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QDialog>

#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;

namespace Vantry {

// Asks for an attribute by its path or by a place in its file, such as a program's message names. GUI thread.
class GoToDialog : public QDialog
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // It begins with what the clipboard holds, if that is such a path or place.
    GoToDialog(std::shared_ptr<Repository> repository, QWidget* parent);

    // Once the dialog was accepted.
    const QString& getPath() const { return path; }

private:
    void find();
    void refuse(const QString& reason);

    // What is found, or why nothing is. Any thread.
    struct Found
    {
        QString path;
        QString reason;
    };
    static Found findText(const QString& text, Repository& repository);

    std::shared_ptr<Repository> repository;
    QString path;
    LatestTask finder;

    // Children.
    QLineEdit* text;
    QLabel* fault;
    QPushButton* go = nullptr;
};

} // namespace Vantry
