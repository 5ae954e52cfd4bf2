#pragma once

#include <QByteArray>
#include <QString>

namespace TestSupport {

// Whole files as tests make them and look at them. Any thread.

// Gives the name; ends the test run when the file cannot be written.
QString writeFile(const QString& name, const QByteArray& content);

QByteArray contentOf(const QString& name); // "unreadable" when it cannot be read

} // namespace TestSupport
