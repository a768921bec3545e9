#!/usr/bin/env python3
"""Drives the real program by keys in a display of its own and looks at the files afterwards.

Usage: drive_program.py PROGRAM [SCREENSHOT-FOLDER]   (a screenshot is kept for each failure)"""
import os
import pathlib
import plistlib
import shutil
import signal
import sys
import tempfile
import traceback

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True
from desktop import Display, Failure, Program  # noqa: E402
from pictures import draw  # noqa: E402

# Names that a careless command line or text would trip over.
NAMES = ["two words.txt", "-rf", "it's \"quoted\" $(x).txt"]
CONTENT = b"content\n" * 1000


class Scene:
    """Two folders, `left` and `right`, and the program that shows them."""

    def __init__(self, program, display, world):
        self.program, self.display, self._world = program, display, pathlib.Path(world)
        self.left = self._world / "left side"
        self.right = self._world / "right side"
        self.home = self._world / "home"
        self.left.mkdir()
        self.right.mkdir()
        self.app = None

    def file(self, folder, name, content=CONTENT):
        path = folder / name
        path.write_bytes(content)
        return path

    def start(self, left=None, right=None, **options):
        self.app = Program(self.program, self.display, self._world,
                           left or self.left, right or self.right, **options)
        return self.app

    def trashed(self, name):
        return [path for path in self._world.rglob(name) if "files" in path.parts]

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


def stored_paths(app):
    with open(app.settings, "rb") as file:
        settings = plistlib.load(file)
    return settings.get("TWLeftFileListLastPath"), settings.get("TWRightFileListLastPath")


def copies_renames_and_deletes_any_name(scene):
    for name in NAMES:
        source = scene.file(scene.left, name)
        renamed = scene.left / ("renamed " + name)
        app = scene.start(left=source)
        scene.confirm("F5")
        app.wait_for(lambda: holds(scene.right / name), f"the copy of {name!r}")
        expect(holds(source), f"the source {name!r} is still there")
        app.wait_for_main_window()
        scene.enter("F9", renamed.name)
        app.wait_for(lambda: holds(renamed) and not source.exists(), f"{name!r} under its new name")
        app.wait_for_main_window()
        scene.confirm("F8")
        app.wait_for(lambda: not renamed.exists(), f"{renamed.name!r} to leave its folder")
        scene.quit()
        app.close()
        trashed = scene.trashed(renamed.name)
        expect(len(trashed) == 1 and holds(trashed[0]), f"{renamed.name!r} lies in the Trash")


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


def pastes_what_was_copied_or_cut(scene):
    source = scene.file(scene.left, NAMES[0])
    app = scene.start(left=source)
    app.key("ctrl+c", "Tab")
    scene.confirm("ctrl+v")
    app.wait_for(lambda: holds(scene.right / source.name), "the copy")
    app.wait_for_main_window()
    app.key("Tab")
    app.key("F9")  # in a field the keys are the field's own
    app.wait_for_question("the sheet of F9")
    app.key("ctrl+a", "ctrl+x", "ctrl+v", "ctrl+v", "Escape")
    app.wait_for_main_window()
    expect(holds(source), "the source is still there")
    (scene.right / source.name).unlink()
    app.key("ctrl+x", "Tab")
    scene.confirm("ctrl+v")
    app.wait_for(lambda: holds(scene.right / source.name) and not source.exists(), "the move")
    scene.quit()


