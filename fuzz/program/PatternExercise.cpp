#include "fuzz/Exercises.h"
#include "host/FrameworkCore/Values/VariantText.h"
#include "repository/AttributeRepository.h"
#include "repository/common/PathRules.h"
#include "repository/notification/PatternIndex.h"

#include <QVector>

#include <algorithm>

namespace Fuzz {

using FrameworkCore::AppConfig::PathPattern;
using FrameworkCore::AppConfig::Interfaces::PathSearch;
using FrameworkCore::AppConfig::Interfaces::RegistrationInterface;
using FrameworkCore::Values::decodeUtf8;
using Repository::AttributeRepository;
using Repository::PatternIndex;
using Repository::Registration;
using Repository::RegistrationPointer;

namespace {

constexpr int mostLines = 24;
constexpr int longestLine = 200;
constexpr int allPoints = 15;

QVector<uint> charactersOf(const QString& text, Qt::CaseSensitivity sensitivity)
{
    QVector<uint> characters = text.toUcs4();
    if (sensitivity == Qt::CaseInsensitive)
        std::transform(characters.begin(), characters.end(), characters.begin(),
                       [](uint character) { return QChar::toCaseFolded(character); });
    return characters;
}

// The reference: after each character of the pattern, which beginnings of the path it matches.
bool matchesPlainly(const QString& pattern, const QString& path,
                    Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    const QVector<uint> wanted = charactersOf(pattern, sensitivity);
    const QVector<uint> given = charactersOf(path, sensitivity);
    std::vector<bool> matched(std::size_t(given.size()) + 1);
    matched[0] = true;
    for (const uint character : wanted) {
        if (character == '*') {
            for (std::size_t length = 1; length < matched.size(); ++length)
                matched[length] = matched[length] || matched[length - 1];
            continue;
        }
        for (std::size_t length = matched.size() - 1; length > 0; --length)
            matched[length] = matched[length - 1] && given[int(length) - 1] == character;
        matched[0] = false;
    }
    return matched.back();
}

QString quoted(const QString& pattern, const QString& path)
{
    return QStringLiteral("pattern '%1', path '%2'").arg(pattern, path);
}

class PatternExercise
{
public:
    explicit PatternExercise(std::string_view input)
    {
        QStringList* lines = &patterns;
        for (const QString& line : decodeUtf8(input).split(QLatin1Char('\n')).mid(0, 2 * mostLines)) {
            if (line.isEmpty() && lines == &patterns)
                lines = &paths;
            else if (lines->size() < mostLines)
                lines->append(line.left(longestLine));
        }
    }

    std::string run()
    {
        for (const auto check :
             {&PatternExercise::checkPatterns, &PatternExercise::checkIndex, &PatternExercise::checkTree}) {
            const QString broken = (this->*check)();
            if (!broken.isEmpty())
                return broken.toStdString();
        }
        return {};
    }

private:
    QString checkPatterns() const
    {
        for (const QString& pattern : patterns) {
            for (const QString& path : paths) {
                for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
                    if (PathPattern(pattern, sensitivity).matches(path) !=
                        matchesPlainly(pattern, path, sensitivity))
                        return QStringLiteral("a single pattern errs: ") + quoted(pattern, path);
                }
            }
        }
        return {};
    }

    // All patterns at once, then every second of them.
    QString checkIndex() const
    {
        PatternIndex index;
        std::vector<RegistrationPointer> registrations;
        for (const QString& pattern : patterns) {
            registrations.emplace_back(new Registration({}, allPoints));
            index.add(pattern, registrations.back());
        }
        QString broken = compareIndex(index, registrations);
        for (int at = 0; at < patterns.size(); at += 2) {
            index.remove(patterns.at(at), *registrations[std::size_t(at)]);
            registrations[std::size_t(at)].reset();
        }
        return broken.isEmpty() ? compareIndex(index, registrations) : broken;
    }

    QString compareIndex(const PatternIndex& index,
                         const std::vector<RegistrationPointer>& registrations) const
    {
        for (const QString& path : paths) {
            auto found = index.match(path);
            for (int at = 0; at < patterns.size(); ++at) {
                const RegistrationPointer& registration = registrations[std::size_t(at)];
                const bool isWanted = registration && matchesPlainly(patterns.at(at), path);
                const auto count = registration ? found.removeAll(registration) : 0;
                if (count != (isWanted ? 1 : 0))
                    return QStringLiteral("the index gives it %1 times: ").arg(count) +
                           quoted(patterns.at(at), path);
            }
            if (!found.isEmpty())
                return QStringLiteral("the index gives a removed pattern for the path '%1'").arg(path);
        }
        return {};
    }

