#pragma once

#include <QDBusVariant>
#include <QObject>

namespace Vantry {

// Light or dark colours as the desktop has them, from the start and whenever that changes. It asks the
// desktop's portal on the session bus, without waiting for it, where Qt gets no colours from the desktop by
// itself. GUI thread.
class ColourScheme : public QObject
{
    Q_OBJECT

public:
    explicit ColourScheme(QObject* parent = nullptr);

private slots:
    void follow(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask();
    void show(QVariant scheme);

    bool isDark = false;
};

} // namespace Vantry
