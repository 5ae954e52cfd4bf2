#include "cli/Edits.h"

#include "cli/Output.h"
#include "cli/StandardInput.h"
#include "cli/Texts.h"
#include "cli/TypedText.h"
#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"

#include <QRegularExpression>

namespace CommandLine {

bool Edits::readType(const Invocation& invocation, WantedType& type)
{
    if (invocation.has("--type"))
        type = TypedText::typeNamed(invocation.valueOf("--type"));
    return type || !invocation.has("--type");
}

ExitCode Edits::readText(const Invocation& invocation, QString& text)
{
    if (!invocation.has("--stdin")) {
        text = invocation.arguments.at(2);
        return ExitCode::Done;
    }
    if (StandardInput::isMeant(invocation.arguments.first()))
        return Session::fail(ExitCode::Usage,
                             Texts::tr("standard input cannot hold both the file and VALUE"));
    const StandardInput& input = StandardInput::read();
    const bool isText = FrameworkCore::Values::isUtf8(input.bytes);
    if (!input.error.isEmpty() || !isText)
        return Session::fail(ExitCode::BadFile,
                             QStringLiteral("%1: %2").arg(
                                 StandardInput::name(), isText ? input.error : Texts::tr("it is not UTF-8")));
    text = QString::fromStdString(input.bytes);
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return ExitCode::Done;
}

ExitCode Edits::create(const QString& path, const QString& text, WantedType type) const
{
    if (!Repository::isValidPath(path) && !Repository::isTooDeep(path)) // of which the repository tells
        return Session::fail(
            ExitCode::Usage,
            Texts::tr(
                "'%1' is not a path: names joined by \".\", none of them empty, and none with \"*\" in it")
                .arg(path));
    const QString fullPath = source.fullPath(path);
    QString reason;
    const auto value = type ? TypedText::read(text, *type, reason) : TypedText::readPlain(text);
    if (!value)
        return refuse(fullPath, reason);
    constexpr int createBefore = 4; // an element of an array
    constexpr int readWrite = 3;
    const auto outcome =
        session.getRepository().getWriterInterface()->create(fullPath, *value, createBefore, readWrite);
    session.tell(outcome);
    return outcome.ok() ? ExitCode::Done : ExitCode::Refused;
}

// What "get" prints can be set again.
ExitCode Edits::set(const QString& fullPath, const QString& text, WantedType wanted) const
{
    auto& repository = session.getRepository();
    QVariant present;
    repository.getReaderInterface()->readAttributeValue(fullPath, present, 0);
    const auto backend = repository.getBackendInterface()->getBackendInformation(source.root);
    const bool isGuessed = !wanted && !backend->namesType(fullPath);
    const bool staysNull = !wanted && !present.isValid() && TypedText::isNull(text);
    const bool isPlain = !staysNull && (isGuessed || (!wanted && !present.isValid()));
    const auto type = wanted ? *wanted : FrameworkCore::Values::toValue(present).type;
    QString reason;
    const auto value = isPlain ? TypedText::readPlain(text) : TypedText::read(text, type, reason);
    if (!value)
        return refuse(fullPath, reason);
    const ExitCode code = wanted || isGuessed
                              ? session.finish(repository.getWriterInterface()->retype(fullPath, *value))
                              : write(fullPath, *value);
    if (code == ExitCode::Done && !wanted && !isPlain)
        tellLostDigits(fullPath, text, *value);
    return code;
}

// As of a version, 3.10, where the file has a number.
void Edits::tellLostDigits(const QString& fullPath, const QString& text, const QVariant& value) const
{
    static const QRegularExpression zeroAtEnd(QStringLiteral("\\.\\d*0$"));
    const bool isNumber = value.userType() == QMetaType::Double;
    if (!isNumber || !text.contains(zeroAtEnd) || TypedText::readPlain(text).userType() != QMetaType::QString)
        return;
    const std::string number = FrameworkCore::Values::toText(FrameworkCore::Values::toValue(value));
    Output::message(
        Texts::tr("%1: '%2': '%3' was written as the number %4; with --type text, it stays as it is")
            .arg(source.given, source.relativePath(fullPath), text, QString::fromStdString(number)));
}

ExitCode Edits::write(const QString& fullPath, const QVariant& value) const
{
    constexpr int allPoints = 15;
    return session.finish(session.getRepository().getWriterInterface()->write(fullPath, value, allPoints));
}

std::optional<QVariant> Edits::read(const QString& fullPath) const
{
    QVariant value;
    const int status = session.getRepository().getReaderInterface()->readAttributeValue(fullPath, value, 0);
    if (status != Session::StatusCode::NotReadable)
        return value;
    refuse(fullPath, Texts::tr("it is write-only"));
    return {};
}

ExitCode Edits::saveAll(int count, const QString& pattern, const QString& whatWasDone) const
{
    if (count == 0)
        return Session::fail(ExitCode::Negative,
                             Texts::tr("%1: nothing there matches '%2'").arg(source.given, pattern));
    const ExitCode code = session.save(source);
    if (code == ExitCode::Done)
        Output::message(count == 1
                            ? Texts::tr("%1: 1 match of '%2' %3").arg(source.given, pattern, whatWasDone)
                            : Texts::tr("%1: %2 matches of '%3' %4")
                                  .arg(source.given, QString::number(count), pattern, whatWasDone));
    return code;
}

ExitCode Edits::refuse(const QString& fullPath, const QString& reason) const
{
    return Session::fail(ExitCode::Refused,
                         Texts::tr("%1: '%2': %3").arg(source.given, source.relativePath(fullPath), reason));
}

} // namespace CommandLine
