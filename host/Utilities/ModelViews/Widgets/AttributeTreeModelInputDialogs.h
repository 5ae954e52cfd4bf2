#pragma once

#include "host/HostExport.h"

#include <QPointer>
#include <QString>
#include <QWidget>

namespace Utilities::ModelViews::Widgets {

// The dialogs in which pages ask the user something. Each is modal and a child of one widget. GUI thread.
class VANTRY_HOST_EXPORT AttributeTreeModelInputDialogs
{
public:
    // The widget is not owned; dialogs have no parent when it is null or gone.
    explicit AttributeTreeModelInputDialogs(QWidget* dialogParent);

    QWidget* getDialogParent() const;

    // Shows a question and the text it is about; gives the QMessageBox button that was pressed.
    int showConfirmationDialog(const QString& question, const QString& text) const;

    // Gives the chosen file's name; empty when cancelled.
    QString showFileOpenDialog(const QString& caption, const QString& directory, const QString& filter) const;
    QString showSaveAsDialog(const QString& caption, const QString& directory, const QString& filter) const;

    static void ShowWarningMessage(QWidget* parent, const QString& title, const QString& text);

private:
    QPointer<QWidget> dialogParent;
};

} // namespace Utilities::ModelViews::Widgets
