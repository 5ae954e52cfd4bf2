#pragma once

#include "host/Utilities/ModelViews/dialogs/NewAttributePlace.h"

#include <QDialog>
#include <QVariant>

class QDialogButtonBox;
class QLineEdit;

namespace Utilities::ModelViews::Widgets {

class FaultLabel;
class TypedValueRows;

// Asks for name, type and value of a new attribute, and says where it is created. What is wrong is said below
// its field while it is typed, and the dialog can be accepted only when nothing is. What else will change is
// said at the end.
class AttributeCreateDialog : public QDialog
{
    Q_OBJECT

public:
    // The place is not said when its path is empty.
    AttributeCreateDialog(QWidget* parent, const QString& name, const QString& parentPath);

    QString getName() const;
    int getType() const;       // a QMetaType number, UnknownType for an attribute without a value
    QVariant getValue() const; // of exactly that type

    void accept() override; // others may have created it meanwhile

private:
    void layOut();
    void check();

    const NewAttributePlace place;
    bool nameIsTouched = false;
    // Owned by the dialog.
    QLineEdit* nameEdit;
    FaultLabel* nameFault;
    TypedValueRows* rows = nullptr;
    FaultLabel* remarks; // which are not faults
    QDialogButtonBox* buttons = nullptr;
};

} // namespace Utilities::ModelViews::Widgets
