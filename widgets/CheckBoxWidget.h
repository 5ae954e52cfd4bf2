#pragma once

#include <QCheckBox>
#include <QVariant>

namespace Widgets {

// Edits a bool as a check box over a cell. Return, Enter and leaving the cell write it, Space changes it,
// every other key gives the edit up. GUI thread.
class CheckBoxWidget : public QCheckBox
{
    Q_OBJECT

public:
    CheckBoxWidget(QWidget* parent, const QString& attributeFullPath, const QVariant& attributeValue);
    ~CheckBoxWidget() override;

public slots:
    // As if a person had entered it.
    void enter(const QString& entry) { setChecked(entry == QLatin1String("true")); }

signals:
    // The edit is over, whether it was written or not. Whoever shows the editor disposes of it, by deferred
    // deletion, since this comes out of its own handlers.
    void resetDavModel();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private slots:
    void checkBoxStateChanged(int state);

private:
    QString enteredText() const { return QString::fromLatin1(isChecked() ? "true" : "false"); }

    QString attributeFullPath;
    QVariant attributeValue;
    bool isTouched = false; // toggled, although it may be back where it was, and the edit has not ended
};

} // namespace Widgets
