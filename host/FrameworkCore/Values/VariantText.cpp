#include "host/FrameworkCore/Values/VariantText.h"

#include "host/FrameworkCore/Values/Text.h"
#include "host/FrameworkCore/Values/Utf8.h"

#include <QStringList>

#include <cstdlib>

namespace FrameworkCore::Values {

namespace {

std::string_view viewOf(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

std::string padded(int number, int digits)
{
    return QString::number(number).rightJustified(digits, QLatin1Char('0')).toStdString();
}

std::string offsetText(const QDateTime& dateTime)
{
    if (dateTime.timeSpec() == Qt::LocalTime)
        return {};
    const int offset = dateTime.offsetFromUtc();
    if (offset == 0)
        return "Z";
    const int size = std::abs(offset);
    std::string text = (offset < 0 ? '-' : '+') + padded(size / 3600, 2) + ':' + padded(size / 60 % 60, 2);
    if (size % 60 != 0)
        text += ':' + padded(size % 60, 2);
    return text;
}

} // namespace

QString decodeUtf8(std::string_view bytes)
{
    const QString text = QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
    return startsWith(bytes, utf8ByteOrderMark) ? QChar(QChar::ByteOrderMark) + text : text;
}

QString fromLatin(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

bool hasLoneSurrogate(const QString& text)
{
    const QChar* at = text.constData();
    const QChar* const end = at + text.size();
    for (; at != end; ++at) {
        if (!at->isSurrogate())
            continue;
        if (!at->isHighSurrogate() || at + 1 == end || !(at + 1)->isLowSurrogate())
            return true;
        ++at;
    }
    return false;
}

std::string toBytes(const QString& text)
{
    if (!hasLoneSurrogate(text))
        return text.toUtf8().toStdString();
    std::string bytes;
    for (int at = 0; at < text.size(); ++at) {
        const bool pair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (text[at].isSurrogate() && !pair) {
            appendUtf8(bytes, text[at].unicode());
            continue;
        }
        const QByteArray whole = text.mid(at, pair ? 2 : 1).toUtf8();
        bytes += viewOf(whole);
        at += pair ? 1 : 0;
    }
    return bytes;
}

std::optional<QString> fromBytes(std::string_view bytes)
{
    if (isAscii(bytes)) // nearly all texts, and quicker
        return fromLatin(bytes);
    if (isUtf8(bytes))
        return decodeUtf8(bytes);
    QString text;
    while (!bytes.empty()) {
        std::size_t length = utf8Length(bytes);
        if (length > 0) {
            text += decodeUtf8(bytes.substr(0, length));
        } else if (beginsWithSurrogate(bytes)) {
            length = 3;
            text += QChar(ushort(utf8CodePoint(bytes.substr(0, length))));
        } else {
            return std::nullopt;
        }
        bytes.remove_prefix(length);
    }
    return text;
}

// QDate's own ISO form knows the years 0 to 9999 only.
std::string isoText(const QDate& date)
{
    if (!date.isValid())
        return {};
    const int year = date.year();
    const std::string sign = year < 0 ? "-" : year > 9999 ? "+" : "";
    return sign + padded(std::abs(year), 4) + '-' + padded(date.month(), 2) + '-' + padded(date.day(), 2);
}

std::string isoText(const QTime& time)
{
    if (!time.isValid())
        return {};
    return time.toString(time.msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs).toStdString();
}

std::string isoText(const QDateTime& dateTime)
{
    if (!dateTime.isValid())
        return {};
    return isoText(dateTime.date()) + 'T' + isoText(dateTime.time()) + offsetText(dateTime);
}

QDate toDate(std::string_view iso)
{
    if (iso.empty())
        return {};
    const bool sign = iso[0] == '-' || iso[0] == '+';
    const QString text = fromLatin(iso.substr(sign ? 1 : 0));
    const QStringList parts = text.split(QLatin1Char('-'));
    if (parts.size() != 3)
        return {};
    const int year = parts[0].toInt();
    return QDate(iso[0] == '-' ? -year : year, parts[1].toInt(), parts[2].toInt());
}

QTime toTime(std::string_view iso)
{
    constexpr std::size_t fractionLength = 4; // of the point and the digits that QTime holds
    const std::size_t point = iso.find('.');
    if (point != std::string_view::npos)
        iso = iso.substr(0, point + fractionLength);
    return QTime::fromString(fromLatin(iso), Qt::ISODateWithMs);
}

QDateTime toDateTime(std::string_view iso)
{
    const std::size_t middle = iso.find('T');
    if (middle == std::string_view::npos)
        return {};
    const QDate date = toDate(iso.substr(0, middle));
    const std::string_view rest = iso.substr(middle + 1);
    const std::size_t zone = rest.find_first_of("Z+-");
    const QTime time = toTime(rest.substr(0, zone));
    if (zone == std::string_view::npos)
        return QDateTime(date, time, Qt::LocalTime);
    if (rest[zone] == 'Z')
        return QDateTime(date, time, Qt::UTC);
    const QStringList parts = fromLatin(rest.substr(zone + 1)).split(QLatin1Char(':'));
    int seconds = 0;
    for (int at = 0; at < 3; ++at)
        seconds = seconds * 60 + (at < parts.size() ? parts[at].toInt() : 0);
    return QDateTime(date, time, Qt::OffsetFromUTC, rest[zone] == '-' ? -seconds : seconds);
}

} // namespace FrameworkCore::Values
