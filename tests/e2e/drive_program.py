#!/usr/bin/env python3
"""Drives the real program by keys in a display of its own and looks at the files afterwards.

Usage: drive_program.py PROGRAM [SCREENSHOT-FOLDER]   (a screenshot is kept for each failure)"""
import os
import pathlib
import plistlib
import shutil
import sys
import tempfile
import traceback

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True
from desktop import Display, Failure, Program  # noqa: E402

# Names that a careless command line or text would trip over.
NAMES = ["two words.txt", "-rf", "it's \"quoted\" $(x).txt"]
CONTENT = b"content\n" * 1000


class Scene:
    """Two folders, `left` and `right`, and the program that shows them."""

    def __init__(self, program, display, world):
        self._program, self._display, self._world = program, display, pathlib.Path(world)
        self.left = self._world / "left side"
        self.right = self._world / "right side"
        self.left.mkdir()
        self.right.mkdir()
        self.app = None

    def file(self, folder, name, content=CONTENT):
        path = folder / name
        path.write_bytes(content)
        return path

    def start(self, left=None, right=None):
        self.app = Program(self._program, self._display, self._world,
                           left or self.left, right or self.right)
        return self.app

    def confirm(self, key):
        """Presses a command's key and takes the default answer of its question."""
        self.app.key(key)
        title = self.app.wait_for_question(f"the question of {key}")
        expect(title == "Twinleaf - Warning", f"the question's title is {title!r}")
        self.app.key("Return")

    def enter(self, key, text):
        """Presses a command's key and types the answer of its sheet."""
        self.app.key(key)
        self.app.wait_for_question(f"the sheet of {key}")
        self.app.type(text)
        self.app.key("Return")

    def quit(self):
        self.app.wait_for_main_window()
        self.app.key("F10")
        status = self.app.wait_for_end()
        expect(status == 0, f"exit status {status}")


def expect(condition, what):
    if not condition:
        raise Failure(what)


def holds(path, content=CONTENT):
    """True when the file is there whole; a copy that is still being written is not."""
    return path.is_file() and path.read_bytes() == content


def stored_left_path(app):
    with open(app.settings, "rb") as file:
        return plistlib.load(file).get("TWLeftFileListLastPath")


def copies_with_f5(scene):
    for name in NAMES:
        source = scene.file(scene.left, name)
        app = scene.start(left=source)
        scene.confirm("F5")
        app.wait_for(lambda: holds(scene.right / name), f"the copy of {name!r}")
        scene.quit()
        app.close()
        expect(holds(source), f"the source {name!r} is still there")


def copies_a_folder_tree(scene):
    tree = scene.left / "tree with blanks"
    (tree / "deep" / "deeper").mkdir(parents=True)
    scene.file(tree / "deep" / "deeper", "leaf")
    os.symlink("nowhere", tree / "dangling")
    app = scene.start(left=scene.left)
    app.key("Home", "Down")
    scene.confirm("F5")
    copy = scene.right / tree.name
    app.wait_for(lambda: holds(copy / "deep" / "deeper" / "leaf"), "the leaf of the copied tree")
    scene.quit()
    expect(os.readlink(copy / "dangling") == "nowhere", "a dangling link is copied as a link")


def asks_before_overwriting(scene):
    source = scene.file(scene.left, "same name")
    target = scene.file(scene.right, "same name", b"the older text")
    app = scene.start(left=source)
    scene.confirm("F5")
    app.wait_for_question("the overwrite question")
    expect(holds(target, b"the older text"), "nothing is replaced while the question stands")
    app.key("Escape")
    scene.quit()
    expect(holds(target, b"the older text"), "cancelling keeps the target")
    expect(holds(source), "cancelling keeps the source")


def makes_a_folder_with_f7(scene):
    app = scene.start()
    scene.enter("F7", "New folder (1)")
    app.wait_for((scene.left / "New folder (1)").is_dir, "the new folder")
    app.wait_for_main_window()
    app.key("F7")
    app.wait_for_question("the sheet of F7")
    app.type("never made")
    app.key("Escape")
    scene.quit()
    expect(os.listdir(scene.left) == ["New folder (1)"], "Escape makes no folder")


