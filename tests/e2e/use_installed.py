#!/usr/bin/python3
"""Drives the command that a package installed, which may lie in a root of its own.

Usage: use_installed.py PROGRAM [SCREENSHOT-FOLDER] [SCENE...]"""
import os
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True
from drive_program import expect, holds, play_all  # noqa: E402
from second_start import FILE_MANAGER, on_a_bus  # noqa: E402


def copies_a_tree(scene):
    tree = scene.left / "tree"
    inner = tree / "inner folder"
    inner.mkdir(parents=True)
    for name in ("a", "-b", "c \u00e4"):
        scene.file(inner, name)
    (tree / "link").symlink_to("inner folder/a")
    app = scene.start()
    app.key("ctrl+a")
    scene.confirm("F5")
    copy = scene.right / "tree"
    app.wait_for(lambda: all(holds(copy / "inner folder" / path.name) for path in inner.iterdir())
                 and os.readlink(copy / "link") == "inner folder/a", "the copy of the tree")
    scene.quit()


@on_a_bus
def shows_what_is_asked_for_over_the_bus(scene, session):
    item = scene.file(scene.home, "chosen")
    scene.file(scene.home, "another")
    app = scene.start(session_bus=session.address)
    called = subprocess.run(
        ["gdbus", "call", "--address", session.address, "--dest", FILE_MANAGER, "--object-path",
         "/org/freedesktop/FileManager1", "--method", FILE_MANAGER + ".ShowItems", f"['{item.as_uri()}']", ""],
        capture_output=True, text=True)
    expect(called.returncode == 0, called.stderr)
    scene.confirm("F5")
    app.wait_for(lambda: holds(scene.right / item.name), "the copy of what was selected")
    expect(not (scene.right / "another").exists(), "nothing else was selected")
    scene.quit()


def does_without_missing_parts(scene):
    source = scene.file(scene.left, "file")
    app = scene.start(left=source)
    scene.confirm("F5")
    app.wait_for(lambda: holds(scene.right / source.name), "the copy")
    scene.quit()
    lines = app.log().splitlines()
    expect(sum("libqt6svg6" in line for line in lines) == 1 and len(lines) < 5, f"what it says: {lines[:20]}")


SCENES = [copies_a_tree, shows_what_is_asked_for_over_the_bus]

if __name__ == "__main__":
    sys.exit(play_all(SCENES + ([does_without_missing_parts] if len(sys.argv) > 3 else [])))
