#include "desk/places/GoToDialog.h"

#include "desk/common/ReadableText.h"
#include "desk/files/FileMounter.h"
#include "host/Utilities/ModelViews/Widgets/BreakableText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace Vantry {

using FrameworkCore::AppConfig::FilePosition;
using Utilities::ModelViews::Widgets::breakableText;
using Utilities::ModelViews::Widgets::PlainLabel;

namespace {

// Backends whose file is called so, or ends so, as the name is mostly relative to some other folder.
QStringList backendsOf(const QString& file, GoToDialog::Repository& repository)
{
    const QString exact = FileMounter::backendOf(file, repository);
    if (!exact.isEmpty())
        return {exact};
    QString ending = file;
    while (ending.startsWith(QLatin1String("./")) || ending.startsWith(QLatin1String("../")))
        ending.remove(0, ending.indexOf(QLatin1Char('/')) + 1);
    if (!ending.startsWith(QLatin1Char('/')))
        ending.prepend(QLatin1Char('/'));
    QStringList found;
    const auto backends = repository.getBackendInterface();
    const QStringList names = backends->getBackendNames();
    for (const QString& name : names) {
        const auto information = backends->getBackendInformation(name);
        if (information && information->getBackendLocation().endsWith(ending))
            found.append(name);
    }
    return found;
}

} // namespace

GoToDialog::GoToDialog(std::shared_ptr<Repository> attributes, QWidget* parent)
    : QDialog(parent), repository(std::move(attributes)), text(new QLineEdit), fault(new PlainLabel)
{
    setObjectName(QStringLiteral("goTo"));
    setWindowTitle(tr("Go To"));
    resize(480, 0);
    auto* const column = new QVBoxLayout(this);
    auto* const label = new PlainLabel(tr("&Path of an attribute, or FILE:LINE or FILE:LINE:COLUMN:"));
    label->setBuddy(text);
    column->addWidget(label);
    text->setObjectName(QStringLiteral("goToText"));
    column->addWidget(text);
    fault->setObjectName(QStringLiteral("goToFault"));
    fault->setWordWrap(true);
    column->addWidget(fault);
    column->addStretch();
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    go = buttons->button(QDialogButtonBox::Ok);
    go->setText(tr("&Go"));
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &GoToDialog::find);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(text, &QLineEdit::textChanged, this, [this] {
        fault->clear();
        go->setEnabled(!text->text().trimmed().isEmpty());
    });
    connect(&finder, &LatestTask::failed, this, &GoToDialog::refuse);
    const QString copied = QApplication::clipboard()->text().trimmed();
    const bool isPath = repository->getTreeInterface()->getNodeInformation(copied).exists;
    go->setEnabled(false);
    if (isPath || (FilePosition::parse(copied) && !copied.contains(QLatin1Char('\n'))))
        text->setText(copied);
    text->selectAll();
    text->setFocus();
}

void GoToDialog::find()
{
    go->setEnabled(false);
    finder.start([this, wanted = text->text().trimmed(), attributes = repository]() -> LatestTask::Result {
        const Found found = findText(wanted, *attributes);
        return [this, found] {
            if (found.path.isEmpty())
                return refuse(found.reason);
            path = found.path;
            accept();
        };
    });
}

void GoToDialog::refuse(const QString& reason)
{
    fault->setText(breakableText(reason));
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width()))); // for all of its lines
    go->setEnabled(true);
    text->setFocus();
}

GoToDialog::Found GoToDialog::findText(const QString& wanted, Repository& repository)
{
    if (repository.getTreeInterface()->getNodeInformation(wanted).exists)
        return {wanted, {}};
    const auto place = FilePosition::parse(wanted);
    if (!place)
        return {{}, tr("This is neither the path of an attribute nor a line of a file.")};
    const QStringList backends = backendsOf(place->file, repository);
    if (backends.isEmpty())
        return {{}, tr("%1 is not open; File > Open opens it.").arg(place->file)};
    if (backends.size() > 1)
        return {{}, tr("%1 open files are called so: begin with more of the folders.").arg(backends.size())};
    const auto texts = repository.getTextInterface();
    QString found;
    const auto outcome = texts ? texts->findAt(backends.first(), place->line, place->column, found)
                               : FrameworkCore::AppConfig::Outcome();
    return {found, readableText(outcome, repository)};
}

} // namespace Vantry
