#pragma once

#include "rights/Request.h"

// Carries the request out, by descriptor throughout. Nothing half done: what fails leaves the item
// as it was.
Outcome perform(const Request &request);
