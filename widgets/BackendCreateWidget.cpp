#include "widgets/BackendCreateWidget.h"

#include "app/VantryLog.h"
#include "host/Utilities/AnnotatedMutexLocker.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"
#include "host/Utilities/RepositoryAccess.h"
#include "host/Utilities/Worker.h"
#include "ui_BackendCreateWidget.h"
#include "widgets/BusyWidget.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <QtConcurrent>

#include <algorithm>
#include <chrono>

namespace Widgets {

using FrameworkCore::AppConfig::BackendConfiguration;
using Utilities::AnnotatedMutexLocker;
using Utilities::ModelViews::AttributeTreeViewModelUtils;
using Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;

namespace {

// A window manager may never show a window, as on another desktop.
constexpr std::chrono::milliseconds longestWait(500);

// The window system shows a window some time after show(); only then can it be painted.
void paintNow(const QWidget& window)
{
    const QDeadlineTimer deadline(longestWait);
    QTimer::singleShot(longestWait, &window, [] {}); // ends the waiting below
    while (!window.windowHandle()->isExposed() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void logRefusal(const QString& reason)
{
    Vantry::logLine(Shared::Logging::LogMessageType::Failure) << "The backend was not created: " << reason;
}

// The pool would wait for ever for a thread that it could not start, also when the program ends. What the
// system gives for this one, it gives again.
bool canStartThread()
{
    QString failure;
    const auto thread = Utilities::startWorker([] {}, failure);
    if (!thread.valid())
        logRefusal(failure);
    return thread.valid();
}

} // namespace

BackendCreateWidget::BackendCreateWidget(QWidget* parent, const QString& path)
    : QDialog(parent), ui(std::make_unique<Ui::BackendCreateWidget>()),
      repository(Utilities::GetAppConfigRepositoryInterface())
{
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    alignFields();
    refreshBackendTypes();
    setWindowTitle(QString::fromLatin1("Zelk"));
    ui->edtRelativePath->setText(path + QLatin1Char('.'));
}

BackendCreateWidget::~BackendCreateWidget() = default;

// The labels differ in length and font, the fields shall begin in one line all the same.
void BackendCreateWidget::alignFields()
{
    const std::initializer_list<QLabel*> labels = {ui->lblBackendType, ui->lblRelativePath,
                                                   ui->lblBackendFile, ui->lblAccessMode, ui->lblBackendDesc};
    int widest = 0;
    for (QLabel* const label : labels) {
        label->ensurePolished(); // its style sheet sets the font
        widest = std::max(widest, label->sizeHint().width());
    }
    for (QLabel* const label : labels)
        label->setMinimumWidth(widest);
}

void BackendCreateWidget::refreshBackendTypes()
{
    if (!repository)
        return;
    ui->cbBackendType->clear();
    ui->cbBackendType->addItems(repository->getBackendTypes());
    if (ui->cbBackendType->count() > 0)
        ui->cbBackendType->setCurrentText(QString::fromLatin1("json"));
}

void BackendCreateWidget::on_btnBackendFileBrowse_clicked()
{
    const QPointer<BackendCreateWidget> self(this); // it may be closed by the host meanwhile
    const QString file = AttributeTreeModelInputDialogs(this).showFileOpenDialog(
        tr("Select File"), ui->edtBackendFile->text(), tr("(*.json *.txt *.ini *.xml)"));
    if (self && !file.isEmpty())
        ui->edtBackendFile->setText(file);
}

void BackendCreateWidget::on_btnCreate_clicked()
{
    if (!repository)
        return;
    BusyWidget busy;
    busy.setStatusText(QString::fromLatin1("Creating Backend. Please Wait..."));
    busy.resize(busy.minimumSize());
    busy.move(frameGeometry().center() - busy.rect().center());
    busy.show();
    const QPointer<BackendCreateWidget> self(this);
    paintNow(busy); // first of all: the worker reads the fields, which nobody may touch meanwhile
    if (!self)
        return;
    const bool created = createWhileWaiting();
    if (!created) {
        busy.hide();
        AttributeTreeModelInputDialogs::ShowWarningMessage(this, {},
                                                           QString::fromLatin1("Backend Creation Failed"));
        return;
    }
    Vantry::logLine(Shared::Logging::LogMessageType::Outcome)
        << "Backend \"" << ui->edtRelativePath->text() << "\" Created With Result " << int(created);
    hide();
    busy.hide();
    close();
    emit backendCreatedSuccess();
}

// Waiting for QtConcurrent's own future could take the task back and run it on this thread.
bool BackendCreateWidget::createWhileWaiting()
{
    if (!canStartThread())
        return false;
    std::future<bool> result;
    {
        const AnnotatedMutexLocker locker(handOver);
        creation = std::make_shared<Creation>([this] { return createBackendInBackground(); });
        result = creation->get_future();
        QtConcurrent::run(this, &BackendCreateWidget::runCreation);
    }
    try {
        return result.get();
    } catch (...) {
        logRefusal(Utilities::currentFailure());
        return false;
    }
}

// Owns the task to its end: the dialog may be gone as soon as the result is there.
void BackendCreateWidget::runCreation()
{
    std::shared_ptr<Creation> task;
    {
        const AnnotatedMutexLocker locker(handOver);
        task = creation;
    }
    (*task)();
}

bool BackendCreateWidget::createBackendInBackground()
{
    const QString type = ui->cbBackendType->currentText();
    const QString name = ui->edtRelativePath->text();
    BackendConfiguration configuration;
    configuration.location = ui->edtBackendFile->text();
    configuration.description = ui->edtBackendDesc->text();
    configuration.accessMode =
        AttributeTreeViewModelUtils::GetBackendAccessMode(ui->cbAccessMode->currentText());
    return repository->getBackendInterface()->createBackend(type, name, configuration, 2);
}

} // namespace Widgets
