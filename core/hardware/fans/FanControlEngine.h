#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/base/Result.h"
#include "core/hardware/fans/Fan.h"
#include "core/hardware/fans/FanFailure.h"
#include "core/hardware/smc/SMCConnection.h"
#include "core/runtime/Clock.h"

namespace quillmar {

// Drives the fans through the SMC: discovery with its trust rules, a level applied with verification, and
// the way back to automatic. Its waits sleep on `clock` (the calling thread's, on virtual time in tests),
// so it belongs on a queue that may block: the fan helper's. Failures are Errors made by fanError.
class FanControlEngine final {
public:
    using Failure = FanFailure;

    // What the mode keys and "Ftst" hold: the system's own control, or ours.
    static constexpr std::uint8_t automaticMode = 0;
    static constexpr std::uint8_t manualMode = 1;

    static constexpr double maximumTrustedRpm = 20000;
    // After "Ftst" = 1 the system lets go of the fans only after a while.
    static constexpr Duration forceTestWait = seconds(3.0);
    static constexpr Duration slowPathRetryInterval = seconds(0.25);
    static constexpr int slowPathAttempts = 20;
    static constexpr int verifyAttempts = 10;
    static constexpr Duration verifyInterval = seconds(0.05);
    static constexpr int restoreAttempts = 20;
    static constexpr Duration restoreInterval = seconds(0.05);

    FanControlEngine(SMCConnection& smc, Clock& clock) : m_smc(smc), m_clock(clock) { }

    // Finds the fans ("FNum" 1...8) and keeps them. Fails with noFans when there are none, or none with a
    // usable mode key and target key (such fans are left out), and with untrustedLimits when any fan's
    // limits are missing or outside 0 <= minimum < maximum <= 20000 rpm.
    Result<std::vector<Fan>> discover();

    // Sets every fan to `level` percent of its range (0...100) and checks that the targets hold. Above 100
    // fails with untrustedLimits; on the first apply, fans already under other control fail with
    // controlledElsewhere; targets that never take fail with wouldNotSwitch and targets that do not read
    // back fail with didNotHold, both after restoring automatic.
    Result<void> apply(int level);

    // Writes the mode keys back to automatic and "Ftst" to 0, up to `attempts` times 0.05 s apart; true
    // when it took. Works before discovery too, from the mode keys the SMC has.
    bool restoreAutomatic(int attempts = restoreAttempts);

    // True when the fans are already driven by hand: a mode key or "Ftst" is not automatic.
    bool systemHasControl();

    // True from the first manual write until a restore takes: the fans may be manual because of this engine.
    bool holdsManual() const { return m_holdsManual; }

    const std::vector<Fan>& fans() const { return m_fans; }

private:
    bool writeManual(int level);
    bool slowPath(int level);
    bool verify(int level);
    bool writeMode(const std::string& key, std::uint8_t mode);
    std::optional<std::uint8_t> readMode(const std::string& key);
    std::vector<std::string> modeKeys();
    void pause(Duration duration) { m_clock.sleepFor(duration); }

    SMCConnection& m_smc;
    Clock& m_clock;
    std::vector<Fan> m_fans;
    bool m_holdsManual = false;
    bool m_controlling = false;
};

} // namespace quillmar
