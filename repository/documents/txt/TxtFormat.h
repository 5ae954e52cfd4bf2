#pragma once

#include "repository/documents/common/Format.h"
#include "repository/documents/txt/TxtDocument.h"

namespace Repository::Documents {

// Files of lines with a path each, in one dialect.
class TxtFormat : public Format
{
public:
    // The name is that of the format, alone or with that of the dialect, which must outlive this.
    TxtFormat(std::string formatName, const Dialect& fileDialect)
        : name(std::move(formatName)), dialect(fileDialect)
    {
    }

    std::string_view getName() const override { return name; }
    std::unique_ptr<Document> makeDocument() const override { return std::make_unique<TxtDocument>(dialect); }
    std::string_view getCertainEndings() const override { return "txt properties"; }

private:
    const std::string name;
    const Dialect& dialect;
};

} // namespace Repository::Documents
