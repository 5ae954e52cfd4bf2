#pragma once

#include <QDialog>

class QDialogButtonBox;
class QLineEdit;
class QRadioButton;

namespace Utilities::ModelViews::Widgets {

class FaultLabel;

// Asks under which name a subtree is pasted, and whether below the selected attribute or beside it. It can be
// accepted only with a valid name.
class AttributePasteDialog : public QDialog
{
    Q_OBJECT

public:
    AttributePasteDialog(QWidget* parent, const QString& title, const QString& label, const QString& name);

    QString getName() const;
    bool isAsChild() const;

private:
    void layOut(const QString& label);
    void check();

    // Owned by the dialog.
    QLineEdit* nameEdit;
    FaultLabel* nameFault;
    QRadioButton* asChild;
    QRadioButton* beside;
    QDialogButtonBox* buttons;
};

} // namespace Utilities::ModelViews::Widgets