def pastes_what_another_program_cut(scene):
    names = ["plain", os.fsdecode(b"not \xff UTF-8")]
    for name in names:
        scene.file(scene.left, name)
    app = scene.start()
    app.key("ctrl+a", "ctrl+x")
    world = pathlib.Path(tempfile.mkdtemp(prefix="twinleaf-e2e-", dir=scene.home))
    other = Program(scene.program, scene.display, world, scene.right, scene.right)

    def its_window():
        active = scene.display.active_window()
        return active and active[0] != app.window and active[0]
    try:
        other.window = other.wait_for(its_window, "the other's window")
        app.send(signal.SIGSTOP)
        other.key("ctrl+v", "F7")
        other.wait_for_question("the sheet of F7 after nobody has answered")
        other.key("Escape")
        other.wait_for_main_window()
        app.send(signal.SIGCONT)
        other.key("ctrl+v")
        other.wait_for_question("the question of ctrl+v")
        other.key("Return")
        for name in names:
            other.wait_for(lambda name=name: holds(scene.right / name), f"{name!r} on the right")
        other.wait_for(lambda: not os.listdir(scene.left), "the left folder to be empty")
        other.wait_for_main_window()
        other.key("F10")
        other.wait_for_end()
    finally:
        other.close()
    scene.quit()


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


def drags_onto_a_file_by_held_keys(scene):
    first_row = "178"  # from the top of the screen, in pixels
    for keys, stays in ((("ctrl", "shift"), True), ((), False)):
        source = scene.file(scene.left, "dragged" if stays else "moved")
        scene.file(scene.right, "a row under the pointer")
        app = scene.start(left=source)
        mouse = app.display.xdotool

        def has_dropped():
            mouse("mousemove", "100", "5")  # a compositor in a window learns where the pointer is when it comes in
            mouse("mousemove", "100", first_row)
            for key in keys:
                mouse("keydown", key)
            mouse("mousedown", "1")
            for x in range(120, 901, 60):  # not faster than a hand: what is let go before the drag has begun is none
                mouse("mousemove", str(x), first_row, "sleep", "0.02")
            mouse("sleep", "0.2", "mouseup", "1")
            for key in keys:
                mouse("keyup", key)
            try:  # on Wayland a drop before the window has said that it takes it comes to nothing
                return app.wait_for_question("the question of the drop", limit=8)
            except Failure:
                return False
        app.wait_for(has_dropped, "the question of the drop")
        app.key("Return")
        app.wait_for(lambda: holds(scene.right / source.name), "what was dropped")
        app.wait_for(lambda: source.exists() == stays, "the source to be as the keys said")
        scene.quit()
        app.close()
        if stays:
            source.unlink()


def remembers_where_it_went_along_the_path(scene):
    inner = scene.left / "one" / "two"
    inner.mkdir(parents=True)
    app = scene.start(left=inner)
    app.key("BackSpace", "BackSpace")  # up to `left`; the path still shows the way back
    app.key("Right", "Right")
    scene.quit()
    app.close()
    expect(stored_paths(app) == (str(inner), str(scene.right)), f"stored: {stored_paths(app)}")
    app = scene.start(left=inner)
    app.key("ctrl+shift+l", "Home", "Return")  # the first segment
    scene.quit()
    app.close()
    expect(stored_paths(app)[0] == "/", f"to the root: {stored_paths(app)}")


def falls_back_from_a_missing_folder(scene):
    app = scene.start(left=scene.left / "is not there")
    scene.quit()
    lines = [line for line in app.log().splitlines() if "is not there" in line]
    expect(len(lines) == 1, f"one line names the missing folder: {app.log()!r}")
    expect(stored_paths(app)[0] == str(app.home), "home instead")


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


def changes_permissions_by_keys_alone(scene):
    source = scene.file(scene.left, "report.txt")
    source.chmod(0o644)
    app = scene.start(left=source)

    app.key("ctrl+i")
    app.wait_for_question("the information sheet")

    def others_have_no_access():
        # The item is read beside the sheet. What comes before that is for nobody, and OK stays where it is.
        app.key("alt+t", "N", "Return")
        try:
            app.wait_for_main_window(limit=3)
        except Failure:
            return False
        if source.stat().st_mode & 0o777 == 0o640:
            return True
        app.key("ctrl+i")
        app.wait_for_question("the information sheet")
        return False
    app.wait_for(others_have_no_access, "the permissions of others")
    app.key("ctrl+i")
    app.wait_for_question("the information sheet")
    app.key("Escape")
    scene.quit()
    expect(source.stat().st_mode & 0o777 == 0o640, "cancelling changes nothing")


