#pragma once

#include <QString>

// The name a person gave to the file system at "/"; empty when it has none. Read once. Any thread.
QString startVolumeLabel();
