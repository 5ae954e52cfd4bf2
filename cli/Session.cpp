#include "cli/Session.h"

#include "cli/Output.h"
#include "cli/PathHint.h"
#include "cli/StandardInput.h"
#include "cli/Texts.h"
#include "cli/Usage.h"
#include "files/FileSaver.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "repository/AttributeRepository.h"
#include "repository/backends/FileFormat.h"
#include "repository/backends/FileKind.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"
#include "repository/fleet/EtcdLocation.h"
#include "repository/mounting/FolderLocation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <filesystem>

namespace CommandLine {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Interfaces::UnsavedChange;

namespace {

struct AccessSuffix
{
    const char* suffix;
    AccessMode access;
};

constexpr AccessSuffix accessSuffixes[] = {
    {":ro", AccessMode::ReadOnly}, {":wo", AccessMode::WriteOnly}, {":rw", AccessMode::ReadWrite}};

// A word after a last ":" that was to be one of these: the file of that very name is not there. Empty
// otherwise.
QString wrongAccessOf(const QString& file)
{
    static const QRegularExpression access(QStringLiteral(":([A-Za-z-]{1,12})$"));
    return QFileInfo::exists(file) ? QString() : access.match(file).captured(1);
}

ExitCode exitCodeOf(FrameworkCore::AppConfig::StatusCode status)
{
    switch (status) {
    case FrameworkCore::AppConfig::Success:
        return ExitCode::Done;
    case FrameworkCore::AppConfig::NotFound:
        return ExitCode::Negative;
    case FrameworkCore::AppConfig::InvalidPath:
    case FrameworkCore::AppConfig::InvalidPattern:
        return ExitCode::Usage;
    case FrameworkCore::AppConfig::NotEnoughMemory:
        return ExitCode::BadFile;
    default:
        return ExitCode::Refused;
    }
}

QStringList formatNames()
{
    QStringList names;
    for (const auto* types :
         {&Repository::Documents::getDocumentTypes(), &Repository::Documents::getDialectTypes()}) {
        for (const std::string& type : *types)
            names.append(QString::fromStdString(type));
    }
    return names;
}

// A diff has the names of files in the two lines at the head of each.
QString withNamesAsGiven(QString diff, const Source& source)
{
    const QRegularExpression head(
        QStringLiteral("^(---|\\+\\+\\+) %1(?=/|$)").arg(QRegularExpression::escape(source.absolutePath)),
        QRegularExpression::MultilineOption);
    return diff.replace(head, QStringLiteral("\\1 ") + source.given);
}

} // namespace

Session::Session(const Invocation& given)
    : invocation(given), dryRun(given.has("--dry-run")), repository(makeRepository())
{
    QString error = declareBackends();
    for (const std::string_view option : {"--format", "--to-format", "--from-format"}) {
        const QString format = invocation.valueOf(option);
        if (!format.isEmpty() && !Repository::Documents::findFormat(format.toStdString()))
            error = Texts::tr("unknown format '%1'; valid formats: %2")
                        .arg(format, formatNames().join(QStringLiteral(", ")));
    }
    if (!error.isEmpty())
        failure = fail(ExitCode::Usage, error);
}

// A short run has no use for the thread that watches files, nor for undo.
std::shared_ptr<Session::RepositoryInterface> Session::makeRepository()
{
    Repository::RepositoryOptions options;
    options.watchesFiles = invocation.command && invocation.command->watchesFiles;
    options.historyBound = 0;
    options.observer = [this](const Outcome& outcome) { tell(outcome); };
    return Repository::AttributeRepository::create(options);
}

// Empty when all is well.
QString Session::declareBackends()
{
    const QStringList declarations = invocation.valuesOf("--backend");
    for (const QString& declaration : declarations) {
        const int equals = declaration.indexOf(QLatin1Char('='));
        Declared backend{declaration.left(equals), declaration.mid(equals + 1), AccessMode::ReadWrite};
        bool hasAccess = false;
        for (const auto& [suffix, access] : accessSuffixes) {
            if (backend.file.endsWith(QLatin1String(suffix))) {
                backend.access = access;
                backend.file.chop(3);
                hasAccess = true;
                break;
            }
        }
        if (equals <= 0 || backend.file.isEmpty())
            return Texts::tr("--backend needs NAME=FILE, not '%1'").arg(declaration);
        const QString wrongAccess = hasAccess ? QString() : wrongAccessOf(backend.file);
        if (!wrongAccess.isEmpty())
            return Texts::tr("unknown access '%1' of the backend '%2'; valid are ro, wo and rw; after "
                             "the name of a file that ends so add :rw")
                .arg(wrongAccess, backend.name);
        if (!Repository::isValidPath(backend.name) || backend.name.contains(QLatin1Char(';')) ||
            Repository::isAtOrBelow(backend.name, Repository::ownRoot))
            return Texts::tr("a backend cannot have the name '%1'").arg(backend.name);
        if (declaredBackend(backend.name))
            return Texts::tr("the backend '%1' is declared twice").arg(backend.name);
        declared.append(backend);
    }
    return {};
}

ExitCode Session::fail(ExitCode code, const QString& message)
{
    Output::message(message);
    return code;
}

const Source* Session::refuse(ExitCode code, const QString& message)
{
    failure = fail(code, message);
    return nullptr;
}

const Session::Declared* Session::declaredBackend(const QString& name) const
{
    const auto found = std::find_if(declared.begin(), declared.end(),
                                    [&](const Declared& backend) { return backend.name == name; });
    return found == declared.end() ? nullptr : &*found;
}

QString Session::freeRoot() const
{
    QString root;
    for (std::size_t number = sources.size() + 1; root.isEmpty() || declaredBackend(root); ++number)
        root = QStringLiteral("file%1").arg(number);
    return root;
}

const Source* Session::open(const QString& argument, Opening opening, std::string_view formatOption)
{
    const Declared* backend = declaredBackend(argument);
    Source source;
    source.given = backend ? backend->file : argument;
    if (source.given.isEmpty())
        return refuse(ExitCode::Usage, Texts::tr("the name of a file is empty"));
    source.isStandardInput = StandardInput::isMeant(source.given);
    source.isStore = Repository::EtcdLocation::isMeant(source.given);
    if (source.isStore)
        source.given = source.absolutePath = Repository::EtcdLocation(source.given).toText();
    else
        source.absolutePath = QDir::current().absoluteFilePath(source.given);
    if (const Source* const open = findOpen(source))
        return open;
    source.format = invocation.valueOf(formatOption);
    const QString trouble = source.isStandardInput ? copyStandardInput(source)
                            : source.isStore       ? examineStore(source, opening)
                                                   : examineFile(source, opening, formatOption);
    if (!trouble.isEmpty())
        return refuse(ExitCode::BadFile, QStringLiteral("%1: %2").arg(source.given, trouble));
    if (source.format.isEmpty())
        return refuse(ExitCode::Usage, Texts::tr("%1: its name does not decide its format; give it with %2")
                                           .arg(source.given, toText(formatOption)));
    source.root = backend ? backend->name : freeRoot();
    const AccessMode access = opening == Opening::Read ? AccessMode::ReadOnly : AccessMode::ReadWrite;
    return mount(std::move(source), backend ? backend->access : access);
}

// Null when it is not open.
const Source* Session::findOpen(const Source& wanted) const
{
    const auto identityOf = [](const Source& source) {
        return source.isStore ? source.absolutePath : Repository::fileIdentity(source.absolutePath);
    };
    const QString identity = identityOf(wanted);
    for (const Source& open : sources) {
        if (wanted.isStandardInput ? open.isStandardInput : identityOf(open) == identity)
            return &open;
    }
    return nullptr;
}

// Gives why it cannot be opened, or nothing.
QString Session::examineStore(Source& source, Opening opening) const
{
    source.format = QStringLiteral("etcd");
    if (!invocation.command->takesStores)
        return Texts::tr("it is a store, not a file");
    if (dryRun && opening != Opening::Read)
        return Texts::tr("a store is written at once, and has no --dry-run");
    return {};
}

// Finds out whether it is there, and its format. Gives why it cannot be opened, or nothing.
QString Session::examineFile(Source& source, Opening opening, std::string_view formatOption) const
{
    std::error_code error;
    const auto status = std::filesystem::status(source.absolutePath.toStdString(), error);
    source.isNew = !std::filesystem::exists(status);
    if (status.type() == std::filesystem::file_type::none)
        return QString::fromStdString(error.message());
    if (source.isNew && opening != Opening::Create)
        return Texts::tr("no such file");
    if (std::filesystem::is_directory(status)) {
        source.format = QStringLiteral("folder");
        return invocation.command->takesFolders ? QString() : Texts::tr("it is a folder, not a file");
    }
    const QString refusal = source.isNew ? QString() : Repository::refusalOfKind(source.absolutePath);
    if (refusal.isEmpty() && source.format.isEmpty())
        source.format = source.isNew ? Repository::FileFormat::ofName(source.absolutePath)
                                     : Repository::FileFormat::ofFile(source.absolutePath);
    if (refusal.isEmpty() && source.format.isEmpty() && !source.isNew)
        return Texts::tr("%1; give its format with %2")
            .arg(Repository::FileFormat::explainUnknown(source.absolutePath), toText(formatOption));
    return refusal;
}

// Gives why it cannot be read, or nothing. The copy has a name that says its format.
QString Session::copyStandardInput(Source& source)
{
    const StandardInput& input = StandardInput::read();
    source.given = StandardInput::name();
    if (!input.error.isEmpty())
        return input.error;
    if (source.format.isEmpty())
        source.format = input.format;
    if (source.format.isEmpty())
        return StandardInput::explainUnknown();
    scratch = std::make_unique<QTemporaryDir>();
    source.absolutePath = scratch->filePath(QStringLiteral("input.") + source.family());
    if (!scratch->isValid())
        return Texts::tr("it cannot be copied: %1").arg(scratch->errorString());
    return QString::fromStdString(
        Files::FileSaver().overwrite(source.absolutePath.toStdString(), input.bytes, 0600).reason);
}

// Of folders.
Files::FolderFilter Session::chosenFiles() const
{
    Files::FolderFilter filter;
    const auto append = [this](std::vector<std::string>& globs, const char* option) {
        const QStringList values = invocation.valuesOf(option);
        for (const QString& value : values)
            globs.push_back(QFile::encodeName(value).toStdString());
    };
    append(filter.include, "--include");
    append(filter.exclude, "--exclude");
    return filter;
}

const Source* Session::mount(Source source, AccessMode access)
{
    sources.push_back(std::move(source));
    const Source& mounted = sources.back();
    constexpr int createOnly = 2;
    const QString location = mounted.format == QLatin1String("folder")
                                 ? Repository::FolderLocation::with(mounted.absolutePath, chosenFiles())
                                 : mounted.absolutePath;
    const Outcome outcome = repository->getBackendInterface()->mount(mounted.format, mounted.root,
                                                                     {location, {}, access}, createOnly);
    tell(outcome); // also what a recovery has put right
    // A file that may be written may also be yet to come, which is not meant here.
    if (outcome.ok() && !mounted.isNew && !mounted.isStore && !QFileInfo::exists(mounted.absolutePath))
        return refuse(ExitCode::BadFile, Texts::tr("%1: it was removed just now").arg(mounted.given));
    if (outcome.ok())
        return &mounted;
    failure = ExitCode::BadFile;
    return nullptr;
}

Session::NodeInformation Session::find(const Source& source, const QString& path, const QString& hint)
{
    const auto tree = repository->getTreeInterface();
    const QString fullPath = source.fullPath(path);
    const NodeInformation found = tree->getNodeInformation(fullPath);
    if (found.exists)
        return found;
    const QString shown = source.relativePath(fullPath);
    const QString suggestion = hintForPath(*tree, source, shown);
    Output::message(
        Texts::tr("%1: '%2' not found%3").arg(source.given, shown, suggestion.isEmpty() ? hint : suggestion));
    failure = ExitCode::Negative;
    return found;
}

std::optional<Session::Place> Session::locate(Opening opening, const QString& hint)
{
    const QString path = invocation.arguments.value(1);
    const Source* source = open(invocation.arguments.first(), opening);
    const NodeInformation node = source ? find(*source, path, hint) : NodeInformation();
    return node.exists ? std::optional(Place{source, source->fullPath(path), node}) : std::nullopt;
}

ExitCode Session::finish(const Outcome& outcome) const
{
    tell(outcome);
    return exitCodeOf(outcome.getStatus());
}

ExitCode Session::finish(const Outcome& outcome, const Source& edited)
{
    const ExitCode code = finish(outcome);
    return code == ExitCode::Done ? save(edited) : code;
}

ExitCode Session::save(const Source& source)
{
    const auto changes = repository->getChangesInterface();
    if (dryRun) {
        QString diff;
        const Outcome outcome = changes->getUnsavedDiff(source.root, diff);
        tell(outcome);
        Output::bytes(withNamesAsGiven(diff, source).toStdString());
        return outcome.ok() ? ExitCode::Done : ExitCode::BadFile;
    }
    const Outcome outcome = repository->getBackendInterface()->save(source.root);
    tell(outcome); // also what could not be assured of a file that is saved
    if (outcome.ok())
        return source.isStandardInput ? printSaved(source) : ExitCode::Done;
    const auto unsaved = changes->getUnsavedChanges(source.root);
    const bool isConflict = std::any_of(unsaved.begin(), unsaved.end(),
                                        [](const UnsavedChange& change) { return change.isConflict; });
    return isConflict ? ExitCode::Refused : ExitCode::BadFile;
}

// What standard input has become.
ExitCode Session::printSaved(const Source& source)
{
    const Files::ReadFileResult text = Files::FileSaver().read(source.absolutePath.toStdString());
    if (!text.ok())
        return fail(ExitCode::BadFile,
                    QStringLiteral("%1: %2").arg(source.given, QString::fromStdString(text.reason)));
    Output::bytes(text.bytes);
    return ExitCode::Done;
}

// The file that the outcome is about, or else that its path lies in.
const Source* Session::sourceOf(const Outcome& outcome) const
{
    const Source* found = nullptr;
    for (const Source& source : sources) {
        if (source.holds(outcome.get().file))
            return &source;
        if (Repository::isAtOrBelow(outcome.get().subject, source.root))
            found = &source;
    }
    return found;
}

// As people here give it.
QString Session::shownPath(const QString& path) const
{
    for (const Source& source : sources) {
        if (path == source.root)
            return source.given;
        if (Repository::isAtOrBelow(path, source.root))
            return Outcome::shownPath(source.relativePath(path));
    }
    return Outcome::shownPath(path);
}

void Session::tellLeftOut(const QString& file,
                          const FrameworkCore::AppConfig::Interfaces::TransferReport& report)
{
    const int count = report.getCommentsLeftOut();
    if (count == 1)
        Output::message(Texts::tr("%1: a comment is left out, for which it has no place").arg(file));
    else if (count > 1)
        Output::message(
            Texts::tr("%1: %2 comments are left out, for which it has no place").arg(file).arg(count));
    if (report.areTagsLeftOut())
        Output::message(Texts::tr("%1: tags are left out, for which it has no form").arg(file));
}

void Session::tell(const Outcome& outcome) const
{
    const Source* const source = sourceOf(outcome);
    const Outcome::Parts& parts = outcome.get();
    const bool isAboutSource = source && source->holds(parts.file);
    const QString file = isAboutSource ? source->shownFile(parts.file) : parts.file;
    for (const QString& warning : parts.warnings)
        Output::message(file + QStringLiteral(": ") + warning);
    if (outcome.ok())
        return;
    const auto pathText = [this](const QString& path) { return shownPath(path); };
    QStringList pieces;
    if (source)
        pieces.append(isAboutSource ? outcome.place(file) : source->given);
    if (!source || parts.subject != source->root)
        pieces.append(outcome.describe(pathText));
    if (!isAboutSource)
        pieces.append(outcome.place(parts.file));
    pieces.append(outcome.explain(pathText));
    pieces.removeAll(QString());
    Output::message(pieces.join(QStringLiteral(": ")));
}

} // namespace CommandLine
