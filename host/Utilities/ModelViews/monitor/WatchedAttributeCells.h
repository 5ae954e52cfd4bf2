#pragma once

#include "host/FrameworkCore/AppConfig/AttributeReaderInterface.h"
#include "host/Utilities/ModelViews/monitor/WatchedAttribute.h"

#include <QCoreApplication>
#include <QVariant>

#include <memory>

namespace Utilities::ModelViews {

// What the cells of a watched attribute show, in every role. The attribute is read when one of its cells is
// asked for and it is not known yet. GUI thread.
class WatchedAttributeCells
{
    Q_DECLARE_TR_FUNCTIONS(Utilities::ModelViews::AdvancedAttributeModel)

public:
    using Reader = FrameworkCore::AppConfig::Interfaces::AttributeReaderInterface;

    enum Column { Name, Value, Type, LastChange, Path, ColumnCount };

    void setReader(std::shared_ptr<Reader> newReader) { reader = std::move(newReader); }

    QVariant cell(WatchedAttribute& attribute, int column, int role) const;
    static QVariant header(int column, int role);

private:
    const WatchedAttribute::Content& contentOf(WatchedAttribute& attribute) const;
    QVariant text(WatchedAttribute& attribute, int column) const;
    QVariant toolTip(WatchedAttribute& attribute, int column) const;
    QVariant colour(WatchedAttribute& attribute, int column, int role) const;
    QVariant accessibleText(WatchedAttribute& attribute, int column) const;

    std::shared_ptr<Reader> reader; // empty without a repository
};

} // namespace Utilities::ModelViews
