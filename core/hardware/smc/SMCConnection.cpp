#include "core/hardware/smc/SMCConnection.h"

#include <algorithm>

#include "core/hardware/smc/FourCC.h"
#include "core/hardware/smc/SMCCodec.h"

namespace quillmar {

Result<std::unique_ptr<SMCConnection>> SMCConnection::open(std::unique_ptr<SMCDriver> driver)
{
    QUILLMAR_TRY(driver->open());
    return std::unique_ptr<SMCConnection>(new SMCConnection(std::move(driver)));
}

std::optional<SMCParamBlock> SMCConnection::call(const SMCParamBlock& input)
{
    SMCParamBlock::Bytes output {};
    if (m_driver->callStructMethod(structSelector, input.encode(), output) != 0)
        return std::nullopt;
    return SMCParamBlock::decode(output);
}

std::optional<SMCKeyInfo> SMCConnection::info(std::string_view key)
{
    if (auto cached = m_infos.find(key); cached != m_infos.end())
        return cached->second;
    if (m_missing.contains(key))
        return std::nullopt;

    auto code = FourCC::code(key);
    if (code) {
        SMCParamBlock request;
        request.key = *code;
        request.command = SMCParamBlock::getKeyInfo;
        auto answer = call(request);
        if (answer && answer->result == 0 && answer->dataSize >= 1 && answer->dataSize <= SMCParamBlock::dataCapacity) {
            SMCKeyInfo found { answer->dataSize, answer->dataType };
            m_infos.emplace(std::string(key), found);
            return found;
        }
    }
    m_missing.emplace(key);
    return std::nullopt;
}

std::optional<std::vector<std::uint8_t>> SMCConnection::readBytes(std::string_view key, const SMCKeyInfo& info)
{
    auto code = FourCC::code(key);
    if (!code || info.size < 1 || info.size > SMCParamBlock::dataCapacity)
        return std::nullopt;
    SMCParamBlock request;
    request.key = *code;
    request.dataSize = info.size;
    request.command = SMCParamBlock::readKey;
    auto answer = call(request);
    if (!answer || answer->result != 0)
        return std::nullopt;
    return std::vector<std::uint8_t>(answer->bytes.begin(), answer->bytes.begin() + info.size);
}

bool SMCConnection::writeBytes(std::string_view key, const SMCKeyInfo& info, std::span<const std::uint8_t> bytes)
{
    auto code = FourCC::code(key);
    if (!code || bytes.size() != info.size || info.size < 1 || info.size > SMCParamBlock::dataCapacity)
        return false;
    SMCParamBlock request;
    request.key = *code;
    request.dataSize = info.size;
    request.dataType = info.type;
    request.command = SMCParamBlock::writeKey;
    std::copy(bytes.begin(), bytes.end(), request.bytes.begin());
    auto answer = call(request);
    return answer && answer->result == 0;
}

std::optional<double> SMCConnection::readValue(std::string_view key)
{
    auto found = info(key);
    if (!found)
        return std::nullopt;
    auto bytes = readBytes(key, *found);
    if (!bytes)
        return std::nullopt;
    return SMCCodec::decode(*bytes, FourCC::string(found->type));
}

bool SMCConnection::writeValue(std::string_view key, double value)
{
    auto found = info(key);
    if (!found)
        return false;
    auto bytes = SMCCodec::encode(value, FourCC::string(found->type), found->size);
    return bytes && writeBytes(key, *found, *bytes);
}

std::vector<std::string> SMCConnection::keys(const std::function<bool(std::string_view key)>& where)
{
    std::vector<std::string> matching;
    auto count = readValue("#KEY");
    if (!count || *count < 0)
        return matching;
    // A bound on the table walk, so that a corrupt count cannot make it run for billions of calls; real
    // tables hold a few thousand keys.
    auto total = static_cast<std::uint32_t>(std::min(*count, 65535.0));
    for (std::uint32_t index = 0; index < total; ++index) {
        SMCParamBlock request;
        request.command = SMCParamBlock::readKeyAtIndex;
        request.data32 = index;
        auto answer = call(request);
        if (!answer || answer->result != 0)
            continue;
        auto key = FourCC::string(answer->key);
        if (where(key))
            matching.push_back(std::move(key));
    }
    return matching;
}

} // namespace quillmar
