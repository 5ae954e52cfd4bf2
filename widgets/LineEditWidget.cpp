#include "widgets/LineEditWidget.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/RepositoryAccess.h"
#include "widgets/AttributeWriting.h"
#include "widgets/CellEditor.h"

#include <QDoubleValidator>
#include <QIntValidator>
#include <QKeyEvent>

#include <limits>

namespace Widgets {

namespace {

// The integer that the text is, as one of the type; 0 when it is none, or none of the type's range.
template <typename Integer>
bool parseInteger(const QString& text, QVariant& number)
{
    using Widest = std::conditional_t<std::is_signed_v<Integer>, qlonglong, qulonglong>;
    const auto exact = FrameworkCore::Values::convertVariant(text.trimmed(), qMetaTypeId<Widest>());
    number = QVariant::fromValue(Integer(0));
    if (!exact)
        return false;
    const auto whole = qvariant_cast<Widest>(*exact);
    if (whole < std::numeric_limits<Integer>::lowest() || whole > std::numeric_limits<Integer>::max())
        return false;
    number = QVariant::fromValue(Integer(whole));
    return true;
}

// The number of the type that is nearest to the text; 0 when it is none.
template <typename Real>
bool parseReal(const QString& text, QVariant& number)
{
    bool isParsed = false;
    Real parsed = 0;
    if constexpr (std::is_same_v<Real, float>)
        parsed = text.trimmed().toFloat(&isParsed);
    else
        parsed = text.trimmed().toDouble(&isParsed);
    number = QVariant::fromValue(isParsed ? parsed : Real(0));
    return isParsed;
}

} // namespace

LineEditWidget::LineEditWidget(QWidget* parent, const QString& path, const QVariant& value)
    : QLineEdit(parent), repository(Utilities::GetAppConfigRepositoryInterface()), attributeFullPath(path),
      attributeValue(value)
{
    setMaxLength(std::numeric_limits<int>::max()); // or a long text would be cut, and written like that
    const QString valueText = attributeValue.toString();
    QString reason;
    setReadOnly(!isLineEditable(valueText, reason));
    setText(isReadOnly() ? reason : valueText);
    setFrame(false);
    setAccessibleName(attributeFullPath);
    setFocusPolicy(Qt::StrongFocus);
    setFocus(Qt::OtherFocusReason);
    setAutoFillBackground(true);
    connect(this, &QLineEdit::editingFinished, this, &LineEditWidget::textEditingFinished);
    connect(this, &QLineEdit::textChanged, this, [this] { isTouched = true; });
    connect(this, &LineEditWidget::resetDavModel, this, [this] { isTouched = false; });
}

LineEditWidget::~LineEditWidget()
{
    if (isTouched)
        refuseUnended(attributeFullPath, text());
}

void LineEditWidget::enter(const QString& entry)
{
    if (!isReadOnly())
        setText(entry);
}

void LineEditWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        emit resetDavModel();
        return;
    }
    isTouched |= event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    QLineEdit::keyPressEvent(event);
}

// Qt signals a lost focus only when the text was edited since it last signalled an end.
void LineEditWidget::focusOutEvent(QFocusEvent* event)
{
    const qint32 before = editingFinishedCount;
    QLineEdit::focusOutEvent(event);
    if (editingFinishedCount == before && event->reason() != Qt::PopupFocusReason && hasAcceptableInput())
        emit editingFinished();
}

void LineEditWidget::addValidator()
{
    const auto install = [this](QValidator* validator) {
        validator->setLocale(QLocale::c()); // as the conversion, which knows no other decimal point
        setValidator(validator);
    };
    const auto limitInteger = [this, install](int bottom, int top) {
        install(new QIntValidator(bottom, top, this));
    };
    const auto limitReal = [this, install](double bottom, double top) {
        install(new QDoubleValidator(bottom, top, 16, this));
    };
    switch (attributeValue.userType()) {
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return limitInteger(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return limitInteger(0, -1);
    case QMetaType::Short:
        return limitInteger(std::numeric_limits<short>::min(), std::numeric_limits<short>::max());
    case QMetaType::UShort:
        return limitInteger(0, std::numeric_limits<ushort>::max());
    case QMetaType::Double:
        return limitReal(std::numeric_limits<double>::min(), std::numeric_limits<double>::max());
    case QMetaType::Float:
        return limitReal(double(std::numeric_limits<float>::min()),
                         double(std::numeric_limits<float>::max()));
    default:
        return;
    }
}

void LineEditWidget::textEditingFinished()
{
    if (editingFinishedCount++ != 1 || isTakenAway(*this))
        return;
    if (repository)
        writeText();
    emit resetDavModel();
}

void LineEditWidget::writeText()
{
    if (!isAttributeEditable()) {
        const auto reader = repository->getReaderInterface();
        const bool exists = reader && reader->getAttribute(attributeFullPath);
        refuseEdit(QLatin1String("Write To  ") + attributeFullPath +
                       QLatin1String(" Failed. Bad Writable, Read Only"),
                   attributeFullPath, text(),
                   exists ? whyReadOnly(*repository, attributeFullPath)
                          : QString::fromLatin1("no such attribute"));
        return;
    }
    if (!isTouched && yieldsToNewer(*repository, attributeFullPath, attributeValue))
        return;
    QVariant value;
    if (getModifiedAttributeValue(value) && value.isValid())
        writeEditedOrLog(*repository, attributeFullPath, value, text());
    else
        refuseConversion(attributeFullPath, attributeValue, text());
}

bool LineEditWidget::getModifiedAttributeValue(QVariant& vValue)
{
    const int type = attributeValue.userType();
    // The shown text of a number may tell less than all of it, as the sign of minus zero.
    if ((type == QMetaType::Double || type == QMetaType::Float) && text() == attributeValue.toString()) {
        vValue = attributeValue;
        return true;
    }
    switch (type) {
    case QMetaType::Int:
        return parseInteger<int>(text(), vValue);
    case QMetaType::UInt:
        return parseInteger<uint>(text(), vValue);
    case QMetaType::LongLong:
        return parseInteger<qlonglong>(text(), vValue);
    case QMetaType::ULongLong:
        return parseInteger<qulonglong>(text(), vValue);
    case QMetaType::Double:
        return parseReal<double>(text(), vValue);
    case QMetaType::Long:
        return parseInteger<long>(text(), vValue);
    case QMetaType::ULong:
        return parseInteger<ulong>(text(), vValue);
    case QMetaType::Float:
        return parseReal<float>(text(), vValue);
    case QMetaType::Char:
    case QMetaType::QChar:
        return false;
    default:
        vValue = isReadOnly() ? attributeValue.toString() : text(); // it shows why it cannot be edited
        return true;
    }
}

bool LineEditWidget::isAttributeEditable()
{
    const auto reader = repository ? repository->getReaderInterface() : nullptr;
    const auto attribute = reader ? reader->getAttribute(attributeFullPath) : nullptr;
    return attribute && FrameworkCore::AppConfig::isWritable(attribute->getAccessMode());
}

} // namespace Widgets
