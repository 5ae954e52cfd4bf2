#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/store/NodePages.h"
#include "repository/store/NodeValue.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDateTime>
#include <QStringList>

#include <limits>
#include <memory>

using FrameworkCore::Values::isSameValue;
using Repository::NodePages;
using Repository::NodeValue;

class NodeValueTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsEveryValue_data()
    {
        const auto row = TestSupport::columns<QVariant>("value");
        constexpr qlonglong bound = qlonglong(1) << 60; // of what one word holds
        constexpr qulonglong naturalBound = qulonglong(1) << 61;
        using Limits = std::numeric_limits<qlonglong>;
        row("null", QVariant());
        row("yes", QVariant(true));
        row("no", QVariant(false));
        row("zero", QVariant(0LL));
        row("below zero", QVariant(-1LL));
        row("last short number", QVariant(bound - 1));
        row("first long number", QVariant(bound));
        row("last short number below zero", QVariant(-bound));
        row("first long number below zero", QVariant(-bound - 1));
        row("largest", QVariant(Limits::max()));
        row("smallest", QVariant(Limits::min()));
        row("natural zero", QVariant(0ULL));
        row("last short natural", QVariant(naturalBound - 1));
        row("first long natural", QVariant(naturalBound));
        row("largest natural", QVariant(std::numeric_limits<qulonglong>::max()));
        row("half", QVariant(0.5));
        row("no round number", QVariant(0.1));
        row("zero from below", QVariant(-0.0));
        row("no number", QVariant(std::numeric_limits<double>::quiet_NaN()));
        row("without end", QVariant(-std::numeric_limits<double>::infinity()));
        row("empty text", QVariant(QStringLiteral("")));
        row("text without any", QVariant(QString()));
        row("last text in the word", QVariant(QStringLiteral("1234567")));
        row("first text behind it", QVariant(QStringLiteral("12345678")));
        row("Latin letters", QVariant(QStringLiteral("na\u00EFve \u00FF")));
        row("few Latin letters", QVariant(QStringLiteral("\u00FF")));
        row("zeros within", QVariant(QString(5, QChar(0))));
        row("Greek letter", QVariant(QStringLiteral("\u03B1")));
        row("last narrow text", QVariant(QString(255, QLatin1Char('x'))));
        row("first wide text", QVariant(QString(256, QLatin1Char('x'))));
        row("list", QVariant(QStringList{QStringLiteral("a"), QString()}));
        row("bytes", QVariant(QByteArray("\0\xFF", 2)));
        row("date", QVariant(QDate(2026, 2, 28)));
        row("moment", QVariant(QDateTime(QDate(2026, 2, 28), QTime(1, 2, 3, 4), Qt::UTC)));
    }

    void keepsEveryValue()
    {
        QFETCH(QVariant, value);
        NodeValue kept(value);
        QCOMPARE(kept.isNull(), !value.isValid());
        QCOMPARE(kept.getType(), value.userType());
        QVERIFY(isSameValue(kept.toVariant(), value));
        QCOMPARE(kept.toVariant().isNull(), value.isNull());
        QVERIFY(kept.isSame(value));
        if (value.isValid()) {
            const auto written = FrameworkCore::Values::toValue(value);
            auto pages = std::make_unique<NodePages>();
            const NodeValue read(written);
            const NodeValue paged(written, pages.get());
            pages.reset(); // which the value outlives
            for (const NodeValue* const same : {&read, &paged})
                QVERIFY(isSameValue(same->toVariant(), value) && same->isSame(value));
        }
        NodeValue moved;
        moved = std::move(kept);
        QVERIFY(isSameValue(moved.toVariant(), value));
        QString& text = moved.ensureText();
        QCOMPARE(text, value.userType() == QMetaType::QString ? value.toString() : QString());
        text += QLatin1Char('!');
        QCOMPARE(moved.toVariant().toString(), text);
    }

    // None of them is taken for another, not even where both lie in the same bits.
    void tellsValuesApart()
    {
        const QVector<QVariant> values{{},
                                       true,
                                       false,
                                       0LL,
                                       1LL,
                                       0ULL,
                                       1ULL,
                                       0.0,
                                       -0.0,
                                       1.0,
                                       QStringLiteral(""),
                                       QStringLiteral("1"),
                                       QString(2, QChar(0)),
                                       QString(3, QChar(0)),
                                       QStringLiteral("12345678"),
                                       QStringLiteral("12345679"),
                                       QStringLiteral("\u00E9"),
                                       QStringLiteral("\u03B1"),
                                       QStringList(QStringLiteral("1"))};
        for (int a = 0; a < values.size(); ++a) {
            for (int b = 0; b < values.size(); ++b)
                QCOMPARE(NodeValue(values[a]).isSame(values[b]), a == b);
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, NodeValueTest)

#include "node_value_test.moc"
