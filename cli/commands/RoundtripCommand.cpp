#include "cli/DocumentFile.h"
#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/Texts.h"
#include "cli/commands/Commands.h"
#include "cli/language/Language.h"
#include "files/FileSaver.h"
#include "repository/common/MemoryGuard.h"

#include <QTemporaryDir>

#include <algorithm>
#include <optional>

namespace CommandLine::Commands {

namespace {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using Repository::Documents::Document;
using Repository::Documents::Entry;

// Another value of the same type, so that the entry is spelled anew; nothing for types that are rare in
// files.
std::optional<Value> otherValue(Value value)
{
    switch (value.type) {
    case Type::Bool:
        value.data = !std::get<bool>(value.data);
        return value;
    case Type::Integer:
        value.data = std::get<std::int64_t>(value.data) ^ 1;
        return value;
    case Type::String:
        value.data = std::get<std::string>(value.data) + "x";
        return value;
    default:
        return {};
    }
}

// Edits the first, the middle and the last value, and takes the edits back. What is inherited becomes an
// entry more by that.
void editAndUndo(Document& document)
{
    std::vector<Entry> entries;
    document.visit([&](const Entry& entry) {
        if (otherValue(entry.value) && document.originOf(entry.path) != Document::Origin::Copy)
            entries.push_back(entry);
    });
    if (entries.empty())
        return;
    for (const std::size_t at : {std::size_t(0), entries.size() / 2, entries.size() - 1}) {
        const Entry& entry = entries[at];
        const auto spelling = document.spell(entry.path);
        if (spelling && document.set(entry.path, *otherValue(entry.value)).ok())
            document.respell(entry.path, *spelling);
    }
}

class Roundtrip
{
public:
    explicit Roundtrip(QString wantedFormat) : format(std::move(wantedFormat)) {}

    // What comes back from the disk; nothing, and a message, when the disk fails.
    std::optional<std::string> throughScratch(const std::string& bytes)
    {
        const std::string path = folder.filePath(QStringLiteral("copy%1").arg(++count)).toStdString();
        const Files::FileSaver saver;
        const auto saved = saver.save(path, bytes, {});
        auto read = saver.read(path);
        QFile::remove(QString::fromStdString(path));
        if (saved.ok() && read.ok())
            return std::move(read.bytes);
        Output::message(Texts::tr("the scratch copy failed: %1")
                            .arg(QString::fromStdString(saved.ok() ? read.error : saved.error)));
        return {};
    }

    ExitCode check(const QString& given)
    {
        const DocumentFile file = DocumentFile::read(given, format);
        if (!file.document)
            return refuse(file.name, file.error);
        editAndUndo(*file.document);
        const auto copy = throughScratch(file.document->getBytes());
        if (!copy)
            return ExitCode::BadFile;
        const std::string& original = file.bytes;
        if (*copy == original) {
            Output::line(file.name + QStringLiteral(": same"));
            return ExitCode::Done;
        }
        const auto difference =
            std::mismatch(original.begin(), original.end(), copy->begin(), copy->end()).first;
        const auto position =
            Repository::Documents::outcomeAt(original, std::size_t(difference - original.begin()));
        Output::line(
            QStringLiteral("%1: differs at %2:%3").arg(file.name).arg(position.line).arg(position.column));
        return ExitCode::Negative;
    }

    static ExitCode refuse(const QString& given, const QString& reason)
    {
        Output::line(QStringLiteral("%1: refused: %2").arg(given, reason));
        return ExitCode::BadFile;
    }

private:
    const QString format; // empty: each file's own
    QTemporaryDir folder;
    int count = 0;
};

ExitCode run(Session&, const Invocation& invocation)
{
    Language::showEnglish(); // all that it prints is for programs, too
    Roundtrip roundtrip(invocation.valueOf("--format"));
    bool differs = false;
    bool isRefused = false;
    for (const QString& file : invocation.arguments) {
        const ExitCode outcome =
            Repository::guardMemory([&] { return roundtrip.check(file); },
                                    [&](const QString& reason) { return Roundtrip::refuse(file, reason); });
        differs = differs || outcome == ExitCode::Negative;
        isRefused = isRefused || outcome == ExitCode::BadFile;
    }
    if (differs)
        return ExitCode::Negative;
    return isRefused ? ExitCode::BadFile : ExitCode::Done;
}

} // namespace

Command roundtrip()
{
    return {
        "roundtrip",
        QT_TRANSLATE_NOOP("CommandLine", "test that files survive loading and saving byte for byte"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "Loads each file, edits some of its values and takes that back, saves a scratch copy and "
            "compares the bytes. Prints a line a file: \"FILE: same\", \"FILE: differs at LINE:COLUMN\" or "
            "\"FILE: refused: REASON\", where the reason begins with LINE:COLUMN when it has a place in the "
            "file. The files themselves are only read. The exit code is 1 when one differs, otherwise 4 when "
            "one is refused."),
        {{{"FILE", Word::File, Argument::Count::OneOrMore}}},
        {},
        {"vantry roundtrip /etc/*.conf"},
        run};
}

} // namespace CommandLine::Commands
