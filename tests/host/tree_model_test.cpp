#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/host/TreeModelTestBase.h"
#include "tests/support/Columns.h"
#include "tests/support/ModelText.h"
#include "tests/support/TestRun.h"
#include "tests/support/TreeWriter.h"

#include <QApplication>
#include <QDateTime>
#include <QDialog>
#include <QFont>
#include <QIcon>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTreeView>

#include <algorithm>

using namespace FrameworkCore::AppConfig;
using TestSupport::modelText;
using TestSupport::TreeWriter;
using Utilities::ModelViews::AttributeTreeViewModel;

namespace {

// The grey of the lightest pixel that is drawn.
int lightestOf(const QImage& image)
{
    int lightest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) > 200)
                lightest = std::max(lightest, qGray(pixel));
        }
    }
    return lightest;
}

} // namespace

// What the model shows of a repository that does not change.
class TreeModelTest : public TreeModelTestBase
{
    Q_OBJECT

private slots:
    void showsWhatTheSearchPathAsksFor_data()
    {
        const auto row = TestSupport::columns<QString, QStringList>("searchPath", "expected");
        const QStringList app{text("app"),          text("  net"),          text("    ip = 1"),
                              text("    ipv6 = 2"), text("      mask = 3"), text("    port = 4"),
                              text("  name = x")};
        row("a node and all below", "app", app);
        row("a last separator does not count", "app.", app);
        row("ancestors lead to a node", "app.net.ipv6",
            QStringList{text("app"), text("  net"), text("    ipv6 = 2"), text("      mask = 3")});
        row("no such node", "app.ne", QStringList());
        row("beginning", "app.net.ip*",
            QStringList{text("app"), text("  net"), text("    ip = 1"), text("    ipv6 = 2"),
                        text("      mask = 3")});
        row("beginning on the top", "ap*", app);
        row("all children", "app.**", app);
        row("no children of a leaf", "app.name.*", QStringList());
        row("end", "*.mask",
            QStringList{text("app"), text("  net"), text("    ipv6 = 2"), text("      mask = 3")});
        row("middle", "a*net*p*t", QStringList{text("app"), text("  net"), text("    port = 4")});
        row("other case", "APP*", QStringList());
        row("begins with a separator", ".*", QStringList());
    }

    void showsWhatTheSearchPathAsksFor()
    {
        QFETCH(QString, searchPath);
        QFETCH(QStringList, expected);
        create(text("app.net.ip"), 1);
        create(text("app.net.ipv6"), 2);
        create(text("app.net.ipv6.mask"), 3);
        create(text("app.net.port"), 4);
        create(text("app.name"), text("x"));
        create(text("b.app"), 5);
        AttributeTreeViewModel model;
        model.resetModel(searchPath);
        QCOMPARE(modelText(model), expected);
    }

    void everythingIsShownByEmptyPathsAndStars()
    {
        create(text("a.b"), 1);
        const QStringList all = freshText(QString());
        QVERIFY(all.contains(text("  b = 1")) && all.contains(text("internal")));
        for (const char* path : {"*", "**", "."})
            QCOMPARE(freshText(text(path)), all);
    }

    void isEmptyWithoutAnythingToRead()
    {
        AttributeTreeViewModel model;
        create(text("a"), 1);
        QCoreApplication::processEvents();
        QCOMPARE(model.rowCount(), 0);
        Utilities::SetAppConfigRepositoryInterface({});
        AttributeTreeViewModel lonely;
        lonely.resetModel(text("*"));
        lonely.resetModel(text("*"));
        lonely.setLstBackendPath({text("a")});
        QCOMPARE(lonely.rowCount(), 0);
        QVERIFY(!lonely.indexFromPath(text("a")).isValid());
    }