    QString checkTree() const
    {
        QString broken = checkNotifications();
        const QStringList nodes = allNodes();
        for (int at = 0; at < patterns.size() && broken.isEmpty(); ++at) {
            for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
                for (const bool topmostOnly : {false, true}) {
                    if (broken.isEmpty())
                        broken = checkSearch({patterns.at(at), sensitivity, topmostOnly}, nodes);
                }
            }
        }
        return broken;
    }

    // Creating an attribute and writing it, which relies on what the attribute remembers of the first time.
    QString checkNotifications() const
    {
        QVector<int> calls(patterns.size());
        std::vector<std::shared_ptr<RegistrationInterface>> handles;
        const auto notifications = repository->getNotificationInterface();
        for (int at = 0; at < patterns.size(); ++at) {
            handles.push_back(notifications->registerUpdateCallback(
                patterns.at(at), [&calls, at](auto&&...) { ++calls[at]; }, int(UpdatePoint::AfterStore)));
            const bool isAllowed =
                patterns.at(at).contains(QLatin1Char('*')) || Repository::isValidPath(patterns.at(at));
            if (bool(handles.back()) != isAllowed)
                return QStringLiteral("the pattern '%1' is not handled as its text says")
                    .arg(patterns.at(at));
        }
        const auto writer = repository->getWriterInterface();
        QString broken;
        for (int number = 0; number < paths.size() && broken.isEmpty(); ++number) {
            const QString& path = paths.at(number);
            calls.fill(0);
            const bool isCreated = writer->createAttribute(path, number, 2, 3);
            broken = compareCalls(calls, path, isCreated, handles);
            calls.fill(0);
            const bool isWritten = writer->writeAttributeValue(path, number + 1, allPoints) == 0;
            if (broken.isEmpty())
                broken = compareCalls(calls, path, isWritten, handles);
            if (std::size_t(number) < handles.size() && handles[std::size_t(number)]) {
                handles[std::size_t(number)]->end();
                handles[std::size_t(number)].reset();
            }
        }
        for (const auto& handle : handles) {
            if (handle)
                handle->end();
        }
        return broken;
    }

    QString compareCalls(const QVector<int>& calls, const QString& path, bool isChanged,
                         const std::vector<std::shared_ptr<RegistrationInterface>>& handles) const
    {
        for (int at = 0; at < patterns.size(); ++at) {
            const bool isWanted =
                isChanged && handles[std::size_t(at)] && matchesPlainly(patterns.at(at), path);
            if (calls.at(at) != (isWanted ? 1 : 0))
                return QStringLiteral("%1 notifications: ").arg(calls.at(at)) + quoted(patterns.at(at), path);
        }
        return {};
    }

    // Each level by itself, upper levels first.
    QStringList allNodes() const
    {
        const auto tree = repository->getTreeInterface();
        QStringList nodes{QString()};
        for (int at = 0; at < nodes.size(); ++at) {
            const QString parent = nodes.at(at);
            for (const QString& name : tree->getChildNames(parent))
                nodes.append(parent.isEmpty() ? name : parent + QLatin1Char('.') + name);
        }
        return nodes.mid(1);
    }

    QString checkSearch(PathSearch search, const QStringList& nodes) const
    {
        QStringList expected;
        for (const QString& node : nodes) {
            const bool isBelowOne = search.topmostOnly &&
                                    std::any_of(expected.begin(), expected.end(), [&](const QString& match) {
                                        return Repository::isAtOrBelow(node, match);
                                    });
            if (!isBelowOne && matchesPlainly(search.pattern, node, search.caseSensitivity))
                expected.append(node);
        }
        const auto tree = repository->getTreeInterface();
        if (tree->findPaths(search) != expected)
            return QStringLiteral("a search for '%1' finds %2 instead of %3")
                .arg(search.pattern, tree->findPaths(search).join(QLatin1Char(' ')),
                     expected.join(QLatin1Char(' ')));
        search.limit = expected.size() / 2;
        if (tree->findPaths(search) != expected.mid(0, search.limit))
            return QStringLiteral("a limited search for '%1' finds others").arg(search.pattern);
        return {};
    }

    using UpdatePoint = FrameworkCore::Notification::UpdatePoint;

    QStringList patterns;
    QStringList paths;
    const std::shared_ptr<AttributeRepository> repository = AttributeRepository::create({false});
};

} // namespace

std::string exercisePatterns(std::string_view input)
{
    return PatternExercise(input).run();
}

} // namespace Fuzz
