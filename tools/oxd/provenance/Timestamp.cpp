#include "oxd/provenance/Timestamp.h"

#include "oxd/system/Failure.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace oxd {

namespace {

using std::chrono::sys_seconds;

constexpr const char* variable = "SOURCE_DATE_EPOCH";
constexpr std::int64_t latest = 253402300799; // the last second of the year 9999

sys_seconds ToTime(std::string_view text)
{
    std::int64_t seconds = -1;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, seconds);
    if (parsed.ec != std::errc() || parsed.ptr != end || seconds < 0 || seconds > latest) {
        throw Failure(ExitCode::Usage, variable, "is no number of seconds from 1970 to 9999");
    }
    return sys_seconds(std::chrono::seconds(seconds));
}

sys_seconds Now()
{
    const char* const given = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): there is one thread
    return given != nullptr ? ToTime(given)
                            : std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

std::string Digits(std::int64_t number, std::size_t width)
{
    const std::string text = std::to_string(number);
    return std::string(width - text.size(), '0') + text;
}

} // namespace

std::string Timestamp()
{
    return Timestamp(Now());
}

std::string Timestamp(sys_seconds second)
{
    const auto midnight = std::chrono::floor<std::chrono::days>(second);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss time(second - midnight);
    return Digits(int{date.year()}, 4) + "-" + Digits(unsigned{date.month()}, 2) + "-" +
           Digits(unsigned{date.day()}, 2) + "T" + Digits(time.hours().count(), 2) + ":" +
           Digits(time.minutes().count(), 2) + ":" + Digits(time.seconds().count(), 2) + "Z";
}

} // namespace oxd
