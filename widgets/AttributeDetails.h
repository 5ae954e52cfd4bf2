#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

class QTextBrowser;
class QUrl;

namespace Widgets {

// What the details panel of the browser page says of an attribute or a backend. Of a value that takes too
// long to lay out it shows the beginning, with links that show all of it in a window of its own and copy it.
// GUI thread.
class AttributeDetails : public QObject
{
    Q_OBJECT

public:
    explicit AttributeDetails(QTextBrowser& panel); // whose child it becomes

    void showAttribute(const QString& name, const QString& path, const QVariant& value,
                       const QStringList& validations);
    void showBackend(const QString& name, const QString& type, const QString& description);
    void clear();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show(const QStringList& paragraphs, const QString& wholeAmount = {});
    void insertNote(const QString& wholeAmount);
    void colourLinks();
    void followLink(const QUrl& link);

    QTextBrowser& panel;
    QString shownText;
    QString shownPath; // of the attribute that is shown
    QVariant shownValue;
};

} // namespace Widgets
