#include "cli/CommandTable.h"
#include "cli/Invocation.h"
#include "cli/Output.h"
#include "cli/Program.h"
#include "cli/TypedText.h"
#include "cli/Usage.h"
#include "fuzz/Exercises.h"
#include "fuzz/program/ScratchFolder.h"
#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/VariantText.h"
#include "repository/documents/Formats.h"

#include <QMap>
#include <QScopeGuard>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace Fuzz {

using CommandLine::ExitCode;
using CommandLine::Invocation;
using CommandLine::TypedText;
using FrameworkCore::Values::decodeUtf8;

namespace {

constexpr std::size_t mostWords = 12;

using Files = QMap<QString, QByteArray>;

const Files& presentFiles()
{
    static const Files files{{QStringLiteral("app.ini"),
                              "; kept\nk = text\n[server]\nport = 8080\n; type: date\nsince = 2024-02-29\n"},
                             {QStringLiteral("app.json"),
                              "{\n    \"k\": \"text\",\n    \"server\": {\"port\": 8080, \"up\": true}\n}\n"},
                             {QStringLiteral("app.xml"), "<r a='1'>\n  <k>text</k><k/>\n</r>\n"},
                             {QStringLiteral("app.txt"), "# kept\nk = text\nserver.port = 8080\n"}};
    return files;
}

// What the program writes to one of its streams, while this lives.
class Capture
{
public:
    explicit Capture(FILE*& captured) : stream(captured), original(captured)
    {
        stream = open_memstream(&bytes, &size);
    }
    ~Capture()
    {
        std::fclose(stream);
        std::free(bytes);
        stream = original;
    }
    Q_DISABLE_COPY(Capture)

