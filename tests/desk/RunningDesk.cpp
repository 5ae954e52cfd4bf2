#include "tests/desk/RunningDesk.h"

#include "desk/window/FocusStyle.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/support/TestFiles.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QTreeView>

namespace TestSupport {

RunningDesk::Folder::Folder()
{
    writeFile(path("plant.json"),
              "{\"cell\": {\"pump\": {\"motor\": {\"speed\": 1200, \"sense\": \"left\"},\n"
              "  \"name\": \"P1\"}, \"valve\": {\"open\": true}}}\n");
    writeFile(path("limits.ini"), "[oven]\nmaximum = 125\n");
    writeFile(path("broken.json"), "{\"a\": 1,\n \"b\": }\n");
}

RunningDesk::RunningDesk(const Folder& folder, const QStringList& files)
    : loader(Vantry::PluginTrial(QStringLiteral(VANTRY_DESK)))
{
    QApplication::setStyle(new Vantry::FocusStyle);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path("settings"));
    qputenv("XDG_STATE_HOME", QFile::encodeName(folder.path("state")));
    if (Utilities::GetAppConfigRepositoryInterface())
        qFatal("there is a desk already, whose applications this one would get");
    repository = Repository::AttributeRepository::create();
    Utilities::SetAppConfigRepositoryInterface(repository);
    loader.load(QStringList(QFileInfo(QStringLiteral(VANTRY_MODULE)).path()));
    windows = std::make_unique<Vantry::Windows>(repository, loader);
    window = &windows->open(files);
    tree = part<QTreeView>("treeView");
    if (!tree)
        qFatal("%s", qPrintable(loader.getFindings().front().refusal));
}

RunningDesk::~RunningDesk()
{
    windows.reset();
    Utilities::SetAppConfigRepositoryInterface({});
}

QPushButton* RunningDesk::navigationButton(const char* name) const
{
    return part<QWidget>("navigationArea")->findChild<QPushButton*>(QLatin1String(name));
}

QString RunningDesk::shownPage() const
{
    return part<QStackedWidget>("appConfigPages")->currentWidget()->objectName();
}

QStringList RunningDesk::shownRows() const
{
    QStringList rows;
    for (QModelIndex row = tree->model()->index(0, 0); row.isValid(); row = tree->indexBelow(row)) {
        QString text = row.data().toString();
        if (tree->isExpanded(row) && tree->model()->hasChildren(row))
            text.prepend(QLatin1Char('-'));
        for (QModelIndex above = row.parent(); above.isValid(); above = above.parent())
            text.prepend(QLatin1Char(' '));
        rows.append(text);
    }
    return rows;
}

QModelIndex RunningDesk::item(const QString& path) const
{
    QModelIndex found;
    for (const QString& name : path.split(QLatin1Char('.'))) {
        const auto matches = tree->model()->match(tree->model()->index(0, 0, found), Qt::DisplayRole, name, 1,
                                                  Qt::MatchExactly | Qt::MatchWrap);
        if (matches.isEmpty())
            return {};
        found = matches.first();
    }
    return found;
}

} // namespace TestSupport
