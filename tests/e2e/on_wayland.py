#!/usr/bin/python3
"""Drives the real program on a Wayland compositor, which itself is a window in a display of the test's own.

Usage: on_wayland.py PROGRAM [SCREENSHOT-FOLDER [SCENE...]]

Debian's own python3, whatever else is installed: it is the one that python3-gi is for."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True
from desktop import Display, Failure, wait_for  # noqa: E402
from drive_program import (drags_onto_a_file_by_held_keys, expect, holds,  # noqa: E402
                           pastes_what_was_copied_or_cut, play_all, stored_paths)
from gi.repository import GLib  # noqa: E402
from read_tree import Reader, SessionBus  # noqa: E402


class WaylandDisplay(Display):
    """Keys and pointer come from the X server through the compositor; what it shows is read over the
    accessibility bus, as nobody else tells which window has the keyboard."""

    def __init__(self):
        super().__init__()
        if not shutil.which("weston"):
            raise Failure("not installed: weston (scripts/install-deps test)")
        # Not below TMPDIR: the path of a socket is short.
        self._folder = pathlib.Path(tempfile.mkdtemp(prefix="tw-", dir="/tmp"))
        socket = self._folder / "wayland"
        config = self._folder / "weston.ini"
        config.write_text("[shell]\npanel-position=none\nanimation=none\n"
                          "startup-animation=none\nclose-animation=none\n")
        self._compositor = subprocess.Popen(
            ["weston", f"--config={config}", "--backend=x11-backend.so", "--use-pixman",
             f"--socket={socket.name}", "--width=1272", "--height=776", "--idle-time=0"],
            env=dict(self.env, XDG_RUNTIME_DIR=str(self._folder)),
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(socket.exists, "the compositor", self._compositor)
        # Where it puts a window nobody knows, but for one that fills the screen.
        self.settings = {"TWMainWindowFrame": {"Width": 1000, "Height": 600, "FullScreen": True}}
        self.platform = {"QT_QPA_PLATFORM": "wayland", "WAYLAND_DISPLAY": str(socket)}
        self._bus = SessionBus(self)
        self.session_bus = self._bus.address
        self._reader = Reader(self.session_bus)

    def close(self):
        self._bus.close()
        self.end_compositor()
        shutil.rmtree(self._folder, ignore_errors=True)
        super().close()

    def end_compositor(self):
        self._compositor.terminate()
        self._compositor.wait()

    def active_window(self):
        try:
            program = self._reader.program()
            for window in self._reader.children(program) if program else []:
                if self._reader.is_active(window):
                    return window, self._reader.name(window)
        except GLib.Error:
            pass  # it went while it was looked at
        return None


def copies_a_tree(scene):
    tree = scene.left / "tree with blanks"
    (tree / "inner").mkdir(parents=True)
    scene.file(tree / "inner", "-rf")
    os.symlink("inner", tree / "link")
    scene.file(scene.left, "before it")
    app = scene.start()
    app.key("t")  # typing leads to the name, by the key's place on the keyboard
    scene.confirm("F5")
    copy = scene.right / tree.name
    app.wait_for(lambda: holds(copy / "inner" / "-rf"), "the copy")
    app.wait_for(lambda: os.path.islink(copy / "link"), "its link")
    scene.quit()


def sheets_come_and_go(scene):
    app = scene.start(left=scene.file(scene.left, "notes.txt"))
    for key, wanted in (("ctrl+i", "Information"), ("F3", "notes.txt"), ("ctrl+comma", "Preferences"),
                        ("ctrl+g", "Group selection")):
        app.key(key)
        title = app.wait_for_question(f"the sheet of {key}")
        expect(wanted in title, f"{key}: the title is {title!r}")
        app.key("Escape")
        app.wait_for_main_window()
    scene.quit()


def stores_its_place_when_left(scene):
    """A desktop that ends takes its windows along and tells them nothing."""
    (scene.left / "inner").mkdir()
    app = scene.start()
    app.key("Down", "Return")
    root = app.display.xdotool("search", "--maxdepth", "0", "--onlyvisible", "")
    app.wait_for(lambda: app.display.xdotool("windowfocus", root) == ""
                 and app.settings.is_file() and stored_paths(app)[0] == str(scene.left / "inner"),
                 "the folder in the settings")


if __name__ == "__main__":
    sys.exit(play_all([copies_a_tree, sheets_come_and_go, pastes_what_was_copied_or_cut,
                       drags_onto_a_file_by_held_keys, stores_its_place_when_left],
                      WaylandDisplay))
