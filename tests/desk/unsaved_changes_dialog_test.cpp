#include "desk/files/UnsavedChangesDialog.h"
#include "tests/support/NoThreads.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>

#include <new>

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::Interfaces::ChangesInterface;
using FrameworkCore::AppConfig::Interfaces::ConflictSide;
using FrameworkCore::AppConfig::Interfaces::UnsavedChange;
using Vantry::UnsavedChangesDialog;

namespace {

// The differences of "large" take more memory than there is.
class Changes : public ChangesInterface
{
public:
    QStringList getEditedBackends() const override { return {}; }
    QVector<UnsavedChange> getUnsavedChanges(const QString&) const override { return {}; }
    Outcome getUnsavedDiff(const QString& backend, QString& diff) const override
    {
        if (backend == QLatin1String("large"))
            throw std::bad_alloc();
        diff = QStringLiteral("--- %1\n").arg(backend);
        return {};
    }
    Outcome revert(const QString&) override { return {}; }
    Outcome resolveConflicts(const QString&, ConflictSide) override { return {}; }
};

} // namespace

class UnsavedChangesDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void saysWhichDifferencesItCannotShow()
    {
        const std::unique_ptr<UnsavedChangesDialog> dialog = dialogFor({"a", "large", "b"});
        const auto* const view = dialog->findChild<QPlainTextEdit*>();
        QTRY_VERIFY(view->toPlainText().contains(QLatin1String("--- b")));
        const QString text = view->toPlainText();
        QVERIFY(text.contains(QLatin1String("--- a")));
        QVERIFY2(text.contains(QLatin1String("large.ini\n")) &&
                     text.contains(QLatin1String("not enough memory")),
                 qPrintable(text));
        asks(*dialog);
    }

    void asksWithoutAThread()
    {
        const TestSupport::NoThreads none;
        const std::unique_ptr<UnsavedChangesDialog> dialog = dialogFor({"a"});
        const QString text = dialog->findChild<QPlainTextEdit*>()->toPlainText();
        QVERIFY2(text.contains(QLatin1String("thread")), qPrintable(text));
        asks(*dialog);
    }

private:
    static std::unique_ptr<UnsavedChangesDialog> dialogFor(const std::vector<const char*>& backends)
    {
        std::vector<UnsavedChangesDialog::Edited> edited;
        for (const char* const backend : backends)
            edited.push_back({QLatin1String(backend), QLatin1String(backend) + QStringLiteral(".ini")});
        return std::make_unique<UnsavedChangesDialog>(QStringLiteral("Save?"), edited,
                                                      std::make_shared<Changes>(), nullptr);
    }

    static void asks(UnsavedChangesDialog& dialog)
    {
        QTimer::singleShot(0, &dialog, [&dialog] { QTest::keyClick(&dialog, Qt::Key_Return); });
        QCOMPARE(int(dialog.ask()), int(UnsavedChangesDialog::Answer::Save));
    }
};

VANTRY_TEST_MAIN(QApplication, UnsavedChangesDialogTest)

#include "unsaved_changes_dialog_test.moc"
