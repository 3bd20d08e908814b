#include "api/Boundary.h"

#include "api/LastError.h"

#include <boost/exception/diagnostic_information.hpp>

#include <exception>
#include <string>

namespace {

// The diagnostic text takes memory. Where there is none the text is not made, or cut short without a word: then the
// failure's own text must do.
void StoreDiagnostics(const boost::exception& failure) noexcept
{
    const auto* const standard = dynamic_cast<const std::exception*>(&failure);
    try {
        const std::string text = boost::diagnostic_information(failure, true);
        const bool tellsReason = !standard || text.find(standard->what()) != std::string::npos;
        StoreLastError(tellsReason ? text.c_str() : standard->what());
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
