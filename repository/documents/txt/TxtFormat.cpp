#include "repository/documents/txt/TxtFormat.h"

#include "repository/documents/txt/TxtDocument.h"

namespace Repository::Documents {

std::string_view TxtFormat::getName() const
{
    return "txt";
}

std::unique_ptr<Document> TxtFormat::makeDocument() const
{
    return std::make_unique<TxtDocument>();
}

std::string_view TxtFormat::getCertainEndings() const
{
    return "txt properties";
}

} // namespace Repository::Documents
