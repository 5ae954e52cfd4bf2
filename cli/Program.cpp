#include "cli/Program.h"

#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/Texts.h"
#include "cli/Usage.h"
#include "cli/language/Language.h"
#include "files/SizeLimit.h"
#include "host/FrameworkCore/Core/SpokenLanguage.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Shared/Logging/LogRecord.h"

#include <QTextCodec>

#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>

// Resources of a static library are registered on request; Q_INIT_RESOURCE works outside namespaces only.
static void initialiseResources()
{
    Q_INIT_RESOURCE(completion);
}

namespace CommandLine {

using FrameworkCore::Core::SpokenLanguage;

namespace {

// Empty, with a message on stderr, when an argument is not valid text.
std::optional<QStringList> wordsOf(int argc, char** argv)
{
    using namespace FrameworkCore::Values;
    QStringList words;
    for (int at = 1; at < argc; ++at) {
        const QVariant word = toVariant(Value{Type::String, std::string(argv[at])});
        if (word.userType() != QMetaType::QString) {
            Output::message(Texts::tr("argument %1 is not UTF-8").arg(at));
            return {};
        }
        words.append(word.toString());
    }
    return words;
}

// False, and a message, for an option that is not a size.
bool limitSizes(const Invocation& invocation)
{
    using Files::SizeLimit;
    if (!invocation.has("--max-size"))
        return true;
    const QString given = invocation.valueOf("--max-size");
    constexpr auto most = quint64(SizeLimit::most / SizeLimit::bytesInMiB);
    const quint64 size = given.toULongLong();
    if (size == 0 || size > most) {
        Output::message(
            Texts::tr("--max-size needs a number of MiB from 1 to %1, not '%2'").arg(most).arg(given));
        return false;
    }
    SizeLimit::set(size * SizeLimit::bytesInMiB);
    return true;
}

ExitCode runInvocation(const Invocation& invocation)
{
    if (!invocation.error.isEmpty())
        return Session::fail(ExitCode::Usage, invocation.error);
    if (invocation.has("--version")) {
        Output::line(QStringLiteral("vantry " VANTRY_VERSION));
        return ExitCode::Done;
    }
    if (invocation.has("--help")) {
        const QString help = invocation.command ? Usage::helpFor(*invocation.command) : Usage::overview();
        Output::bytes(help.toStdString());
        return ExitCode::Done;
    }
    if (!invocation.command)
        return Session::fail(ExitCode::Usage, Texts::tr("a command is missing; 'vantry help' lists them"));
    if (!limitSizes(invocation))
        return ExitCode::Usage;
    Shared::Logging::LogRecord::instance().setWritesToStandardError(
        false); // its form is not that of messages
    Session session(invocation);
    return session.getFailure() == ExitCode::Done ? invocation.command->run(session, invocation)
                                                  : session.getFailure();
}

// What the system refuses, memory above all, ends the command like a file that cannot be read; the file is as
// it was.
ExitCode runGuarded(const QStringList& words)
{
    try {
        const QString language = Invocation::parse(words).valueOf("--language");
        if (!Language::show(language))
            return Session::fail(ExitCode::Usage,
                                 Texts::tr("unknown language '%1'; valid languages: %2")
                                     .arg(language, SpokenLanguage::names().join(QStringLiteral(", "))));
        return runInvocation(Invocation::parse(words)); // again, for its own messages
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    } catch (const std::system_error& error) {
        return Session::fail(ExitCode::BadFile, QString::fromLocal8Bit(error.what()));
    }
    return Session::fail(ExitCode::BadFile, Texts::tr("there is not enough memory for this"));
}

} // namespace

ExitCode runProgram(int argc, char** argv)
{
    initialiseResources();
    // File names are UTF-8 whatever the locale, which is often missing where scripts run.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const auto words = wordsOf(argc, argv);
    const ExitCode code = words ? runGuarded(*words) : ExitCode::Usage;
    return Output::flush() || code != ExitCode::Done ? code : ExitCode::BadFile;
}

} // namespace CommandLine
