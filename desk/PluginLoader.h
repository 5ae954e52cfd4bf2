#pragma once

#include "desk/PluginLibrary.h"
#include "desk/PluginTrial.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace Vantry {

// Finds and loads plug-ins. A file that is refused, for whatever reason, stops nothing. What is being loaded
// is noted beforehand, so that the next start knows what killed this one. GUI thread.
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

    // The file that was being loaded when the last start died; empty when it did not.
    static QString takeCulprit();

    // Loads all that the folders hold but the file left out.
    void load(const QStringList& folders, const QString& leftOut = {});

    const std::vector<std::unique_ptr<PluginLibrary>>& getLibraries() const { return libraries; }
    const std::vector<Finding>& getFindings() const { return findings; }

    // Adds a finding of whoever uses what was loaded.
    void refuse(const QString& file, const QString& reason) { findings.push_back({file, reason}); }

private:
    QString loadFile(const QString& file);

    PluginTrial trial;
    std::vector<std::unique_ptr<PluginLibrary>> libraries;
    std::vector<Finding> findings;
};

} // namespace Vantry
