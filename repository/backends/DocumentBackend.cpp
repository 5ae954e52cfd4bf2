#include "repository/backends/DocumentBackend.h"

#include "repository/common/MemoryGuard.h"
#include "repository/merge/DocumentComparison.h"
#include "repository/merge/EntryList.h"

namespace Repository {

using Documents::Document;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::Value;

DocumentBackend::DocumentBackend(Description backendDescription)
    : Backend(std::move(backendDescription)), content(description.type.toStdString())
{
}

void DocumentBackend::visitEntries(const std::function<void(const Documents::Entry&)>& visitor) const
{
    const std::lock_guard lock(mutex);
    content.getDocument().visit(visitor);
}

bool DocumentBackend::contains(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().contains(relative(path));
}

bool DocumentBackend::removalMovesOthers(const QString& path) const
{
    const std::lock_guard lock(mutex);
    const Document& document = content.getDocument();
    const std::string entry = relative(path);
    return document.removalMovesSiblings(entry) || document.removalMovesGroups(entry);
}

Backend::SiblingPosition DocumentBackend::positionOf(const QString& path) const
{
    const std::lock_guard lock(mutex);
    const Documents::SiblingPlace place = content.getDocument().placeOf(relative(path));
    const bool isAfter = place.kind == Documents::SiblingPlace::Kind::After;
    return {place.kind, isAfter ? absolute(place.sibling) : QString()};
}

std::optional<std::string> DocumentBackend::spell(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().spell(relative(path));
}

std::string DocumentBackend::getBytes() const
{
    const std::lock_guard lock(mutex);
    return content.getText();
}

quint64 DocumentBackend::getRevision() const
{
    const std::lock_guard lock(mutex);
    return content.getRevision();
}

Outcome DocumentBackend::edit(const std::function<Documents::Outcome(Document&)>& change)
{
    Outcome outcome = checkOpen();
    if (!outcome.ok())
        return outcome;
    return guardMemory([&] {
        const Documents::Outcome changed = content.edit(change);
        return changed.ok() ? Outcome()
                            : Outcome(StatusCode::BackendFailure, QString::fromStdString(changed.error));
    });
}

std::optional<Outcome> DocumentBackend::set(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    if (editing)
        return {};
    return edit([&](Document& text) { return text.set(relative(path), value); });
}

Outcome DocumentBackend::insert(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.insert(relative(path), value); });
}

void DocumentBackend::beginBatch()
{
    const std::lock_guard lock(mutex);
    edit([](Document& text) {
        text.beginRun();
        return Documents::Outcome();
    });
}

Outcome DocumentBackend::endBatch(QString& refusedPath)
{
    const std::lock_guard lock(mutex);
    std::string refused;
    Outcome outcome = edit([&](Document& text) { return text.endRun(refused); });
    refusedPath = absolute(refused);
    return outcome;
}

Outcome DocumentBackend::insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                                   std::size_t& refused)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.insertAll(relative(path), entries, refused); });
}

bool DocumentBackend::keepsGivenOrder() const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().keepsGivenOrder();
}

Outcome DocumentBackend::remove(const QString& path)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.remove(relative(path)); });
}

bool DocumentBackend::isClosed() const
{
    const std::lock_guard lock(mutex);
    return closed;
}

Outcome DocumentBackend::checkOpen() const
{
    return closed ? Outcome(StatusCode::BackendFailure, QStringLiteral("its backend is being closed"))
                  : Outcome();
}

Outcome DocumentBackend::refusal(const QString& reason) const
{
    return Outcome(StatusCode::BackendFailure, reason).in(description.filePath);
}

Outcome DocumentBackend::outcomeOf(const Documents::Outcome& parsed) const
{
    return parsed.ok() ? Outcome()
                       : Outcome(StatusCode::BackendFailure, QString::fromStdString(parsed.error))
                             .in(description.filePath, int(parsed.line), int(parsed.column));
}

// What an operation on the document changes.
Backend::Changes DocumentBackend::change(const std::function<void()>& operation)
{
    const EntryList before(content.getDocument());
    operation();
    return DocumentComparison(before).run(content.getDocument());
}

void DocumentBackend::beginEdit()
{
    const std::lock_guard lock(mutex);
    editing = true;
}

void DocumentBackend::endEdit()
{
    const std::lock_guard lock(mutex);
    editing = false;
}

Outcome DocumentBackend::write(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.set(relative(path), value); });
}

Outcome DocumentBackend::respell(const QString& path, const std::string& spelling)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.respell(relative(path), spelling); });
}

Outcome DocumentBackend::replaceText(std::string bytes)
{
    const std::lock_guard lock(mutex);
    const Outcome outcome = checkOpen();
    return outcome.ok() ? outcomeOf(content.replaceText(std::move(bytes))) : outcome;
}

} // namespace Repository
