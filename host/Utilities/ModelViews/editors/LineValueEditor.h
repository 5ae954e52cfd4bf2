#pragma once

#include "host/Utilities/ModelViews/editors/ValueEditor.h"

class QLineEdit;

namespace Utilities::ModelViews::Widgets {

// One line for a text or a number. Numbers are taken only as they can be kept, to the last digit.
class LineValueEditor : public ValueEditor
{
    Q_OBJECT

public:
    explicit LineValueEditor(int metaType, QWidget* parent = nullptr);

    QVariant getValue(QString& fault) const override;
    void setValue(const QVariant& value) override;

private:
    int type;
    QLineEdit* edit; // owned by the editor
};

} // namespace Utilities::ModelViews::Widgets
