#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillmar {

// A property-list date: seconds since 1970-01-01T00:00:00Z (fractions allowed, negative before 1970).
struct PropertyDate {
    double secondsSince1970 = 0;
    bool operator==(const PropertyDate&) const = default;
};

// A property-list data blob, the bytes as they were stored.
using PropertyData = std::vector<std::uint8_t>;

// One value of a property list, whatever its file format: string, integer, real, boolean, date, data,
// array, or dictionary with string keys. A plain value; equality compares the whole tree.
class PropertyValue {
public:
    using Array = std::vector<PropertyValue>;
    using Dictionary = std::map<std::string, PropertyValue, std::less<>>;
    using Storage = std::variant<std::string, std::int64_t, double, bool, PropertyDate, PropertyData, Array, Dictionary>;

    PropertyValue() : m_storage(Dictionary {}) { }
    PropertyValue(std::string text) : m_storage(std::move(text)) { }
    PropertyValue(const char* text) : m_storage(std::string(text)) { }
    PropertyValue(std::int64_t integer) : m_storage(integer) { }
    PropertyValue(int integer) : m_storage(std::int64_t { integer }) { }
    PropertyValue(double real) : m_storage(real) { }
    PropertyValue(bool boolean) : m_storage(boolean) { }
    PropertyValue(PropertyDate date) : m_storage(date) { }
    PropertyValue(PropertyData data) : m_storage(std::move(data)) { }
    PropertyValue(Array array) : m_storage(std::move(array)) { }
    PropertyValue(Dictionary dictionary) : m_storage(std::move(dictionary)) { }

    // Each accessor answers the value when it has that kind, else null.
    const std::string* string() const { return std::get_if<std::string>(&m_storage); }
    const std::int64_t* integer() const { return std::get_if<std::int64_t>(&m_storage); }
    const double* real() const { return std::get_if<double>(&m_storage); }
    const bool* boolean() const { return std::get_if<bool>(&m_storage); }
    const PropertyDate* date() const { return std::get_if<PropertyDate>(&m_storage); }
    const PropertyData* data() const { return std::get_if<PropertyData>(&m_storage); }
    const Array* array() const { return std::get_if<Array>(&m_storage); }
    const Dictionary* dictionary() const { return std::get_if<Dictionary>(&m_storage); }

    const Storage& storage() const { return m_storage; }

    bool operator==(const PropertyValue&) const = default;

private:
    Storage m_storage;
};

} // namespace quillmar
