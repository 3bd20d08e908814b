#include "api/Boundary.h"

#include "api/LastError.h"

#include <boost/exception/diagnostic_information.hpp>

#include <exception>

namespace {

// The diagnostic text takes memory. Where there is none, the failure's own text must do.
void StoreDiagnostics(const boost::exception& failure) noexcept
{
    const auto* const standard = dynamic_cast<const std::exception*>(&failure);
    try {
        StoreLastError(boost::diagnostic_information(failure, true).c_str());
    } catch (...) {
        StoreLastError(standard ? standard->what() : "Unknown error");
    }
}

} // namespace

void StoreCurrentFailure() noexcept
{
    try {
        throw;
    } catch (const boost::exception& e) {
        StoreDiagnostics(e);
    } catch (const std::exception& e) {
        StoreLastError(e.what());
    } catch (...) {
        StoreLastError("Unknown error");
    }
}
