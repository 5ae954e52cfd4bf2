#pragma once

#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlFile.h"

#include <memory>
#include <optional>
#include <string>

namespace Repository::Documents {

// Reads the entries around edits again, in a text of their own, in which they are read as they are in the
// file: in their columns, below a key if they are not at its root, and before another entry or the end.
class YamlReread
{
public:
    YamlReread(YamlFile& yamlFile, const YamlEditor& yamlEditor);

    // Reads as few entries as possible, then each time more; false where all of the file must be read.
    bool read();

    // What was read last: of the file as it was, and of the text of its own.
    const YamlTree::Run& getFormer() const { return run; }
    const YamlTree::Run& getPart() const { return part; }
    const YamlFile& getPartFile() const { return *partFile; }

    // Puts it in the place of what was there, and the former text back.
    void install();
    std::string formerText() const;

private:
    bool isInBlock(NodeId id) const;
    bool findRun();
    bool isClosed(NodeId id) const;
    bool tagsNext(std::size_t from, std::size_t to) const;
    std::size_t beginOf(NodeId id) const;
    std::size_t endBefore(NodeId next, NodeId last) const;
    bool mayBeRead(NodeId collection) const;
    bool readPart();
    bool fits(NodeId collection, NodeId after) const;
    bool hasNewKeys() const;

    YamlFile& file;
    const YamlTree& tree;
    const YamlEditor& editor;
    YamlLayout layout;
    NodeId near; // lies in the run, or is one of its entries
    int tries = 0;
    std::size_t editBegin = 0;
    std::size_t editEnd = 0;
    YamlTree::Run run;
    YamlTree::Run part;
    std::unique_ptr<YamlFile> partFile;
    std::string replaced; // the text of the run
};

} // namespace Repository::Documents
