#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/apps/PropertyList.h"
#include "tests/apps/PropertyListWriter.h"

namespace quillmar {
namespace {

using Dictionary = PropertyValue::Dictionary;
using Array = PropertyValue::Array;

std::string xmlDocument(const std::string& body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" + body + "\n</plist>\n";
}

// The value read, or none, so that it compares with an expected value.
std::optional<PropertyValue> parsed(std::string_view bytes)
{
    auto value = parsePropertyList(bytes);
    return value.ok() ? std::optional<PropertyValue>(*value) : std::nullopt;
}

struct XmlCase {
    const char* name;
    std::string body;
    PropertyValue expected;
};

class PropertyListXmlTest : public testing::TestWithParam<XmlCase> { };

TEST_P(PropertyListXmlTest, ReadsTheValue)
{
    auto value = parsePropertyList(xmlDocument(GetParam().body));
    ASSERT_TRUE(value.ok());
    EXPECT_EQ(*value, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Kinds, PropertyListXmlTest,
    testing::Values(
        XmlCase { "String", "<string>Caf\xC3\xA9 &amp; Co</string>", PropertyValue("Caf\xC3\xA9 & Co") },
        XmlCase { "NegativeInteger", "<integer>-42</integer>", PropertyValue(std::int64_t { -42 }) },
        XmlCase { "LargeInteger", "<integer>9000000000</integer>", PropertyValue(std::int64_t { 9000000000 }) },
        XmlCase { "Real", "<real>2.5</real>", PropertyValue(2.5) },
        XmlCase { "True", "<true/>", PropertyValue(true) },
        XmlCase { "False", "<false/>", PropertyValue(false) },
        XmlCase { "DateIsInSecondsSince1970", "<date>2001-01-01T00:01:40Z</date>",
            PropertyValue(PropertyDate { 978307300.0 }) },
        XmlCase { "DataIsDecodedFromBase64", "<data>AAH/</data>", PropertyValue(PropertyData { 0x00, 0x01, 0xFF }) },
        XmlCase { "Array", "<array><string>a</string><integer>1</integer></array>",
            PropertyValue(Array { "a", 1 }) },
        XmlCase { "NestedDictionary",
            "<dict><key>CFBundleName</key><string>Notes</string>"
            "<key>Types</key><array><dict><key>Role</key><string>Editor</string></dict></array></dict>",
            PropertyValue(Dictionary { { "CFBundleName", "Notes" },
                { "Types", Array { Dictionary { { "Role", "Editor" } } } } }) },
        XmlCase { "EmptyDictionary", "<dict/>", PropertyValue(Dictionary {}) }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PropertyListTest, BinaryListsReadTheSameAsTheirSource)
{
    PropertyValue source(Dictionary {
        { "CFBundleIdentifier", "org.example.Editor" },
        { "Count", std::int64_t { -7 } },
        { "Scale", 0.25 },
        { "Enabled", true },
        { "Built", PropertyDate { 1700000000.0 } },
        { "Blob", PropertyData { 1, 2, 3 } },
        { "Nested", Array { Array { "deep" }, Dictionary { { "k", "v" } } } },
    });
    auto binary = testing_support::binaryPropertyList(source);
    ASSERT_EQ(binary.substr(0, 8), "bplist00");
    EXPECT_EQ(parsed(binary), source);
    EXPECT_EQ(parsed(testing_support::xmlPropertyList(source)), source);
}

TEST(PropertyListTest, BinaryDatesKeepFractionsOfASecond)
{
    PropertyValue source(PropertyDate { 1700000000.5 });
    EXPECT_EQ(parsed(testing_support::binaryPropertyList(source)), source);
}

// A binary list of the given objects (marker and contents each, references one byte wide); object 0 is the top.
std::string assembledBinaryList(const std::vector<std::string>& objects)
{
    std::string bytes = "bplist00";
    std::vector<std::size_t> offsets;
    for (const auto& object : objects) {
        offsets.push_back(bytes.size());
        bytes += object;
    }
    auto table = bytes.size();
    for (auto offset : offsets) {
        bytes += static_cast<char>(offset >> 8);
        bytes += static_cast<char>(offset & 0xFF);
    }
    std::string trailer(32, '\0');
    trailer[6] = 2; // offset width
    trailer[7] = 1; // reference width
    trailer[15] = static_cast<char>(offsets.size());
    trailer[30] = static_cast<char>(table >> 8);
    trailer[31] = static_cast<char>(table & 0xFF);
    return bytes + trailer;
}

// Object i (i < levels) is an array of `fanOut` references to object i + 1, and the last object is an
// empty array: a few hundred bytes that expand to fanOut^levels values.
std::string sharedReferenceList(int levels, int fanOut, bool lastRefersToFirst = false)
{
    std::vector<std::string> objects;
    for (int level = 0; level < levels; ++level)
        objects.push_back(static_cast<char>(0xA0 | fanOut) + std::string(static_cast<std::size_t>(fanOut), static_cast<char>(level + 1)));
    objects.push_back(lastRefersToFirst ? std::string("\xA1\x00", 2) : std::string("\xA0"));
    return assembledBinaryList(objects);
}

TEST(PropertyListTest, SharedReferencesAreExpandedIntoTheTree)
{
    PropertyValue empty(Array {});
    PropertyValue pair(Array { empty, empty });
    PropertyValue middle(Array { pair, pair });
    EXPECT_EQ(parsed(sharedReferenceList(3, 2)), PropertyValue(Array { middle, middle }));
}

struct RefusedCase {
    const char* name;
    std::string bytes;
    ParseProblem problem;
};

class PropertyListRefusedTest : public testing::TestWithParam<RefusedCase> { };

TEST_P(PropertyListRefusedTest, YieldsTheProblem)
{
    auto value = parsePropertyList(GetParam().bytes);
    ASSERT_FALSE(value.ok());
    EXPECT_EQ(value.problem(), GetParam().problem) << value.failure().detail;
}

std::string nestedArrays(int depth)
{
    std::string body;
    for (int level = 0; level < depth; ++level)
        body += "<array>";
    for (int level = 0; level < depth; ++level)
        body += "</array>";
    return xmlDocument(body);
}

INSTANTIATE_TEST_SUITE_P(Hostile, PropertyListRefusedTest,
    testing::Values(
        RefusedCase { "Empty", "", ParseProblem::malformed },
        RefusedCase { "PlainText", "CFBundleName = Notes;", ParseProblem::malformed },
        RefusedCase { "UnclosedXml", xmlDocument("<dict><key>a</key><string>b</string>").substr(0, 150), ParseProblem::malformed },
        RefusedCase { "MagicAlone", "bplist00", ParseProblem::malformed },
        RefusedCase { "TruncatedBinary",
            testing_support::binaryPropertyList(PropertyValue(Dictionary { { "a", "b" } })).substr(0, 30), ParseProblem::malformed },
        RefusedCase { "ExponentialSharedReferences", sharedReferenceList(40, 10), ParseProblem::tooLarge },
        RefusedCase { "ReferenceCycle", sharedReferenceList(3, 1, /*lastRefersToFirst=*/true), ParseProblem::malformed },
        RefusedCase { "XmlDeeperThanTheLimit", nestedArrays(65), ParseProblem::tooLarge },
        RefusedCase { "BinaryDeeperThanTheLimit", sharedReferenceList(64, 1), ParseProblem::tooLarge },
        RefusedCase { "BinaryKeyNotAString", assembledBinaryList({ "\xD1\x01\x02", "\x10\x05", "\x51" "a" }), ParseProblem::malformed },
        RefusedCase { "BinaryKeyWithNul", assembledBinaryList({ "\xD1\x01\x02", std::string("\x52" "a\0", 3), "\x51" "b" }), ParseProblem::malformed },
        RefusedCase { "BinaryUtf16KeyWithNul",
            assembledBinaryList({ "\xD1\x01\x02", std::string("\x61\x00\x00", 3), "\x51" "b" }), ParseProblem::malformed }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PropertyListTest, HandAssembledBinaryDictionaryIsRead)
{
    // The same layout as the refused key cases, with keys that are plain strings (one of them UTF-16).
    EXPECT_EQ(parsed(assembledBinaryList({ "\xD2\x01\x02\x03\x04", "\x51" "a", std::string("\x61\x00" "b", 3),
                  "\x10\x05", "\x51" "x" })),
        PropertyValue(Dictionary { { "a", 5 }, { "b", "x" } }));
}

TEST(PropertyListTest, DepthUpToTheLimitIsRead)
{
    EXPECT_TRUE(parsePropertyList(nestedArrays(64)).ok());
    EXPECT_TRUE(parsePropertyList(sharedReferenceList(63, 1)).ok());
}

TEST(PropertyListTest, SizeLimitIsInclusive)
{
    auto bytes = xmlDocument("<string>x</string>");
    PropertyListLimits limits;
    limits.maximumBytes = bytes.size();
    EXPECT_TRUE(parsePropertyList(bytes, limits).ok());
    limits.maximumBytes = bytes.size() - 1;
    auto tooLarge = parsePropertyList(bytes, limits);
    ASSERT_FALSE(tooLarge.ok());
    EXPECT_EQ(tooLarge.problem(), ParseProblem::tooLarge);
}

TEST(PropertyListTest, ValueLimitCountsExpandedSharedReferences)
{
    PropertyListLimits limits;
    limits.maximumValues = 15; // 1 + 2 + 4 + 8 values for three levels of two
    EXPECT_TRUE(parsePropertyList(sharedReferenceList(3, 2), limits).ok());
    limits.maximumValues = 14;
    auto tooMany = parsePropertyList(sharedReferenceList(3, 2), limits);
    ASSERT_FALSE(tooMany.ok());
    EXPECT_EQ(tooMany.problem(), ParseProblem::tooLarge);
}

} // namespace
} // namespace quillmar
