#pragma once

#include "host/HostExport.h"

#include <QFileDialog>

namespace Utilities::ModelViews::Widgets {

// A file dialog whose own questions, as whether a file shall be overwritten, show the names of files as they
// are. GUI thread.
class VANTRY_HOST_EXPORT PlainFileDialog : public QFileDialog
{
    Q_OBJECT

public:
    using QFileDialog::QFileDialog;

protected:
    void childEvent(QChildEvent* event) override;
};

} // namespace Utilities::ModelViews::Widgets
