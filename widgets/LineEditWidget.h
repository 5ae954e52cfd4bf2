#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QLineEdit>
#include <QVariant>

#include <memory>

namespace Widgets {

// Edits an attribute as one line of text, over a cell or by itself, and writes it when the edit ends. Taking
// the editor into a view moves the focus, which ends an edit for the first time; so only the second end of an
// edit counts. GUI thread.
class LineEditWidget : public QLineEdit
{
    Q_OBJECT

public:
    LineEditWidget(QWidget* parent, const QString& attributeFullPath, const QVariant& attributeValue);
    ~LineEditWidget() override;

signals:
    // The edit is over, whether it was written or not. Whoever shows the editor disposes of it, by deferred
    // deletion, since this comes out of its own handlers.
    void resetDavModel();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

public slots:
    // As if a person had entered it.
    void enter(const QString& entry);

    // Lets only texts be typed that lie within the validator's bounds for the value's type. For callers that
    // want it; the views do not.
    void addValidator();

private slots:
    void textEditingFinished();
    bool getModifiedAttributeValue(QVariant& vValue);
    bool isAttributeEditable();

private:
    void writeText();

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    QString attributeFullPath;
    QVariant attributeValue;
    qint32 editingFinishedCount = 0;
    bool isTouched = false; // typed into, or confirmed by a key, and the edit has not ended
};

} // namespace Widgets
