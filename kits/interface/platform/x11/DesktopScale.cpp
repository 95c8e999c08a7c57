// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/DesktopScale.h"

#include "kits/interface/platform/x11/XSettings.h"

#include <QGuiApplication>
#include <QScreen>

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>

namespace kits::DesktopScale {

namespace {

constexpr double kPlain = 96;
constexpr int32 kParts = 1024; ///< of a dot per inch, the unit of resolutions in the settings

/// The toolkit's own scale before this class changed it.
std::optional<double> sFirst;
/// Whether the user has set the toolkit's scale by its own variables.
bool sIsChosenByUser = false;
bool sIsOurs = false;
bool sIsDeaf = false;
double sScale = 1;

bool IsSet(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

bool IsChosenByUser()
{
    return IsSet("QT_SCALE_FACTOR") || IsSet("QT_SCREEN_SCALE_FACTORS") || IsSet("QT_ENABLE_HIGHDPI_SCALING") ||
           IsSet("QT_FONT_DPI") || IsSet("QT_USE_PHYSICAL_DPI");
}

/// Returns a setting in whole dots per inch, as the toolkit counts them.
std::optional<double> Dots(const XSettings& settings, const char* name)
{
    const std::optional<int32> parts = settings.Integer(name);
    if (!parts.has_value() || *parts < kParts)
        return std::nullopt;
    return static_cast<double>(*parts / kParts);
}

/// The toolkit has these functions for its own environment variables, and does not export them for ordinary linking.
/// Without them, this does nothing.
void SetFactor(QScreen* screen, double factor)
{
    using SetFunction = void (*)(QScreen*, double);
    using ForgetFunction = void (*)();
    static const auto set =
        reinterpret_cast<SetFunction>(dlsym(RTLD_DEFAULT, "_ZN15QHighDpiScaling15setScreenFactorEP7QScreend"));
    static const auto forgetLargest = reinterpret_cast<ForgetFunction>(
        dlsym(RTLD_DEFAULT, "_ZN22QGuiApplicationPrivate27resetCachedDevicePixelRatioEv"));
    if (set == nullptr || forgetLargest == nullptr)
        return;
    set(screen, factor);
    forgetLargest();
}

} // namespace

double Of(const XSettings& settings, double otherwise)
{
    std::optional<double> dots = Dots(settings, "Gdk/UnscaledDPI");
    if (!dots.has_value())
        dots = Dots(settings, "Xft/DPI");
    const double factor = std::max(1, settings.Integer("Gdk/WindowScalingFactor").value_or(1));
    return std::clamp((dots.has_value() ? *dots / kPlain : otherwise) * factor, 1.0, kMost);
}

double OfToolkit(const XSettings& settings, double otherwise)
{
    const std::optional<double> dots = Dots(settings, "Xft/DPI");
    return std::max(1.0, dots.has_value() ? *dots / kPlain : otherwise);
}

void Apply(const XSettings& settings)
{
    const QScreen* const main = QGuiApplication::primaryScreen();
    if (main == nullptr)
        return;
    if (!sFirst.has_value()) {
        sFirst = main->devicePixelRatio();
        sIsChosenByUser = IsChosenByUser();
    }
    if (sIsChosenByUser)
        return;
    const double scale = Of(settings, *sFirst);
    if (!sIsOurs) {
        if (scale == OfToolkit(settings, *sFirst) && !sIsDeaf)
            return;
        sIsOurs = true;
        QObject::connect(qGuiApp, &QGuiApplication::screenAdded, qGuiApp,
                         [](QScreen* screen) { SetFactor(screen, sScale); });
    } else if (scale == sScale) {
        return;
    }
    sScale = scale;
    for (QScreen* const screen : QGuiApplication::screens())
        SetFactor(screen, scale);
}

void ToolkitIsDeaf()
{
    sIsDeaf = true;
}

void Forget()
{
    sFirst.reset();
    sIsChosenByUser = false;
    sIsOurs = false;
    sIsDeaf = false;
    sScale = 1;
}

} // namespace kits::DesktopScale
