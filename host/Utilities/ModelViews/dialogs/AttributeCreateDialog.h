#pragma once

#include "host/Utilities/ModelViews/dialogs/NewAttributePlace.h"
#include "host/Utilities/ModelViews/editors/ValueEditor.h"

#include <QDialog>
#include <QVariant>

#include <memory>

class QComboBox;
class QDialogButtonBox;
class QLineEdit;
class QVBoxLayout;

namespace Utilities::ModelViews::Widgets {

class FaultLabel;

// Asks for name, type and value of a new attribute, and says where it is created. What is wrong is said below
// its field while it is typed, and the dialog can be accepted only when nothing is. What else will change is
// said at the end.
class AttributeCreateDialog : public QDialog
{
    Q_OBJECT

public:
    // The place is not said when its path is empty.
    AttributeCreateDialog(QWidget* parent, const QString& name, const QString& parentPath);
    ~AttributeCreateDialog() override;

    QString getName() const;
    int getType() const;       // a QMetaType number, UnknownType for an attribute without a value
    QVariant getValue() const; // of exactly that type

    void accept() override; // others may have created it meanwhile

private:
    void layOut();
    void changeEditor();
    void check();

    const NewAttributePlace place;
    const QVector<ValueEditor::Kind> kinds; // in the order of types
    std::unique_ptr<ValueEditor> editor;    // of the chosen type
    QVariant entered;                       // the last value that was entered, in whichever editor
    bool nameIsTouched = false;
    // Owned by the dialog.
    QLineEdit* nameEdit;
    FaultLabel* nameFault;
    QComboBox* types;
    QVBoxLayout* editorPlace = nullptr;
    FaultLabel* valueFault;
    FaultLabel* remarks; // which are not faults
    QDialogButtonBox* buttons;
};

} // namespace Utilities::ModelViews::Widgets
