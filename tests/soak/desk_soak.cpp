// The desk as it is used for long: many files, somebody who works at random, and other programs that change
// the files. A line a minute tells what the process takes; at the end it says whether that has levelled off.
#include "host/Shared/Logging/LogRecord.h"
#include "tests/desk/RunningDesk.h"
#include "tests/soak/OutsideWriter.h"
#include "tests/soak/ProcessUse.h"
#include "tests/soak/RandomPerson.h"
#include "tests/soak/SoakFiles.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

#include <cstdio>
#include <numeric>
#include <vector>

using Soak::ProcessUse;
using TestSupport::RunningDesk;

namespace {

struct Settings
{
    double minutes = 60;
    int files = 100;
    double actionsPerSecond = 20;
    double writesPerSecond = 5;
    unsigned seed = 1;

    static Settings ask()
    {
        Settings settings;
        QCommandLineParser parser;
        const auto number = [&](const char* name, const char* text, double usual) {
            return QCommandLineOption(QLatin1String(name), QLatin1String(text), QStringLiteral("number"),
                                      QString::number(usual));
        };
        const auto minutes = number("minutes", "How long.", settings.minutes);
        const auto files = number("files", "How many files are open.", settings.files);
        const auto actions =
            number("actions", "What the person does in a second; 0: nobody.", settings.actionsPerSecond);
        const auto writes =
            number("writes", "What other programs write in a second; 0: none.", settings.writesPerSecond);
        const auto seed = number("seed", "Of all that is random.", settings.seed);
        parser.addHelpOption();
        parser.addOptions({minutes, files, actions, writes, seed});
        parser.process(*QCoreApplication::instance());
        settings.minutes = parser.value(minutes).toDouble();
        settings.files = parser.value(files).toInt();
        settings.actionsPerSecond = parser.value(actions).toDouble();
        settings.writesPerSecond = parser.value(writes).toDouble();
        settings.seed = parser.value(seed).toUInt();
        return settings;
    }
};

class DeskSoak : public QObject
{
public:
    explicit DeskSoak(const Settings& chosen)
        : settings(chosen), files(work.path(), settings.files), desk(memory, files.getNames())
    {
        QDir::setCurrent(work.path());
        QApplication::setQuitOnLastWindowClosed(false); // the person may quit, and begins anew
        // What the load test counts stays watched for as long as the process runs.
        desk.navigationButton("btnTests")->setEnabled(false);
        desk.window->resize(1200, 900);
    }

