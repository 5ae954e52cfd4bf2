#include "files/CrashRecovery.h"

#include "files/FileDigest.h"
#include "files/FileJournal.h"
#include "files/Reason.h"
#include "files/StateFolder.h"
#include "files/TemporaryName.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace Files {

namespace {

constexpr std::uint64_t largestJournalHead = 8192; // its numbers and a path

bool isNamed(SystemCalls& calls, int folder, const std::string& name, const struct stat& status)
{
    struct stat now = {};
    return calls.statAt(folder, name, now) == 0 && isSameFile(now, status);
}

void add(std::string& warning, const std::string& text)
{
    warning += (warning.empty() ? "" : "; ") + text;
}

enum class Place { Beside, State };

// Of one place. The folder is that of the file.
class CrashRecovery
{
public:
    CrashRecovery(SystemCalls& systemCalls, const FileDescriptor& fileFolder,
                  const FileLocation& fileLocation, const FileDescriptor& searchedFolder, Place searchedPlace,
                  RecoveryPurpose recoveryPurpose)
        : calls(systemCalls), folder(fileFolder), location(fileLocation), searched(searchedFolder),
          place(searchedPlace), purpose(recoveryPurpose)
    {
    }

    std::string searchPlace(std::string& warning)
    {
        std::vector<std::string> names;
        if (calls.list(searched.get(), TemporaryName::prefix, names) != 0) {
            // Who may not look into a folder cannot be warned of what is in it, but may read.
            const bool isHidden = errno == EACCES && purpose == RecoveryPurpose::Reading;
            return isHidden ? std::string() : Reason::tr("its folder cannot be listed: %1", {systemReason()});
        }
        for (const std::string& name : names) {
            const auto kind = TemporaryName::kindOf(name);
            std::string error;
            if (kind == TemporaryName::Kind::Replacement)
                removeReplacement(name);
            else if (kind == TemporaryName::Kind::Exchange && place == Place::Beside)
                recoverExchange(name, warning);
            else if (kind == TemporaryName::Kind::Journal)
                error = recoverJournal(name, warning);
            if (!error.empty())
                return error;
        }
        return {};
    }

private:
    // Of nobody's use. Without the right to remove it, it is left to those who have it.
    void removeReplacement(const std::string& name)
    {
        FileDescriptor file(calls);
        struct stat status = {};
        if (file.openRegular(searched.get(), name, O_RDONLY, status).empty() && mayChange(status) &&
            file.tryLock() && isNamed(calls, searched.get(), name, status))
            calls.unlinkAt(searched.get(), name);
    }

    bool mayChange(const struct stat& status) const
    {
        return purpose == RecoveryPurpose::Saving || status.st_uid == ::geteuid();
    }

    // The file of that name holds what its save wrote, or what the save has exchanged it for, as its name
    // tells; anything else was written by another program between the save's last look and the exchange.
    void recoverExchange(const std::string& name, std::string& warning)
    {
        FileDescriptor file(calls);
        struct stat status = {};
        std::string bytes;
        if (!file.openRegular(searched.get(), name, O_RDONLY, status).empty() || !mayChange(status) ||
            !file.readAll(bytes).empty())
            return;
        const FileDigest content = FileDigest::of(bytes);
        const bool isNeedless = TemporaryName::saysOld(name, content) ||
                                (TemporaryName::saysNew(name, content) && file.tryLock());
        if (!isNeedless && !TemporaryName::saysNew(name, content))
            undoExchange(name, status, warning);
        else if (isNeedless && isNamed(calls, searched.get(), name, status))
            calls.unlinkAt(searched.get(), name);
    }

    void undoExchange(const std::string& name, const struct stat& status, std::string& warning)
    {
        FileDescriptor present(calls);
        struct stat presentStatus = {};
        std::string bytes;
        const bool isRead =
            present.openRegular(folder.get(), location.name, O_RDONLY, presentStatus).empty() &&
            present.readAll(bytes).empty();
        const bool isOfSave = isRead && TemporaryName::saysNew(name, FileDigest::of(bytes));
        if (isOfSave && !present.tryLock())
            return; // the save goes on, and looks after it
        const bool isExchanged = isOfSave && status.st_uid == presentStatus.st_uid &&
                                 calls.exchangeAt(folder.get(), name, location.name) == 0;
        if (isExchanged && isNamed(calls, folder.get(), name, presentStatus)) {
            calls.unlinkAt(folder.get(), name);
            add(warning,
                Reason::tr(
                    "a save of it was interrupted; it holds again what another program wrote meanwhile"));
            return;
        }
        if (isExchanged)
            calls.exchangeAt(folder.get(), name, location.name);
        add(warning, Reason::tr("a save into its folder was interrupted; what another program wrote "
                                "meanwhile is in %1: look at it and remove it",
                                {name}));
    }

