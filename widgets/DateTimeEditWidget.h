#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QDateTimeEdit>
#include <QVariant>

#include <memory>

namespace Widgets {

// Edits a date, a time or both over a cell, and writes it when the edit ends. A date with a time is shown and
// typed as the clock of its own time zone shows it. GUI thread.
class DateTimeEditWidget : public QDateTimeEdit
{
    Q_OBJECT

public:
    DateTimeEditWidget(QWidget* parent, const QString& attributeFullPath, const QVariant& attributeValue);
    ~DateTimeEditWidget() override;

public slots:
    // As if a person had entered it.
    void enter(const QString& entry);

signals:
    // The edit is over, whether it was written or not. Whoever shows the editor disposes of it, by deferred
    // deletion, since this comes out of its own handlers.
    void resetDavModel();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private slots:
    void dateEditingFinished();
    void setWidgetDisplayFormat();
    bool getModifiedAttributeValue(QVariant& vValue);

private:
    void showUnusualValue();
    void leaveUnusualValue();
    QDateTime typedDateTime() const;

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    QString attributeFullPath;
    QVariant attributeValue;
    bool isTouched = false; // typed into, stepped or confirmed by a key, and the edit has not ended
};

} // namespace Widgets
