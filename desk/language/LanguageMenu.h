#pragma once

#include <QMenu>

class QActionGroup;

namespace Vantry {

// The menu that chooses the language of the next start. GUI thread.
class LanguageMenu : public QMenu
{
    Q_OBJECT

public:
    explicit LanguageMenu(QWidget* parent = nullptr);

signals:
    // Another language than that of this start will be shown, which this text says.
    void announced(const QString& text);

private:
    void addLanguage(const QString& text, const QString& language);
    void choose(const QString& language);

    QString first; // what was chosen at the start
    QActionGroup* languages;
};

} // namespace Vantry
