#include "host/Utilities/ModelViews/dialogs/TypedValueRows.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/dialogs/FaultLabel.h"

#include <QComboBox>
#include <QDialog>
#include <QFormLayout>

namespace Utilities::ModelViews::Widgets {

TypedValueRows::TypedValueRows(QDialog& ofDialog, QFormLayout& form)
    : QObject(&ofDialog), dialog(ofDialog), kinds(ValueEditor::kinds()), types(new QComboBox(&dialog)),
      editorPlace(new QVBoxLayout), fault(new FaultLabel(&dialog))
{
    types->setObjectName(QStringLiteral("cbType"));
    fault->setObjectName(QStringLiteral("lblValueFault"));
    for (const ValueEditor::Kind& kind : kinds)
        types->addItem(kind.name, kind.metaType);
    types->setMaxVisibleItems(types->count());
    form.addRow(tr("Typ&e"), types);
    form.addRow(tr("Value"), editorPlace);
    form.addRow({}, fault);
    connect(types, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TypedValueRows::changeEditor);
    changeEditor();
}

int TypedValueRows::getType() const
{
    return types->currentData().toInt();
}

QVariant TypedValueRows::getValue(QString& faultOfValue) const
{
    return editor->getValue(faultOfValue);
}

void TypedValueRows::setValue(const QVariant& value)
{
    entered = value;
    types->setCurrentIndex(types->findData(value.userType()));
    editor->setValue(value);
}

void TypedValueRows::showFault(const QString& faultOfValue)
{
    fault->showFault(faultOfValue);
}

void TypedValueRows::changeEditor()
{
    delete editor;
    editor = kinds[types->currentIndex()].make(getType()).release();
    editorPlace->addWidget(editor);
    const auto same = FrameworkCore::Values::convertVariant(entered, getType());
    if (entered.isValid() && same)
        editor->setValue(*same);
    if (editor->focusProxy()) {
        editor->setFocusPolicy(Qt::StrongFocus); // or Qt leaves it where it was made, after the buttons
        QWidget::setTabOrder(types, editor);
    }
    connect(editor, &ValueEditor::edited, this, [this] {
        QString ignored;
        entered = getValue(ignored);
        emit edited();
    });
    emit edited();
    if (!dialog.isVisible())
        return;
    dialog.layout()->activate();
    dialog.resize(dialog.width(), dialog.layout()->totalHeightForWidth(dialog.width()));
}

} // namespace Utilities::ModelViews::Widgets
