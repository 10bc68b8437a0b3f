#include "core/capture/ProfileHintProvider.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "core/capture/RowSignature.h"
#include "core/capture/ScrollMatcher.h"

namespace quillmar {

namespace {

// A profile row's difference counts at most this much brightness per band (0–255 scale), so that rows
// that do not belong to the page (a sticky header) cost the same at every shift.
constexpr float bandDifferenceCap = 24.0f;
constexpr float rowDifferenceCap = bandDifferenceCap * ProfileHintProvider::bandCount;

class ProfileFrame final : public ScrollHintProvider::Frame {
public:
    int fullWidth = 0;
    int fullHeight = 0;
    int scaledHeight = 0;
    bool flat = true; // every profile row is the same: no shift can be told from another
    std::vector<float> profile; // scaledHeight rows of bandCount means

    const float* row(int y) const
    {
        return profile.data() + static_cast<std::size_t>(y) * ProfileHintProvider::bandCount;
    }
};

float rowDifference(const float* a, const float* b)
{
    float sum = 0;
    for (int k = 0; k < ProfileHintProvider::bandCount; ++k)
        sum += std::fabs(a[k] - b[k]);
    return std::min(sum, rowDifferenceCap);
}

// Mean capped row difference of the overlap at `shift`; infinity once it exceeds `limit`.
float meanDifference(const ProfileFrame& reference, const ProfileFrame& current, int shift, float limit)
{
    int overlap = current.scaledHeight - shift;
    float budget = limit * static_cast<float>(overlap);
    float total = 0;
    for (int i = 0; i < overlap; ++i) {
        total += rowDifference(current.row(i), reference.row(i + shift));
        if (total > budget)
            return std::numeric_limits<float>::infinity();
    }
    return total / static_cast<float>(overlap);
}

} // namespace

int ProfileHintProvider::scaledWidth(int width)
{
    return std::min(width, maximumWidth);
}

int ProfileHintProvider::scaledHeight(int width, int height)
{
    if (width <= maximumWidth)
        return height;
    return std::max(1, static_cast<int>(std::lround(static_cast<double>(height) * maximumWidth / width)));
}

std::unique_ptr<ScrollHintProvider::Frame> ProfileHintProvider::prepare(const Bitmap& frame)
{
    int width = scaledWidth(frame.width());
    int height = scaledHeight(frame.width(), frame.height());
    int side = signatureSideBand(width);
    int usable = width - 2 * side;
    if (usable < bandCount)
        return nullptr;

    // Horizontally each band is sampled at `samplesPerBand` evenly spaced scaled columns (each the source
    // pixel at its centre): the profile must tell rows apart, not measure them, and this keeps the cost
    // low. Vertically each scaled row is the mean of the source rows it covers, which keeps a shift of a
    // fraction of a scaled row visible.
    std::vector<std::size_t> columnOffsets;
    std::vector<int> bandStart;
    for (int k = 0; k < bandCount; ++k) {
        int first = k * usable / bandCount;
        int count = (k + 1) * usable / bandCount - first;
        int samples = std::min(count, samplesPerBand);
        bandStart.push_back(static_cast<int>(columnOffsets.size()));
        for (int i = 0; i < samples; ++i) {
            int x = side + first + (2 * i + 1) * count / (2 * samples);
            long long source = (2LL * x + 1) * frame.width() / (2LL * width);
            columnOffsets.push_back(static_cast<std::size_t>(source) * Bitmap::bytesPerPixel);
        }
    }
    bandStart.push_back(static_cast<int>(columnOffsets.size()));

    auto result = std::make_unique<ProfileFrame>();
    result->fullWidth = frame.width();
    result->fullHeight = frame.height();
    result->scaledHeight = height;
    result->profile.assign(static_cast<std::size_t>(height) * bandCount, 0.0f);
    std::uint32_t sums[bandCount];
    for (int y = 0; y < height; ++y) {
        int firstRow = static_cast<int>(static_cast<long long>(y) * frame.height() / height);
        int endRow = std::max(firstRow + 1, static_cast<int>(static_cast<long long>(y + 1) * frame.height() / height));
        std::fill(std::begin(sums), std::end(sums), 0u);
        for (int sourceRow = firstRow; sourceRow < endRow; ++sourceRow) {
            const std::uint8_t* pixels = frame.row(sourceRow);
            for (int k = 0; k < bandCount; ++k) {
                std::uint32_t sum = 0;
                for (int i = bandStart[static_cast<std::size_t>(k)]; i < bandStart[static_cast<std::size_t>(k) + 1]; ++i) {
                    const std::uint8_t* p = pixels + columnOffsets[static_cast<std::size_t>(i)];
                    sum += (77u * p[0] + 150u * p[1] + 29u * p[2]) >> 8;
                }
                sums[k] += sum;
            }
        }
        float* out = result->profile.data() + static_cast<std::size_t>(y) * bandCount;
        for (int k = 0; k < bandCount; ++k) {
            int samples = (bandStart[static_cast<std::size_t>(k) + 1] - bandStart[static_cast<std::size_t>(k)]) * (endRow - firstRow);
            out[k] = static_cast<float>(sums[k]) / static_cast<float>(samples);
        }
    }
    for (int y = 1; y < height && result->flat; ++y)
        result->flat = std::equal(result->row(y), result->row(y) + bandCount, result->row(0));
    return result;
}

std::optional<int> ProfileHintProvider::shift(const Frame& referenceFrame, const Frame& currentFrame)
{
    const auto* reference = dynamic_cast<const ProfileFrame*>(&referenceFrame);
    const auto* current = dynamic_cast<const ProfileFrame*>(&currentFrame);
    if (!reference || !current || reference->fullWidth != current->fullWidth
        || reference->fullHeight != current->fullHeight || (reference->flat && current->flat))
        return std::nullopt;

    int rows = current->scaledHeight;
    int lastShift = rows - ScrollMatcher::margin(rows);
    if (lastShift < 0)
        return std::nullopt;
    int best = -1;
    float bestCost = rowDifferenceCap / 2; // more than this: most rows differ, nothing lines up
    for (int s = 0; s <= lastShift; ++s) {
        float cost = meanDifference(*reference, *current, s, bestCost);
        if (cost < bestCost) {
            bestCost = cost;
            best = s;
        }
    }
    if (best < 0)
        return std::nullopt;

    // The difference grows about linearly on each side of the true shift: where the two neighbours'
    // lines meet gives the fraction (equiangular fit), within half a scaled row.
    double fraction = 0;
    if (best > 0 && best < lastShift) {
        auto infinity = std::numeric_limits<float>::infinity();
        double before = meanDifference(*reference, *current, best - 1, infinity);
        double after = meanDifference(*reference, *current, best + 1, infinity);
        double steeper = std::max(before, after) - bestCost;
        if (steeper > 0)
            fraction = std::clamp(0.5 * (before - after) / steeper, -0.5, 0.5);
    }
    return static_cast<int>(std::lround((best + fraction) * current->fullHeight / rows));
}

} // namespace quillmar
