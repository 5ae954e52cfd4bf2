#pragma once

#include "host/Utilities/ModelViews/editors/ValueEditor.h"

#include <QVariant>

class QComboBox;
class QDialog;
class QFormLayout;
class QVBoxLayout;

namespace Utilities::ModelViews::Widgets {

class FaultLabel;

// The rows of a dialog's form in which a person chooses the type of an attribute and enters a value. What was
// entered is offered to each type that has the same value; what is wrong with it is said below.
class TypedValueRows : public QObject
{
    Q_OBJECT

public:
    // The dialog owns the rows.
    TypedValueRows(QDialog& dialog, QFormLayout& form);

    int getType() const;                     // a QMetaType number, UnknownType for no value
    QVariant getValue(QString& fault) const; // of exactly that type; see ValueEditor
    void setValue(const QVariant& value);    // and its type
    void showFault(const QString& fault);

signals:
    void edited();

private:
    void changeEditor();

    QDialog& dialog;                        // not owned
    const QVector<ValueEditor::Kind> kinds; // in the order of types
    QVariant entered;                       // the last value that was entered, in whichever editor
    // Owned by the dialog.
    ValueEditor* editor = nullptr; // of the chosen type
    QComboBox* types;
    QVBoxLayout* editorPlace;
    FaultLabel* fault;
};

} // namespace Utilities::ModelViews::Widgets
