#pragma once

#include "desk/PluginLibrary.h"
#include "desk/PluginTrial.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace Vantry {

// Finds and loads plug-ins. A file that is refused, for whatever reason, stops nothing. GUI thread.
class PluginLoader
{
public:
    // One file that was looked at.
    struct Finding
    {
        QString file;
        QString refusal; // empty when it was loaded
    };

    explicit PluginLoader(PluginTrial trial);

    // The folder of the program and the installed place.
    static QStringList usualFolders();

    // Loads all that the folders hold but the file left out. A file that is reached twice is loaded once.
    void load(const QStringList& folders, const QString& leftOut = {});

    const std::vector<std::unique_ptr<PluginLibrary>>& getLibraries() const { return libraries; }
    const std::vector<Finding>& getFindings() const { return findings; }

    // What whoever uses a loaded file found wrong with it, beside what is known.
    void refuse(const QString& file, const QString& reason);

private:
    bool isKnown(const QString& file) const;
    QString loadFile(const QString& file);

    PluginTrial trial;
    std::vector<std::unique_ptr<PluginLibrary>> libraries;
    std::vector<Finding> findings;
};

} // namespace Vantry
