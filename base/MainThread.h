#pragma once

#include <functional>

// Runs the function on the main thread and returns when it has run. Called on the main thread it
// just calls it. The one way from a worker to widgets, the bus, the models and the settings. While
// the main thread waits for the disk it is kept with the other Arrivals.
void onMainThread(const std::function<void()> &function);

bool isMainThread();
