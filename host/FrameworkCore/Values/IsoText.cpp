#include "host/FrameworkCore/Values/IsoText.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace FrameworkCore::Values {

namespace {

constexpr std::size_t millisecondDigits = 3;

// Takes pieces off the front of a text; the first piece that does not fit makes all later ones fail.
class Cursor
{
public:
    explicit Cursor(std::string_view text) : rest(text) {}

    bool atEnd() const { return rest.empty(); }
    bool failed() const { return broken; }
    void fail() { broken = true; }
    bool sees(char c) const { return !rest.empty() && rest.front() == c; }

    bool take(char c)
    {
        if (!sees(c))
            return false;
        rest.remove_prefix(1);
        return true;
    }

    void expect(char c)
    {
        if (!take(c))
            fail();
    }

    // All digits that follow; there must be as many as asked for.
    int number(std::size_t fewest, std::size_t most)
    {
        std::size_t digits = 0;
        while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9')
            ++digits;
        int value = 0;
        if (digits < fewest || digits > most ||
            std::from_chars(rest.data(), rest.data() + digits, value).ec != std::errc())
            fail();
        rest.remove_prefix(digits);
        return value;
    }

    // The same as they are written, one at least.
    std::string_view digits()
    {
        const std::string_view taken = rest.substr(0, rest.find_first_not_of("0123456789"));
        if (taken.empty())
            fail();
        rest.remove_prefix(taken.size());
        return taken;
    }

private:
    std::string_view rest;
    bool broken = false;
};

int daysIn(int month, int year)
{
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    // There is no year 0: the year before 1 is -1, which leap years count as 0.
    const int counted = year < 0 ? year + 1 : year;
    const bool leap = counted % 4 == 0 && (counted % 100 != 0 || counted % 400 == 0);
    return month == 2 && leap ? 29 : days[month - 1];
}

template <typename... Numbers>
std::string print(const char* format, Numbers... numbers)
{
    char text[40];
    const int length = std::snprintf(text, sizeof text, format, numbers...);
    return std::string(text, static_cast<std::size_t>(length));
}

std::string takeDate(Cursor& cursor)
{
    const bool minus = cursor.take('-');
    const bool sign = minus || cursor.take('+');
    int year = cursor.number(4, sign ? 9 : 4);
    if (minus)
        year = -year;
    cursor.expect('-');
    const int month = cursor.number(2, 2);
    cursor.expect('-');
    const int day = cursor.number(2, 2);
    if (year == 0 || month < 1 || month > 12 || day < 1 || cursor.failed() || day > daysIn(month, year)) {
        cursor.fail();
        return {};
    }
    if (year > 9999)
        return print("+%d-%02d-%02d", year, month, day);
    return print(year < 0 ? "%05d-%02d-%02d" : "%04d-%02d-%02d", year, month, day);
}

std::string takeTime(Cursor& cursor)
{
    const int hour = cursor.number(2, 2);
    cursor.expect(':');
    const int minute = cursor.number(2, 2);
    int second = 0;
    std::string fraction;
    if (cursor.take(':')) {
        second = cursor.number(2, 2);
        if (cursor.take('.'))
            fraction = cursor.digits();
    }
    if (hour > 23 || minute > 59 || second > 59)
        cursor.fail();
    fraction.resize(fraction.find_last_not_of('0') + 1);
    std::string text = print("%02d:%02d:%02d", hour, minute, second);
    if (fraction.empty())
        return text;
    fraction.resize(std::max(fraction.size(), millisecondDigits), '0');
    return text + '.' + fraction;
}

// "", "Z" or an offset; offsets of the time before time zones have seconds.
std::string takeOffset(Cursor& cursor)
{
    if (cursor.atEnd())
        return {};
    if (cursor.take('Z'))
        return "Z";
    const char sign = cursor.take('-') ? '-' : '+';
    if (sign == '+')
        cursor.expect('+');
    const int hours = cursor.number(2, 2);
    cursor.expect(':');
    const int minutes = cursor.number(2, 2);
    const int seconds = cursor.take(':') ? cursor.number(2, 2) : 0;
    if (hours > 14 || minutes > 59 || seconds > 59)
        cursor.fail();
    if (hours == 0 && minutes == 0 && seconds == 0)
        return "Z";
    std::string text = sign + print("%02d:%02d", hours, minutes);
    return seconds == 0 ? text : text + print(":%02d", seconds);
}

} // namespace

std::optional<std::string> normaliseIso(std::string_view text, Type type)
{
    Cursor cursor(text);
    std::string normal;
    if (type != Type::Time)
        normal = takeDate(cursor);
    if (type == Type::DateTime) {
        if (!cursor.take('T') && !cursor.take(' '))
            cursor.fail();
        normal += 'T';
    }
    if (type != Type::Date)
        normal += takeTime(cursor);
    if (type == Type::DateTime)
        normal += takeOffset(cursor);
    if (cursor.failed() || !cursor.atEnd())
        return std::nullopt;
    return normal;
}

} // namespace FrameworkCore::Values
