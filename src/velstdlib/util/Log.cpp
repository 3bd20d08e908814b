#include "velstdlib/util/Log.h"

#include <boost/log/attributes/constant.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_channel_logger.hpp>
#include <boost/log/trivial.hpp>
#include <boost/log/utility/manipulators/add_value.hpp>

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
    BOOST_LOG_SEV(TheLogger(), boost::log::trivial::warning)
        << boost::log::add_value("Function", std::string(function)) << message;
}

} // namespace veltaris::velstdlib::util
