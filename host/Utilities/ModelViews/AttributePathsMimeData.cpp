#include "host/Utilities/ModelViews/AttributePathsMimeData.h"

namespace Utilities::ModelViews {

const QLatin1Char lineEnd('\n');

QString attributePathsMimeType()
{
    return QStringLiteral("application/x-vantry-attribute-paths");
}

QStringList attributePathsMimeTypes()
{
    return {attributePathsMimeType(), QStringLiteral("text/plain")};
}

std::unique_ptr<QMimeData> makeAttributePathsMimeData(const QStringList& paths)
{
    const QString lines = paths.join(lineEnd);
    auto data = std::make_unique<QMimeData>();
    data->setData(attributePathsMimeType(), lines.toUtf8());
    data->setText(lines);
    return data;
}

QStringList attributePathsFrom(const QMimeData& data)
{
    QStringList paths;
    if (data.hasFormat(attributePathsMimeType())) {
        paths = QString::fromUtf8(data.data(attributePathsMimeType())).split(lineEnd);
    } else if (data.hasText() && !data.hasUrls()) { // files are not attributes
        paths = data.text().replace(QLatin1Char('\r'), lineEnd).split(lineEnd);
        for (QString& path : paths)
            path = path.trimmed();
    }
    paths.removeAll(QString());
    paths.removeDuplicates();
    return paths;
}

} // namespace Utilities::ModelViews
