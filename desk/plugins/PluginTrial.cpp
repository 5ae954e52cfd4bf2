#include "desk/plugins/PluginTrial.h"

#include "desk/plugins/PluginMemory.h"
#include "desk/plugins/PluginRehearsal.h"
#include "desk/plugins/PluginTexts.h"
#include "host/Utilities/LocalizationAccess.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace Vantry {

namespace {

// A child that ends with its parent, however that ends, and leaves no core dump.
class Child : public QProcess
{
protected:
    void setupChildProcess() override
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) // it has ended already
            _exit(1);
        const rlimit none = {0, 0};
        setrlimit(RLIMIT_CORE, &none);
    }

private:
    const pid_t parent = getpid();
};

// The child has the windows that this process has.
QProcessEnvironment childEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!QGuiApplication::platformName().isEmpty())
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QGuiApplication::platformName());
    return environment;
}

// What the child's lines say: what it last began to do with which plug-in, and how it went.
struct Account
{
    explicit Account(const QString& lines)
    {
        for (const QString& line : lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            hasPassed = line == PluginRehearsal::passed;
            if (line.startsWith(PluginRehearsal::refused))
                refusal = line.mid(PluginRehearsal::refused.size());
            if (line.startsWith(PluginRehearsal::doing)) {
                const QString what = line.mid(PluginRehearsal::doing.size());
                number = what.section(QLatin1Char(' '), 0, 0).toInt();
                step = PluginTexts::tr(qUtf8Printable(what.section(QLatin1Char(' '), 1)));
            }
        }
    }

    int number = 0;
    QString step = PluginTexts::tr("loading");
    QString refusal;
    bool hasPassed = false;
};

} // namespace

PluginTrial::PluginTrial(QString childProgram, int mostMilliseconds)
    : program(std::move(childProgram)), timeLimit(mostMilliseconds)
{
}

QString PluginTrial::run(const QString& file) const
{
    using Verdict = PluginMemory::Verdict;
    constexpr qint64 largest = 1 << 28; // a person would wait long for it to be read, at every start
    if (QFileInfo(file).size() > largest)
        return PluginTexts::tr("its file is larger than %1 MiB").arg(largest >> 20);
    if (!QFile(file).open(QIODevice::ReadOnly))
        return PluginTexts::tr("the file cannot be read");
    switch (PluginMemory::getVerdict(file)) {
    case Verdict::Passed:
        return {};
    case Verdict::Endless:
        return PluginTexts::tr(
            "it did not finish at an earlier start; it is tried again when the file changes");
    case Verdict::LeftOut:
        return PluginTexts::tr("left out: an earlier start of Vantry ended in it");
    case Verdict::None:
        break;
    }
    const Outcome outcome = runChild(QStringLiteral("--try-plugin"), {file});
    if (outcome.isEndless)
        PluginMemory::setVerdict(file, Verdict::Endless);
    else if (outcome.culprit.reason.isEmpty())
        PluginMemory::setVerdict(file, Verdict::Passed);
    return outcome.culprit.reason;
}

PluginTrial::Culprit PluginTrial::rehearse(const QStringList& files) const
{
    return runChild(QStringLiteral("--rehearse-plugin"), files).culprit;
}

PluginTrial::Outcome PluginTrial::runChild(const QString& option, const QStringList& files) const
{
    const QString shown = Utilities::GetLocalizationInterface()->getLocale().name();
    QStringList arguments{QStringLiteral("--language"), shown.section(QLatin1Char('_'), 0, 0)};
    for (const QString& file : files)
        arguments += {option, file};
    Child child;
    child.setProcessEnvironment(childEnvironment());
    child.setStandardErrorFile(QProcess::nullDevice());
    child.start(program, arguments, QIODevice::ReadOnly);
    if (!child.waitForStarted())
        return {{-1, PluginTexts::tr("it could not be tried: %1").arg(child.errorString())}, false};
    const bool isOver = child.waitForFinished(timeLimit);
    if (!isOver) {
        child.kill();
        child.waitForFinished();
    }
    // An exit code alone proves nothing: the plug-in may have ended the child.
    const Account account(QString::fromUtf8(child.readAllStandardOutput()));
    if (!isOver)
        return {
            {account.number,
             PluginTexts::tr("%1 it did not finish within %2 s").arg(account.step).arg(timeLimit / 1000.0)},
            true};
    if (child.exitStatus() == QProcess::CrashExit)
        return {{account.number, PluginTexts::tr("it is damaged: %1 it ends the program (signal %2)")
                                     .arg(account.step)
                                     .arg(child.exitCode())},
                false};
    if (!account.refusal.isEmpty())
        return {{account.number, account.refusal}, false};
    if (!account.hasPassed)
        return {{account.number, PluginTexts::tr("it is damaged: %1 it ends the program with code %2")
                                     .arg(account.step)
                                     .arg(child.exitCode())},
                false};
    return {};
}

} // namespace Vantry
