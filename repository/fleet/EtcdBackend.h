#pragma once

#include "repository/backends/Backend.h"
#include "repository/fleet/StoreState.h"

namespace Repository {

// A backend whose entries are those of a distributed store. Edits are made here at once and written to the
// store by its connection right after that: until the store has acknowledged them, they are unsaved changes,
// and where the store holds something else by then, conflicts, as those of a file. Knows nothing of the
// connection but their common state.
class EtcdBackend : public Backend
{
public:
    EtcdBackend(Description description, std::shared_ptr<StoreState> storeState);

    // Makes the changes of other writers that the state takes over. The structure lock is held.
    Changes take(const std::vector<SharedEntries::Arrival>& arrivals);
    Changes takeAll(std::vector<SharedEntries::Arrival> all);

    // Refused where the store holds something else by now than edits began with; it says what.
    Outcome checkConflicts() const;

    void visitEntries(const std::function<void(const Documents::Entry& entry)>& visitor) const override;
    bool contains(const QString& path) const override;
    bool namesType(const QString&) const override { return true; }
    Progress getProgress() const override;
    QString getState() const override;
    std::optional<bool> isArray(const QString&) const override { return {}; }
    bool removalMovesOthers(const QString&) const override { return false; }
    SiblingPosition positionOf(const QString& path) const override;
    std::optional<FrameworkCore::Values::Value> finerValueAt(const QString& path) const override;
    std::optional<std::string> spell(const QString& path) const override;
    const Documents::Format* getNameEncoding() const override { return nullptr; }
    std::optional<Documents::Excerpt> excerpt(const QString&) const override { return {}; }
    bool hasComments(const QString&) const override { return false; }
    std::size_t countTags(const QString&) const override { return 0; }
    std::vector<Documents::CarriedComment> getComments() const override { return {}; }
    std::optional<Documents::Excerpt> excerptOf(const QString&, const std::vector<Documents::Entry>&,
                                                const std::vector<Documents::CarriedComment>&) const override
    {
        return {};
    }
    std::string getBytes() const override;
    quint64 getRevision() const override;
    std::optional<Outcome> set(const QString& path, const FrameworkCore::Values::Value& value) override;
    bool keepsGivenOrder() const override { return false; }
    std::unique_lock<std::mutex> holdSaving() override { return std::unique_lock(saving); }
    bool isPrivate() const override { return true; }
    bool isEdited() const override;
    Outcome close(bool discardChanges) override;
    bool isClosed() const override;

    // Waits until the store has acknowledged all edits, as long as it is connected.
    Outcome save(const ApplyChange& apply) override;

    // Nothing, since news come by themselves; refused while the store is away.
    Outcome reload(Trigger trigger, const ApplyChange& apply) override;

    Outcome locate(const QString& path, TextPlace& place) const override;
    Outcome findAt(int line, int column, QString& path) const override;
    Outcome getReadableText(BackendText& text) const override;

    QVector<UnsavedChange> getUnsavedChanges() const override;
    QString getUnsavedDiff() const override;
    Outcome revert(const QString& path, const ApplyChange& apply) override;
    Outcome resolveConflicts(const QString& path, ConflictSide side, const ApplyChange& apply) override;
    Outcome revertPart(const Part& part, const ApplyChange& apply) override;
    Outcome savePart(const Part& part, const ApplyChange& apply) override;

protected:
    void beginEdit() override;
    void endEdit() override;
    Outcome write(const QString& path, const FrameworkCore::Values::Value& value) override;
    Outcome insert(const QString& path, const FrameworkCore::Values::Value& value) override;
    Outcome remove(const QString& path) override;
    std::optional<Outcome> rename(const QString&, const QString&) override { return {}; }
    bool insertExcerpt(const QString&, const Documents::Excerpt&,
                       const std::vector<Documents::Entry>&) override
    {
        return false;
    }
    Outcome removeExcerpt(const QString& path) override { return remove(path); }
    std::optional<Outcome> insertElement(const QString&, const std::vector<Documents::Entry>&) override
    {
        return {};
    }
    std::optional<Outcome> moveElement(const QString&, const QString&) override { return {}; }
    Outcome respell(const QString& path, const std::string& spelling) override;
    Outcome replaceText(std::string bytes) override;
    Outcome insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                      std::size_t& refused) override;
    Outcome replaceAll(const QString& path, const std::vector<Documents::Entry>& entries,
                       std::size_t& refused) override;
    void beginBatch() override {}
    Outcome endBatch(QString&) override { return {}; }

private:
    using Value = FrameworkCore::Values::Value;

    // Of the text of a backend, by which edits are rolled back and shown.
    static std::string lineOf(const std::string& path, const Value& value);

    Outcome refusal(const QString& reason) const;

    // The state's mutex is held.
    Outcome checkOpen() const;
    void edit(const std::string& path, const std::optional<Value>& value);
    Outcome checkEdit(const std::string& path, const Value& value) const;
    Outcome setOne(const std::string& path, const Value& value);
    Outcome checkInsertion(const std::string& path, const Value& value) const;
    void insertChecked(const std::string& path, const Value& value);
    Outcome removeAll(const std::string& path);
    Outcome explainConflicts() const;
    Outcome explainUnsaved() const;

    const std::shared_ptr<StoreState> state;
    std::mutex saving;
    bool isEditing = false; // a DocumentEdit exists; this and the next two guarded by the state's mutex
    bool hasEdited = false; // it has changed something, so that it may have to be rolled back
    bool closed = false;
};

} // namespace Repository
