#include <gtest/gtest.h>

#include "core/net/FetchFailure.h"

namespace quillmar {
namespace {

// The kinds' own names are read in every fetcher test; what is left is what a failure carries.
TEST(FetchFailure, DescriptionCarriesTheStatusOrTheTransportsSentence)
{
    EXPECT_EQ(FetchFailure::http(503).description(), "http 503");
    EXPECT_EQ(FetchFailure::transport("Could not connect to server.").description(), "Could not connect to server.");
    EXPECT_NE(FetchFailure::http(500), FetchFailure::http(503));
}

} // namespace
} // namespace quillmar
