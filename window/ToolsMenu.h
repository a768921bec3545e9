#pragma once

class Commands;
class Workspace;

// Offers those of the desktop's tools that are installed. Reads what every installed program says
// of itself, so it is not for the way to the first paint.
void setupToolsMenu(Commands &commands, const Workspace &workspace);
