#pragma once

#include <QDialog>

class QDialogButtonBox;

namespace Utilities::ModelViews::Widgets {

class TypedValueRows;

// Asks which type an attribute of the process's repository is to have, and for its value of that type, and
// gives it both. What the repository refuses is said in the dialog, which stays open.
class AttributeTypeDialog : public QDialog
{
    Q_OBJECT

public:
    AttributeTypeDialog(QWidget* parent, const QString& path);

    void accept() override;

private:
    void check();

    const QString path;
    // Owned by the dialog.
    TypedValueRows* rows = nullptr;
    QDialogButtonBox* buttons = nullptr;
};

} // namespace Utilities::ModelViews::Widgets
