#include "host/Shared/Localization/TranslatableWidget.h"

#include <QEvent>

namespace Shared::Localization {

TranslatableWidget::TranslatableWidget(QWidget* parent) : QWidget(parent)
{
}

TranslatableWidget::~TranslatableWidget() = default;

void TranslatableWidget::retranslateUi()
{
}

void TranslatableWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslateUi();
    QWidget::changeEvent(event);
}

} // namespace Shared::Localization
