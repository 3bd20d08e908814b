// The checks that exports make of their arguments, each with the text that its failure has.
#pragma once

#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/channels/DataGroup.h"

#include <boost/assert/source_location.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// What one call of an export checks its arguments with. Failures read "Unable to <action>. <reason>", or "<reason>"
// where an export has no action, and are raised at the place that the call was made: in the export.
class CCall
{
public:
    CCall(std::string_view action, const boost::source_location& where) : m_action(action), m_where(where) {}

    const boost::source_location& Where() const { return m_where; }

    using CDataBuffer = veltaris::velflexlib::dataset::CDataBuffer;
    using CDataGroup = veltaris::velflexlib::dataset::CDataGroup;
    using CInfoSet = veltaris::velflexlib::dataset::CInfoSet;
    using CInfoSetItem = veltaris::velflexlib::dataset::CInfoSetItem;

    // Each throws when there is no such thing; the file handle is checked first.
    std::shared_ptr<CDataGroup> Group(std::uint64_t handle, std::uint64_t group) const;
    // The channel lives until an export takes it out of its slot.
    CDataBuffer& Channel(std::uint64_t handle, std::uint64_t group, std::uint64_t channel) const;
    // The group, when it has the slot, be it empty.
    std::shared_ptr<CDataGroup> GroupWithSlot(std::uint64_t handle, std::uint64_t group, std::uint64_t channel) const;

    // A top-level group and an item in it, by position, of which the low 32 bits count.
    CInfoSetItem& Info(std::uint64_t handle, std::uint64_t info) const;
    CInfoSetItem& InfoItem(std::uint64_t handle, std::uint64_t info, std::uint64_t item) const;
    // A node by its handle.
    CInfoSetItem& MetaItem(std::uint64_t handle, std::uint64_t item) const;

    void NotNull(const void* pointer) const;
    std::string Text(const char* text) const;
    void AtMost(std::uint64_t limit, std::uint64_t value) const;
    // That an operation was successful.
    void Done(bool success) const
    {
        if (!success)
            FailUnknown();
    }
    // That a buffer of this size can take the text.
    void HasRoom(const std::string& text, std::uint64_t size) const;
    void CopyText(const std::string& text, char* buffer, std::uint64_t size) const;

    // "Unable to <action>. <reason><value>".
    [[noreturn]] void Fail(std::string_view reason, std::string_view value = {}) const;
    // "<text><value>": for the failures that stand alone.
    [[noreturn]] void FailAlone(std::string_view text, std::string_view value = {}) const;

private:
    [[noreturn]] void FailUnknown() const;
    [[noreturn]] void FailNoChannel(std::uint64_t channel) const;

    std::string_view m_action;
    boost::source_location m_where;
};
