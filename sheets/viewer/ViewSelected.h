#pragma once

class MainModel;
class MessageBus;
class PaneWindow;
class Viewer;

// Shows the selected item of the active pane in the viewer; of a folder there is its size to be
// seen, as with the space bar. Main thread.
void viewSelected(Viewer &viewer, PaneWindow &window, const MainModel &mainModel, MessageBus &bus);
