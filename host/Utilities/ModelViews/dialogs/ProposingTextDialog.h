#pragma once

#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"

#include <QDialog>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace Utilities::ModelViews::Widgets {

// Asks for one line of text, and lists proposals that a person may take over and change. GUI thread.
class ProposingTextDialog : public QDialog
{
    Q_OBJECT

public:
    ProposingTextDialog(QWidget* parent, const QString& title, const QString& label, const QString& preset,
                        const QVector<TextProposal>& proposals);

    QString getText() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addProposals(const QVector<TextProposal>& proposals);
    void narrow(const QString& typed);
    void take(const QTreeWidgetItem* proposal);

    // Children.
    QLineEdit* field;
    QTreeWidget* rows;
};

} // namespace Utilities::ModelViews::Widgets
