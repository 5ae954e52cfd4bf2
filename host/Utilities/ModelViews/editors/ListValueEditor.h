#pragma once

#include "host/Utilities/ModelViews/editors/ValueEditor.h"

class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace Utilities::ModelViews::Widgets {

// A list of texts: one a row, edited in place, with buttons to add, remove and move rows.
class ListValueEditor : public ValueEditor
{
    Q_OBJECT

public:
    explicit ListValueEditor(QWidget* parent = nullptr);

    QVariant getValue(QString& fault) const override;
    void setValue(const QVariant& value) override;

private:
    QPushButton* addButton(QVBoxLayout& column, const QString& text, const char* name);
    void insertRow(int row, const QString& text);
    void addRow();
    void removeRow();
    void moveRow(int by);
    void updateButtons();

    // Owned by the editor.
    QListWidget* list;
    QPushButton* removeButton;
    QPushButton* upButton;
    QPushButton* downButton;
};

} // namespace Utilities::ModelViews::Widgets
