#include "host/Utilities/ModelViews/Widgets/PlainMessageBox.h"

#include "host/Utilities/ModelViews/Widgets/BreakableText.h"

#include <QLabel>

namespace Utilities::ModelViews::Widgets {

PlainMessageBox::PlainMessageBox(Icon icon, const QString& title, const QString& text,
                                 StandardButtons buttons, QWidget* parent)
    : QMessageBox(icon, title, breakableText(text), buttons, parent)
{
    makePlain(*this);
}

void PlainMessageBox::setInformation(const QString& text)
{
    setInformativeText(breakableText(text));
    makePlain(*this); // QMessageBox::setTextFormat leaves out the label of this text
}

void makePlain(QMessageBox& box)
{
    for (QLabel* const label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
}

} // namespace Utilities::ModelViews::Widgets
