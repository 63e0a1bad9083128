#include "backup/WriteSpeeds.h"

#include "core/NumberFormat.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int FastestCdSpeed = 64;
constexpr float FastestDvdSpeed = 20.0F;
constexpr float SlowestDvdSpeed = 0.1F;
constexpr float DvdSpeedStep = 0.1F;

/// Halves go to the even last digit.
double Rounded(double value, double scale) {
    return std::nearbyint(value * scale) / scale;
}

} // namespace

std::vector<WriteSpeed> ProbeCdSpeeds(DiscWriter& writer) {
    std::vector<WriteSpeed> speeds;
    for (int speed = FastestCdSpeed; speed >= 1; --speed) {
        writer.SetWriteSpeed(speed);
        if (writer.WriteSpeed() == static_cast<double>(speed))
            speeds.push_back({std::to_wstring(speed), static_cast<double>(speed)});
    }
    return speeds;
}

std::vector<WriteSpeed> ProbeDvdSpeeds(DiscWriter& writer, const std::wstring& decimalSeparator) {
    std::vector<double> kept;
    // Repeated subtraction in single precision: it decides which speeds are asked for.
    float speed = FastestDvdSpeed;
    while (speed >= SlowestDvdSpeed) {
        writer.SetWriteSpeed(static_cast<double>(speed));
        const double settled = writer.WriteSpeed();
        if (std::find(kept.begin(), kept.end(), settled) == kept.end()) kept.push_back(settled);
        speed -= DvdSpeedStep;
    }
    std::vector<WriteSpeed> speeds;
    for (const double settled : kept) {
        const double shown = Rounded(Rounded(settled, 100), 10);
        // A writer without a drive settles on nothing.
        if (shown > 0) speeds.push_back({FormatNumber(shown, L"0.0", decimalSeparator), shown});
    }
    return speeds;
}
