#pragma once

#include "host/Utilities/ModelViews/editors/ValueEditor.h"

class QCheckBox;

namespace Utilities::ModelViews::Widgets {

// A check box that says which of the two it stands for.
class TruthValueEditor : public ValueEditor
{
    Q_OBJECT

public:
    explicit TruthValueEditor(QWidget* parent = nullptr);

    QVariant getValue(QString& fault) const override;
    void setValue(const QVariant& value) override;

private:
    QCheckBox* box; // owned by the editor
};

} // namespace Utilities::ModelViews::Widgets
