#pragma once

#include "repository/documents/common/Format.h"
#include "repository/documents/ini/IniDocument.h"

namespace Repository::Documents {

// Files of lines with sections.
class IniFormat : public Format
{
public:
    std::string_view getName() const override { return "ini"; }
    std::unique_ptr<Document> makeDocument() const override { return std::make_unique<IniDocument>(); }
    std::string_view getCertainEndings() const override { return "ini"; }
    std::string_view getLikelyEndings() const override
    {
        return "conf cfg cnf cf config rc desktop directory theme colors repo editorconfig gitconfig npmrc "
               "service socket timer target mount automount swap path slice scope link netdev network nspawn";
    }
};

} // namespace Repository::Documents
