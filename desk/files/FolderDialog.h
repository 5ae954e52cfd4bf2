#pragma once

#include "files/FolderScan.h"
#include "host/Utilities/ModelViews/Widgets/PlainFileDialog.h"

class QComboBox;
class QLineEdit;

namespace Vantry {

// Asks for a folder, and which of its files are meant. GUI thread.
class FolderDialog : public Utilities::ModelViews::Widgets::PlainFileDialog
{
    Q_OBJECT

public:
    // Begins in the folder, if there is one.
    FolderDialog(const QString& folder, QWidget* parent);

    // The folder with the conditions, as FolderLocation has them.
    QString getLocation() const;

private:
    QWidget* makeConditions();
    void orderFields();
    Files::FolderFilter getFilter() const;

    QLineEdit* include; // children
    QLineEdit* exclude;
    QComboBox* depth;
    QComboBox* size;
};

} // namespace Vantry
