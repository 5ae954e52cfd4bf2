// A plug-in of one label, which shows the value of one attribute. Where the attribute is, the environment
// says: VANTRY_LABEL_PATH=bench.stations.left.supply.voltage vantry-desk --plugin-dir FOLDER
#include "host/Utilities/ApplicationPlugins/ApplicationInstanceToContextMapper.h"
#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"
#include "host/Utilities/ApplicationPlugins/PluginEntryPoints.h"
#include "host/Utilities/ApplicationWidgets/ApplicationMainWidget.h"
#include "host/Utilities/NotificationWrapper.h"

#include <QLabel>
#include <QVBoxLayout>
#include <QWriteLocker>

using Reader = std::shared_ptr<const Shared::GuiContexts::ReaderInterface>;
using namespace Utilities;

const QString labelName = QString::fromLatin1("Label");

class LabelWidget : public ApplicationWidgets::ApplicationMainWidget
{
public:
    explicit LabelWidget(const Reader& reader)
        : ApplicationMainWidget(reader, labelName, nullptr),
          watcher(qEnvironmentVariable("VANTRY_LABEL_PATH"), true, false)
    {
        auto* const label = new QLabel(QString::fromLatin1("no value yet"));
        label->setAlignment(Qt::AlignCenter);
        label->setTextFormat(Qt::PlainText);
        (new QVBoxLayout(this))->addWidget(label);
        {
            const QWriteLocker locker(&watcher.lock);
            watcher.valueChangedCallbacks.append(
                [label](const QVariant& value) { label->setText(value.toString()); });
        }
        watcher.setActive(true);
    }

private:
    NotificationWrapper watcher; // calls back on the GUI thread, and no more once it is gone
};

class LabelApplication : public ApplicationPlugins::ApplicationPlugin
{
public:
    explicit LabelApplication(const Reader& reader)
        : ApplicationPlugin(reader, ApplicationType::Window, labelName, QIcon(), nullptr,
                            new LabelWidget(reader), QString(), QFileInfo())
    {
    }

    QString getApplicationName() const override { return labelName; }
};

ApplicationPlugins::ApplicationInstanceToContextMapper<LabelApplication> applications;

const int applicationContractVersion = ApplicationPlugins::ContractVersion;

bool loadApplicationIdentifier(void*, QStringList& identifications)
{
    identifications.append(labelName);
    return true;
}

bool loadApplicationByIdentification(const Reader& reader, const QString& asked,
                                     std::shared_ptr<ApplicationPlugins::ApplicationPlugin>& result)
{
    result = asked == labelName ? applications.getOrCreate(reader, asked) : nullptr;
    return result != nullptr;
}

bool unloadApplicationByIdentification(const Reader& reader, const QString& asked)
{
    return applications.remove(reader, asked) > 0;
}