    void cellsShowValues_data()
    {
        const auto row = TestSupport::columns<QVariant, QString>("value", "expected");
        row("bool", QVariant(true), "true");
        row("integer", QVariant(-5LL), "-5");
        row("unsigned", QVariant(18446744073709551615ULL), "18446744073709551615");
        row("double", QVariant(0.1), "0.1");
        row("exact double", QVariant(0.1 + 0.2), "0.30000000000000004");
        row("list", QVariant(QStringList{text("a"), text("b")}), "a,b");
        row("bytes that are text", QVariant(QByteArray("gr\xc3\xbc\xc3\x9f")),
            QString::fromUtf8("gr\xc3\xbc\xc3\x9f"));
        row("other bytes", QVariant(QByteArray("\x00\xff", 2)), text("\\x00\\xff"));
        row("date", QVariant(QDate(2024, 2, 29)), "2024-02-29");
        row("time", QVariant(QTime(1, 2, 3, 45)), "01:02:03.045");
        row("date and time", QVariant(QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 6), Qt::UTC)),
            "2024-01-02T03:04:05.006Z");
        row("lines", QVariant(text("a\r\nb\nc")), "a\u21b5b\u21b5c");
        row("empty", QVariant(QString()), QString());
    }

    void cellsShowValues()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, expected);
        create(text("a"), value);
        AttributeTreeViewModel model;
        model.resetModel(text("a"));
        const QModelIndex cell = model.index(0, AttributeTreeViewModel::ValueColumn);
        QCOMPARE(cell.data().toString(), expected);
        QCOMPARE(cell.data(Qt::EditRole),
                 repository->getReaderInterface()->getAttribute(text("a"))->getValue());
    }

    void cellsTellAccessAndBackend()
    {
        QVERIFY(mount(text("m")));
        create(text("m.a"), 1, AccessMode::ReadOnly);
        create(text("m.w"), text("hidden"), AccessMode::WriteOnly);
        create(text("m.group.<b>"), 1);
        AttributeTreeViewModel model;
        model.resetModel(text("m"));
        QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
        const auto cell = [&](const char* path, int role, int column = 0) {
            return model.indexFromPath(text(path), column).data(role);
        };
        const auto font = [&](const char* path) { return cell(path, Qt::FontRole).value<QFont>(); };
        const auto icon = [&](const char* path, QIcon::Mode mode = QIcon::Normal) {
            return cell(path, Qt::DecorationRole).value<QIcon>().pixmap(16, mode).toImage();
        };
        QVERIFY(!font("m").bold());
        model.setLstBackendName({text("m")});
        model.setLstBackendPath({text("m")});
        QCOMPARE(changes.count(), 1);
        QVERIFY(font("m").bold() && !font("m.a").bold() && font("m.a").italic() && !font("m.w").italic());
        QVERIFY(cell("m", AttributeTreeViewModel::BackendRootRole).toBool());
        QVERIFY(!icon("m").isNull() && !icon("m.a").isNull() && icon("m") != icon("m.a"));
        QVERIFY(lightestOf(icon("m", QIcon::Selected)) > 220); // on the dark highlight
        QVERIFY(!cell("m.w", Qt::DisplayRole, 1).isValid() && !cell("m.group", Qt::DisplayRole, 1).isValid());
        const QString toolTip = cell("m.a", Qt::ToolTipRole).toString();
        for (const char* part : {"m.a", "qlonglong", "read-only", "Backend: m"})
            QVERIFY2(toolTip.contains(text(part)), qPrintable(toolTip));
        QVERIFY(cell("m.group.<b>", Qt::ToolTipRole).toString().contains(text("&lt;b&gt;")));
        model.setLstBackendPath({});
        QCOMPARE(changes.count(), 2);
        QVERIFY(!font("m").bold());
    }

    // The name stays as it is, since paths are made of the names.
    void cellsTellUnsavedBackends()
    {
        QVERIFY(mount(text("m")));
        create(text("m.a"), 1);
        create(text("m.g.b"), 1);
        create(text("m.g.c"), 1);
        repository->getBackendInterface()->saveBackend(text("m"));
        AttributeTreeViewModel model;
        model.resetModel(text("m"));
        const auto root = [&](int role) { return model.indexFromPath(text("m")).data(role); };
        const auto icon = [&] { return root(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage(); };
        const QImage saved = icon();
        const QString mark = text("unsaved changes");
        if (!repository->getChangesInterface())
            return;
        QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
        QCOMPARE(repository->getWriterInterface()->writeAttributeValue(text("m.a"), 2, 15), 0);
        QTRY_VERIFY(root(Qt::AccessibleTextRole).toString().contains(mark));
        QVERIFY(icon() != saved);
        QVERIFY(root(Qt::ToolTipRole).toString().contains(text("not saved")));
        QCOMPARE(root(Qt::DisplayRole).toString(), text("m"));

        // So does the attribute, and what is above it, in files of which that can be known.
        const auto marked = [&] {
            QStringList paths;
            for (const char* path : {"m.a", "m.g", "m.g.b", "m.g.c"}) {
                const QModelIndex item = model.indexFromPath(text(path));
                if (item.data(Qt::AccessibleTextRole).toString().contains(mark))
                    paths.append(text(path));
            }
            return paths;
        };
        QTRY_COMPARE(marked(), QStringList(text("m.a")));
        QCOMPARE(repository->getWriterInterface()->writeAttributeValue(text("m.g.c"), 2, 15), 0);
        QTRY_COMPARE(marked(), (QStringList{text("m.a"), text("m.g"), text("m.g.c")}));
        QVERIFY(repository->getChangesInterface()->revert(text("m.a")).ok());
        QTRY_COMPARE(marked(), (QStringList{text("m.g"), text("m.g.c")}));
        changes.clear();
        QVERIFY(repository->getBackendInterface()->saveBackend(text("m")));
        QTRY_COMPARE(icon(), saved);
        QCOMPARE(marked(), QStringList());
        QCOMPARE(changes.count(), 3);
        QVERIFY(!root(Qt::AccessibleTextRole).toString().contains(mark));
    }

    void itemsCanBeDraggedAsPaths()
    {
        create(text("a.b"), 1);
        create(text("a.c"), 2);
        AttributeTreeViewModel model;
        model.resetModel({});
        const QModelIndex b = model.indexFromPath(text("a.b"));
        const QModelIndex c = model.indexFromPath(text("a.c"), AttributeTreeViewModel::ValueColumn);
        QCOMPARE(model.flags(b), Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled);
        QCOMPARE(model.flags(c), model.flags(b));
        QCOMPARE(model.flags({}), Qt::ItemFlags(Qt::NoItemFlags));
        const std::unique_ptr<QMimeData> dragged(model.mimeData({b, b.siblingAtColumn(1), c}));
        QCOMPARE(dragged->formats(), model.mimeTypes());
        QCOMPARE(dragged->data(text("application/x-vantry-attribute-paths")), QByteArray("a.b\na.c"));
        QCOMPARE(dragged->text(), text("a.b\na.c"));
    }

    void matchFindsWhatQtFinds_data()
    {
        const auto row = TestSupport::columns<QString>("searchPath");
        row("everything", QString());
        row("filtered", "*.b");
    }

    void matchFindsWhatQtFinds()
    {
        QFETCH(QString, searchPath);
        TreeWriter writer(repository, {}, 8, 6, 3);
        for (int i = 0; i < 300; ++i)
            writer.changeOnce();
        AttributeTreeViewModel model;
        model.resetModel(searchPath);
        QRandomGenerator random(2);
        const auto flags = {
            Qt::MatchFlags(Qt::MatchRecursive), Qt::MatchFlags(Qt::MatchStartsWith | Qt::MatchWrap),
            Qt::MatchFlags(Qt::MatchStartsWith | Qt::MatchCaseSensitive), Qt::MatchFlags(Qt::MatchExactly)};
        for (const char* name : {"a", "b", "F", "inter", "names", "none", "", "a.b", "*"}) {
            for (int hits : {1, 2, 66, -1}) {
                for (const Qt::MatchFlags flag : flags) {
                    for (const QModelIndex& start :
                         {model.index(0, 0), model.index(random.bounded(model.rowCount()), 0),
                          model.index(0, 0, model.index(0, 0))}) {
                        const auto found = model.match(start, Qt::DisplayRole, text(name), hits, flag);
                        const auto expected =
                            model.QAbstractItemModel::match(start, Qt::DisplayRole, text(name), hits, flag);
                        QCOMPARE(found, expected);
                    }
                }
            }
        }
    }

    void asksForARefreshWhenBackendsChange()
    {
        AttributeTreeViewModel model;
        QSignalSpy asked(&model, &AttributeTreeViewModel::refreshAttributeTree);
        QVERIFY(mount(text("m")));
        QVERIFY(mount(text("n.o")));
        QTRY_COMPARE(asked.count(), 1);
        create(text("m.a"), 1);
        model.resetModel({});
        QVERIFY(mount(text("p.q")));
        QTRY_COMPARE(asked.count(), 2);
        QVERIFY(model.indexFromPath(text("p.q")).isValid()); // although it holds no attribute
    }

    void asksForNoRefreshWhileThePersonIsBusy_data()
    {
        const auto row = TestSupport::columns<QString>("with");
        for (const char* with : {"popup", "dialog", "editor"})
            row(with, with);
    }

    void asksForNoRefreshWhileThePersonIsBusy()
    {
        QFETCH(QString, with);
        create(text("a"), 1);
        AttributeTreeViewModel model;
        model.resetModel(text("a"));
        QTreeView view;
        view.setModel(&model);
        view.show();
        QMenu menu(&view);
        menu.addAction(text("Copy"));
        QDialog dialog(&view);
        dialog.setModal(true);
        const QModelIndex cell = model.index(0, 1);
        if (with == text("popup"))
            menu.popup({});
        else if (with == text("dialog"))
            dialog.show();
        else
            view.setIndexWidget(cell, new QLineEdit); // the view owns it

        QSignalSpy asked(&model, &AttributeTreeViewModel::refreshAttributeTree);
        QVERIFY(mount(text("m")));
        QVERIFY(!asked.wait(350));
        menu.close();
        dialog.close();
        view.setIndexWidget(cell, nullptr);
        QVERIFY(asked.wait());
        QVERIFY(!asked.wait(250));
    }
};

VANTRY_TEST_MAIN(QApplication, TreeModelTest)

#include "tree_model_test.moc"
