// A program with the system's C++ run-time and Boost.Log, whose core and sink it has set up, that loads the library of
// an archive: exceptions of each stay in it, and the library's records do not get into the program's log.
//
//   host LIBRARY before|after FILE    The program uses its own run-time and log before or after it loads the library.
#include <VELOxdDll.h>

#include <boost/log/core.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_ostream_backend.hpp>
#include <boost/log/trivial.hpp>
#include <boost/make_shared.hpp>

#include <dlfcn.h>

#include <iostream>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

class OwnRuntime
{
public:
    // Throws, formats and writes a record, and tells whether all arrived here.
    bool Works()
    {
        std::string caught;
        try {
            std::ostringstream text;
            text << std::boolalpha << true << ' ' << 0.5;
            throw std::runtime_error(text.str());
        } catch (const std::exception& failure) {
            caught = failure.what();
        }
        BOOST_LOG_TRIVIAL(info) << "record " << ++m_records;
        return caught == "true 0.5" && Lines() == m_records;
    }

    // How many records have come to the program's log.
    std::size_t Lines() const
    {
        std::size_t lines = 0;
        for (const char character : m_log->str())
            lines += character == '\n';
        return lines;
    }

private:
    using Sink = boost::log::sinks::synchronous_sink<boost::log::sinks::text_ostream_backend>;

    static boost::shared_ptr<std::ostringstream> AddSink()
    {
        const auto log = boost::make_shared<std::ostringstream>();
        const auto sink = boost::make_shared<Sink>();
        sink->locked_backend()->add_stream(log);
        sink->locked_backend()->auto_flush(true);
        boost::log::core::get()->add_sink(sink);
        return log;
    }

    boost::shared_ptr<std::ostringstream> m_log = AddSink();
    std::size_t m_records = 0;
};

class Library
{
public:
    explicit Library(const char* path) : m_loaded(dlopen(path, RTLD_NOW | RTLD_LOCAL))
    {
        if (m_loaded == nullptr)
            throw std::runtime_error(dlerror());
    }

    template <class Function>
    Function* Find(const char* name) const
    {
        return reinterpret_cast<Function*>(dlsym(m_loaded, name));
    }

private:
    void* m_loaded;
};

// Opens a file with a number that cannot be read, of which the library's log has a record, and one that is not there.
bool Works(const Library& library, const char* file)
{
    const auto open = library.Find<decltype(OpenOxdFile)>("OpenOxdFile");
    const auto failed = library.Find<decltype(VELHasLastError)>("VELHasLastError");
    const auto text = library.Find<decltype(VELGetLastError)>("VELGetLastError");
    const bool opens = open(file) != 0 && !failed();
    open("/nowhere/missing.oxd");
    return opens && failed() && std::string(text()).find("missing.oxd") != std::string::npos;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    OwnRuntime runtime;
    const bool first = std::string(argv[2]) != "before" || runtime.Works();
    const Library library(argv[1]);
    const bool library_works = Works(library, argv[3]);
    const bool second = runtime.Works() && Works(library, argv[3]);
    std::cout << first << library_works << second << ", " << runtime.Lines() << " records\n";
    return first && library_works && second ? 0 : 1;
}
