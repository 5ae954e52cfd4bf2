#pragma once

#include "widgets/AttributeBrowserWidget.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QTreeView>
#include <QtTest>

// The browser page as a person sees and uses it.
class BrowserPage
{
public:
    BrowserPage()
        : tree(*part<QTreeView>("treeView")), search(*part<QLineEdit>("edtSearchPath")),
          readButton(*part<QPushButton>("btnReadAttribute")),
          details(*part<QTextBrowser>("txtAttributeDetails")), boxes{part<QComboBox>("cbFilter1"),
                                                                     part<QComboBox>("cbFilter2"),
                                                                     part<QComboBox>("cbFilter3"),
                                                                     part<QComboBox>("cbFilter4")}
    {
        widget.resize(900, 700);
    }

    template <typename Part>
    Part* part(const char* name) const
    {
        return widget.findChild<Part*>(QLatin1String(name));
    }

    void read(const QString& searchPath)
    {
        search.setText(searchPath);
        QTest::mouseClick(&readButton, Qt::LeftButton);
    }

    // The rows that can be scrolled into view, indented by level, "-" in front of the open ones.
    QStringList shownRows() const
    {
        QStringList rows;
        QModelIndex item = tree.model()->index(0, 0);
        for (; item.isValid(); item = tree.indexBelow(item)) {
            QString row = item.data().toString();
            if (tree.isExpanded(item))
                row.prepend(QLatin1Char('-'));
            for (QModelIndex above = item.parent(); above.isValid(); above = above.parent())
                row.prepend(QLatin1Char(' '));
            rows.append(row);
        }
        return rows;
    }

    QModelIndex item(const QString& path) const
    {
        QModelIndex found;
        for (const QString& name : path.split(QLatin1Char('.'))) {
            const QModelIndex parent = found;
            const int count = tree.model()->rowCount(parent);
            for (int row = 0; row < count; ++row) {
                if (tree.model()->index(row, 0, parent).data() == name)
                    found = tree.model()->index(row, 0, parent);
            }
            if (found == parent)
                return {};
        }
        return found;
    }

    void open(const QStringList& paths)
    {
        for (const QString& path : paths)
            tree.expand(item(path));
    }

    void clickItem(const QString& path, Qt::MouseButton button = Qt::LeftButton)
    {
        for (QModelIndex above = item(path).parent(); above.isValid(); above = above.parent())
            tree.expand(above);
        const QModelIndex clicked = item(path);
        tree.scrollTo(clicked);
        QTest::mouseClick(tree.viewport(), button, Qt::NoModifier, tree.visualRect(clicked).center());
    }

    static QStringList itemsOf(const QComboBox& box)
    {
        QStringList items;
        for (int i = 0; i < box.count(); ++i)
            items.append(box.itemText(i));
        return items;
    }

    // What is chosen in the boxes that have something to choose.
    QString choices() const
    {
        QStringList texts;
        for (const QComboBox* const box : boxes) {
            if (box->isEnabled())
                texts.append(box->currentText());
        }
        return texts.join(QLatin1Char(' '));
    }

    // Chooses an entry with the keys of a person.
    static void choose(QComboBox& box, const QString& text)
    {
        box.setFocus();
        const int steps = box.findText(text) - box.currentIndex();
        for (int i = 0; i < qAbs(steps); ++i)
            QTest::keyClick(&box, steps > 0 ? Qt::Key_Down : Qt::Key_Up);
    }

    Widgets::AttributeBrowserWidget widget;
    QTreeView& tree;
    QLineEdit& search;
    QPushButton& readButton;
    QTextBrowser& details;
    const QList<QComboBox*> boxes;
};
