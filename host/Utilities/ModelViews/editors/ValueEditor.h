#pragma once

#include <QString>
#include <QVariant>
#include <QVector>
#include <QWidget>

#include <memory>

namespace Utilities::ModelViews::Widgets {

// Where a person enters the value of a new attribute. Each kind makes values of one type of attributes only,
// named by its QMetaType number. GUI thread.
class ValueEditor : public QWidget
{
    Q_OBJECT

public:
    // A type that attributes have, and its editor; QMetaType::UnknownType is that of the null attribute.
    struct Kind
    {
        int metaType;
        QString name; // for people
        std::unique_ptr<ValueEditor> (*make)(int metaType);
    };

    using QWidget::QWidget;

    static QVector<Kind> kinds(); // all, the most usual first

    // The value as it is now. What cannot be one gives an invalid variant, and the fault in words.
    virtual QVariant getValue(QString& fault) const = 0;

    virtual void setValue(const QVariant& value) = 0; // of the editor's type

signals:
    void edited();

protected:
    void fillWith(QWidget& field); // which gets the keyboard
};

} // namespace Utilities::ModelViews::Widgets
