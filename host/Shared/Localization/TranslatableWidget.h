#pragma once

#include "host/HostExport.h"

#include <QWidget>

namespace Shared::Localization {

// Base of all widgets of the host: asks for its texts again when the user's language changes.
class VANTRY_HOST_EXPORT TranslatableWidget : public QWidget
{
    Q_OBJECT

public:
    explicit TranslatableWidget(QWidget* parent = nullptr);
    ~TranslatableWidget() override;

private:
    // Sets every visible text anew; called on a change of language.
    virtual void retranslateUi();

    void changeEvent(QEvent* event) override;
};

} // namespace Shared::Localization
