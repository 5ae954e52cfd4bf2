#include "widgets/AttributeTestsWidget.h"

#include "host/Utilities/RepositoryAccess.h"
#include "ui_AttributeTestsWidget.h"

#include <QElapsedTimer>

#include <atomic>

namespace Widgets {

namespace {

using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

// Notifications since the start of the last run, of all pages of the process.
std::atomic<qint32> updateCounter{0};

} // namespace

AttributeTestsWidget::AttributeTestsWidget(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::AttributeTestsWidget>())
{
    ui->setupUi(this);
}

AttributeTestsWidget::~AttributeTestsWidget() = default;

void AttributeTestsWidget::on_btnCreate_clicked()
{
    updateCounter = 0;
    const auto repository = Utilities::GetAppConfigRepositoryInterface();
    bool isNumber = false;
    const int count = ui->edtNumber->text().toInt(&isNumber, 10);
    if (!isNumber) {
        ui->lblStatus->setText(tr("Invalid count entered"));
        return;
    }
    const auto countUpdate = [](const QString&, const UpdatePoint&, const UpdateResult&, const QVariant&,
                                const QString&) { ++updateCounter; };
    const auto countWildcardUpdate = [](const QString&, const UpdatePoint&, const UpdateResult&,
                                        const QVariant&, const QString&) { ++updateCounter; };
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
                               .arg(updateCounter.load()));
}

void AttributeTestsWidget::on_btnUpdate_clicked()
{
    updateCounter = 0;
    const auto repository = Utilities::GetAppConfigRepositoryInterface();
    bool isNumber = false;
    const int count = ui->edtNumber->text().toInt(&isNumber, 10);
    if (!isNumber) {
        ui->lblStatus->setText(tr("Invalid count entered"));
        return;
    }
    const QString pathText = QString::fromLatin1("demo.%1");
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i)
        repository->getWriterInterface()->writeAttributeValue(pathText.arg(i), i, 15);
    ui->lblStatus->setText(tr("Update %1 attributes in %2 ms (counter =  %3)")
                               .arg(count)
                               .arg(timer.elapsed())
                               .arg(updateCounter.load()));
}

void AttributeTestsWidget::on_btnReadCounter_clicked()
{
    ui->lblCounter->setText(tr("Counter: %1").arg(updateCounter.load()));
}

} // namespace Widgets
