#pragma once

#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"

namespace Utilities::ModelViews::Widgets {

// Draws the names of an attribute tree as people know them, while the model keeps them as paths have them.
class VANTRY_HOST_EXPORT AttributeNameDelegate : public LongTextDelegate
{
    Q_OBJECT

public:
    using LongTextDelegate::LongTextDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace Utilities::ModelViews::Widgets
