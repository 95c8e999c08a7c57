// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

#include <optional>
#include <string>
#include <vector>

namespace kits {

/// Returns the average colour of a picture file. A program of ours, `average-picture`, reads one picture and ends:
/// libraries that read pictures load plugins, deliver events of the toolkit, and may crash, hang or take any amount of
/// memory if a file is broken. That program has limits for all of these (kits/pictures/), and is stopped after fifteen
/// seconds. It lies in the installation's folder for such programs, or beside the running one.
///
/// Keeps the last few answers, so the program runs again only for another file or if the file has changed. Any thread
/// but the main thread; waits.
///
/// @param location  a path or a "file:" address; of a folder, the first picture in its contents/images or in it; of a
///                  slideshow (.xml), the picture that it shows now
/// @param behind    the colour that shows through a transparent picture
/// @return nothing if it is no picture, or cannot be read within the limits
std::optional<rgb_color> AverageOfFile(const std::string& location, rgb_color behind);

/// Returns the path that a "file:" address names; any other text is a path itself.
std::string PathOf(const std::string& location);
/// Returns the regular files of a folder, sorted by name: a folder's own order is arbitrary. Looks at no more than
/// bounds::kMostWallpaperEntries entries.
std::vector<std::string> FilesOf(const std::string& folder);

/// While an object exists, its thread gives up reading a picture as soon as a descriptor becomes readable. For threads
/// whose end others await.
class PictureStop {
public:
    /// @param descriptor  not owned, and never read
    explicit PictureStop(int descriptor);
    ~PictureStop();
    PictureStop(const PictureStop&) = delete;
    PictureStop& operator=(const PictureStop&) = delete;

private:
    const int fOuter;
};

/// Sets the path of the program that reads pictures, for tests, whose programs lie elsewhere; an empty path means the
/// usual place. Forgets the kept answers.
void SetPictureReader(const std::string& program);

} // namespace kits
