// Fuzzing makes thousands of warnings a second, which nobody reads.
#include <boost/log/core/core.hpp>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    boost::log::core::get()->set_logging_enabled(false);
    return 0;
}
