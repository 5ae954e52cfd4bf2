#pragma once

#include <QPlainTextEdit>

namespace Vantry {

// Shows unified diffs, one file after the other: added lines green, removed ones red. GUI thread.
class DiffView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit DiffView(QWidget* parent = nullptr);
};

} // namespace Vantry
