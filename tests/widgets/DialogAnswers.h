#pragma once

#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QtTest>

#include <functional>

// What a person does in the dialogs of the browser page, as functions that answer one each.
namespace DialogAnswers {

using Answer = std::function<void(QWidget& dialog)>;

inline void escape(QWidget& dialog)
{
    QTest::keyClick(&dialog, Qt::Key_Escape);
}

// Types a text into the dialog's field and confirms it.
inline Answer enter(const QString& text)
{
    return [text](QWidget& dialog) {
        auto* const field = dialog.findChild<QLineEdit*>();
        QVERIFY(field);
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    };
}

// The same in a file dialog, whose field completes what is typed.
inline Answer enterFile(const QString& name)
{
    return [name](QWidget& dialog) {
        auto* const field = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(field);
        field->setText(name);
        QTest::keyClick(field, Qt::Key_Return);
    };
}

inline Answer pasteAs(const QString& name, bool asChild)
{
    return [name, asChild](QWidget& dialog) {
        const auto options = dialog.findChildren<QRadioButton*>();
        for (QRadioButton* const option : options) {
            if ((option->objectName() == QLatin1String("radioAsChild")) == asChild)
                QTest::mouseClick(option, Qt::LeftButton, {}, {8, option->height() / 2});
        }
        enter(name)(dialog);
    };
}

inline Answer createText(const QString& name, const QString& value)
{
    return [name, value](QWidget& dialog) {
        auto* const field = dialog.findChild<QLineEdit*>(QStringLiteral("edtName"));
        QVERIFY(field);
        QTest::keyClicks(field, name);
        const auto fields = dialog.findChildren<QLineEdit*>();
        for (QLineEdit* const other : fields) {
            if (other != field)
                QTest::keyClicks(other, value);
        }
        QTest::keyClick(field, Qt::Key_Return);
    };
}

inline Answer confirm(QMessageBox::StandardButton button)
{
    return [button](QWidget& dialog) {
        auto* const box = qobject_cast<QMessageBox*>(&dialog);
        QVERIFY(box);
        QCOMPARE(box->text(), QStringLiteral("Do You Want To Delete The Attribute ?"));
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    };
}

// A warning that says these parts, and that names nothing in its title.
inline Answer seeWarning(const QStringList& parts)
{
    return [parts](QWidget& dialog) {
        auto* const box = qobject_cast<QMessageBox*>(&dialog);
        QVERIFY(box);
        QString text = box->text();
        text.remove(QChar(0x200B)); // places where it may be broken
        for (const QString& part : parts)
            QVERIFY2(text.contains(part), qPrintable(text));
        QCOMPARE(box->windowTitle(), QString());
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    };
}

} // namespace DialogAnswers
