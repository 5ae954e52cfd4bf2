#pragma once

#include "desk/plugins/PluginLibrary.h"
#include "desk/plugins/PluginTrial.h"

#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

namespace Vantry {

// Finds and loads plug-ins. A file that is refused, for whatever reason, stops nothing. GUI thread.
class PluginLoader
{
public:
    // Where to look, and what to do without.
    struct Choice
    {
        Choice(QStringList wanted) : folders(std::move(wanted)) {}

        QStringList folders;
        QStringList sharedFolders; // looked into although other users can change what is there
        QStringList culprits;      // plug-ins one of which has ended the last start
        QString reasonForNone;     // when not empty, nothing is loaded, for this reason
    };

    // One file that was looked at.
    struct Finding
    {
        QString file;
        QString refusal; // empty when it was loaded
    };

    explicit PluginLoader(PluginTrial pluginTrial) : trial(std::move(pluginTrial)) {}

    // The installed place, or for a program that is not installed its own folder: beside an installed one lie
    // those of the whole system.
    static QStringList usualFolders();

    // Loads all that the folders hold. A file that is reached twice is loaded once. When there are culprits,
    // all that is to be loaded is rehearsed in a process of its own, without one more of them each time,
    // until that ends well; culprits are left out from then on.
    void load(const Choice& choice);

    const std::vector<std::unique_ptr<PluginLibrary>>& getLibraries() const { return libraries; }
    QStringList getLoadedFiles() const;
    const std::vector<Finding>& getFindings() const { return findings; }

    // What whoever uses a loaded file found wrong with it, beside what is known.
    void refuse(const QString& file, const QString& reason);

private:
    void look(const QString& folder, bool isShared, const Choice& choice);
    QString judge(const QString& file, bool isShared, const Choice& choice) const;
    void leaveOutCulprits(const QStringList& culprits);
    bool isKnown(const QString& file) const;
    QStringList getWanted() const;

    PluginTrial trial;
    std::vector<std::unique_ptr<PluginLibrary>> libraries;
    std::vector<Finding> findings;
};

} // namespace Vantry
