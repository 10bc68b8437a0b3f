#include <gtest/gtest.h>

#include "core/net/FetchFailure.h"

namespace quillmar {
namespace {

struct DescriptionRow {
    const char* name;
    FetchFailure failure;
    const char* description;
};

const DescriptionRow descriptionRows[] = {
    { "httpCarriesTheStatus", FetchFailure::http(503), "http 503" },
    { "redirectThatWasRefused", FetchFailure::http(302), "http 302" },
    { "blocked", FetchFailure::blocked(), "blocked" },
    { "notFound", FetchFailure::notFound(), "notFound" },
    { "tooLarge", FetchFailure::tooLarge(), "tooLarge" },
    { "badResponse", FetchFailure::badResponse(), "badResponse" },
    { "transportIsItsOwnSentence", FetchFailure::transport("Could not connect to server."), "Could not connect to server." },
};

class FetchFailureDescription : public testing::TestWithParam<DescriptionRow> { };

TEST_P(FetchFailureDescription, NamesTheKind)
{
    EXPECT_EQ(GetParam().failure.description(), GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(Rows, FetchFailureDescription, testing::ValuesIn(descriptionRows),
    [](const testing::TestParamInfo<DescriptionRow>& row) { return std::string(row.param.name); });

TEST(FetchFailure, StatusesTellFailuresApart)
{
    EXPECT_NE(FetchFailure::http(500), FetchFailure::http(503));
}

} // namespace
} // namespace quillmar
