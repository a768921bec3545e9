#pragma once

#include "texts/FileBytes.h"
#include "texts/Stretch.h"

// How a file can be looked at.
enum class ViewMode { Text, Bytes, Picture };

// A file that was just opened to be looked at: what it seems to be, and its first page.
struct ViewedFile {
    FileBytes::Opened opened;
    ViewMode mode = ViewMode::Text; // by its content
    TextForm form {}; // of a text; asBytes for the mode of bytes
    Stretch firstPage {};

    // Worker thread.
    static ViewedFile open(const QString &path);
};
