#pragma once

#include "repository/backends/Backend.h"
#include "repository/merge/EditedDocument.h"

namespace Repository {

// A backend whose entries are those of a document in memory.
class DocumentBackend : public Backend
{
public:
    void visitEntries(const std::function<void(const Documents::Entry& entry)>& visitor) const override;
    bool contains(const QString& path) const override;
    bool namesType(const QString& path) const override;
    std::optional<bool> isArray(const QString& path) const override;
    const Documents::Format* getNameEncoding() const override;
    bool removalMovesOthers(const QString& path) const override;
    SiblingPosition positionOf(const QString& path) const override;
    Origin originOf(const QString& path) const override;
    QStringList followersOf(const QString& path) const override;
    bool isLinked(const QString& path) const override;
    std::optional<FrameworkCore::Values::Value> finerValueAt(const QString& path) const override;
    std::optional<std::string> spell(const QString& path) const override;
    std::optional<Documents::Excerpt> excerpt(const QString& path) const override;
    bool hasComments(const QString& path) const override;
    std::size_t countTags(const QString& path) const override;
    std::vector<Documents::CarriedComment> getComments() const override;
    std::optional<Documents::Excerpt>
    excerptOf(const QString& path, const std::vector<Documents::Entry>& entries,
              const std::vector<Documents::CarriedComment>& comments) const override;
    std::string getBytes() const override;
    quint64 getRevision() const override;

    std::optional<Outcome> set(const QString& path, const FrameworkCore::Values::Value& value) override;
    bool keepsGivenOrder() const override;

    // Gives up what can be had from its text again, unless that is large or edited.
    void releaseDocument();

    bool isClosed() const override;

    Outcome locate(const QString& path, TextPlace& place) const override;
    Outcome findAt(int line, int column, QString& path) const override;
    Outcome getReadableText(BackendText& text) const override;

    QVector<UnsavedChange> getUnsavedChanges() const override;
    QString getUnsavedDiff() const override;

protected:
    // The format is that of the document, whatever the type of the backend is called.
    DocumentBackend(Description description, std::string format);

    void beginEdit() override;
    void endEdit() override;
    Outcome write(const QString& path, const FrameworkCore::Values::Value& value) override;
    Outcome insert(const QString& path, const FrameworkCore::Values::Value& value) override;
    Outcome remove(const QString& path) override;
    std::optional<Outcome> rename(const QString& path, const QString& name) override;
    bool insertExcerpt(const QString& path, const Documents::Excerpt& excerpt,
                       const std::vector<Documents::Entry>& expected) override;
    Outcome removeExcerpt(const QString& path) override;
    std::optional<Outcome> insertElement(const QString& path,
                                         const std::vector<Documents::Entry>& entries) override;
    std::optional<Outcome> moveElement(const QString& path, const QString& newPath) override;
    Outcome respell(const QString& path, const std::string& spelling) override;
    Outcome replaceText(std::string bytes) override;
    Outcome insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                      std::size_t& refused) override;
    Outcome replaceAll(const QString& path, const std::vector<Documents::Entry>& entries,
                       std::size_t& refused) override;
    void beginBatch() override;
    Outcome endBatch(QString& refusedPath) override;

    // A refusal that what is kept is about.
    Outcome refusal(const QString& reason) const;
    Outcome outcomeOf(const Documents::Outcome& outcome) const;

    // What a long operation works on, while others go on with the document.
    EditedDocument getCopy() const;

    // mutex held
    Outcome checkOpen() const;
    Outcome checkConflicts() const; // refused when there are some
    Outcome damage() const;
    Outcome reverted(const std::vector<std::string>& paths);
    std::vector<std::string> relativePaths(const Part& part) const;

    // The text with these hunks of the unsaved diff alone, or with all others.
    enum class Hunks { These, Others };
    Outcome textWith(Hunks which, const QStringList& hunks, std::string& text) const;
    Changes change(const std::function<void()>& operation);
    Outcome edit(const std::function<Documents::Outcome(Documents::Document&)>& change);

    // For an edit that may not be possible where it is. Takes the mutex.
    std::optional<Outcome>
    editIfPossible(const std::function<std::optional<Documents::Outcome>(Documents::Document&)>& change);

    mutable std::mutex mutex; // guards what follows
    EditedDocument content;
    bool closed = false;

private:
    std::unique_ptr<Documents::Document> copyDocument() const;

    bool editing = false; // a DocumentEdit exists
};

} // namespace Repository
