#pragma once

struct Appearance;

// Gives the program the colours of this appearance, those of the toolkit's own style; every window
// follows at once. Main thread.
void showAppearance(const Appearance &appearance);
