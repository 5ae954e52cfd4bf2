#pragma once

#include <QPlainTextEdit>

class QSyntaxHighlighter;

namespace Vantry {

// Shows unified diffs, one file after the other: added lines green, removed ones red. GUI thread.
class DiffView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit DiffView(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    QSyntaxHighlighter* colours = nullptr; // child of the document
};

} // namespace Vantry
