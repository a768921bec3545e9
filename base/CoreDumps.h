#pragma once

// Lifts the limit on core files and logs the result.
void enableCoreDumps();
