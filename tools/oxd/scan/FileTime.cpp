#include "oxd/scan/FileTime.h"

#include "oxd/provenance/Timestamp.h"
#include "oxd/system/Failure.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace oxd {

namespace {

using std::chrono::sys_days;
using std::chrono::sys_seconds;

// The digits of a time, whose places others stand at: 0 for a digit.
constexpr std::string_view shape = "0000-00-00T00:00:00";
constexpr std::size_t dayLength = 10;

bool HasShape(std::string_view text)
{
    for (std::size_t place = 0; place < text.size(); ++place) {
        const bool isDigit = text[place] >= '0' && text[place] <= '9';
        if (shape[place] == '0' ? !isDigit : text[place] != shape[place]) {
            return false;
        }
    }
    return text.size() == dayLength || text.size() == shape.size();
}

int NumberAt(std::string_view text, std::size_t place, std::size_t digits)
{
    int number = 0;
    for (const char digit : text.substr(place, digits)) {
        constexpr int base = 10;
        number = number * base + (digit - '0');
    }
    return number;
}

std::optional<sys_seconds> ToTime(std::string_view text)
{
    using namespace std::chrono;
    const year_month_day day{year(NumberAt(text, 0, 4)), month(static_cast<unsigned>(NumberAt(text, 5, 2))),
                             std::chrono::day(static_cast<unsigned>(NumberAt(text, 8, 2)))};
    const bool hasTime = text.size() > dayLength;
    const hours hour(hasTime ? NumberAt(text, 11, 2) : 0);
    const minutes minute(hasTime ? NumberAt(text, 14, 2) : 0);
    const seconds second(hasTime ? NumberAt(text, 17, 2) : 0);
    if (!day.ok() || hour >= hours(24) || minute >= minutes(60) || second >= seconds(60)) {
        return std::nullopt;
    }
    return sys_days(day) + hour + minute + second;
}

// Beyond these years, nanoseconds have no number.
bool IsInRange(sys_seconds time)
{
    using namespace std::chrono;
    return time >= sys_days(year(1678) / January / 1) && time < sys_days(year(2262) / January / 1);
}

} // namespace

FileTime ToFileTime(std::filesystem::file_time_type time)
{
    return std::chrono::time_point_cast<std::chrono::nanoseconds>(std::chrono::file_clock::to_sys(time));
}

std::string ToText(FileTime time)
{
    constexpr std::size_t digits = 9;
    const auto second = std::chrono::floor<std::chrono::seconds>(time);
    const std::string fraction = std::to_string((time - second).count());
    std::string text = Timestamp(second);
    text.back() = '.';
    return text.append(digits - fraction.size(), '0').append(fraction).append("Z");
}

FileTime ParseTime(const std::string& text)
{
    const std::string_view digits = std::string_view(text).substr(0, text.size() - (text.ends_with('Z') ? 1 : 0));
    const auto time = digits.size() <= shape.size() && HasShape(digits) ? ToTime(digits) : std::nullopt;
    if (!time || !IsInRange(*time)) {
        throw Failure(ExitCode::Usage, "\"" + text + "\"", "is no time such as 2026-11-22 or 2026-11-22T13:45:00Z");
    }
    return *time;
}

} // namespace oxd
