#pragma once

#include <QDialog>
#include <QVariant>

#include <memory>

class QComboBox;
class QDialogButtonBox;
class QLineEdit;
class QVBoxLayout;

namespace Utilities::ModelViews::Widgets {

class FaultLabel;
class ValueEditor;

// Asks for name, type and value of a new attribute. What is wrong is said below its field while it is typed,
// and the dialog can be accepted only when nothing is.
class AttributeCreateDialog : public QDialog
{
    Q_OBJECT

public:
    AttributeCreateDialog(QWidget* parent, const QString& name);
    ~AttributeCreateDialog() override;

    QString getName() const;
    int getType() const;       // a QMetaType number, UnknownType for an attribute without a value
    QVariant getValue() const; // of exactly that type

private:
    void fillTypes();
    void layOut();
    void changeEditor();
    void check();

    std::unique_ptr<ValueEditor> editor; // of the chosen type
    QVariant entered;                    // the last value that was entered, in whichever editor
    bool nameIsTouched = false;
    // Owned by the dialog.
    QLineEdit* nameEdit;
    FaultLabel* nameFault;
    QComboBox* types;
    QVBoxLayout* editorPlace = nullptr;
    FaultLabel* valueFault;
    QDialogButtonBox* buttons;
};

} // namespace Utilities::ModelViews::Widgets
