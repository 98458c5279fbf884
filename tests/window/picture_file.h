// Pictures as PNG files.
#ifndef TESSARIN_TESTS_WINDOW_PICTURE_FILE_H
#define TESSARIN_TESTS_WINDOW_PICTURE_FILE_H

#include <optional>
#include <string>

#include "tests/window/looks.h"

bool WritePicture(const std::wstring& path, const Picture& picture);

// Nothing if the file is missing or is no picture.
std::optional<Picture> ReadPicture(const std::wstring& path);

#endif
