#include "core/apps/PropertyList.h"

#include <cstdlib>
#include <memory>

#include <fmt/format.h>

#include "core/apps/BinaryPropertyListShape.h"
#include "core/apps/PlistHandle.h"

namespace quillmar {

namespace {

// Seconds from 1970-01-01 to 2001-01-01, the origin of property-list dates.
constexpr double referenceDateOffset = 978307200.0;

struct FreeKey {
    void operator()(char* key) const { std::free(key); }
};

class Converter final {
public:
    explicit Converter(const PropertyListLimits& limits) : m_limits(limits) { }

    // Why the last `convert` gave none.
    const ParseFailure& failure() const { return m_failure; }

    std::optional<PropertyValue> convert(plist_t node, std::size_t depth)
    {
        if (!node)
            return fail(ParseProblem::malformed, "property list: missing node");
        if (++m_values > m_limits.maximumValues)
            return fail(ParseProblem::tooLarge, "property list: too many values");
        switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t value = 0;
            plist_get_bool_val(node, &value);
            return PropertyValue(value != 0);
        }
        case PLIST_UINT:
        case PLIST_UID: {
            // libplist keeps every integer in 64 bits; negative ones come back in two's complement.
            std::uint64_t value = 0;
            if (plist_get_node_type(node) == PLIST_UINT)
                plist_get_uint_val(node, &value);
            else
                plist_get_uid_val(node, &value);
            return PropertyValue(static_cast<std::int64_t>(value));
        }
        case PLIST_REAL: {
            double value = 0;
            plist_get_real_val(node, &value);
            return PropertyValue(value);
        }
        case PLIST_STRING: {
            std::uint64_t length = 0;
            const char* text = plist_get_string_ptr(node, &length);
            return PropertyValue(text ? std::string(text, static_cast<std::size_t>(length)) : std::string());
        }
        case PLIST_DATE: {
            std::int32_t seconds = 0;
            std::int32_t microseconds = 0;
            plist_get_date_val(node, &seconds, &microseconds);
            return PropertyValue(PropertyDate { referenceDateOffset + seconds + microseconds / 1e6 });
        }
        case PLIST_DATA: {
            std::uint64_t length = 0;
            const char* bytes = plist_get_data_ptr(node, &length);
            auto* begin = reinterpret_cast<const std::uint8_t*>(bytes);
            return PropertyValue(bytes ? PropertyData(begin, begin + length) : PropertyData());
        }
        case PLIST_ARRAY:
            return convertArray(node, depth + 1);
        case PLIST_DICT:
            return convertDictionary(node, depth + 1);
        default:
            return fail(ParseProblem::malformed, "property list: unknown kind of value");
        }
    }

private:
    std::nullopt_t fail(ParseProblem problem, const char* detail)
    {
        m_failure = ParseFailure { problem, detail };
        return std::nullopt;
    }

    std::optional<PropertyValue> convertArray(plist_t node, std::size_t depth)
    {
        if (depth > m_limits.maximumDepth)
            return fail(ParseProblem::tooLarge, "property list: nested too deeply");
        PropertyValue::Array array;
        auto count = plist_array_get_size(node);
        array.reserve(count);
        for (std::uint32_t index = 0; index < count; ++index) {
            auto item = convert(plist_array_get_item(node, index), depth);
            if (!item)
                return std::nullopt;
            array.push_back(std::move(*item));
        }
        return PropertyValue(std::move(array));
    }

    std::optional<PropertyValue> convertDictionary(plist_t node, std::size_t depth)
    {
        if (depth > m_limits.maximumDepth)
            return fail(ParseProblem::tooLarge, "property list: nested too deeply");
        PropertyValue::Dictionary dictionary;
        plist_dict_iter rawIterator = nullptr;
        plist_dict_new_iter(node, &rawIterator);
        std::unique_ptr<void, decltype(&std::free)> iterator(rawIterator, &std::free);
        for (;;) {
            // The key is fetched from its own node: a binary list may hold a key that is not a string,
            // which libplist's iterator would stop the process on.
            plist_t item = nullptr;
            plist_dict_next_item(node, iterator.get(), nullptr, &item);
            if (!item)
                break;
            plist_t keyNode = plist_dict_item_get_key(item);
            if (!keyNode || plist_get_node_type(keyNode) != PLIST_KEY)
                return fail(ParseProblem::malformed, "property list: dictionary key is not a string");
            char* rawKey = nullptr;
            plist_get_key_val(keyNode, &rawKey);
            std::unique_ptr<char, FreeKey> key(rawKey);
            if (!key)
                return fail(ParseProblem::malformed, "property list: dictionary key unreadable");
            auto value = convert(item, depth);
            if (!value)
                return std::nullopt;
            // A repeated key keeps its first value.
            dictionary.emplace(std::string(key.get()), std::move(*value));
        }
        return PropertyValue(std::move(dictionary));
    }

    const PropertyListLimits& m_limits;
    std::size_t m_values = 0;
    ParseFailure m_failure;
};

} // namespace

// g++ 12 at -O2 takes the move of the recursive value into the result for a read of uninitialised memory (a
// false positive of its variant analysis); the warning is silenced for this function only (clang has no such warning).
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
ParseResult<PropertyValue> parsePropertyList(std::string_view bytes, const PropertyListLimits& limits)
{
    if (bytes.empty())
        return ParseFailure { ParseProblem::malformed, "property list: empty" };
    if (bytes.size() > limits.maximumBytes || bytes.size() > UINT32_MAX)
        return ParseFailure { ParseProblem::tooLarge, fmt::format("property list: {} bytes", bytes.size()) };
    auto length = static_cast<std::uint32_t>(bytes.size());
    if (plist_is_binary(bytes.data(), length)) {
        if (auto problem = binaryShapeProblem(bytes, limits.maximumDepth, limits.maximumValues))
            return std::move(*problem);
    }
    PlistHandle root;
    plist_from_memory(bytes.data(), length, root.receive());
    if (!root.get())
        return ParseFailure { ParseProblem::malformed, "property list: not a property list" };
    Converter converter(limits);
    auto value = converter.convert(root.get(), 0);
    if (!value)
        return converter.failure();
    return std::move(*value);
}
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

} // namespace quillmar
