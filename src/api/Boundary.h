// The one barrier that every export runs its body behind: nothing that is thrown reaches a caller of the library.
#pragma once

#include "api/Arguments.h"

#include <boost/assert/source_location.hpp>

#include <string_view>
#include <type_traits>
#include <utility>

// Stores the failure that is being handled as the last error. To be called in a catch block.
void StoreCurrentFailure() noexcept;

// The result of body(call), or, when it throws, 0, 0.0, false or nothing, with the failure stored.
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

// The same for an export whose failures name no action.
template <class Body>
auto Export(Body&& body, const boost::source_location& where = BOOST_CURRENT_LOCATION) noexcept
{
    return Export({}, std::forward<Body>(body), where);
}
