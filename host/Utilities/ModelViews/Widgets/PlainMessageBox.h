#pragma once

#include "host/HostExport.h"

#include <QMessageBox>

namespace Utilities::ModelViews::Widgets {

// A message box that shows any text as it is, breaks what is too long for a line, and is never higher
// than a screen. All message boxes about texts of people are of this class. GUI thread.
class VANTRY_HOST_EXPORT PlainMessageBox : public QMessageBox
{
    Q_OBJECT

public:
    PlainMessageBox(Icon icon, const QString& title, const QString& text, StandardButtons buttons,
                    QWidget* parent);

    // A second text below the first, as the path that a question is about.
    void setInformation(const QString& text);
};

// Has all labels of a message box that others have made show their texts as they are.
VANTRY_HOST_EXPORT void makePlain(QMessageBox& box);

} // namespace Utilities::ModelViews::Widgets
