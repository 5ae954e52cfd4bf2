#pragma once

#include "host/HostExport.h"

#include <QLineEdit>
#include <QPointer>

class QAbstractItemModel;
class QAbstractItemView;

namespace Shared::Completer {

// A line edit that offers completions in a popup below itself. Tab takes the chosen proposal, or the first
// when none is chosen; Return takes the chosen one, and otherwise is Return of what is typed; Escape gives
// back what was typed. Without a popup they are ordinary keys.
// GUI thread.
class VANTRY_HOST_EXPORT LineEditCompleter : public QLineEdit
{
    Q_OBJECT

public:
    explicit LineEditCompleter(QWidget* parent = nullptr);

    // Sets what is offered for the present text. Null switches completion off. The edit takes over a model
    // whose parent is the completer, the edit or a widget around it, and deletes it later: when the next one
    // replaces it, or straight away when it is not needed, since a text that the user only looks at in the
    // popup changes no proposals.
    void refreshCompleterModel(QAbstractItemModel* model);

    // Has the popup open below that widget, which lies right below the edit, so that it stays in sight. Not
    // owned.
    void keepInSight(const QWidget* neighbour) { uncovered = neighbour; }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    QAbstractItemView* visiblePopup() const;
    bool isTextFromPopup() const;
    bool takeProposal();
    bool dismissPopup();
    void placePopup();
    void dispose(QAbstractItemModel* model) const;

    QString offeredText; // the text that the completer's model was made for
    QPointer<const QWidget> uncovered;
};

} // namespace Shared::Completer
