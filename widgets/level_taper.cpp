#include "widgets/level_taper.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace vm {

namespace {

struct Knee
{
    double dB;
    double share;
};

constexpr std::array<Knee, 9> knees{{{-100.0, 0.0},
                                     {-70.0, 0.02},
                                     {-60.0, 0.036},
                                     {-50.0, 0.07},
                                     {-40.0, 0.12},
                                     {-30.0, 0.22},
                                     {-20.0, 0.35},
                                     {0.0, 0.67},
                                     {20.0, 1.0}}};

/// Interpolates on the line piece whose upper end is the first knee that reaches the value in `from`; the
/// last piece goes on beyond the table, for scales that end above +20 dB.
double interpolated(double value, double Knee::*from, double Knee::*to)
{
    const auto reaches = [value, from](const Knee &knee) { return knee.*from >= value; };
    auto upper = std::find_if(knees.begin() + 1, knees.end(), reaches);
    if (upper == knees.end())
        --upper;
    const Knee &lower = *std::prev(upper);
    const double part = (value - lower.*from) / ((*upper).*from - lower.*from);
    return lower.*to + part * ((*upper).*to - lower.*to);
}

} // namespace

double travelShare(double dB, double highest)
{
    const double reached = interpolated(std::clamp(dB, lowestLevel, highest), &Knee::dB, &Knee::share);
    return reached / interpolated(highest, &Knee::dB, &Knee::share);
}

double levelAtShare(double share, double highest)
{
    const double top = interpolated(highest, &Knee::dB, &Knee::share);
    return interpolated(std::clamp(share, 0.0, 1.0) * top, &Knee::share, &Knee::dB);
}

double wholeLevel(double dB)
{
    return std::round(dB) + 0.0; // no negative zero, which would be written "-0"
}

QString levelNumber(double dB)
{
    const double whole = wholeLevel(dB);
    return (whole > 0.0 ? QStringLiteral("+%1") : QStringLiteral("%1")).arg(whole);
}

QString levelText(double dB)
{
    return QCoreApplication::translate("vm", "%1 dB").arg(wholeLevel(dB));
}

} // namespace vm
