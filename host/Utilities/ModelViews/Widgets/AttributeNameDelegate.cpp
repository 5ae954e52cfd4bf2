#include "host/Utilities/ModelViews/Widgets/AttributeNameDelegate.h"

#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

namespace Utilities::ModelViews::Widgets {

void AttributeNameDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    LongTextDelegate::initStyleOption(option, index);
    option->text = displayText(index.data(AttributeTreeViewModel::ReadableNameRole), option->locale);
}

} // namespace Utilities::ModelViews::Widgets
