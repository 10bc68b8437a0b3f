#include "core/uninstaller/UninstallSort.h"

namespace quillmar {

std::string_view uninstallSortName(UninstallSort sort)
{
    switch (sort) {
    case UninstallSort::name:
        return "name";
    case UninstallSort::size:
        return "size";
    case UninstallSort::lastUsed:
        return "lastUsed";
    }
    return "name";
}

std::optional<UninstallSort> uninstallSort(std::string_view name)
{
    for (auto sort : { UninstallSort::name, UninstallSort::size, UninstallSort::lastUsed }) {
        if (uninstallSortName(sort) == name)
            return sort;
    }
    return std::nullopt;
}

} // namespace quillmar
