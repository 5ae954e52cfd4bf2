#include "host/Utilities/ModelViews/editors/ValueEditor.h"

#include "host/Utilities/ModelViews/editors/BytesValueEditor.h"
#include "host/Utilities/ModelViews/editors/DateTimeValueEditor.h"
#include "host/Utilities/ModelViews/editors/LineValueEditor.h"
#include "host/Utilities/ModelViews/editors/ListValueEditor.h"
#include "host/Utilities/ModelViews/editors/NullValueEditor.h"
#include "host/Utilities/ModelViews/editors/TruthValueEditor.h"

namespace Utilities::ModelViews::Widgets {

std::unique_ptr<ValueEditor> ValueEditor::makeFor(int metaType)
{
    switch (metaType) {
    case QMetaType::Bool:
        return std::make_unique<TruthValueEditor>();
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
        return std::make_unique<LineValueEditor>(metaType);
    case QMetaType::QStringList:
        return std::make_unique<ListValueEditor>();
    case QMetaType::QByteArray:
        return std::make_unique<BytesValueEditor>();
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return std::make_unique<DateTimeValueEditor>(metaType);
    case QMetaType::UnknownType:
        return std::make_unique<NullValueEditor>();
    default:
        return nullptr;
    }
}

} // namespace Utilities::ModelViews::Widgets
