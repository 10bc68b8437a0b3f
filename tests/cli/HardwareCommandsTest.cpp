#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>


#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

struct CommandRow {
    const char* name;
    std::vector<std::string> words;
    int code;
    std::string out;
};

class HardwareCommands : public testing::TestWithParam<CommandRow> {
protected:
    TemporaryFolder folder;
};

TEST_P(HardwareCommands, Answer)
{
    auto run = runQuillmar(folder.path(), GetParam().words);
    EXPECT_EQ(run.code, GetParam().code) << run.err;
    EXPECT_EQ(run.out, GetParam().out);
    if (run.code != 0) {
        EXPECT_FALSE(run.err.empty()) << "a refusal or usage error says why";
    }
}

// A brightness reply of 50 out of 100 and an unsupported one.
const std::string brightnessReply = "6e880200100000640032f2";
const std::string unsupportedReply = "6e880201100000000000a5";

// The values themselves are the codecs' own tests; these rows are about reading the words and writing the answer.
INSTANTIATE_TEST_SUITE_P(Table, HardwareCommands,
    testing::Values(
        CommandRow { "decodeFixedPoint", { "smc", "decode", "fpe2", "1900" }, 0, "1600\n" },
        CommandRow { "decodeFloatWithItsSpace", { "smc", "decode", "flt ", "0000e144" }, 0, "1800\n" },
        CommandRow { "decodeShortestRoundTrip", { "smc", "decode", "flt ", "cdcccc3d" }, 0, "0.10000000149011612\n" },
        CommandRow { "decodeSpacedHexWithPrefix", { "smc", "decode", "ui16", "0x12 34" }, 0, "4660\n" },
        CommandRow { "decodeInvalidTypeHasNoAnswer", { "smc", "decode", "sp88", "0100" }, 1, "" },
        CommandRow { "decodeOfNonHexIsAUsageError", { "smc", "decode", "fpe2", "zz00" }, 2, "" },
        CommandRow { "decodeOfOddDigitsIsAUsageError", { "smc", "decode", "fpe2", "190" }, 2, "" },
        CommandRow { "encodeFixedPoint", { "smc", "encode", "fpe2", "1600" }, 0, "1900\n" },
        CommandRow { "encodeNegative", { "smc", "encode", "sp78", "-1.5" }, 0, "fe80\n" },
        CommandRow { "encodeOutOfRangeHasNoAnswer", { "smc", "encode", "ui8 ", "256" }, 1, "" },
        CommandRow { "encodeNotANumberIsAUsageError", { "smc", "encode", "fpe2", "fast" }, 2, "" },
        CommandRow { "maxFloat", { "smc", "max", "flt ", "4" }, 0, "3.4028234663852886e+38\n" },
        CommandRow { "maxFloatOfOtherSizeHasNoAnswer", { "smc", "max", "flt ", "2" }, 1, "" },
        CommandRow { "maxSizeNotANumber", { "smc", "max", "fpe2", "two" }, 2, "" },
        CommandRow { "curveMidway", { "fan", "level", "--curve", "40:20,80:100", "--at", "60" }, 0, "60\n" },
        CommandRow { "curveLevelAboveHundred", { "fan", "level", "--curve", "40:120", "--at", "60" }, 2, "" },
        CommandRow { "curveWithoutColon", { "fan", "level", "--curve", "40-20", "--at", "60" }, 2, "" },
        CommandRow { "curveTemperatureNotANumber", { "fan", "level", "--curve", "40:20", "--at", "warm" }, 2, "" },
        CommandRow { "curveMissingAt", { "fan", "level", "--curve", "40:20" }, 2, "" },
        CommandRow { "packetGetHex", { "ddc", "packet", "get", "0x10" }, 0, "82 01 10 ac\n" },
        CommandRow { "packetGetDecimal", { "ddc", "packet", "get", "16" }, 0, "82 01 10 ac\n" },
        CommandRow { "packetSet", { "ddc", "packet", "set", "0x10", "50" }, 0, "84 03 10 00 32 9a\n" },
        CommandRow { "packetCodePastAByte", { "ddc", "packet", "get", "256" }, 2, "" },
        CommandRow { "packetValuePastSixteenBits", { "ddc", "packet", "set", "0x10", "65536" }, 2, "" },
        CommandRow { "parseValue", { "ddc", "parse", brightnessReply, "--code", "0x10" }, 0, "50 100\n" },
        CommandRow { "parseUnsupported", { "ddc", "parse", unsupportedReply, "--code", "0x10" }, 0, "unsupported\n" },
        CommandRow { "parseOtherCodeFails", { "ddc", "parse", brightnessReply, "--code", "0x12" }, 0, "failed\n" },
        CommandRow { "parseJsonValue", { "ddc", "parse", brightnessReply, "--code", "0x10", "--json" }, 0,
            "{\"status\":\"value\",\"current\":50,\"maximum\":100}\n" },
        CommandRow { "parseJsonUnsupported", { "ddc", "parse", unsupportedReply, "--code", "0x10", "--json" }, 0,
            "{\"status\":\"unsupported\"}\n" },
        CommandRow { "parseJsonFailed", { "ddc", "parse", "00", "--code", "0x10", "--json" }, 0, "{\"status\":\"failed\"}\n" },
        CommandRow { "parseWithoutCode", { "ddc", "parse", brightnessReply }, 2, "" },
        CommandRow { "brightnessNotANumber", { "displays", "brightness", "bright" }, 2, "" }),
    [](const testing::TestParamInfo<CommandRow>& row) { return std::string(row.param.name); });

// This machine may or may not have monitors on I2C; without display outputs the answer is one sentence.
TEST(DisplaysCommand, ListSaysClearlyWhenNoMonitorCanBeReached)
{
    TemporaryFolder folder;
    auto run = runQuillmar(folder.path(), { "displays", "list" });
    if (run.code == 0) {
        EXPECT_FALSE(run.out.empty());
        return;
    }
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    ASSERT_FALSE(run.err.empty());
    EXPECT_EQ(run.err.back(), '\n');
    EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << "one sentence: " << run.err;
    if (!std::filesystem::exists("/sys/class/drm")) {
        EXPECT_EQ(run.err, "No external monitor can be reached over DDC/CI: this system shows no display outputs.\n");
    }
}

} // namespace
} // namespace quillmar
