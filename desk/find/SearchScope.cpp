#include "desk/find/SearchScope.h"

#include "desk/common/MenuText.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QMenu>

#include <algorithm>

namespace Vantry {

SearchScope::SearchScope(BackendFiles& backendFiles, SelectedPath selected)
    : files(backendFiles), selectedPath(std::move(selected))
{
    setObjectName(QStringLiteral("findScope"));
    setAccessibleName(tr("Where to search"));
    setMenu(new QMenu(this));
    connect(menu(), &QMenu::aboutToShow, this, &SearchScope::fill);
    showChoice();
}

QStringList SearchScope::getRoots() const
{
    return roots;
}

void SearchScope::fill()
{
    QMenu& choices = *menu();
    choices.clear();
    QAction* const everywhere = choices.addAction(tr("&Everywhere"), this, [this] { choose({}); });
    everywhere->setCheckable(true);
    everywhere->setChecked(roots.isEmpty());
    const QString selected = selectedPath();
    QAction* const below = choices.addAction(tr("At and &Below the Selected Node"), this,
                                             [this, selected] { choose({selected}); });
    below->setEnabled(!selected.isEmpty());
    choices.addSeparator();
    const QStringList backends = files.getOpened();
    const QStringList names = files.getFileNames(backends);
    for (int i = 0; i < backends.size(); ++i) {
        const QString& backend = backends[i];
        QAction* const choice = choices.addAction(menuText(names[i]));
        choice->setCheckable(true);
        choice->setChecked(roots.contains(backend));
        connect(choice, &QAction::toggled, this,
                [this, backend](bool isChosen) { toggle(backend, isChosen); });
    }
}

void SearchScope::choose(const QStringList& chosen)
{
    roots = chosen;
    showChoice();
    emit changed();
}

// Only files are added to files.
void SearchScope::toggle(const QString& backend, bool isChosen)
{
    const QStringList backends = files.getBackends();
    QStringList chosen;
    std::copy_if(roots.begin(), roots.end(), std::back_inserter(chosen),
                 [&](const QString& root) { return root != backend && backends.contains(root); });
    if (isChosen)
        chosen.append(backend);
    choose(chosen);
}

void SearchScope::showChoice()
{
    const QStringList backends = files.getBackends();
    QStringList names;
    for (const QString& root : roots)
        names.append(backends.contains(root) ? files.getFileName(root) : root);
    setText(names.isEmpty()     ? tr("Everywhere")
            : names.size() == 1 ? menuText(names.first())
                                : tr("%1 and %2 more").arg(menuText(names.first())).arg(names.size() - 1));
    setToolTip(Utilities::ModelViews::toolTipText(names.join(QLatin1Char('\n'))));
}

} // namespace Vantry
