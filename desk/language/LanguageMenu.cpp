#include "desk/language/LanguageMenu.h"

#include "desk/language/Language.h"

#include <QActionGroup>

namespace Vantry {

LanguageMenu::LanguageMenu(QWidget* parent)
    : QMenu(tr("&Language"), parent), first(Language::chosen()), languages(new QActionGroup(this))
{
    setObjectName(QStringLiteral("languageMenu"));
    addLanguage(tr("&As the System"), {});
    addSeparator();
    // In their own languages, so that a person finds the way back.
    addLanguage(QStringLiteral("&English"), QStringLiteral("en"));
    addLanguage(QStringLiteral("&Deutsch"), QStringLiteral("de"));
}

void LanguageMenu::addLanguage(const QString& text, const QString& language)
{
    QAction* const action = addAction(text);
    action->setCheckable(true);
    action->setChecked(language == first);
    languages->addAction(action);
    connect(action, &QAction::triggered, this, [this, language] { choose(language); });
}

void LanguageMenu::choose(const QString& language)
{
    Language::choose(language);
    if (language != first)
        emit announced(tr("Vantry is shown in the chosen language from its next start on."));
}

} // namespace Vantry
