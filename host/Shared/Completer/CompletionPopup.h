#pragma once

#include <QListView>

#include <optional>

namespace Shared::Completer {

// The list below a line edit. It fetches more proposals when its end is scrolled into view, and stays where
// it is although the completer resets the list then. GUI thread.
class CompletionPopup : public QListView
{
    Q_OBJECT

public:
    CompletionPopup();

    void reset() override;

protected:
    void verticalScrollbarValueChanged(int value) override;
    void timerEvent(QTimerEvent* event) override;

private:
    struct ScrollState
    {
        int scrolled;
        int currentRow;
        bool isSelected;
    };

    ScrollState currentState() const;

    std::optional<ScrollState> kept; // while rows may be fetched
};

} // namespace Shared::Completer
