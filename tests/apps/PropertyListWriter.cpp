#include "tests/apps/PropertyListWriter.h"

#include <cmath>
#include <type_traits>

#include "core/apps/PlistHandle.h"

namespace quillmar::testing_support {

namespace {

plist_t toPlist(const PropertyValue& value)
{
    return std::visit(
        [](const auto& item) -> plist_t {
            using Item = std::decay_t<decltype(item)>;
            if constexpr (std::is_same_v<Item, std::string>) {
                return plist_new_string(item.c_str());
            } else if constexpr (std::is_same_v<Item, std::int64_t>) {
                return plist_new_uint(static_cast<std::uint64_t>(item));
            } else if constexpr (std::is_same_v<Item, double>) {
                return plist_new_real(item);
            } else if constexpr (std::is_same_v<Item, bool>) {
                return plist_new_bool(item ? 1 : 0);
            } else if constexpr (std::is_same_v<Item, PropertyDate>) {
                auto sinceReference = item.secondsSince1970 - 978307200.0;
                auto seconds = std::floor(sinceReference);
                return plist_new_date(static_cast<std::int32_t>(seconds),
                    static_cast<std::int32_t>(std::lround((sinceReference - seconds) * 1e6)));
            } else if constexpr (std::is_same_v<Item, PropertyData>) {
                return plist_new_data(reinterpret_cast<const char*>(item.data()), item.size());
            } else if constexpr (std::is_same_v<Item, PropertyValue::Array>) {
                plist_t array = plist_new_array();
                for (const auto& entry : item)
                    plist_array_append_item(array, toPlist(entry));
                return array;
            } else {
                plist_t dictionary = plist_new_dict();
                for (const auto& [key, entry] : item)
                    plist_dict_set_item(dictionary, key.c_str(), toPlist(entry));
                return dictionary;
            }
        },
        value.storage());
}

} // namespace

std::string binaryPropertyList(const PropertyValue& value)
{
    PlistHandle root(toPlist(value));
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(root.get(), &bytes, &length);
    std::string result(bytes, length);
    plist_to_bin_free(bytes);
    return result;
}

std::string xmlPropertyList(const PropertyValue& value)
{
    PlistHandle root(toPlist(value));
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &bytes, &length);
    std::string result(bytes, length);
    plist_to_xml_free(bytes);
    return result;
}

} // namespace quillmar::testing_support