    std::string content()
    {
        std::fflush(stream);
        return {bytes, size};
    }

private:
    FILE*& stream;
    FILE* const original;
    char* bytes = nullptr;
    std::size_t size = 0;
};

// What a terminal would obey, or show in another order than it is written.
bool steersTerminal(QChar character)
{
    const QChar::Category category = character.category();
    if (category == QChar::Other_Control || category == QChar::Separator_Line ||
        category == QChar::Separator_Paragraph)
        return true;
    const ushort code = character.unicode(); // of embeddings, overrides and isolates
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool hasSteeringLine(const std::string& text)
{
    const QString lines = decodeUtf8(text).remove(QLatin1Char('\n'));
    return std::any_of(lines.begin(), lines.end(), steersTerminal);
}

bool isSame(const Invocation& a, const Invocation& b)
{
    return a.command == b.command && a.arguments == b.arguments && a.error == b.error &&
           std::equal(a.options.begin(), a.options.end(), b.options.begin(), b.options.end(),
                      [](const auto& one, const auto& other) {
                          return one.name == other.name && one.value == other.value;
                      });
}

class ArgumentExercise
{
public:
    explicit ArgumentExercise(std::string_view input)
    {
        while (words.size() < mostWords && !input.empty()) {
            const std::size_t end = std::min(input.find('\n'), input.size());
            // An argument ends at its first NUL.
            words.emplace_back(std::string(input.substr(0, end)).c_str());
            input.remove_prefix(std::min(end + 1, input.size()));
        }
        for (const std::string& word : words)
            texts.append(decodeUtf8(word));
    }

    std::string run()
    {
        std::string broken = checkInvocation();
        if (broken.empty())
            broken = checkTypedTexts();
        return broken.empty() && staysInFolder() ? checkProgram() : broken;
    }

private:
    // Options first and with "=", then "--", then the command and its arguments, is the same invocation.
    std::string checkInvocation() const
    {
        const Invocation given = Invocation::parse(texts);
        if (!given.error.isEmpty() || !given.command)
            return {};
        QStringList canonical{CommandLine::toText(given.command->name)};
        for (const auto& option : given.options) {
            const QString name = CommandLine::toText(option.name);
            const auto* const known = CommandLine::CommandTable::findOption(given.command, option.name);
            canonical.append(known->argument.empty() ? name : name + QLatin1Char('=') + option.value);
        }
        canonical.append(QStringLiteral("--"));
        canonical += given.arguments;
        return isSame(Invocation::parse(canonical), given) ? std::string()
                                                           : "its canonical form is parsed otherwise";
    }

    std::string checkTypedTexts() const
    {
        for (const QString& text : texts) {
            TypedText::toJson(TypedText::readPlain(text));
            for (const QString& name : TypedText::typeNames()) {
                const auto type = FrameworkCore::Values::typeNamed(name.toStdString());
                QString reason;
                const auto value = TypedText::read(text, *type, reason);
                if (!value && reason.isEmpty())
                    return "'" + text.toStdString() + "' is refused without a reason";
                const std::string broken = value ? checkValue(*value, *type) : std::string();
                if (!broken.empty())
                    return "'" + text.toStdString() + "' as " + name.toStdString() + ": " + broken;
            }
        }
        return {};
    }

    static std::string checkValue(const QVariant& value, FrameworkCore::Values::Type type)
    {
        const std::string shown = CommandLine::Output::valueText(value);
        QString reason;
        const auto again = TypedText::read(decodeUtf8(shown), type, reason);
        if (!again || CommandLine::Output::valueText(*again) != shown)
            return "it is shown as '" + shown + "', which gives another value";
        const auto json = Repository::Documents::makeDocument("json");
        if (!json->parse("[" + TypedText::toJson(value).toStdString() + "]").ok())
            return "its json cannot be parsed: " + TypedText::toJson(value).toStdString();
        return {};
    }

    // A path could lead anywhere, "watch" waits for a signal, and standard input is that of the fuzzer.
    bool staysInFolder() const
    {
        return std::none_of(words.begin(), words.end(), [](const std::string& word) {
            return word.find('/') != std::string::npos || word == "watch" || word == "-" ||
                   word.find("=-") != std::string::npos;
        });
    }

    std::string checkProgram()
    {
        restoreFiles();
        std::vector<char*> arguments{const_cast<char*>("vantry")};
        for (std::string& word : words)
            arguments.push_back(word.data());
        const auto restore = qScopeGuard([before = QDir::currentPath()] { QDir::setCurrent(before); });
        QDir::setCurrent(ScratchFolder::instance().path());
        Capture output(stdout);
        Capture messages(stderr);
        const ExitCode code = CommandLine::runProgram(int(arguments.size()), arguments.data());
        const std::string broken = checkOutcome(code, messages.content(), output.content());
        return broken.empty() ? broken
                              : broken + "\nexit code " + std::to_string(int(code)) + "\n" +
                                    messages.content() + output.content();
    }

    // "roundtrip" reports what it refuses as its result.
    std::string checkOutcome(ExitCode code, const std::string& messages, const std::string& output) const
    {
        if (code < ExitCode::Done || code > ExitCode::BadFile)
            return "the exit code is not documented";
        if (code > ExitCode::Negative && messages.empty() && output.empty())
            return "a failure has no message";
        for (const QString& line : decodeUtf8(messages).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            if (!line.startsWith(QLatin1String("vantry: ")))
                return "a message has a second line: " + line.toStdString();
        }
        if (!FrameworkCore::Values::isUtf8(messages))
            return "a message is not UTF-8";
        if (hasSteeringLine(messages) || (isListing() && hasSteeringLine(output)))
            return "what is printed steers a terminal";
        return checkFiles(code);
    }

    // Their results are written for people.
    bool isListing() const
    {
        const Invocation invocation = Invocation::parse(texts);
        const auto* const command = invocation.command;
        return command && !invocation.has("--json") && !invocation.has("--null") &&
               (command->name == "ls" || command->name == "tree" || command->name == "list" ||
                command->name == "find");
    }

    std::string checkFiles(ExitCode code) const
    {
        const Invocation invocation = Invocation::parse(texts);
        const bool mayChange = code == ExitCode::Done && !invocation.has("--dry-run");
        for (const QString& name : ScratchFolder::instance().names()) {
            const QByteArray bytes = ScratchFolder::instance().read(name);
            const auto before = presentFiles().find(name);
            if (before != presentFiles().end() && *before == bytes)
                continue;
            if (!mayChange)
                return "a command that changes nothing has written '" + name.toStdString() + "'";
            if (name.startsWith(QLatin1String(".vantry-")))
                return "'" + name.toStdString() + "' is left behind";
            const auto format =
                Repository::Documents::makeDocument(name.section(QLatin1Char('.'), -1).toStdString());
            if (format && !texts.join(QLatin1Char(' ')).contains(QLatin1String("format")) &&
                !format->parse(bytes.toStdString()).ok())
                return "'" + name.toStdString() + "' cannot be read any more:\n" + bytes.toStdString();
        }
        return ScratchFolder::instance().names().size() < presentFiles().size() ? "a file is gone"
                                                                                : std::string();
    }

    static void restoreFiles()
    {
        for (const QString& name : ScratchFolder::instance().names()) {
            if (!presentFiles().contains(name))
                QFile::remove(ScratchFolder::instance().path(name));
        }
        for (auto file = presentFiles().begin(); file != presentFiles().end(); ++file) {
            if (ScratchFolder::instance().read(file.key()) != file.value())
                ScratchFolder::instance().write(file.key(), file.value());
        }
    }

    std::vector<std::string> words;
    QStringList texts;
};

} // namespace

std::string exerciseArguments(std::string_view input)
{
    return ArgumentExercise(input).run();
}

} // namespace Fuzz
