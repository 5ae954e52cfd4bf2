#pragma once

#include <QDialog>
#include <QPointer>

#include <utility>

namespace Utilities::ModelViews::Widgets {

// A dialog that asks one question and goes when it is answered. Its parent may go while it is open, and takes
// the dialog with it; the question then counts as cancelled.
template <typename Dialog>
class AskedDialog
{
public:
    template <typename... Arguments>
    explicit AskedDialog(Arguments&&... arguments) : dialog(new Dialog(std::forward<Arguments>(arguments)...))
    {
    }
    ~AskedDialog() { delete dialog; }
    AskedDialog(const AskedDialog&) = delete;
    AskedDialog& operator=(const AskedDialog&) = delete;

    // Not to be used when it has gone with its parent.
    Dialog* operator->() const { return dialog; }
    Dialog& get() const { return *dialog; }

    // Shows the dialog until it is answered.
    bool isAccepted() { return dialog->exec() == QDialog::Accepted && dialog; }

private:
    QPointer<Dialog> dialog;
};

} // namespace Utilities::ModelViews::Widgets
