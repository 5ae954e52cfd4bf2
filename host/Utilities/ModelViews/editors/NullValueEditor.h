#pragma once

#include "host/Utilities/ModelViews/editors/ValueEditor.h"

namespace Utilities::ModelViews::Widgets {

// Says what an attribute without a value is; there is nothing to enter.
class NullValueEditor : public ValueEditor
{
    Q_OBJECT

public:
    explicit NullValueEditor(QWidget* parent = nullptr);

    QVariant getValue(QString& fault) const override;
    void setValue(const QVariant& value) override;
};

} // namespace Utilities::ModelViews::Widgets
