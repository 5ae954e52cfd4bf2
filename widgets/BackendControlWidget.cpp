#include "widgets/BackendControlWidget.h"

#include "app/ModuleConstants.h"
#include "app/VantryLog.h"
#include "host/Utilities/ComboBoxToAttributeMapper.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/RepositoryAccess.h"
#include "ui_BackendControlWidget.h"

#include <QMap>

namespace Widgets {

using FrameworkCore::AppConfig::BackendConfiguration;
using Utilities::ModelViews::AttributeTreeViewModelUtils;
using Vantry::AllBackends;

BackendControlWidget::BackendControlWidget(QWidget* parent)
    : QWidget(parent), repository(Utilities::GetAppConfigRepositoryInterface()),
      ui(std::make_unique<Ui::BackendControlWidget>())
{
    ui->setupUi(this);
    on_btnRefreshBackendTypeList_clicked();
    mapper = std::make_shared<Utilities::ComboBoxToAttributeMapper>(
        nullptr, repository, ui->cbBackendNames, buildBackendsPath(), QString::fromLatin1("names"));
}

BackendControlWidget::~BackendControlWidget() = default;

QString BackendControlWidget::buildBackendsPath() const
{
    if (!repository)
        return {};
    return repository->buildAttributePath({QString::fromLatin1("internal"), QString::fromLatin1("backends")});
}

void BackendControlWidget::on_btnCreateBackend_clicked()
{
    if (!repository)
        return;
    BackendConfiguration configuration;
    configuration.location = ui->edtBackendFile->text();
    configuration.accessMode =
        AttributeTreeViewModelUtils::GetBackendAccessMode(ui->cbAccessMode->currentText().toLower());
    repository->getBackendInterface()->createBackend(ui->cbBackendTypes->currentText(),
                                                     ui->edtBackendName->text(), configuration, 3);
}

QStringList BackendControlWidget::namesToSave() const
{
    if (ui->cbBackendNames->currentText() != AllBackends)
        return {ui->cbBackendNames->currentText()};
    QStringList names;
    for (int i = 0; i < ui->cbBackendNames->count(); ++i) {
        const QString name = ui->cbBackendNames->itemText(i);
        if (name != AllBackends)
            names.append(name);
    }
    return names;
}

void BackendControlWidget::on_btnSaveBackend_clicked()
{
    if (!repository)
        return;
    QMap<QString, bool> results;
    for (const QString& name : namesToSave())
        results[name] = repository->getBackendInterface()->saveBackend(name);
    for (auto i = results.cbegin(); i != results.cend(); ++i) {
        Vantry::logLine(Shared::Logging::LogMessageType::Information)
            << "Backend " << i.key() << " saved with result " << int(i.value());
    }
}

void BackendControlWidget::on_btnRefreshBackendList_clicked()
{
    if (!repository)
        return;
    ui->cbBackendNames->clear();
    ui->cbBackendNames->insertItem(0, AllBackends);
    ui->cbBackendNames->addItems(repository->getBackendInterface()->getBackendNames());
    ui->cbBackendNames->setCurrentIndex(0);
}

void BackendControlWidget::on_btnRefreshBackendTypeList_clicked()
{
    if (!repository)
        return;
    ui->cbBackendTypes->clear();
    ui->cbBackendTypes->addItems(repository->getBackendTypes());
    if (ui->cbBackendTypes->count() > 0)
        ui->cbBackendTypes->setCurrentIndex(0);
}

} // namespace Widgets
