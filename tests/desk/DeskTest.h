#pragma once

#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "tests/desk/RunningDesk.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTreeView>
#include <QTreeWidget>

#include <algorithm>
#include <functional>
#include <optional>

namespace TestSupport {

// Tests of the real desk with real keys and two files, the plant and its limits.
class DeskTest : public QObject
{
protected:
    static inline const QString speed = QStringLiteral("plant.cell.pump.motor.speed");
    static inline const QString sense = QStringLiteral("plant.cell.pump.motor.sense");
    static inline const QString maximum = QStringLiteral("limits.oven.maximum");

    void open()
    {
        folder = std::make_unique<RunningDesk::Folder>();
        plant = contentOf(folder->path("plant.json"));
        desk = std::make_unique<RunningDesk>(
            *folder, QStringList{folder->path("plant.json"), folder->path("limits.ini")});
        QVERIFY(TestSupport::showActive(*desk->window));
        QTRY_VERIFY(desk->item(QStringLiteral("limits.oven")).isValid());
        desk->tree->setFocus();
    }

    void close()
    {
        desk.reset();
        folder.reset();
    }

    // Clicks the button of a dialog that has the text.
    static void press(const QWidget& dialog, const char* text)
    {
        const auto buttons = dialog.findChildren<QPushButton*>();
        for (QPushButton* button : buttons) {
            if (button->text().remove(QLatin1Char('&')) == QLatin1String(text)) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        QFAIL(text);
    }

    // As the next start of the program.
    void startAnew(const QStringList& files = {})
    {
        desk.reset();
        desk = std::make_unique<RunningDesk>(*folder, files);
        QVERIFY(TestSupport::showActive(*desk->window));
        if (!files.isEmpty())
            QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        desk->window->showKeptChanges();
        QVERIFY(desk->part<QWidget>("keptChangesBar")->isVisible());
    }

    // In the row of the only file.
    void pressKept(const char* name)
    {
        QVERIFY(TestSupport::showActive(*desk->window)); // again, after a dialog
        QTest::mouseClick(desk->part<QPushButton>(name), Qt::LeftButton);
    }

    void write(const QString& path, const QVariant& value)
    {
        QCOMPARE(desk->repository->getWriterInterface()->writeAttributeValue(path, value, 8), 0);
    }

    QVariant read(const QString& path) const
    {
        QVariant value;
        desk->repository->getReaderInterface()->readAttributeValue(path, value, 0);
        return value;
    }

    // Opens the editor of an attribute in the view and replaces what it holds.
    void type(QAbstractItemView& view, const QString& typed, const QString& path = speed)
    {
        QModelIndex cell = desk->item(path);
        if (auto* const table = qobject_cast<Utilities::ModelViews::AdvancedAttributeModel*>(view.model())) {
            table->loadCustomAttributeList({path});
            cell = table->index(0, 0);
        }
        view.setFocus();
        view.setCurrentIndex(cell.sibling(cell.row(), 1));
        QVERIFY(pressKey(QStringLiteral("F2")));
        QTRY_VERIFY(qobject_cast<QLineEdit*>(QApplication::focusWidget()) &&
                    view.isAncestorOf(QApplication::focusWidget()));
        QVERIFY(TestSupport::typeText(typed));
        QTRY_COMPARE(qobject_cast<QLineEdit*>(QApplication::focusWidget())->text(), typed);
    }

    // With the mouse, in one of the window's menus.
    void choose(int menu, const QString& entry)
    {
        const QMenuBar& bar = *desk->window->menuBar();
        const QMenu& opened = *bar.actions().at(menu)->menu();
        QVERIFY(TestSupport::click(bar, bar.actionGeometry(bar.actions().at(menu)).center()));
        QTRY_COMPARE(QApplication::activePopupWidget(), static_cast<const QWidget*>(&opened));
        const auto actions = opened.actions();
        const auto found = std::find_if(actions.begin(), actions.end(), [&entry](const QAction* action) {
            return action->isEnabled() && action->text() == entry;
        });
        QVERIFY2(found != actions.end(), qPrintable(entry));
        QVERIFY(TestSupport::click(opened, opened.actionGeometry(*found).center()));
        QTRY_VERIFY(!QApplication::activePopupWidget());
    }

    // Opens a menu in the File menu by the first key and chooses there by the others; a dialog that comes
    // then is driven.
    void fileMenu(const QList<const char*>& keys, const std::function<void(QWidget&)>& drive = {})
    {
        QVERIFY(TestSupport::showActive(*desk->window)); // again, after a dialog
        QVERIFY(pressKey(QStringLiteral("alt+f")));
        QTRY_VERIFY(QApplication::activePopupWidget());
        const QWidget* const menu = QApplication::activePopupWidget();
        QVERIFY(pressKey(QLatin1String(keys.first())));
        QTRY_VERIFY(QApplication::activePopupWidget() != menu);
        std::optional<DialogDriver> driver;
        if (drive)
            driver.emplace(drive);
        for (const char* const key : keys.mid(1))
            QVERIFY(pressKey(QLatin1String(key)));
        if (driver)
            QTRY_VERIFY(driver->isDone());
    }

    static QStringList textsOf(const QTreeWidget& rows)
    {
        QStringList texts;
        for (int row = 0; row < rows.topLevelItemCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < rows.columnCount(); ++column) {
                if (!rows.isColumnHidden(column))
                    cells.append(rows.topLevelItem(row)->text(column));
            }
            texts.append(cells.join(QLatin1Char('|')));
        }
        return texts;
    }

    std::unique_ptr<RunningDesk::Folder> folder;
    std::unique_ptr<RunningDesk> desk;
    QByteArray plant; // the file as it was
};

} // namespace TestSupport
