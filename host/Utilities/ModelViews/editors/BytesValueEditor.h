#pragma once

#include "host/Utilities/ModelViews/editors/ValueEditor.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;

namespace Utilities::ModelViews::Widgets {

// Bytes in one of three spellings: hexadecimal digits, Base64, or as text with escapes. Choosing another
// spelling keeps the bytes.
class BytesValueEditor : public ValueEditor
{
    Q_OBJECT

public:
    explicit BytesValueEditor(QWidget* parent = nullptr);

    QVariant getValue(QString& fault) const override;
    void setValue(const QVariant& value) override;

private:
    void changeSpelling(int spelling);
    void showCount();

    int current = 0; // the spelling that the text is in
    // Owned by the editor.
    QComboBox* spellings;
    QPlainTextEdit* edit;
    QLabel* count;
};

} // namespace Utilities::ModelViews::Widgets
