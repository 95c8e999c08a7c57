#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""A GTK program to drag from: a button that shows a colour, and a field whose words are selected.

    gtk_source.py TITLE #RRGGBB WORDS
"""

import sys

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402  (the version comes first)


def main():
    title, color, words = sys.argv[1:]
    button = Gtk.ColorButton()
    rgba = Gdk.RGBA()
    rgba.parse(color)
    button.set_rgba(rgba)
    field = Gtk.Entry(text=words)
    box = Gtk.Box(homogeneous=True, orientation=Gtk.Orientation.VERTICAL)
    box.add(button)
    box.add(field)
    window = Gtk.Window(title=title, default_width=200, default_height=120)
    window.add(box)
    window.connect("destroy", Gtk.main_quit)
    window.show_all()
    field.grab_focus()
    field.select_region(0, -1)
    Gtk.main()


main()
