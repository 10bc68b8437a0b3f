#include <cstdint>
#include <vector>

#include <benchmark/benchmark.h>

#include "core/hardware/ddc/DDCPacket.h"
#include "core/hardware/fans/FanCurve.h"
#include "core/hardware/smc/SMCCodec.h"

namespace quillmar {
namespace {

// What the panel's fan and temperature readout decodes once per key every refresh.
void smcDecode(benchmark::State& state)
{
    const std::vector<std::vector<std::uint8_t>> values { { 0x00, 0x00, 0xE1, 0x44 }, { 0x19, 0x00 }, { 0x2A, 0x80 }, { 0x02 } };
    const char* types[] { "flt ", "fpe2", "sp78", "ui8 " };
    for (auto _ : state) {
        for (std::size_t index = 0; index < values.size(); ++index)
            benchmark::DoNotOptimize(SMCCodec::decode(values[index], types[index]));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK(smcDecode);

void smcEncodeTarget(benchmark::State& state)
{
    double target = 1200;
    for (auto _ : state) {
        benchmark::DoNotOptimize(SMCCodec::encode(target, "flt ", 4));
        target = target < 6000 ? target + 1 : 1200;
    }
}
BENCHMARK(smcEncodeTarget);

// A curve of N points asked for its level across the whole temperature range.
void fanCurveLevel(benchmark::State& state)
{
    std::vector<FanCurvePoint> points;
    auto count = state.range(0);
    for (std::int64_t index = 0; index < count; ++index)
        points.push_back(FanCurvePoint::make(20 + 90.0 * static_cast<double>(index) / static_cast<double>(count), static_cast<int>(index * 100 / count)));
    auto curve = FanCurve::make(FanCurveSource::hottestSoC, points);
    double temperature = 20;
    for (auto _ : state) {
        benchmark::DoNotOptimize(curve.level(temperature));
        temperature = temperature < 110 ? temperature + 0.37 : 20;
    }
}
BENCHMARK(fanCurveLevel)->Arg(2)->Arg(8)->Arg(32);

// Building a set request and parsing a reply: the CPU side of one brightness step.
void ddcSetAndParse(benchmark::State& state)
{
    std::vector<std::uint8_t> reply { 0x6E, 0x88, 0x02, 0x00, 0x10, 0x00, 0x00, 0x64, 0x00, 0x32, 0xF2 };
    std::uint16_t value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(DDCPacket::setRequest(0x10, value));
        benchmark::DoNotOptimize(DDCPacket::parse(reply, 0x10));
        value = static_cast<std::uint16_t>((value + 1) % 101);
    }
}
BENCHMARK(ddcSetAndParse);

} // namespace
} // namespace quillmar
