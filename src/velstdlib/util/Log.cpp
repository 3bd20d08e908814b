#include "velstdlib/util/Log.h"

#include <boost/log/attributes/attribute_value_impl.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_channel_logger.hpp>
#include <boost/log/trivial.hpp>

#include <cstdlib>
#include <ostream>
#include <utility>

namespace veltaris::velstdlib::util {

namespace {

using Logger = boost::log::sources::severity_channel_logger_mt<boost::log::trivial::severity_level>;

Logger& TheLogger()
{
    static Logger logger(boost::log::keywords::channel = "VelStdLib");
    return logger;
}

bool IsAskedFor()
{
    const char* const given = std::getenv("VELOXD_LOG"); // NOLINT(concurrency-mt-unsafe): once, while it is loaded
    return given != nullptr && *given != '\0';
}

// Known before any thread can be in the library, and to the program that loads it, which may ask for the log then.
const bool isAskedFor = IsAskedFor();

// Boost.Log does not tell whether there are sinks. A program that has set it up has given it attributes, such as the
// time of a record.
bool IsSetUp()
{
    return !boost::log::core::get()->get_global_attributes().empty();
}

} // namespace

void LogWarning(const char* function, std::string_view message)
{
    if (!isAskedFor && !IsSetUp())
        return;
    const auto value = boost::log::attributes::make_attribute_value(std::string(function));
    auto record = TheLogger().open_record(boost::log::keywords::severity = boost::log::trivial::warning);
    if (!record)
        return;
    record.attribute_values().insert("Function", value);
    boost::log::record_ostream(record) << message << std::flush;
    TheLogger().push_record(std::move(record));
}

} // namespace veltaris::velstdlib::util
