#include "host/Utilities/ModelViews/Widgets/TransferWindow.h"

#include "host/Utilities/GuiThread.h"
#include "host/Utilities/HostLog.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "host/Utilities/PollingPause.h"
#include "host/Utilities/Worker.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QVector>
#include <QWindow>

#include <chrono>

namespace Utilities::ModelViews::Widgets {

namespace {

constexpr std::chrono::milliseconds unnoticed(50);
constexpr std::chrono::seconds unseen(1);
constexpr std::chrono::milliseconds lookInterval(40);

using TransferReport = TransferWindow::TransferReport;

TransferWindow::Outcome fail(const QString& text, const QString& reason)
{
    logFailure(QStringLiteral("%1: %2").arg(text, reason));
    return {FrameworkCore::AppConfig::BackendFailure, reason};
}

// What is not in what was written, though nothing was refused.
void logLeftOut(const QString& text, const TransferReport& report)
{
    const int comments = report.getCommentsLeftOut();
    if (comments == 1)
        logFailure(
            TransferWindow::tr("%1: a comment was left out because there is no place for it").arg(text));
    else if (comments > 1)
        logFailure(TransferWindow::tr("%1: %2 comments were left out because there is no place for them")
                       .arg(text)
                       .arg(comments));
    if (report.areTagsLeftOut())
        logFailure(TransferWindow::tr("%1: tags were left out because there is no form for them").arg(text));
}

TransferWindow::Outcome runGuarded(const QString& text, const TransferWindow::Operation& operation,
                                   TransferReport& report)
{
    try {
        TransferWindow::Outcome outcome = operation(report);
        if (outcome.ok())
            logLeftOut(text, report);
        return outcome;
    } catch (...) {
        return fail(text, currentFailure());
    }
}

// While it exists, windows stay open; those that the person closes are closed at its end.
class ClosingLater : public QObject
{
public:
    ClosingLater() { QCoreApplication::instance()->installEventFilter(this); }
    ~ClosingLater() override
    {
        for (const QPointer<QWindow>& window : qAsConst(closed)) {
            if (window)
                QTimer::singleShot(0, window, [window] { window->close(); });
        }
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* const window = qobject_cast<QWindow*>(object);
        if (!window || event->type() != QEvent::Close || !event->spontaneous())
            return false;
        closed.append(window);
        event->ignore();
        return true;
    }

private:
    QVector<QPointer<QWindow>> closed;
};

} // namespace

FrameworkCore::AppConfig::Outcome TransferWindow::run(const QString& text, const Operation& operation,
                                                      Cancelling cancelling, WithoutThread withoutThread)
{
    TransferReport report;
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()) || !isOnGuiThread())
        return runGuarded(text, operation, report);
    QString failure;
    std::future<Outcome> outcome = startWorker([&] { return runGuarded(text, operation, report); }, failure);
    if (!outcome.valid())
        return withoutThread == WithoutThread::Block ? runGuarded(text, operation, report)
                                                     : fail(text, failure);
    const auto isDone = [&outcome](std::chrono::milliseconds time) {
        return outcome.wait_for(time) == std::future_status::ready;
    };
    if (isDone(unnoticed))
        return outcome.get();

    const PollingPause pause;
    QPointer<TransferWindow> window; // may go with its parent
    QEventLoop loop;
    QTimer look;
    connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone(std::chrono::milliseconds(0)))
            loop.quit();
        else if (window)
            window->showProgress();
    });
    look.start(lookInterval);
    {
        const ClosingLater later;
        QTimer::singleShot(unseen, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    if (!isDone(std::chrono::milliseconds(0))) {
        window = new TransferWindow(text, report, cancelling);
        window->showProgress();
        window->show();
        loop.exec(); // also ends when the program does
        delete window;
    }
    return outcome.get(); // the operation uses what the caller owns
}

TransferWindow::TransferWindow(const QString& text, TransferReport& transferReport, Cancelling cancelling)
    : QDialog(QApplication::activeWindow()), report(transferReport), label(new Widgets::PlainLabel(this)),
      bar(new QProgressBar(this)), buttons(new QDialogButtonBox(QDialogButtonBox::Cancel, this))
{
    setWindowModality(Qt::ApplicationModal);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(bar);
    layout->addWidget(buttons);
    bar->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    label->setText(fontMetrics().elidedText(text, Qt::ElideMiddle, bar->minimumWidth()));
    label->setToolTip(toolTipText(text));
    buttons->setEnabled(cancelling == Cancelling::Possible);
    buttons->setVisible(cancelling == Cancelling::Possible);
    connect(buttons, &QDialogButtonBox::rejected, this, &TransferWindow::reject);
}

void TransferWindow::reject()
{
    if (!buttons->isEnabled())
        return;
    report.cancel();
    buttons->setEnabled(false);
    label->setText(tr("Cancelling ..."));
}

void TransferWindow::showProgress()
{
    bar->setMaximum(report.getTotal());
    bar->setValue(report.getDone());
}

} // namespace Utilities::ModelViews::Widgets
