#include "check/VerdictSign.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace {

struct Point {
    double x = 0;
    double y = 0;
};

struct Stroke {
    Point from;
    Point to;
};

using Color = std::uint32_t;
constexpr Color Green = 0xFF1E8E3E;
constexpr Color Amber = 0xFFF2B705;
constexpr Color Red = 0xFFC62828;
constexpr Color White = 0xFFFFFFFF;
constexpr Color Black = 0xFF202020;

constexpr std::array Tick = {Stroke{{0.28, 0.52}, {0.44, 0.68}}, Stroke{{0.44, 0.68}, {0.73, 0.34}}};
constexpr std::array Cross = {Stroke{{0.33, 0.33}, {0.67, 0.67}}, Stroke{{0.67, 0.33}, {0.33, 0.67}}};
constexpr std::array Mark = {Stroke{{0.5, 0.40}, {0.5, 0.63}}, Stroke{{0.5, 0.79}, {0.5, 0.79}}};
constexpr double HalfStroke = 0.065;
constexpr int PointsPerPixel = 4; ///< along each edge, for soft edges

double Distance(Point point, const Stroke& stroke) {
    const double dx = stroke.to.x - stroke.from.x;
    const double dy = stroke.to.y - stroke.from.y;
    const double length = dx * dx + dy * dy;
    const double along = length == 0 ? 0 : ((point.x - stroke.from.x) * dx + (point.y - stroke.from.y) * dy) / length;
    const double at = std::clamp(along, 0.0, 1.0);
    return std::hypot(point.x - stroke.from.x - at * dx, point.y - stroke.from.y - at * dy);
}

template<std::size_t Count>
bool IsOn(Point point, const std::array<Stroke, Count>& strokes) {
    return std::any_of(strokes.begin(), strokes.end(),
                       [&](const Stroke& stroke) { return Distance(point, stroke) < HalfStroke; });
}

bool IsInDisc(Point point) {
    return std::hypot(point.x - 0.5, point.y - 0.5) < 0.47;
}

bool IsInTriangle(Point point) {
    return point.y > 0.06 && point.y < 0.94 && std::abs(point.x - 0.5) < (point.y - 0.06) * 0.56;
}

std::optional<Color> ColorAt(VerdictSign sign, Point point) {
    switch (sign) {
    case VerdictSign::Good:
        if (IsInDisc(point)) return IsOn(point, Tick) ? White : Green;
        break;
    case VerdictSign::Bad:
        if (IsInDisc(point)) return IsOn(point, Cross) ? White : Red;
        break;
    case VerdictSign::Warning:
        if (IsInTriangle(point)) return IsOn(point, Mark) ? Black : Amber;
        break;
    case VerdictSign::None:
        break;
    }
    return std::nullopt;
}

Color PixelAt(VerdictSign sign, int column, int row, int size) {
    std::array<std::uint32_t, 3> sums = {};
    std::uint32_t inside = 0;
    for (int part = 0; part < PointsPerPixel * PointsPerPixel; ++part) {
        const Point point{(column + (part % PointsPerPixel + 0.5) / PointsPerPixel) / size,
                          (row + (part / PointsPerPixel + 0.5) / PointsPerPixel) / size}; // NOLINT: whole rows
        const auto color = ColorAt(sign, point);
        if (!color) continue;
        ++inside;
        for (unsigned channel = 0; channel < sums.size(); ++channel) sums[channel] += *color >> (8 * channel) & 0xFF;
    }
    if (inside == 0) return 0;
    Color pixel = 255 * inside / (PointsPerPixel * PointsPerPixel) << 24;
    for (unsigned channel = 0; channel < sums.size(); ++channel) pixel |= sums[channel] / inside << (8 * channel);
    return pixel;
}

} // namespace

VerdictSign SignOf(const ItemReport& item) {
    switch (item.verdict) {
    case ItemVerdict::NotChecked:
        return VerdictSign::None;
    case ItemVerdict::NotListed:
    case ItemVerdict::DirectoryDamaged:
        return VerdictSign::Warning;
    case ItemVerdict::Whole:
        return item.HasFault() ? VerdictSign::Warning : VerdictSign::Good;
    default:
        return VerdictSign::Bad;
    }
}

VerdictSign SignOf(const BackupReport& report) {
    switch (report.verdict) {
    case Verdict::NotChecked:
        return VerdictSign::None;
    case Verdict::Good:
        return VerdictSign::Good;
    case Verdict::Stopped:
    case Verdict::WrongPassword:
    case Verdict::PasswordMissing:
    case Verdict::NoBackup:
    case Verdict::OlderFormat:
        return VerdictSign::Warning;
    case Verdict::Faulty:
        return std::any_of(report.items.begin(), report.items.end(),
                           [](const ItemReport& item) { return SignOf(item) == VerdictSign::Bad; })
                   ? VerdictSign::Bad
                   : VerdictSign::Warning;
    default:
        return VerdictSign::Bad;
    }
}

std::vector<std::uint32_t> PaintSign(VerdictSign sign, int sizePixels) {
    std::vector<std::uint32_t> pixels;
    for (int row = 0; row < sizePixels; ++row) {
        for (int column = 0; column < sizePixels; ++column) pixels.push_back(PixelAt(sign, column, row, sizePixels));
    }
    return pixels;
}