    std::string recoverJournal(const std::string& name, std::string& warning)
    {
        FileDescriptor opened(calls);
        struct stat status = {};
        std::string reason = opened.openRegular(searched.get(), name, O_RDONLY, status);
        if (!reason.empty() && errno == ENOENT)
            return {};
        const bool isMine = status.st_uid == ::geteuid();
        if (!reason.empty() && errno != 0 && (errno != EACCES || isMine))
            return Reason::tr("an interrupted save cannot be undone by %1: %2", {name, reason});
        struct stat saved = {};
        const bool isThere = calls.statAt(folder.get(), location.name, saved) == 0;
        // Whoever may not write the file must not get it written by somebody else.
        if (reason.empty() && !isMine && status.st_uid != 0 && !(isThere && status.st_uid == saved.st_uid))
            reason = Reason::tr("it is another user's");
        std::string bytes;
        if (reason.empty()) {
            reason = opened.readAll(bytes, largestJournalHead);
            if (!reason.empty() && errno != EFBIG)
                return Reason::tr("an interrupted save cannot be undone by %1: %2", {name, reason});
        }
        const bool isGenuine = status.st_nlink == 1 && (status.st_mode & 022) == 0;
        const auto journal = isGenuine ? FileJournal::fromBytes(bytes) : std::nullopt;
        if (journal) {
            bool isOurs = false;
            reason = findTarget(*journal, isOurs);
            return isOurs ? recoverJournal(name, opened, status, *journal, warning) : reason;
        }
        add(warning, Reason::tr("a save into its folder was interrupted, which cannot be undone by %1: %2",
                                {name, reason.empty() ? Reason::tr("it is damaged") : reason}));
        return {};
    }

    std::string recoverJournal(const std::string& name, FileDescriptor& opened, const struct stat& status,
                               const FileJournal& journal, std::string& warning)
    {
        if (!mayChange(status)) {
            add(warning,
                Reason::tr(
                    "a save of it by another user (%1) was interrupted, so it may be half written; what it "
                    "held before comes back from %2 when that user reads it, or when it is saved next",
                    {std::to_string(status.st_uid), name}));
            return {};
        }
        if (!awaitEnd(opened))
            return Reason::tr("it is being written by another program, which keeps its former content in %1",
                              {name});
        struct stat now = {}; // somebody else may have recovered the file meanwhile
        const bool isThere = calls.statAt(searched.get(), name, now) == 0;
        if (isThere ? !isSameFile(now, status) : errno == ENOENT)
            return {};
        const std::string error =
            isThere ? restore(journal, warning) : Reason::tr("it cannot be examined: %1", {systemReason()});
        if (!error.empty())
            return Reason::tr("an interrupted save cannot be undone by %1: %2", {name, error});
        if (calls.unlinkAt(searched.get(), name) != 0 || calls.sync(searched.get()) != 0)
            return Reason::tr("an interrupted save was undone, but %1 cannot be removed: %2",
                              {name, systemReason()});
        return {};
    }

    // False when the save that keeps the journal goes on for longer than any save takes.
    bool awaitEnd(FileDescriptor& opened) const
    {
        using namespace std::chrono;
        const auto deadline = steady_clock::now() + seconds(5);
        while (!opened.tryLock() && (errno == EWOULDBLOCK || errno == EINTR)) {
            if (steady_clock::now() > deadline)
                return false;
            std::this_thread::sleep_for(milliseconds(1));
        }
        return true; // also where no file can be locked, and nobody knows
    }

    // Whether the journal is of our file, which may have had another name when it was saved.
    std::string findTarget(const FileJournal& journal, bool& isOurs) const
    {
        isOurs = journal.file == (place == Place::Beside ? location.name : location.path());
        if (isOurs || place == Place::Beside)
            return {};
        struct stat named = {};
        struct stat wanted = {};
        if (calls.statAt(AT_FDCWD, journal.file, named) == 0 &&
            calls.statAt(folder.get(), location.name, wanted) == 0) {
            isOurs = isSameFile(named, wanted);
            return {};
        }
        const bool isElsewhere = errno == ENOENT || errno == ENOTDIR || errno == EACCES;
        return isElsewhere ? std::string() : Reason::tr("it cannot be examined: %1", {systemReason()});
    }

    std::string restore(const FileJournal& journal, std::string& warning)
    {
        FileDescriptor file(calls);
        struct stat status = {};
        std::string error = file.openRegular(folder.get(), location.name, O_RDWR, status);
        const bool isGone = !error.empty() && (errno == ENOENT || errno == 0);
        if (isGone || (error.empty() && status.st_ino != journal.inode))
            return {};
        if (!error.empty())
            return error;
        const std::optional<bool> isSame = file.holds(journal.content);
        if (!isSame)
            return Reason::tr("it cannot be read: %1", {systemReason()});
        if (*isSame)
            return {};
        error = overwrite(calls, file, journal.content);
        if (error.empty())
            add(warning, Reason::tr("a save of it was interrupted; it holds again what it held before"));
        return error;
    }

    SystemCalls& calls; // not owned
    const FileDescriptor& folder;
    const FileLocation& location;
    const FileDescriptor& searched;
    const Place place;
    const RecoveryPurpose purpose;
};

} // namespace

std::string recoverFromCrash(SystemCalls& calls, const FileDescriptor& folder, const FileLocation& location,
                             RecoveryPurpose purpose, std::string& warning)
{
    std::string error =
        CrashRecovery(calls, folder, location, folder, Place::Beside, purpose).searchPlace(warning);
    if (!error.empty())
        return error;
    bool isAbsent = false;
    const auto state = StateFolder::open(calls, error, isAbsent);
    if (!state)
        return isAbsent ? std::string() : error;
    return CrashRecovery(calls, folder, location, *state, Place::State, purpose).searchPlace(warning);
}

} // namespace Files