def renames_with_f9(scene):
    for name in NAMES:
        source = scene.file(scene.left, name)
        app = scene.start(left=source)
        renamed = scene.left / ("renamed " + name)
        scene.enter("F9", renamed.name)
        app.wait_for(lambda: holds(renamed), f"{name!r} under its new name")
        scene.quit()
        app.close()
        expect(not source.exists(), f"the old name {name!r} is gone")


def moves_from_the_right_after_tab(scene):
    for name in NAMES:
        source = scene.file(scene.right, name)
        app = scene.start(right=source)
        app.key("Tab")
        scene.confirm("F6")
        app.wait_for(lambda: holds(scene.left / name), f"{name!r} on the left")
        app.wait_for(lambda: not source.exists(), f"{name!r} gone from the right")
        scene.quit()
        app.close()


def deletes_to_the_trash_with_f8(scene):
    for name in NAMES:
        source = scene.file(scene.left, name)
        app = scene.start(left=source)
        scene.confirm("F8")
        app.wait_for(lambda: not source.exists(), f"{name!r} to leave its folder")
        scene.quit()
        app.close()
        trashed = [path for path in scene._world.rglob(name) if "files" in path.parts]
        expect(len(trashed) == 1 and holds(trashed[0]), f"{name!r} lies in the Trash")


def extends_a_selection_from_where_it_is(scene):
    for name in "abcdefghijklm":
        scene.file(scene.left, name)
    app = scene.start()
    app.key("Down", "Down", "End", "shift+Up")
    scene.confirm("F8")
    app.wait_for(lambda: not (scene.left / "m").exists(), "the last one to leave")
    scene.quit()
    expect(sorted(os.listdir(scene.left)) == list("abcdefghijk"), "the other eleven stay")


def drags_onto_a_file_by_held_keys(scene):
    first_row = "128"  # from the top of the screen, in pixels
    for keys, stays in ((("ctrl", "shift"), True), ((), False)):
        source = scene.file(scene.left, "dragged" if stays else "moved")
        scene.file(scene.right, "a row under the pointer")
        app = scene.start(left=source)
        mouse = app.display.xdotool
        mouse("mousemove", "100", first_row)
        for key in keys:
            mouse("keydown", key)
        mouse("mousedown", "1")
        for x in range(120, 901, 60):
            mouse("mousemove", str(x), first_row)
        mouse("mouseup", "1")
        for key in keys:
            mouse("keyup", key)
        app.wait_for_question("the question of the drop")
        app.key("Return")
        app.wait_for(lambda: holds(scene.right / source.name), "what was dropped")
        app.wait_for(lambda: source.exists() == stays, "the source to be as the keys said")
        scene.quit()
        app.close()
        if stays:
            source.unlink()


def refuses_the_parent_row(scene):
    scene.file(scene.left, "bystander")
    app = scene.start()
    app.key("Home", "F5", "F6", "F8", "F9")
    scene.quit()
    expect(os.listdir(scene.left) == ["bystander"] and not os.listdir(scene.right),
           "with the parent row selected nothing happens")


def remembers_its_folders(scene):
    inner = scene.left / "inner"
    inner.mkdir()
    app = scene.start()
    app.key("Home", "Down", "Return")
    scene.quit()
    app.close()
    with open(app.settings, "rb") as file:
        settings = plistlib.load(file)
    expect(settings.get("TWLeftFileListLastPath") == str(inner),
           f"left path stored: {settings.get('TWLeftFileListLastPath')!r}")
    expect(settings.get("TWRightFileListLastPath") == str(scene.right),
           f"right path stored: {settings.get('TWRightFileListLastPath')!r}")


def falls_back_from_a_missing_folder(scene):
    app = scene.start(left=scene.left / "is not there")
    scene.quit()
    lines = [line for line in app.log().splitlines() if "is not there" in line]
    expect(len(lines) == 1, f"one line names the missing folder: {app.log()!r}")
    expect(stored_left_path(app) == str(app.home), "home instead")


