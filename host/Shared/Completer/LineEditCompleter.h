#pragma once

#include "host/HostExport.h"

#include <QLineEdit>

class QAbstractItemModel;

namespace Shared::Completer {

// A line edit that offers completions in a popup below itself; Tab or Return takes the chosen or only
// proposal. GUI thread.
class VANTRY_HOST_EXPORT LineEditCompleter : public QLineEdit
{
    Q_OBJECT

public:
    explicit LineEditCompleter(QWidget* parent = nullptr);

    // Sets what is offered. Null switches completion off. The model replaced, if a child of the edit's window
    // or of the completer, is deleted later.
    void refreshCompleterModel(QAbstractItemModel* model);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace Shared::Completer
