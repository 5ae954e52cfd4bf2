#pragma once

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

namespace Utilities::ModelViews::Widgets {

// What is wrong with the field beside it, in words. It keeps its room while there is nothing to say, so that
// a dialog does not jump while one types; the dialog grows when a fault takes more lines.
class FaultLabel : public PlainLabel
{
    Q_OBJECT

public:
    enum class Tone { Fault, Remark }; // in red, or as all text

    explicit FaultLabel(QWidget* parent = nullptr, Tone tone = Tone::Fault);

    void showFault(const QString& fault); // empty when nothing is wrong

protected:
    void changeEvent(QEvent* event) override;

private:
    void colour();
    void keepRoom() { setMinimumHeight(fontMetrics().lineSpacing()); }

    const Tone tone;
};

} // namespace Utilities::ModelViews::Widgets
