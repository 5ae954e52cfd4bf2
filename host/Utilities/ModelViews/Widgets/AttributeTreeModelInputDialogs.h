#pragma once

#include "host/HostExport.h"

#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

class QVariant;

namespace Utilities::ModelViews::Widgets {

// A text that a person may take over into a field, and what it means.
struct TextProposal
{
    QString text;
    QString meaning;
};

// The dialogs in which pages ask the user something. Each is modal, returns when it is answered, and is a
// child of one widget. GUI thread.
class VANTRY_HOST_EXPORT AttributeTreeModelInputDialogs
{
public:
    // The widget is not owned; dialogs have no parent when it is null or gone.
    explicit AttributeTreeModelInputDialogs(QWidget* parent);

    QWidget* getParentWidget() const; // null when it is gone

    // Asks for a new attribute. The name may be a path; the value is of exactly the type, a QMetaType number
    // (UnknownType, and an invalid value, for an attribute without a value). With the path of the node below
    // which it is to be created, that place is said, and checked in the process's repository. False, and
    // nothing changed, when cancelled.
    bool showAttributeCreateDialog(QString& name, QVariant& value, int& type,
                                   const QString& parentPath = {}) const;

    // Asks for another type of an attribute of the process's repository, and its value as that, and gives it
    // both. False, and nothing changed, when cancelled.
    bool showAttributeTypeDialog(const QString& path) const;

    // Asks for an attribute's name, preset as given, and where it goes: below the target (asChild) or beside
    // it. False, and nothing changed, when cancelled.
    bool showAttributePasteDialog(const QString& title, const QString& label, QString& name,
                                  bool& asChild) const;

    // Shows a question and the path that it is about; gives the QMessageBox button, No for Escape.
    int showConfirmationDialog(const QString& question, const QString& path) const;

    // Asks for one line of text. Empty and not ok when cancelled.
    QString showSingleTextDialog(const QString& title, const QString& label, const QString& preset,
                                 bool& ok) const;

    // The same with proposals below the field, which those that match what is typed stay of.
    QString showProposingTextDialog(const QString& title, const QString& label, const QString& preset,
                                    const QVector<TextProposal>& proposals, bool& ok) const;

    // Both give the chosen file's name, empty when cancelled. The directory may name a file, which is then
    // preselected; when it is empty, the folder of the file that was chosen last is shown. The name is given
    // as it was typed, whichever filter is chosen. Overwriting a file is asked about.
    QString showFileOpenDialog(const QString& caption, const QString& directory, const QString& filter) const;
    QString showSaveAsDialog(const QString& caption, const QString& directory, const QString& filter) const;

    static void ShowWarningMessage(QWidget* parent, const QString& title, const QString& text);

private:
    QPointer<QWidget> dialogParent;
};

} // namespace Utilities::ModelViews::Widgets
