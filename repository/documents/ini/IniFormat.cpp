#include "repository/documents/ini/IniFormat.h"

#include "repository/documents/ini/IniDocument.h"

namespace Repository::Documents {

std::string_view IniFormat::getName() const
{
    return "ini";
}

std::unique_ptr<Document> IniFormat::makeDocument() const
{
    return std::make_unique<IniDocument>();
}

std::string_view IniFormat::getCertainEndings() const
{
    return "ini";
}

std::string_view IniFormat::getLikelyEndings() const
{
    return "conf cfg cnf cf config rc desktop directory theme colors repo editorconfig gitconfig npmrc "
           "service socket timer target mount automount swap path slice scope link netdev network nspawn";
}

} // namespace Repository::Documents
