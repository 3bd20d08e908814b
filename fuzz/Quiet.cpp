// Turns the log off: fuzzing would write thousands of warnings per second that nobody reads.
#include <boost/log/core/core.hpp>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    boost::log::core::get()->set_logging_enabled(false);
    return 0;
}
