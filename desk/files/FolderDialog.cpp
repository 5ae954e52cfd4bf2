#include "desk/files/FolderDialog.h"

#include "host/Utilities/ModelViews/ToolTipText.h"
#include "repository/mounting/FolderLocation.h"

#include <QComboBox>
#include <QFile>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>

namespace Vantry {

using Files::FolderFilter;

namespace {

std::vector<std::string> globsIn(const QLineEdit& field)
{
    std::vector<std::string> globs;
    const QStringList texts = field.text().simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& text : texts)
        globs.push_back(QFile::encodeName(text).toStdString());
    return globs;
}

} // namespace

FolderDialog::FolderDialog(const QString& folder, QWidget* parent)
    : PlainFileDialog(parent, tr("Open Folder"), folder), include(new QLineEdit), exclude(new QLineEdit),
      depth(new QComboBox), size(new QComboBox)
{
    setFileMode(QFileDialog::Directory);
    setOption(QFileDialog::ShowDirsOnly);
    setOption(QFileDialog::DontUseNativeDialog); // which would have no place for the conditions
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    grid->addWidget(makeConditions(), grid->rowCount(), 0, 1, -1);
    orderFields();
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().lineSpacing() * 38);
}

// The conditions before the buttons, as they belong to what is chosen.
void FolderDialog::orderFields()
{
    QWidget* before = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    for (QWidget* const field : std::initializer_list<QWidget*>{include, exclude, depth, size}) {
        setTabOrder(before, field);
        before = field;
    }
}

QWidget* FolderDialog::makeConditions()
{
    const QString patterns =
        tr("Patterns of names, as *.conf, or of paths below the folder, as ssl/*.pem, separated by blanks.\n"
           "* stands for any text, ? for one character.");
    include->setObjectName(QStringLiteral("folderInclude"));
    include->setPlaceholderText(tr("all files that are recognised"));
    include->setToolTip(Utilities::ModelViews::toolTipText(patterns));
    exclude->setObjectName(QStringLiteral("folderExclude"));
    exclude->setPlaceholderText(tr("as in *.bak ssl"));
    exclude->setToolTip(Utilities::ModelViews::toolTipText(patterns));
    depth->setObjectName(QStringLiteral("folderDepth"));
    depth->setToolTip(tr("How many levels of folders below it are looked at"));
    depth->addItem(tr("all folders below it"), FolderFilter::mostLevels);
    depth->addItem(tr("the folder alone"), 0);
    for (const int levels : {1, 2, 3, 5})
        depth->addItem(QString::number(levels), levels);
    size->setObjectName(QStringLiteral("folderSize"));
    size->addItem(tr("of any size"), quint64(FolderFilter::anySize));
    for (const int megabytes : {1, 10, 100})
        size->addItem(tr("up to %1 MiB").arg(megabytes), quint64(megabytes) << 20);

    auto* const box = new QGroupBox(tr("Files to open"));
    auto* const form = new QFormLayout(box);
    form->addRow(tr("&Only:"), include);
    form->addRow(tr("&Without:"), exclude);
    form->addRow(tr("&Depth:"), depth);
    form->addRow(tr("&Size:"), size);
    return box;
}

FolderFilter FolderDialog::getFilter() const
{
    FolderFilter filter;
    filter.include = globsIn(*include);
    filter.exclude = globsIn(*exclude);
    filter.deepest = depth->currentData().toInt();
    filter.largest = size->currentData().toULongLong();
    return filter;
}

QString FolderDialog::getLocation() const
{
    return Repository::FolderLocation::with(selectedFiles().value(0), getFilter());
}

} // namespace Vantry