    int run()
    {
        fillLog();
        TestSupport::showActive(*desk.window);
        if (settings.actionsPerSecond > 0)
            person =
                std::make_unique<Soak::RandomPerson>(*desk.window, settings.actionsPerSecond, settings.seed);
        if (settings.writesPerSecond > 0)
            writer = std::make_unique<Soak::OutsideWriter>(files.getNames(), settings.writesPerSecond,
                                                           settings.seed + 1);
        std::puts("minute  actions  writes  resident  heap-used  heap-held  handles  watches  threads  "
                  "attributes  rows  widgets  menus");
        QTimer minute;
        connect(&minute, &QTimer::timeout, this, [this] {
            tidy();
            report();
            if (double(uses.size()) >= settings.minutes)
                QCoreApplication::quit();
        });
        minute.start(60'000);
        QApplication::exec();
        person.reset();
        writer.reset();
        return hasLevelledOff() ? 0 : 1;
    }

private:
    // The log is bounded, so that its filling is not growth.
    static void fillLog()
    {
        using Shared::Logging::LogRecord;
        for (int line = 0; line < LogRecord::capacity; ++line)
            LogRecord::instance().append(
                {0, QDateTime::currentDateTimeUtc(), Shared::Logging::LogMessageType::Information,
                 QStringLiteral("Soak"), QStringLiteral("Soak"), QString(120, QLatin1Char('x'))},
                false);
    }

    // What a person would do before the window shows more than anybody can use, so that the lines compare.
    void tidy()
    {
        const auto changes = desk.repository->getChangesInterface();
        for (const QString& backend : changes->getEditedBackends())
            changes->revert(backend);
        const auto backends = desk.repository->getBackendInterface();
        QStringList missing = files.getNames();
        QStringList kept{QStringLiteral("internal"), QStringLiteral("desk")};
        for (const QString& backend : backends->getBackendNames()) {
            const auto information = backends->getBackendInformation(backend);
            if (information && missing.removeOne(information->getBackendLocation()))
                kept.append(backend);
            else
                backends->closeBackend(backend, true);
        }
        for (const QString& name : desk.repository->getTreeInterface()->getChildNames({})) {
            if (!kept.contains(name))
                desk.repository->getTreeInterface()->removeTree(name);
        }
        desk.window->openFiles(missing);
        QAbstractItemModel& rows = *desk.part<QTableView>("appConfigDataAccessWidget")->model();
        constexpr int mostRows = 100;
        if (rows.rowCount() > mostRows)
            rows.removeRows(mostRows, rows.rowCount() - mostRows);
        releaseMenus();
    }

    // The monitor keeps each menu that it has shown, which is meant. They are counted instead, so that
    // nothing else that grows can hide behind them.
    void releaseMenus()
    {
        if (QApplication::activeModalWidget() || QApplication::activePopupWidget())
            return; // one of them may have led there
        const auto menus = desk.part<QTableView>("appConfigDataAccessWidget")
                               ->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
        qDeleteAll(menus);
        menusShown += menus.size();
    }

    void report()
    {
        const ProcessUse use = ProcessUse::now();
        uses.push_back(use);
        FrameworkCore::AppConfig::Interfaces::PathSearch all;
        all.pattern = QStringLiteral("*");
        std::printf("%6zu %8d %7d %9.1f %10.1f %10.1f %8d %8d %8d %11d %5d %8d %6d\n", uses.size(),
                    person ? person->getActions() : 0, writer ? writer->getWrites() : 0, use.resident,
                    use.heapInUse, use.heapHeld, use.handles, use.watches, use.threads,
                    desk.repository->getTreeInterface()->findPaths(all).size(),
                    desk.part<QTableView>("appConfigDataAccessWidget")->model()->rowCount(),
                    QApplication::allWidgets().size(), menusShown);
        std::fflush(stdout);
    }

    // The third quarter of the time against the last one; the first half fills what is bounded. The heap in
    // use differs by an eighth from minute to minute.
    bool hasLevelledOff() const
    {
        struct Measure
        {
            const char* name;
            double allowed; // as a share
            double (*of)(const ProcessUse&);
        };
        const Measure measures[] = {
            {"resident", 0.05, [](const ProcessUse& use) { return use.resident; }},
            {"heap used", 0.1, [](const ProcessUse& use) { return use.heapInUse; }},
            {"handles", 0.05, [](const ProcessUse& use) { return double(use.handles); }},
            {"watches", 0.02, [](const ProcessUse& use) { return double(use.watches); }},
            {"threads", 0.2, [](const ProcessUse& use) { return double(use.threads); }},
        };
        const std::size_t quarter = uses.size() / 4;
        if (quarter == 0)
            return true;
        bool isLevel = true;
        for (const Measure& measure : measures) {
            const auto mean = [&](std::size_t end) {
                double sum = 0;
                for (std::size_t i = end - quarter; i < end; ++i)
                    sum += measure.of(uses[i]);
                return sum / double(quarter);
            };
            const double before = mean(uses.size() - quarter);
            const double last = mean(uses.size());
            const bool isFine = last <= before * (1 + measure.allowed);
            isLevel = isLevel && isFine;
            std::printf("%s: %.1f in the third quarter, %.1f in the last: %s\n", measure.name, before, last,
                        isFine ? "level" : "GROWING");
        }
        return isLevel;
    }

    const Settings settings;
    const QTemporaryDir work;
    const Soak::SoakFiles files;
    const RunningDesk::Folder memory;
    RunningDesk desk;
    std::unique_ptr<Soak::RandomPerson> person;
    std::unique_ptr<Soak::OutsideWriter> writer;
    std::vector<ProcessUse> uses; // one a minute
    int menusShown = 0;
};

} // namespace

int main(int argc, char** argv)
{
    TestSupport::isolate();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    return DeskSoak(Settings::ask()).run();
}
