// SPDX-License-Identifier: MIT
#include "kits/pictures/Average.h"
#include "kits/pictures/Limits.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

/// average-picture FILE...: prints the average of the first file that is a picture: red, green, blue and opacity, each
/// from 0 to 65535, in one line. Exits with 1 if none is.
int main(int argc, char** argv)
{
    kits::LimitProcess();
    // No display and no desktop style: drawings only need fonts, for their text.
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    for (const char* variable : {"QT_QPA_PLATFORMTHEME", "DISPLAY", "WAYLAND_DISPLAY"})
        unsetenv(variable);
    int own = 1;
    const QGuiApplication application(own, argv);
    for (int i = 1; i < argc; i++) {
        if (const std::optional<kits::Average> average = kits::AverageOf(argv[i])) {
            std::printf("%u %u %u %u\n", average->red, average->green, average->blue, average->alpha);
            return EXIT_SUCCESS;
        }
    }
    return EXIT_FAILURE;
}
