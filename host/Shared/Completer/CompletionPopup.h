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
    struct Place
    {
        int scrolled;
        int currentRow;
        bool isSelected;
    };

    Place currentPlace() const;

    std::optional<Place> keptPlace; // while rows may be fetched
};

} // namespace Shared::Completer