def duplicates_from_the_menu(scene):
    source = scene.file(scene.left, "Report.txt")
    app = scene.start(left=source)
    app.key("ctrl+d")
    app.wait_for(lambda: holds(scene.left / "Report Copy.txt"), "the duplicate")
    scene.quit()
    expect(holds(source), "the original stays")


def walks_along_the_path(scene):
    inner = scene.left / "one" / "two"
    inner.mkdir(parents=True)
    app = scene.start(left=inner)
    app.key("BackSpace", "BackSpace")  # up to `left`; the path still shows the way back
    app.key("Right", "Right")
    scene.quit()
    app.close()
    expect(stored_left_path(app) == str(inner), f"back down: {stored_left_path(app)!r}")
    app = scene.start(left=inner)
    app.key("ctrl+l", "Home", "Return")  # the first segment
    scene.quit()
    app.close()
    expect(stored_left_path(app) == "/", f"to the root: {stored_left_path(app)!r}")


def copies_everything_but_the_parent(scene):
    for name in NAMES:
        scene.file(scene.left, name)
    app = scene.start()
    app.key("ctrl+a")
    scene.confirm("F5")
    app.wait_for(lambda: all(holds(scene.right / name) for name in NAMES), "all the copies")
    scene.quit()
    expect(sorted(os.listdir(scene.right)) == sorted(NAMES), "the parent row has no part in it")


def goes_to_a_name_by_its_letter(scene):
    for name in ("alpha", "beta", "gamma"):
        scene.file(scene.left, name)
    app = scene.start()
    app.key("b")
    scene.confirm("F6")
    app.wait_for(lambda: holds(scene.right / "beta"), "the moved file")
    scene.quit()
    expect(sorted(os.listdir(scene.left)) == ["alpha", "gamma"], "the others stay")


def ends_when_the_session_ends(scene):
    source = scene.file(scene.left, "same name")
    target = scene.file(scene.right, "same name", b"the older text")
    app = scene.start(left=source)
    scene.confirm("F5")
    app.wait_for_question("the overwrite question")
    app.terminate()
    expect(app.wait_for_end() == 0, "the end is an orderly one")
    expect(holds(target, b"the older text") and holds(source), "nothing was replaced unasked")
    expect(app.settings.is_file(), "the settings were saved")


SCENES = [copies_with_f5, copies_a_folder_tree, asks_before_overwriting, makes_a_folder_with_f7,
          renames_with_f9, moves_from_the_right_after_tab, deletes_to_the_trash_with_f8,
          extends_a_selection_from_where_it_is, drags_onto_a_file_by_held_keys,
          refuses_the_parent_row, remembers_its_folders, falls_back_from_a_missing_folder,
          duplicates_from_the_menu, walks_along_the_path,
          copies_everything_but_the_parent, goes_to_a_name_by_its_letter, ends_when_the_session_ends]


def main():
    program = os.path.abspath(sys.argv[1])
    shots = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None
    only = sys.argv[3:]
    try:
        display = Display()
    except Failure as failure:
        return f"drive_program: {failure}"
    failed = 0
    try:
        for play in SCENES:
            if only and play.__name__ not in only:
                continue
            world = tempfile.mkdtemp(prefix="twinleaf-e2e-")
            scene = Scene(program, display, world)
            try:
                play(scene)
                print(f"ok   {play.__name__}", flush=True)
            except Exception as error:  # one scene's fault must not hide the others'
                failed += 1
                reason = error if isinstance(error, Failure) else traceback.format_exc()
                print(f"FAIL {play.__name__}: {reason}", flush=True)
                if scene.app:
                    print(scene.app.log()[-2000:])
                if shots:
                    shots.mkdir(parents=True, exist_ok=True)
                    display.screenshot(shots / f"{play.__name__}.png")
            finally:
                if scene.app:
                    scene.app.close()
                shutil.rmtree(world, ignore_errors=True)
    finally:
        display.close()
    print(f"{failed} scene(s) failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
