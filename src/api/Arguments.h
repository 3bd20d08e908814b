// What every export does with its arguments before it looks anything up with them, and the wording of its failures.
#pragma once

#include <boost/assert/source_location.hpp>

#include <cstdint>
#include <string>
#include <string_view>

// One call of an export: how its failures begin and where they are raised. A failure reads "Unable to <action>.
// <reason>", or "<reason>" alone where the export has no action, and names the export as the place that it comes from.
// A failed check throws std::runtime_error. The action must outlive the call.
// Not thread-safe: lives on the stack of the export.
class CCall
{
public:
    CCall(std::string_view action, const boost::source_location& where) : m_action(action), m_where(where) {}

    const boost::source_location& Where() const { return m_where; }

    void NotNull(const void* pointer) const;
    // A copy of the text, which must not be null.
    std::string Text(const char* text) const;
    void AtMost(std::uint64_t limit, std::uint64_t value) const;
    // Fails with "Unknown error" unless an operation that gives no reason of its own succeeded.
    void Done(bool success) const
    {
        if (!success)
            FailUnknown();
    }
    // Fails unless a buffer of `size` bytes can take the text and the zero that ends it. A size of 0 always passes.
    void HasRoom(const std::string& text, std::uint64_t size) const;
    // Writes the text and the zero that ends it to the caller's buffer, after the check for room.
    void CopyText(const std::string& text, char* buffer, std::uint64_t size) const;

    // Fails with "Unable to <action>. <reason><value>".
    [[noreturn]] void Fail(std::string_view reason, std::string_view value = {}) const;
    // Fails with "<text><value>", whatever the action.
    [[noreturn]] void FailAlone(std::string_view text, std::string_view value = {}) const;
    [[noreturn]] void FailUnknown() const;

private:
    std::string_view m_action;
    boost::source_location m_where;
};
