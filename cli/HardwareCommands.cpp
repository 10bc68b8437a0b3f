#include "cli/HardwareCommands.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "core/hardware/SystemHardwarePorts.h"
#include "core/hardware/ddc/DDCEngine.h"
#include "core/hardware/ddc/DDCPacket.h"
#include "core/hardware/ddc/VCPCode.h"
#include "core/hardware/fans/FanCurve.h"
#include "core/hardware/smc/SMCCodec.h"

namespace quillmar::cli {

namespace {

// How long a command waits for one display's answer; a monitor that answers at all does so in well under a second.
constexpr Duration displayTimeout = seconds(5.0);

// A whole number in decimal, or in hexadecimal after "0x"; none past `maximum` or with anything else in it.
std::optional<std::uint32_t> wholeNumber(std::string_view text, std::uint32_t maximum)
{
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        base = 16;
    }
    std::uint32_t value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || value > maximum)
        return std::nullopt;
    return value;
}

std::optional<double> decimalNumber(std::string_view text)
{
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

// Bytes written as hexadecimal pairs, with an optional "0x" and spaces between bytes ("1900", "19 00").
std::optional<std::vector<std::uint8_t>> hexBytes(std::string_view text)
{
    if (text.starts_with("0x") || text.starts_with("0X"))
        text.remove_prefix(2);
    std::string digits;
    for (char character : text) {
        if (character != ' ')
            digits.push_back(character);
    }
    if (digits.empty() || digits.size() % 2 != 0)
        return std::nullopt;
    std::vector<std::uint8_t> bytes;
    for (std::size_t index = 0; index < digits.size(); index += 2) {
        std::uint8_t byte = 0;
        auto [end, error] = std::from_chars(digits.data() + index, digits.data() + index + 2, byte, 16);
        if (error != std::errc() || end != digits.data() + index + 2)
            return std::nullopt;
        bytes.push_back(byte);
    }
    return bytes;
}

std::string hexString(const std::vector<std::uint8_t>& bytes, std::string_view separator)
{
    std::string text;
    for (auto byte : bytes) {
        if (!text.empty())
            text += separator;
        text += fmt::format("{:02x}", byte);
    }
    return text;
}

// "40:20,80:100" as curve points; none when a point is not TEMPERATURE:LEVEL with a level of 0...100.
std::optional<std::vector<FanCurvePoint>> curvePoints(std::string_view text)
{
    std::vector<FanCurvePoint> points;
    while (!text.empty()) {
        auto comma = text.find(',');
        auto point = text.substr(0, comma);
        text = comma == std::string_view::npos ? std::string_view {} : text.substr(comma + 1);
        auto colon = point.find(':');
        if (colon == std::string_view::npos)
            return std::nullopt;
        auto temperature = decimalNumber(point.substr(0, colon));
        auto level = wholeNumber(point.substr(colon + 1), 100);
        if (!temperature || !std::isfinite(*temperature) || !level)
            return std::nullopt;
        points.push_back(FanCurvePoint::make(*temperature, static_cast<int>(*level)));
    }
    if (points.empty())
        return std::nullopt;
    return points;
}

std::string inQuotes(std::string_view text)
{
    return fmt::format("\"{}\"", text);
}

// One compact line with "status" first ({"status":"value","current":50,"maximum":100}), the order people read it in.
void printStatus(CliContext& context, const DDCReadOutcome& outcome)
{
    nlohmann::ordered_json object;
    switch (outcome.status) {
    case DDCReadOutcome::Status::value:
        object["status"] = "value";
        object["current"] = outcome.current;
        object["maximum"] = outcome.maximum;
        break;
    case DDCReadOutcome::Status::unsupported:
        object["status"] = "unsupported";
        break;
    case DDCReadOutcome::Status::failed:
        object["status"] = "failed";
        break;
    }
    context.printJson(object);
}

void addSmcCommands(CLI::App& app, CliContext& context)
{
    auto* smc = app.add_subcommand("smc", "Decode and encode SMC values");
    smc->require_subcommand(1);

    struct Arguments {
        std::string type;
        std::string data;
        std::string size;
    };
    auto arguments = std::make_shared<Arguments>();
    const char* typeHelp = "The four-character type, spaces included (quote it: \"flt \")";

    auto* decode = smc->add_subcommand("decode", "Print the value of HEX bytes read as TYPE");
    decode->add_option("TYPE", arguments->type, typeHelp)->required();
    decode->add_option("HEX", arguments->data, "The bytes in hexadecimal (1900)")->required();
    decode->callback([&context, arguments] {
        auto bytes = hexBytes(arguments->data);
        if (!bytes) {
            context.usageError(fmt::format("{} isn't a run of hexadecimal bytes such as 1900.", inQuotes(arguments->data)));
            return;
        }
        auto value = SMCCodec::decode(*bytes, arguments->type);
        if (!value) {
            context.refuse(fmt::format("Those bytes don't hold a value of type {}.", inQuotes(arguments->type)));
            return;
        }
        context.out() << fmt::format("{}\n", *value);
    });

    auto* encode = smc->add_subcommand("encode", "Print the bytes that hold VALUE as TYPE");
    encode->add_option("TYPE", arguments->type, typeHelp)->required();
    encode->add_option("VALUE", arguments->data, "The value (1600, -1.5)")->required();
    encode->callback([&context, arguments] {
        auto value = decimalNumber(arguments->data);
        if (!value) {
            context.usageError(fmt::format("{} isn't a number.", inQuotes(arguments->data)));
            return;
        }
        auto size = SMCCodec::size(arguments->type);
        auto bytes = size ? SMCCodec::encode(*value, arguments->type, *size) : std::nullopt;
        if (!bytes) {
            context.refuse(fmt::format("{} can't be written as type {}.", arguments->data, inQuotes(arguments->type)));
            return;
        }
        context.out() << hexString(*bytes, "") << '\n';
    });

    auto* max = smc->add_subcommand("max", "Print the largest value TYPE holds in SIZE bytes");
    max->add_option("TYPE", arguments->type, typeHelp)->required();
    max->add_option("SIZE", arguments->size, "The size in bytes")->required();
    max->callback([&context, arguments] {
        auto size = wholeNumber(arguments->size, 32);
        if (!size) {
            context.usageError(fmt::format("{} isn't a size from 0 to 32 bytes.", inQuotes(arguments->size)));
            return;
        }
        auto maximum = SMCCodec::maximum(arguments->type, *size);
        if (!maximum) {
            context.refuse(fmt::format("Type {} of {} bytes has no maximum.", inQuotes(arguments->type), *size));
            return;
        }
        context.out() << fmt::format("{}\n", *maximum);
    });
}

void addFanCommands(CLI::App& app, CliContext& context)
{
    auto* fan = app.add_subcommand("fan", "Fan curves");
    fan->require_subcommand(1);

    struct Arguments {
        std::string curve;
        std::string at;
    };
    auto arguments = std::make_shared<Arguments>();
    auto* level = fan->add_subcommand("level", "Print the level a curve gives at a temperature");
    level->add_option("--curve", arguments->curve, "Points as TEMPERATURE:LEVEL, separated by commas (40:20,80:100)")->required();
    level->add_option("--at", arguments->at, "The temperature in °C")->required();
    level->callback([&context, arguments] {
        auto points = curvePoints(arguments->curve);
        if (!points) {
            context.usageError(fmt::format(
                "{} isn't a curve: give points as TEMPERATURE:LEVEL separated by commas, with levels from 0 to 100.",
                inQuotes(arguments->curve)));
            return;
        }
        auto temperature = decimalNumber(arguments->at);
        if (!temperature || !std::isfinite(*temperature)) {
            context.usageError(fmt::format("{} isn't a temperature.", inQuotes(arguments->at)));
            return;
        }
        auto curve = FanCurve::make(FanCurveSource::hottestSoC, std::move(*points));
        context.out() << curve.level(*temperature) << '\n';
    });
}

void addDdcCommands(CLI::App& app, CliContext& context)
{
    auto* ddc = app.add_subcommand("ddc", "Build and read DDC/CI packets");
    ddc->require_subcommand(1);

    struct Arguments {
        std::string code;
        std::string value;
        std::string data;
        bool json = false;
    };
    auto arguments = std::make_shared<Arguments>();
    const char* codeHelp = "The VCP code, decimal or 0x-hexadecimal (0x10 is brightness)";

    auto* packet = ddc->add_subcommand("packet", "Print a request packet as hexadecimal bytes");
    packet->require_subcommand(1);
    auto* get = packet->add_subcommand("get", "The get-VCP-feature request for CODE");
    get->add_option("CODE", arguments->code, codeHelp)->required();
    get->callback([&context, arguments] {
        auto code = wholeNumber(arguments->code, 0xFF);
        if (!code) {
            context.usageError(fmt::format("{} isn't a VCP code from 0 to 255.", inQuotes(arguments->code)));
            return;
        }
        context.out() << hexString(DDCPacket::getRequest(static_cast<std::uint8_t>(*code)), " ") << '\n';
    });
    auto* set = packet->add_subcommand("set", "The set-VCP-feature request for CODE and VALUE");
    set->add_option("CODE", arguments->code, codeHelp)->required();
    set->add_option("VALUE", arguments->value, "The value, 0 to 65535, decimal or 0x-hexadecimal")->required();
    set->callback([&context, arguments] {
        auto code = wholeNumber(arguments->code, 0xFF);
        auto value = wholeNumber(arguments->value, 0xFFFF);
        if (!code) {
            context.usageError(fmt::format("{} isn't a VCP code from 0 to 255.", inQuotes(arguments->code)));
            return;
        }
        if (!value) {
            context.usageError(fmt::format("{} isn't a value from 0 to 65535.", inQuotes(arguments->value)));
            return;
        }
        auto bytes = DDCPacket::setRequest(static_cast<std::uint8_t>(*code), static_cast<std::uint16_t>(*value));
        context.out() << hexString(bytes, " ") << '\n';
    });

    auto* parse = ddc->add_subcommand("parse", "Read a monitor's reply to a get request");
    parse->add_option("HEX", arguments->data, "The reply bytes in hexadecimal")->required();
    parse->add_option("--code", arguments->code, codeHelp)->required();
    parse->add_flag("--json", arguments->json, "Print one JSON object");
    parse->callback([&context, arguments] {
        auto bytes = hexBytes(arguments->data);
        if (!bytes) {
            context.usageError(fmt::format("{} isn't a run of hexadecimal bytes.", inQuotes(arguments->data)));
            return;
        }
        auto code = wholeNumber(arguments->code, 0xFF);
        if (!code) {
            context.usageError(fmt::format("{} isn't a VCP code from 0 to 255.", inQuotes(arguments->code)));
            return;
        }
        auto outcome = DDCPacket::parse(*bytes, static_cast<std::uint8_t>(*code));
        if (arguments->json) {
            printStatus(context, outcome);
            return;
        }
        switch (outcome.status) {
        case DDCReadOutcome::Status::value:
            context.out() << outcome.current << ' ' << outcome.maximum << '\n';
            break;
        case DDCReadOutcome::Status::unsupported:
            context.out() << "unsupported\n";
            break;
        case DDCReadOutcome::Status::failed:
            context.out() << "failed\n";
            break;
        }
    });
}

// The displays and an engine to reach them, or a refusal already said.
struct DisplaySession {
    std::unique_ptr<I2CTransport> transport;
    std::unique_ptr<DDCEngine> engine;
    std::vector<DDCDisplay> displays;
};

std::optional<DisplaySession> openDisplays(CliContext& context)
{
    DisplaySession session;
    session.transport = makeSystemHardwarePorts().i2c;
    session.engine = std::make_unique<DDCEngine>(context.runtime(), *session.transport);
    auto displays = session.engine->discover();
    if (!displays) {
        context.refuse(displays.error().message);
        return std::nullopt;
    }
    session.displays = std::move(displays).value();
    return session;
}

std::string describe(std::size_t number, const DDCDisplay& display)
{
    return fmt::format("Display {} ({})", number, display.identity.productName);
}

void listDisplays(CliContext& context, bool json)
{
    auto session = openDisplays(context);
    if (!session)
        return;
    if (json) {
        auto displays = nlohmann::json::array();
        for (std::size_t index = 0; index < session->displays.size(); ++index) {
            const auto& display = session->displays[index];
            displays.push_back({ { "display", index + 1 }, { "name", display.identity.productName },
                { "serial", display.identity.serialNumber }, { "edidUUID", display.identity.edidUUID },
                { "bus", display.service } });
        }
        context.printJson({ { "displays", std::move(displays) } });
        return;
    }
    for (std::size_t index = 0; index < session->displays.size(); ++index) {
        const auto& display = session->displays[index];
        auto serial = display.identity.serialNumber.empty() ? std::string() : fmt::format("  serial {}", display.identity.serialNumber);
        context.out() << fmt::format("{}  {}{}  {}\n", index + 1, display.identity.productName, serial, display.service);
    }
}

void brightness(CliContext& context, std::optional<std::size_t> only, const std::optional<std::string>& valueText)
{
    std::optional<std::uint16_t> value;
    if (valueText) {
        auto parsed = wholeNumber(*valueText, 0xFFFF);
        if (!parsed) {
            context.usageError(fmt::format("{} isn't a brightness from 0 to 65535 (most monitors take 0 to 100).", inQuotes(*valueText)));
            return;
        }
        value = static_cast<std::uint16_t>(*parsed);
    }
    auto session = openDisplays(context);
    if (!session)
        return;
    if (only && (*only < 1 || *only > session->displays.size())) {
        context.usageError(fmt::format("There is no display {}; run \"quillmar displays list\" to see them.", *only));
        return;
    }

    bool answered = false;
    for (std::size_t index = 0; index < session->displays.size(); ++index) {
        if (only && *only != index + 1)
            continue;
        const auto& display = session->displays[index];
        // Shared with the completion: after a time-out the engine may still call it once this loop has moved on.
        std::shared_ptr<Signal> done = context.runtime().makeSignal();
        if (value) {
            auto succeeded = std::make_shared<bool>(false);
            session->engine->write(VCPCode::brightness, *value, display.service, [done, succeeded](bool ok) {
                *succeeded = ok;
                done->raise();
            });
            if (done->waitFor(displayTimeout) && *succeeded) {
                context.out() << fmt::format("{} is set to {}.\n", describe(index + 1, display), *value);
                answered = true;
            } else {
                context.err() << fmt::format("{} didn't take the brightness.\n", describe(index + 1, display));
            }
            continue;
        }
        auto outcome = std::make_shared<DDCReadOutcome>(DDCReadOutcome::failed());
        session->engine->read(display.service, [done, outcome](DDCReadOutcome read) {
            *outcome = read;
            done->raise();
        });
        auto read = done->waitFor(displayTimeout) ? *outcome : DDCReadOutcome::failed();
        switch (read.status) {
        case DDCReadOutcome::Status::value:
            context.out() << fmt::format("{} {} {}\n", index + 1, read.current, read.maximum);
            answered = true;
            break;
        case DDCReadOutcome::Status::unsupported:
            context.err() << fmt::format("{} doesn't offer brightness over DDC/CI.\n", describe(index + 1, display));
            break;
        case DDCReadOutcome::Status::failed:
            context.err() << fmt::format("{} didn't answer.\n", describe(index + 1, display));
            break;
        }
    }
    if (!answered)
        context.setExitCode(ExitCode::noAnswer);
}

void addDisplaysCommands(CLI::App& app, CliContext& context)
{
    auto* displays = app.add_subcommand("displays", "External monitors over DDC/CI");
    displays->require_subcommand(1);

    auto json = std::make_shared<bool>(false);
    auto* list = displays->add_subcommand("list", "The external monitors that answer over DDC/CI");
    list->add_flag("--json", *json, "Print one JSON object");
    list->callback([&context, json] { listDisplays(context, *json); });

    struct Arguments {
        std::size_t display = 0;
        std::string value;
    };
    auto arguments = std::make_shared<Arguments>();
    auto* level = displays->add_subcommand("brightness", "Read the brightness, or set it to VALUE");
    auto* displayOption = level->add_option("--display", arguments->display, "Only this display, as \"displays list\" numbers them");
    auto* valueOption = level->add_option("VALUE", arguments->value, "The brightness to set (most monitors take 0 to 100)");
    level->callback([&context, arguments, displayOption, valueOption] {
        std::optional<std::size_t> only;
        if (displayOption->count() > 0)
            only = arguments->display;
        std::optional<std::string> value;
        if (valueOption->count() > 0)
            value = arguments->value;
        brightness(context, only, value);
    });
}

} // namespace

void addHardwareCommands(CLI::App& app, CliContext& context)
{
    addSmcCommands(app, context);
    addFanCommands(app, context);
    addDdcCommands(app, context);
    addDisplaysCommands(app, context);
}

} // namespace quillmar::cli
