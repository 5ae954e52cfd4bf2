#pragma once

#include <QString>
#include <QVariant>
#include <QWidget>

#include <memory>

namespace Utilities::ModelViews::Widgets {

// Where a person enters the value of a new attribute. Each kind makes values of one type of attributes only,
// named by its QMetaType number. GUI thread.
class ValueEditor : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    // The editor for that type; QMetaType::UnknownType is the null attribute. Null for what no attribute has.
    static std::unique_ptr<ValueEditor> makeFor(int metaType);

    // The value as it is now. What cannot be one gives an invalid variant, and the fault in words.
    virtual QVariant getValue(QString& fault) const = 0;

    virtual void setValue(const QVariant& value) = 0; // of the editor's type

signals:
    void edited();
};

} // namespace Utilities::ModelViews::Widgets
