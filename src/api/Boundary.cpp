#include "api/Boundary.h"

#include "api/LastError.h"

#include <boost/exception/diagnostic_information.hpp>

#include <exception>
#include <string>

namespace {

// Making the diagnostic text takes memory. Without it, making the text throws or silently cuts it short; then what() is
// stored instead, which holds the reason.
void StoreDiagnostics(const boost::exception& failure) noexcept
{
    const auto* const standard = dynamic_cast<const std::exception*>(&failure);
    try {
        const std::string text = boost::diagnostic_information(failure, true);
        const bool hasReason = !standard || text.find(standard->what()) != std::string::npos;
        StoreLastError(hasReason ? text.c_str() : standard->what());
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