def browses_the_pictures_of_a_folder(scene):
    names = ["a.jpg", "b.png", "c.webp"]
    for name in names:
        draw(scene.left / name, (640, 480), ("#3a86ff", "#e0f0ff"), "#4f6d7a")
    (scene.left / "torn.png").write_bytes((scene.left / "b.png").read_bytes()[:200])
    app = scene.start()
    thumbnails = scene.app.home.parent / "cache" / "thumbnails"

    app.key("alt+t", "Return")
    title = app.wait_for_question("the image browser")
    expect(title == "Image browser", f"the sheet's title is {title!r}")
    app.wait_for(lambda: len(list(thumbnails.glob("normal/*.png"))) == len(names),
                 "the thumbnails of what can be shown")
    app.wait_for(lambda: len(list(thumbnails.glob("fail/*/*.png"))) == 1, "the note of what cannot")
    app.key("Right", "space", "End", "Home", "Escape")
    scene.quit()


def running(*command):
    """Whether a process with this command line lives."""
    line = b"\0".join(map(os.fsencode, command)) + b"\0"
    for process in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
        try:
            if process.read_bytes() == line:
                return True
        except OSError:
            pass  # it has ended meanwhile
    return False


def runs_command_lines_and_leaves_none_behind(scene):
    app = scene.start()
    app.key("alt+t", "Down", "Return")
    app.wait_for_question("the internal terminal")

    def enter(line):
        app.type(line)
        app.key("Return")
    enter("cd ..")
    enter(f"cd {scene.right.name}")  # the word ends at the blank, so it stays where it is
    enter("touch one two")
    app.wait_for((app.home.parent / "two").is_file, "a file in the home folder's parent")
    expect((app.home.parent / "one").is_file(), "a word beside it")
    long_one = ("sleep", f"{os.getpid()}1")
    enter(" ".join(long_one))
    app.wait_for(lambda: running(*long_one), "a command that does not end")
    app.key("Escape")
    app.wait_for_main_window()
    app.wait_for(lambda: not running(*long_one), "its end with the sheet")
    scene.quit()


def finds_an_item_by_its_name(scene):
    wanted = scene.home / "papers" / "zebra crossing.txt"
    wanted.parent.mkdir(parents=True)
    wanted.write_bytes(CONTENT)
    app = scene.start()
    app.key("ctrl+shift+s")
    app.wait_for_question("the search")
    app.type("zebra cros")

    def has_led_there():
        app.key("Down", "ctrl+Return")  # to the first result, when there is one; and where it lies
        try:
            app.wait_for_main_window(limit=3)
        except Failure:
            return False
        return True
    app.wait_for(has_led_there, "the result")
    scene.confirm("F5")
    app.wait_for(lambda: holds(scene.right / wanted.name), "the copy of what was selected")
    scene.quit()
    app.close()
    expect(stored_paths(app)[0] == str(wanted.parent), f"stored: {stored_paths(app)}")


SCENES = [browses_the_pictures_of_a_folder, copies_renames_and_deletes_any_name,
          asks_before_overwriting, pastes_what_was_copied_or_cut,
          pastes_what_another_program_cut, makes_a_folder_with_f7,
          moves_from_the_right_after_tab, drags_onto_a_file_by_held_keys,
          changes_permissions_by_keys_alone, remembers_where_it_went_along_the_path,
          falls_back_from_a_missing_folder, runs_command_lines_and_leaves_none_behind,
          finds_an_item_by_its_name, ends_when_the_session_ends]


def play_all(scenes, make_display=Display):
    """The exit status. The arguments: the program, a folder for screenshots, the names of scenes."""
    program = os.path.abspath(sys.argv[1])
    shots = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None
    only = sys.argv[3:]
    failed = 0
    display = make_display()
    try:
        for play in scenes:
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
    sys.exit(play_all(SCENES))
