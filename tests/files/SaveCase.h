#pragma once

#include "files/FileJournal.h"
#include "tests/files/ScratchFolder.h"

#include <cerrno>

namespace TestSupport {

// A way in which a file is saved or put right, for tests that disturb it at every step.
struct SaveCase
{
    enum class Way {
        Replace,      // by a new file
        ReplaceBlind, // by a new file, where the file system knows no exchange of names
        Create,       // where there was none
        WriteLinked,  // in place, since it has two names; the journal is in the state folder
        WriteBusy,    // in place, since something is mounted on it; the journal is beside it
        RepairLinked, // read after a save in place was cut off half way
        RepairBusy
    };

    // The system, but that a file cannot be renamed over, or that nothing waits for the disk: that is of no
    // consequence to those who do not cut the power.
    class Calls : public Files::SystemCalls
    {
    public:
        explicit Calls(Way usedWay, bool really = false) : way(usedWay), syncs(really) {}

        int sync(int descriptor) override { return syncs ? SystemCalls::sync(descriptor) : 0; }
        int exchangeAt(int folder, const std::string& one, const std::string& other) override
        {
            errno = way == Way::WriteBusy ? EBUSY : EINVAL;
            return way == Way::WriteBusy || way == Way::ReplaceBlind
                       ? -1
                       : SystemCalls::exchangeAt(folder, one, other);
        }

    private:
        const Way way;
        const bool syncs;
    };

    Way way = Way::Replace;
    std::string before;
    std::string after;

    // Adds a column "saving" and a row for every way, growing and shrinking.
    static void addRows()
    {
        QTest::addColumn<SaveCase>("saving");
        const std::string small(100, 's');
        const std::string large(20000, 'l');
        const std::pair<const char*, Way> ways[] = {
            {"replaced", Way::Replace},      {"replaced blindly", Way::ReplaceBlind},
            {"created", Way::Create},        {"linked", Way::WriteLinked},
            {"busy", Way::WriteBusy},        {"repair linked", Way::RepairLinked},
            {"repair busy", Way::RepairBusy}};
        for (const auto& [name, usedWay] : ways) {
            QTest::addRow("%s, growing", name) << SaveCase{usedWay, small, large};
            QTest::addRow("%s, shrinking", name) << SaveCase{usedWay, large, small};
        }
    }

    bool repairs() const { return way == Way::RepairLinked || way == Way::RepairBusy; }
    bool isLinked() const { return way == Way::RepairLinked || way == Way::WriteLinked; }

    // What is there when nothing has come of it: a repair always gives the old content.
    std::string unchanged() const { return way == Way::Create ? "(missing)" : before; }
    std::string changed() const { return repairs() ? before : after; }

    void prepare(const ScratchFolder& folder) const
    {
        folder.remove("f.ini");
        folder.remove("g.ini");
        if (way == Way::Create)
            return;
        folder.write("f.ini", repairs() ? after.substr(0, 60) + before.substr(60, 30) : before);
        if (isLinked())
            folder.hardLink("f.ini", "g.ini");
        if (!repairs())
            return;
        const std::string name = isLinked() ? folder.path("g.ini") : "f.ini";
        const Files::FileJournal journal{name, folder.status("f.ini").st_ino, before};
        QDir().mkpath(QString::fromStdString(folder.path("state/vantry")));
        folder.write(isLinked() ? "state/vantry/.vantry-abcdefgh.old" : ".vantry-abcdefgh.old",
                     journal.toBytes(), 0600);
    }

    // Gives the error, if there is one.
    std::string run(const ScratchFolder& folder, Files::SystemCalls& calls) const
    {
        using namespace Files;
        const FileSaver saver(calls);
        const std::string path = folder.path("f.ini");
        if (repairs()) {
            const ReadFileResult read = saver.read(path);
            return read.ok() && read.bytes != before ? "read something else" : read.error;
        }
        return saver.save(path, after, way == Way::Create ? FileDigest() : FileDigest::of(before)).error;
    }
};

} // namespace TestSupport

Q_DECLARE_METATYPE(TestSupport::SaveCase)
