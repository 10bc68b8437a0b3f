#include "core/hardware/fans/FanControlEngine.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "core/hardware/fans/FanProbe.h"
#include "core/hardware/smc/FourCC.h"
#include "core/hardware/smc/SMCCodec.h"

namespace quillmar {

namespace {

constexpr std::string_view forceTestKey = "Ftst";

// How far a target may read back from what was written: the SMC rounds to its own step.
double tolerance(double target)
{
    return std::max(2.0, target * 0.001);
}

} // namespace

Result<std::vector<Fan>> FanControlEngine::discover()
{
    FanProbe probe(m_smc);
    auto count = probe.fanCount();
    if (!count)
        return fanError(Failure::noFans, "fnum is missing or outside 1...8");

    std::vector<Fan> fans;
    for (int index = 0; index < *count; ++index) {
        auto minimum = m_smc.readValue(FanProbe::key(index, "Mn"));
        auto maximum = m_smc.readValue(FanProbe::key(index, "Mx"));
        if (!minimum || !maximum || *minimum < 0 || *minimum >= *maximum || *maximum > maximumTrustedRpm) {
            return fanError(Failure::untrustedLimits,
                fmt::format("fan {} limits {}...{} rpm", index, minimum.value_or(-1), maximum.value_or(-1)));
        }
        auto modeKey = probe.modeKey(index);
        auto modeInfo = modeKey ? m_smc.info(*modeKey) : std::nullopt;
        if (!modeInfo || modeInfo->size != 1) {
            diagnostic("fans: fan {} has no one-byte mode key, left out", index);
            continue;
        }
        auto targetKey = FanProbe::key(index, "Tg");
        auto targetInfo = m_smc.info(targetKey);
        auto targetMaximum = targetInfo ? SMCCodec::maximum(FourCC::string(targetInfo->type), targetInfo->size)
                                        : std::nullopt;
        if (!targetMaximum || *targetMaximum < *maximum) {
            diagnostic("fans: fan {} target key cannot hold {} rpm, left out", index, *maximum);
            continue;
        }
        fans.push_back(Fan { index, *minimum, *maximum, *modeKey, targetKey, *targetInfo });
    }
    if (fans.empty())
        return fanError(Failure::noFans, "no fan has usable mode and target keys");
    m_fans = fans;
    return fans;
}

Result<void> FanControlEngine::apply(int level)
{
    if (level > 100)
        return fanError(Failure::untrustedLimits, fmt::format("level {} is above 100", level));
    if (m_fans.empty())
        QUILLMAR_TRY(discover());
    if (!m_controlling && systemHasControl())
        return fanError(Failure::controlledElsewhere);

    m_holdsManual = true;
    if (!writeManual(level) && !slowPath(level)) {
        restoreAutomatic(restoreAttempts);
        return fanError(Failure::wouldNotSwitch, fmt::format("level {}", level));
    }
    if (!verify(level)) {
        restoreAutomatic(restoreAttempts);
        return fanError(Failure::didNotHold, fmt::format("level {}", level));
    }
    m_controlling = true;
    return {};
}

bool FanControlEngine::writeManual(int level)
{
    // Fan by fan: its mode first, then its target, so that a fan is never given a target it ignores.
    for (const auto& fan : m_fans) {
        if (!writeMode(fan.modeKey, manualMode) || readMode(fan.modeKey) != manualMode)
            return false;
        if (!m_smc.writeValue(fan.targetKey, fan.target(level)))
            return false;
    }
    return true;
}

bool FanControlEngine::slowPath(int level)
{
    if (!m_smc.info(forceTestKey) || !m_smc.writeValue(forceTestKey, 1)) {
        diagnostic("fans: ftst cannot be written, no slow path");
        return false;
    }
    pause(forceTestWait);
    for (int attempt = 0; attempt < slowPathAttempts; ++attempt) {
        if (attempt > 0)
            pause(slowPathRetryInterval);
        if (writeManual(level))
            return true;
    }
    diagnostic("fans: manual mode did not take after {} slow-path attempts", slowPathAttempts);
    return false;
}

bool FanControlEngine::verify(int level)
{
    for (int attempt = 0; attempt < verifyAttempts; ++attempt) {
        if (attempt > 0)
            pause(verifyInterval);
        bool held = std::all_of(m_fans.begin(), m_fans.end(), [&](const Fan& fan) {
            auto target = fan.target(level);
            auto readBack = m_smc.readValue(fan.targetKey);
            return readBack && std::fabs(*readBack - target) <= tolerance(target);
        });
        if (held)
            return true;
    }
    diagnostic("fans: targets for level {} did not read back within tolerance", level);
    return false;
}

bool FanControlEngine::restoreAutomatic(int attempts)
{
    auto keys = modeKeys();
    bool hasForceTest = m_smc.info(forceTestKey).has_value();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (attempt > 0)
            pause(restoreInterval);
        bool took = true;
        for (const auto& key : keys)
            took = writeMode(key, automaticMode) && readMode(key) == automaticMode && took;
        if (hasForceTest)
            took = m_smc.writeValue(forceTestKey, 0) && took;
        if (took) {
            m_holdsManual = false;
            m_controlling = false;
            return true;
        }
    }
    diagnostic("fans: automatic mode did not take after {} attempts", attempts);
    return false;
}

bool FanControlEngine::systemHasControl()
{
    for (const auto& key : modeKeys()) {
        if (auto mode = readMode(key); mode && *mode != automaticMode)
            return true;
    }
    auto forceTest = m_smc.readValue(forceTestKey);
    return forceTest && *forceTest != 0;
}

bool FanControlEngine::writeMode(const std::string& key, std::uint8_t mode)
{
    auto info = m_smc.info(key);
    std::array<std::uint8_t, 1> bytes { mode };
    return info && info->size == 1 && m_smc.writeBytes(key, *info, bytes);
}

std::optional<std::uint8_t> FanControlEngine::readMode(const std::string& key)
{
    auto info = m_smc.info(key);
    if (!info || info->size != 1)
        return std::nullopt;
    auto bytes = m_smc.readBytes(key, *info);
    if (!bytes)
        return std::nullopt;
    return bytes->front();
}

std::vector<std::string> FanControlEngine::modeKeys()
{
    std::vector<std::string> keys;
    if (!m_fans.empty()) {
        for (const auto& fan : m_fans)
            keys.push_back(fan.modeKey);
        return keys;
    }
    // Before discovery (a restore after a crash): every mode key the SMC has, whatever the limits say.
    FanProbe probe(m_smc);
    for (int index = 0; index < probe.fanCount().value_or(0); ++index) {
        if (auto key = probe.modeKey(index))
            keys.push_back(*key);
    }
    return keys;
}

} // namespace quillmar
