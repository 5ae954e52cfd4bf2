#pragma once

#include "host/Utilities/ModelViews/editors/ValueEditor.h"

class QComboBox;
class QDateTimeEdit;

namespace Utilities::ModelViews::Widgets {

// A date, a time to the millisecond, or both; what has both also says in which zone it is meant.
class DateTimeValueEditor : public ValueEditor
{
    Q_OBJECT

public:
    explicit DateTimeValueEditor(int metaType, QWidget* parent = nullptr);

    QVariant getValue(QString& fault) const override;
    void setValue(const QVariant& value) override;

private:
    void fillZones();
    void chooseZone(const QDateTime& moment);

    int type;
    // Owned by the editor.
    QDateTimeEdit* edit;
    QComboBox* zones;
};

} // namespace Utilities::ModelViews::Widgets
