#include "velstdlib/util/Log.h"

#include <boost/log/attributes/attribute_value_impl.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_channel_logger.hpp>
#include <boost/log/trivial.hpp>

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

} // namespace

void LogWarning(const char* function, std::string_view message)
{
    const auto value = boost::log::attributes::make_attribute_value(std::string(function));
    auto record = TheLogger().open_record(boost::log::keywords::severity = boost::log::trivial::warning);
    if (!record)
        return;
    record.attribute_values().insert("Function", value);
    boost::log::record_ostream(record) << message << std::flush;
    TheLogger().push_record(std::move(record));
}

} // namespace veltaris::velstdlib::util
