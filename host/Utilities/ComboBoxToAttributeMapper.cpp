#include "host/Utilities/ComboBoxToAttributeMapper.h"

#include "host/Utilities/NotificationWrapper.h"
#include "host/Utilities/ScopedSignalBlocker.h"

#include <QComboBox>
#include <QWriteLocker>

namespace Utilities {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

namespace {

constexpr int createOnly = 2; // never takes away a value that another program has just written

void createIfMissing(RepositoryInterface& repository, const QString& path)
{
    if (!repository.getReaderInterface()->getAttribute(path))
        repository.getWriterInterface()->createAttribute(path, QString(), createOnly,
                                                         static_cast<int>(AccessMode::ReadWrite));
}

} // namespace

ComboBoxToAttributeMapper::ComboBoxToAttributeMapper(QObject* parent,
                                                     const std::shared_ptr<RepositoryInterface>& repository,
                                                     QComboBox*& box, const QString& path,
                                                     const QString& attributeName)
    : QObject(parent), comboBox(box)
{
    if (!repository)
        return;
    const QString attributePath =
        path.isEmpty() ? attributeName : repository->buildAttributePath({path, attributeName});
    createIfMissing(*repository, attributePath);
    watcher = std::make_unique<NotificationWrapper>(attributePath, false, false, repository);
    {
        const QWriteLocker locker(&watcher->lock);
        watcher->valueChangedCallbacks.append([this](const QVariant& value) { showItems(value); });
    }
    // Watched before it is read, so that no change falls between the two.
    watcher->setActive(true);
    QVariant value;
    repository->getReaderInterface()->readAttributeValue(attributePath, value, 0);
    showItems(value);
}

ComboBoxToAttributeMapper::~ComboBoxToAttributeMapper() = default;

void ComboBoxToAttributeMapper::showItems(const QVariant& value)
{
    if (!comboBox)
        return;
    const QString text = value.toString();
    const QString current = comboBox->currentText();
    const ScopedSignalBlocker blocker(comboBox.data());
    comboBox->clear();
    if (!text.isEmpty())
        comboBox->addItems(text.split(QLatin1Char(';')));
    const int kept = comboBox->findText(current, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (kept >= 0)
        comboBox->setCurrentIndex(kept);
}

} // namespace Utilities
