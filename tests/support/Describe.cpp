#include "support/Describe.h"

#include "support/Axes.h"

#include <VELOxdDll.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <new>
#include <string_view>
#include <vector>

namespace {

constexpr std::uint64_t most = 20;
constexpr char untouched = '\x7F';

// Takes a pending failure. Returns whether there was one whose text contains `expected`.
bool TakeFailure(std::string_view expected)
{
    if (!VELHasLastError())
        return false;
    const std::string_view text = VELGetLastError();
    if (text.find("bad_alloc") != std::string_view::npos)
        throw std::bad_alloc();
    return text.find(expected) != std::string_view::npos;
}

// Returns what the getter writes to a buffer of this size, with any zeros inside the text; nothing if it is too small.
template <class Getter, class... Where>
std::string TextOf(std::size_t size, Getter getter, Where... where)
{
    std::vector<char> buffer(size, untouched);
    getter(where..., buffer.data(), buffer.size());
    std::string text(buffer.begin(), buffer.end());
    text.resize(text.find_last_not_of(untouched) + 1);
    return text;
}

// Returns what a file keeps of a text: zeros and line ends become blanks, blanks at the end are dropped, and so is a
// number that tells equal names apart.
std::string Lasting(std::string text)
{
    std::ranges::replace_if(
        text, [](char c) { return c == '\0' || c == '\r'; }, ' ');
    text.resize(text.find_last_not_of(" \t\n\v\f\r") + 1);
    while (true) {
        const auto underscore = text.find_last_not_of("0123456789");
        if (underscore == std::string::npos || text[underscore] != '_')
            return text;
        text.resize(underscore);
    }
}

class CDescription
{
public:
    explicit CDescription(std::uint64_t handle) : m_handle(handle) {}

    std::string All()
    {
        Groups();
        InfoGroups();
        Tree();
        return std::move(m_text);
    }

private:
    void Groups()
    {
        Number("groups", GetGroupCount(m_handle));
        std::vector<std::uint64_t> ids(GetGroupCount(m_handle));
        ids.reserve(1); // the pointer is not null even without groups
        GetAllGroupIds(m_handle, ids.data());
        ids.resize(std::min<std::size_t>(ids.size(), most));
        for (const auto group : ids) {
            Text("group", GetGroupName, group);
            Number("id", GetLogicalGroupId(m_handle, group));
            const auto slots = Number("slots", GetChannelCount(m_handle, group));
            for (std::uint64_t slot = 0; slot < std::min(slots, most); ++slot) {
                if (HasChannelBuffer(m_handle, group, slot))
                    Channel(group, slot);
            }
        }
    }

    void InfoGroups()
    {
        const auto count = Number("infos", GetInfoGroupCount(m_handle));
        for (std::uint64_t info = 0; info < std::min(count, most); ++info) {
            Text("info", GetInfoGroupName, info);
            const auto items = Number("items", GetInfoItemCount(m_handle, info));
            for (std::uint64_t item = 0; item < std::min(items, most); ++item) {
                Text("item", GetInfoItemName, info, item);
                Text("value", GetInfoItemValue, info, item);
            }
        }
    }

    void Tree()
    {
        std::vector<std::uint64_t> nodes{GetMetaInfoTreeRootHandle(m_handle)};
        while (!nodes.empty()) {
            const auto node = nodes.back();
            nodes.pop_back();
            Text("node", GetMetaInfoItemName, node);
            if (!Number("group", IsMetaInfoItemAGroup(m_handle, node)))
                Text("value", GetMetaInfoItemValue, node);
            AddChildren(node, nodes);
        }
    }

    void Append(std::string_view label, std::string_view value)
    {
        m_text.append(label).append("=").append(value).append(TakeFailure({}) ? " failed\n" : "\n");
    }

    template <class Value>
    Value Number(std::string_view label, Value value)
    {
        std::array<char, 32> text{};
        char* end = text.data();
        if constexpr (std::is_same_v<Value, double>)
            end = std::to_chars(text.begin(), text.end(), value, std::chars_format::general, 6).ptr;
        else
            end = std::to_chars(text.begin(), text.end(), static_cast<std::int64_t>(value)).ptr;
        Append(label, {text.data(), end});
        return value;
    }

    template <class Getter, class... Where>
    void Text(std::string_view label, Getter getter, Where... where)
    {
        constexpr std::string_view tooSmall = "Minimum buffer size: ";
        std::string text = TextOf(24, getter, m_handle, where...);
        if (TakeFailure(tooSmall)) {
            const std::string needed = VELGetLastError();
            text =
                TextOf(std::stoul(needed.substr(needed.find(tooSmall) + tooSmall.size())), getter, m_handle, where...);
        }
        Append(label, Lasting(std::move(text)));
    }

    void Channel(std::uint64_t group, std::uint64_t slot)
    {
        Number("points", GetChannelData_Points(m_handle, group, slot));
        const auto lines = Number("lines", GetChannelData_Lines(m_handle, group, slot));
        for (const AxisProperty& property : axisProperties) {
            Text("text", property.getText, group, slot);
            Number("number", property.getNumber(m_handle, group, slot));
        }
        for (std::uint64_t line = 0; line < std::min(lines, most); ++line)
            Line(group, slot, line);
    }

    void Line(std::uint64_t group, std::uint64_t slot, std::uint64_t line)
    {
        const auto valid = Number("valid", GetChannelData_PointsPerLine(m_handle, group, slot, line));
        Number("min", GetChannelData_PointAxisMinPerLine(m_handle, group, slot, line));
        Number("range", GetChannelData_PointAxisRangePerLine(m_handle, group, slot, line));
        if (valid > GetChannelData_Points(m_handle, group, slot))
            return; // cannot be read
        std::vector<std::int32_t> raw(valid);
        std::vector<double> real(valid);
        raw.reserve(1); // the pointers are not null even for an empty line
        real.reserve(1);
        for (std::int32_t lineOp = 5; lineOp >= 0; --lineOp) {
            GetChannelData_LineRaw(m_handle, group, slot, line, lineOp, raw.data());
            if (valid > 0)
                Number("ends", raw.front() ^ raw.back());
        }
        GetChannelData_LineReal(m_handle, group, slot, line, 0, real.data());
        for (const auto sample : raw)
            Number("raw", sample);
        if (valid > 0)
            Number("pixel", GetChannelData_PixelRaw(m_handle, group, slot, valid - 1, line, 0));
        if (valid > 0 && GetChannelData_PixelReal(m_handle, group, slot, valid - 1, line, 0) != real.back())
            Number("real", std::isnan(real.back())); // a pixel equals the sample of its line
    }

    void AddChildren(std::uint64_t node, std::vector<std::uint64_t>& nodes)
    {
        const auto count = Number("children", GetMetaInfoItemChildCount(m_handle, node));
        std::uint64_t child = count > 0 ? SelectFirstChildMetaInfoItem(m_handle, node) : 0;
        for (std::uint64_t i = 0; i < std::min(count, most); ++i) {
            nodes.push_back(child);
            Number("parent", SelectParentMetaInfoItem(m_handle, child) == node);
            if (i + 1 < count)
                child = SelectNextMetaInfoItem(m_handle, child);
        }
    }

    std::uint64_t m_handle;
    std::string m_text;
};

} // namespace

std::string Describe(std::uint64_t handle)
{
    return CDescription(handle).All();
}
