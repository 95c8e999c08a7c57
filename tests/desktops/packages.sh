# SPDX-License-Identifier: MIT
# Sourced by tests/desktops/run: for each desktop, the packages that suffice for a session on an X server without a
# screen. The names are those of Debian 12 and 13.

desktops=(xfce plasma lxqt mate gnome gnome-icons)

# Further packages that all of them need, including the tests of the program.
session_packages=(xvfb xdotool x11-utils x11-xserver-utils imagemagick python3 dbus-daemon dbus-x11 at-spi2-core
    xdg-desktop-portal libgl1-mesa-dri python3-gi gir1.2-gtk-3.0)

xfce_packages=(xfce4-session xfwm4 xfdesktop4 xfce4-panel xfce4-settings xfconf xdg-desktop-portal-gtk
    adwaita-icon-theme gnome-themes-extra)

plasma_packages=(plasma-desktop plasma-workspace kwin-x11 xdg-desktop-portal-kde breeze libkf5config-bin qdbus-qt5)

lxqt_packages=(lxqt-session lxqt-panel lxqt-config pcmanfm-qt openbox xcompmgr)

mate_packages=(mate-session-manager mate-panel caja marco mate-settings-daemon dconf-gsettings-backend libglib2.0-bin
    gnome-themes-extra)

# The last package has the default wallpaper.
gnome_packages=(gnome-session-bin gnome-session-common gnome-shell gnome-settings-daemon xdg-desktop-portal-gtk
    dconf-gsettings-backend libglib2.0-bin adwaita-icon-theme gnome-themes-extra desktop-base)

gnome_icons_packages=("${gnome_packages[@]}" gnome-shell-extension-desktop-icons-ng)
