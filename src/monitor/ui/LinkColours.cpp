#include "monitor/ui/LinkColours.h"

#include <algorithm>
#include <cmath>

namespace {

double linearComponent(double component)
{
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double relativeLuminance(const QColor& colour)
{
    return 0.2126 * linearComponent(colour.redF()) + 0.7152 * linearComponent(colour.greenF())
        + 0.0722 * linearComponent(colour.blueF());
}

struct ColourPair {
    QRgb onLight;
    QRgb onDark;
};

// All colours depend on the same test (does black or white have more contrast?), so light and dark variants never mix.
QColor forBase(const ColourPair& pair, const QColor& base)
{
    const bool baseIsLight = contrastRatio(base, QColorConstants::Black) > contrastRatio(base, QColorConstants::White);
    return QColor::fromRgb(baseIsLight ? pair.onLight : pair.onDark);
}

} // namespace

double contrastRatio(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({ relativeLuminance(one), relativeLuminance(other) });
    return (lighter + 0.05) / (darker + 0.05);
}

QColor seriesColour(LinkSeries series, const QColor& base)
{
    switch (series) {
    case LinkSeries::LinkQuality:
        return forBase({ 0x1565c0, 0x64b5f6 }, base);
    case LinkSeries::SignalStrength:
        return forBase({ 0xb45309, 0xffb74d }, base);
    case LinkSeries::Transmit:
        return forBase({ 0x2e7d32, 0x81c784 }, base);
    case LinkSeries::Receive:
        return forBase({ 0x8e24aa, 0xce93d8 }, base);
    }
    return base;
}

QColor gradeColour(LinkGrade grade, const QColor& base)
{
    switch (grade) {
    case LinkGrade::Good:
        return forBase({ 0x2e7d32, 0x66bb6a }, base);
    case LinkGrade::Normal:
        return forBase({ 0xb26a00, 0xffb74d }, base);
    case LinkGrade::Weak:
        return forBase({ 0xc62828, 0xff8a80 }, base);
    }
    return base;
}

QColor blend(const QColor& first, const QColor& second, double weight)
{
    const auto mix
        = [weight](float one, float other) { return static_cast<float>(one * (1.0 - weight) + other * weight); };
    return QColor::fromRgbF(
        mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()), mix(first.blueF(), second.blueF()));
}
