#pragma once

#include "host/FrameworkCore/AppConfig/TransferInterface.h"
#include "host/HostExport.h"

#include <QDialog>

#include <functional>

class QDialogButtonBox;
class QLabel;
class QProgressBar;

namespace Utilities::ModelViews::Widgets {

// The window of a long operation on attributes: it shows how far the operation is, and can cancel it. It
// stays until the operation has ended, so that nobody changes anything meanwhile.
class VANTRY_HOST_EXPORT TransferWindow : public QDialog
{
    Q_OBJECT

public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TransferReport = FrameworkCore::AppConfig::Interfaces::TransferReport;
    using Operation = std::function<Outcome(TransferReport& report)>;

    enum class Cancelling { Possible, Impossible };
    enum class WithoutThread { Fail, Block };

    // Runs the operation on a thread of its own and gives its outcome. The window comes when the operation
    // takes longer than a second; until then keys and clicks wait, while all else goes on. Where there are no
    // widgets, and on any other thread than theirs, the operation simply runs, and so it may where no thread
    // can be started. Otherwise that is logged, as is what the operation throws, and gives BackendFailure.
    // What its report says is left out is logged, too.
    static Outcome run(const QString& text, const Operation& operation,
                       Cancelling cancelling = Cancelling::Possible,
                       WithoutThread withoutThread = WithoutThread::Fail);

    // Closing the window asks the operation to end; the window goes with it.
    void reject() override;

private:
    TransferWindow(const QString& text, TransferReport& report, Cancelling cancelling);

    void showProgress();

    TransferReport& report; // not owned
    QLabel* label;          // this and the following are owned through their Qt parent
    QProgressBar* bar;
    QDialogButtonBox* buttons;
};

} // namespace Utilities::ModelViews::Widgets
