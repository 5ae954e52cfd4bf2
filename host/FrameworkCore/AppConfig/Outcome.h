#pragma once

#include "host/FrameworkCore/AppConfig/StatusCode.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QSharedData>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>
#include <optional>

namespace FrameworkCore::AppConfig {

// What came of an operation. Of a failure it keeps the parts, each by itself, and the text for a person is
// made of them at the end and never parsed. A success is just its status. A value type;
// one object is not for two threads at once.
class VANTRY_CORE_EXPORT Outcome
{
public:
    // What was to be done, which the text of a failure begins with.
    enum class Operation {
        None, // the reason says it all
        Set,
        Change, // anything else that an attribute or a subtree was to undergo
        AddValidation,
        CreateBackend,
        SaveBackend,
        ReloadBackend,
        CloseBackend,
        FollowFile, // bring in what another program has written
        ListChanges,
        ShowChanges,
        Revert,
        Resolve,
        Undo,
        Redo,
        Match, // with the text of a search
        Locate,
        Lock
    };

    // One of several places that a reason is about.
    struct Detail
    {
        QString path; // of the tree
        QString text; // what is the matter there; may be empty
    };

    // Texts are for a person, and name neither the path nor the file, which have parts of their own.
    struct Parts : QSharedData
    {
        Operation operation = Operation::None;
        QString subject; // the path that the operation was for, or the name of a backend or step
        std::optional<QVariant> value; // that was refused; nothing where it must not be shown
        QString argument;              // what else the operation was given, as the name of a validation
        QString reason;
        QVector<Detail> details; // follow the reason
        int detailsLeftOut = 0;  // there are so many more
        QString advice;          // what to do; follows the details
        QString file;            // that the reason is about; empty when it is about none
        int line = 0;            // in the file, from 1; 0 where the reason has no place there
        int column = 0;          // from 1, in characters
        QStringList warnings;    // about the file, of a success, too: what could not be kept or assured
    };

    // A success.
    Outcome() = default;

    Outcome(StatusCode failure, const QString& reason) : status(failure) { change().reason = reason; }

    bool ok() const { return status == Success; }
    explicit operator bool() const { return ok(); }
    StatusCode getStatus() const { return status; }

    // A success without warnings, of which there is nothing to tell.
    bool isPlainSuccess() const { return ok() && !parts; }

    const Parts& get() const { return parts ? *parts : none(); }
    Parts& change();

    // What was to be done, of a failure, and the file that it is about. An outcome keeps what it was given
    // first, by who knew best.
    Outcome& of(Operation operation, const QString& subject);
    Outcome& in(const QString& file, int line = 0, int column = 0);
    Outcome& advise(const QString& advice);

    // How a path of the tree is shown; by default as it is, of a very long one its ends.
    using PathText = std::function<QString(const QString& path)>;

    // What was not done, as in "'a.b' was not set to '7' (a whole number)"; empty for no operation.
    QString describe(const PathText& pathText = shownPath) const;

    // Why: the reason, the details and the advice, without the file.
    QString explain(const PathText& pathText = shownPath) const;

    // "file:line:column", as far as they are known, for a file by that name; empty without a file.
    QString place(const QString& fileName) const;

    // All of it in one text.
    QString toText() const;
    QString toText(const PathText& pathText) const;

    // The value in quotes and what it is, as in "'1.5' (a number)".
    static QString shownValue(const QVariant& value);

    // The path, of a very long one its ends.
    static QString shownPath(const QString& path);

    // Of a text at most what a person reads, on one line.
    static QString shortened(const QString& text);

    friend bool operator==(const Outcome& outcome, StatusCode code) { return outcome.status == code; }
    friend bool operator!=(const Outcome& outcome, StatusCode code) { return outcome.status != code; }

private:
    static const Parts& none();

    StatusCode status = Success;
    QSharedDataPointer<Parts> parts;
};

} // namespace FrameworkCore::AppConfig
