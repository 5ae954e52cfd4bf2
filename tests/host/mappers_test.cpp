#include "host/Utilities/AbstractButtonsToAttributeValueMapper.h"
#include "host/Utilities/ComboBoxToAttributeMapper.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>

#include <memory>

using FrameworkCore::AppConfig::AccessMode;
using TestSupport::FakeRepository;
using Utilities::AbstractButtonsToAttributeValueMapper;
using Utilities::ComboBoxToAttributeMapper;

namespace {

const QString modePath = QStringLiteral("instances.Test.state");
const QString backendsPath = QStringLiteral("lists");
const QString namesPath = QStringLiteral("lists.names");

QStringList itemsOf(const QComboBox& box)
{
    QStringList items;
    for (int i = 0; i < box.count(); ++i)
        items.append(box.itemText(i));
    return items;
}

} // namespace

Q_DECLARE_METATYPE(FrameworkCore::AppConfig::AccessMode)

class MappersTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<FakeRepository> repository;

private slots:
    void init() { repository = std::make_shared<FakeRepository>(); }

    void clicksWriteTheirValue()
    {
        QPushButton first;
        QPushButton second;
        auto dying = std::make_unique<QPushButton>();
        AbstractButtonsToAttributeValueMapper mapper(nullptr, repository, modePath);
        mapper.addButtonToValueMapping(&first, QStringLiteral("attributes"));
        mapper.addButtonToValueMapping(&second, QStringLiteral("tests"));
        mapper.addButtonToValueMapping(dying.get(), QStringLiteral("never"));
        mapper.addButtonToValueMapping(nullptr, QStringLiteral("never"));
        dying.reset();
        QVERIFY(!repository->contains(modePath));

        second.click();
        QCOMPARE(repository->getValue(modePath), QVariant(QStringLiteral("tests")));
        QCOMPARE(repository->getAttribute(modePath)->getAccessMode(), AccessMode::ReadWrite);
        first.click();
        QCOMPARE(repository->getValue(modePath), QVariant(QStringLiteral("attributes")));
        QCOMPARE(repository->getWrites().size(), 2);
    }

    void clicksKeepTypeAndAccess_data()
    {
        // expected: after "7" was written
        const auto row =
            TestSupport::columns<QVariant, AccessMode, QVariant>("present", "access", "expected");
        row("number", QVariant(5LL), AccessMode::ReadWrite, QVariant(7LL));
        row("write-only", QVariant(5LL), AccessMode::WriteOnly, QVariant(7LL));
        row("read-only", QVariant(5LL), AccessMode::ReadOnly, QVariant(5LL));
    }

    void clicksKeepTypeAndAccess()
    {
        QFETCH(QVariant, present);
        QFETCH(AccessMode, access);
        QFETCH(QVariant, expected);
        repository->set(modePath, present, access);
        QPushButton button;
        AbstractButtonsToAttributeValueMapper mapper(nullptr, repository, modePath);
        mapper.addButtonToValueMapping(&button, QStringLiteral("7"));
        button.click();
        QCOMPARE(repository->getValue(modePath), expected);
        QCOMPARE(repository->getAttribute(modePath)->getAccessMode(), access);
    }

    void withoutRepositoryMappersDoNothing()
    {
        QPushButton button;
        AbstractButtonsToAttributeValueMapper mapper(nullptr, {}, QString());
        mapper.addButtonToValueMapping(&button, 1);
        button.click();

        QComboBox box;
        box.addItem(QStringLiteral("own"));
        QComboBox* pointer = &box;
        const ComboBoxToAttributeMapper boxMapper(nullptr, {}, pointer, QString(), QStringLiteral("names"));
        QCOMPARE(itemsOf(box), QStringList{QStringLiteral("own")});
    }

    void boxFollows_data()
    {
        // current: "b" before
        // items: joined by "|"
        const auto row = TestSupport::columns<QString, QString, QString>("text", "items", "current");
        row("one more", "a;b;c", "a|b|c", "b");
        row("another order", "b;a", "b|a", "b");
        row("current gone", "a;B", "a|B", "a");
        row("one", "x y", "x y", "x y");
        row("none", "", "", "");
    }

    void boxFollows()
    {
        QFETCH(QString, text);
        QFETCH(QString, items);
        QFETCH(QString, current);
        repository->set(namesPath, QStringLiteral("a;b"));
        QComboBox box;
        QComboBox* pointer = &box;
        const ComboBoxToAttributeMapper mapper(nullptr, repository, pointer, backendsPath,
                                               QStringLiteral("names"));
        QCOMPARE(itemsOf(box), TestSupport::words("a b"));
        box.setCurrentIndex(1);
        const QSignalSpy changes(&box, QOverload<int>::of(&QComboBox::currentIndexChanged));

        repository->set(namesPath, text);
        QTRY_COMPARE(itemsOf(box).join(QLatin1Char('|')), items);
        QCOMPARE(box.currentText(), current);
        QVERIFY(changes.isEmpty());
        QVERIFY(!box.signalsBlocked());
    }

    void missingAttributeIsCreatedEmpty()
    {
        QComboBox box;
        box.addItem(QStringLiteral("old"));
        QComboBox* pointer = &box;
        const ComboBoxToAttributeMapper mapper(nullptr, repository, pointer, backendsPath,
                                               QStringLiteral("names"));
        QCOMPARE(box.count(), 0);
        QCOMPARE(repository->getValue(namesPath), QVariant(QString()));
        QVERIFY(isWritable(repository->getAttribute(namesPath)->getAccessMode()));
        repository->remove(namesPath);
        repository->set(namesPath, QStringLiteral("back"));
        QTRY_COMPARE(itemsOf(box), QStringList{QStringLiteral("back")});
    }

    void boxMayDieFirst()
    {
        auto box = std::make_unique<QComboBox>();
        QComboBox* pointer = box.get();
        auto mapper = std::make_unique<ComboBoxToAttributeMapper>(nullptr, repository, pointer, backendsPath,
                                                                  QStringLiteral("names"));
        box.reset();
        QComboBox second;
        pointer = &second;
        const ComboBoxToAttributeMapper other(nullptr, repository, pointer, backendsPath,
                                              QStringLiteral("names"));
        repository->set(namesPath, QStringLiteral("a"));
        QTRY_COMPARE(second.count(), 1); // the first mapper has heard of it too
        mapper.reset();
        QCOMPARE(repository->getRegistrationCount(), 1);
    }
};

VANTRY_TEST_MAIN(QApplication, MappersTest)

#include "mappers_test.moc"
