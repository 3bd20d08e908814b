// The barrier between exceptions and the C interface. Every export runs its body behind it, so that no exception
// reaches a caller of the library. It is stateless: any number of threads may use it at once.
#pragma once

#include "api/Arguments.h"

#include <boost/assert/source_location.hpp>

#include <string_view>
#include <type_traits>
#include <utility>

// Stores the exception that is being handled as the last error: the diagnostic text of one that has information
// attached, and what() of any other. Must be called in a catch block.
void StoreCurrentFailure() noexcept;

// Returns what body(call) returns. When it throws, stores the failure and returns 0, 0.0, false or nothing. `where` is
// the export that calls this: failed checks of the call are reported as raised there.
template <class Body>
auto Export(std::string_view action, Body&& body, const boost::source_location& where = BOOST_CURRENT_LOCATION) noexcept
    -> std::invoke_result_t<Body, const CCall&>
{
    try {
        return std::forward<Body>(body)(CCall(action, where));
    } catch (...) {
        StoreCurrentFailure();
        return std::invoke_result_t<Body, const CCall&>();
    }
}

// The same for an export whose failures name no action, but the reason alone.
template <class Body>
auto Export(Body&& body, const boost::source_location& where = BOOST_CURRENT_LOCATION) noexcept
{
    return Export({}, std::forward<Body>(body), where);
}
