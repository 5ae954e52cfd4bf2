#include "widgets/AttributeTestsWidget.h"

#include "app/VantryLog.h"
#include "host/Utilities/RepositoryAccess.h"
#include "host/Utilities/UpdateCounter.h"
#include "ui_AttributeTestsWidget.h"

#include <QElapsedTimer>

namespace Widgets {

using Utilities::UpdateCounter;

AttributeTestsWidget::AttributeTestsWidget(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::AttributeTestsWidget>())
{
    ui->setupUi(this);
}

AttributeTestsWidget::~AttributeTestsWidget() = default;

AttributeTestsWidget::Repository AttributeTestsWidget::beginRun(int& count)
{
    UpdateCounter::reset();
    bool isNumber = false;
    count = ui->edtNumber->text().toInt(&isNumber, 10);
    if (!isNumber) {
        ui->lblStatus->setText(tr("Invalid count entered"));
        return nullptr;
    }
    Repository repository = Utilities::GetAppConfigRepositoryInterface();
    if (!repository)
        Vantry::logLine(Shared::Logging::LogMessageType::Failure)
            << "The load test did nothing: the host has no attribute repository";
    return repository;
}

void AttributeTestsWidget::on_btnCreate_clicked()
{
    int count = 0;
    const auto repository = beginRun(count);
    if (!repository)
        return;
    const auto countUpdate = UpdateCounter::countOfPath();
    const auto countWildcardUpdate = UpdateCounter::countOfPattern();
    const QString pathText = QString::fromLatin1("demo.%1");
    const QString patternText = QString::fromLatin1("demo.%1*");
    const QString valueText = QString::fromLatin1("%1");
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i) {
        const QString path = pathText.arg(i);
        repository->getWriterInterface()->createAttribute(path, valueText.arg(i), 3, 3);
        repository->getNotificationInterface()->registerUpdateCallback(path, countUpdate, 8);
        if (ui->chkWildcard->isChecked()) {
            repository->getNotificationInterface()->registerUpdateCallback(patternText.arg(i),
                                                                           countWildcardUpdate, 8);
        }
    }
    ui->lblStatus->setText(tr("Created %1 attributes in %2 ms (counter =  %3)")
                               .arg(count)
                               .arg(timer.elapsed())
                               .arg(UpdateCounter::getCount()));
}

void AttributeTestsWidget::on_btnUpdate_clicked()
{
    int count = 0;
    const auto repository = beginRun(count);
    if (!repository)
        return;
    const QString pathText = QString::fromLatin1("demo.%1");
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i)
        repository->getWriterInterface()->writeAttributeValue(pathText.arg(i), i, 15);
    ui->lblStatus->setText(tr("Update %1 attributes in %2 ms (counter =  %3)")
                               .arg(count)
                               .arg(timer.elapsed())
                               .arg(UpdateCounter::getCount()));
}

void AttributeTestsWidget::on_btnReadCounter_clicked()
{
    ui->lblCounter->setText(tr("Counter: %1").arg(UpdateCounter::getCount()));
}

} // namespace Widgets
