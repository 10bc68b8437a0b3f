#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/switcher/SwitcherGroup.h"

namespace quillmar {

// "Mail[w11 w12] Notes[a2]": the groups as one line, frontmost marked with "*".
inline std::string describe(const std::vector<SwitcherGroup>& groups)
{
    std::string text;
    for (const auto& group : groups) {
        if (!text.empty())
            text += ' ';
        text += group.appName + (group.isFrontmost ? "*" : "") + "[";
        for (std::size_t index = 0; index < group.items.size(); ++index)
            text += (index == 0 ? "" : " ") + group.items[index].id();
        text += "]";
    }
    return text;
}

// A group of `count` windows numbered pid × 10 + 1, + 2, ..., titled "<name> 1", "<name> 2", ...
inline SwitcherGroup windowGroup(std::int32_t pid, const std::string& name, std::size_t count)
{
    SwitcherGroup group { pid, name, false, {} };
    for (std::size_t index = 1; index <= count; ++index) {
        auto number = static_cast<std::uint32_t>(pid) * 10 + static_cast<std::uint32_t>(index);
        group.items.push_back({ number, pid, name, name + " " + std::to_string(index) });
    }
    return group;
}

// Groups of these sizes, apps "A", "B", ... with pids 1, 2, ...
inline std::vector<SwitcherGroup> groupsOfSizes(const std::vector<std::size_t>& sizes)
{
    std::vector<SwitcherGroup> groups;
    for (std::size_t index = 0; index < sizes.size(); ++index)
        groups.push_back(windowGroup(static_cast<std::int32_t>(index + 1), std::string(1, static_cast<char>('A' + index)), sizes[index]));
    return groups;
}

} // namespace quillmar
