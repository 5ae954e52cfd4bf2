#pragma once

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

namespace Vantry {

// The comment that its file has for the selected attribute, below the details of the page; hidden without
// one. Of a long comment the first lines are shown, and all of it in the tool tip. GUI thread.
class CommentNote : public Utilities::ModelViews::Widgets::PlainLabel
{
    Q_OBJECT

public:
    // Below the widget of that name, which is in a column that owns the note then; null where there is none.
    static CommentNote* below(const QWidget& window, const QString& name);

    void showComment(const QString& comment);

private:
    CommentNote();
};

} // namespace Vantry
