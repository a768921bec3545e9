#pragma once

// Has the libraries load what they load when they are first used: afterwards there are no paths.
void warmUp();
