#pragma once

#include <QMenu>

namespace Vantry {

// Offers the types that a file can be opened as: the formats, and the dialects of each. GUI thread.
class FormatMenu : public QMenu
{
    Q_OBJECT

public:
    explicit FormatMenu(const QString& title, QWidget* parent = nullptr);

signals:
    void chosen(const QString& type);

private:
    void addType(const QString& text, const QString& type);
};

} // namespace Vantry
