#!/usr/bin/env python3
"""Ends the session under the real program, and brings it back, as a session manager does.

Usage: save_session.py PROGRAM [SCREENSHOT-FOLDER [SCENE...]]"""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True
from desktop import Display, Program  # noqa: E402
from drive_program import expect, holds, play_all  # noqa: E402
from session_manager import ASKS_ANYTHING, ASKS_NOBODY, SessionManager  # noqa: E402

OLDER = b"the older text"


class Session(Display):
    def __init__(self):
        super().__init__()
        self.manager = SessionManager()
        self.platform["SESSION_MANAGER"] = self.manager.address

    def active_window(self):
        self.manager.heard(lambda: True)  # a program that starts waits for its answers
        return super().active_window()


def wait_until_told(app, manager, word):
    app.wait_for(lambda: manager.heard(lambda: word in manager.told), f"the client to have {word!r}")


def end_session(app, manager):
    manager.end()
    app.wait_for(lambda: manager.heard(lambda: app.has_ended()), "the program to end")
    expect(app.wait_for_end() == 0, "the end is an orderly one")


def comes_back_as_it_was(scene):
    inner = scene.right / "inner"
    inner.mkdir()
    manager = scene.display.manager
    # A path from here, as a person may type it, which leads nowhere from the next session's folder.
    scene.program = os.path.relpath(scene.program)
    app = scene.start()
    wait_until_told(app, manager, "saved")
    app.key("Tab", "Down", "Return")
    manager.save(ASKS_ANYTHING)
    wait_until_told(app, manager, "saved")
    expect("asks" not in manager.told, f"nothing is asked: {manager.told}")
    end_session(app, manager)
    app.close()

    manager.told.clear()
    command = [os.fsdecode(word) for word in manager.properties["RestartCommand"]]
    here = os.getcwd()
    os.chdir("/")
    try:
        scene.app = app = Program(command[0], scene.display, app.home.parent, *command[1:])
    finally:
        os.chdir(here)
    wait_until_told(app, manager, "again")
    scene.enter("F7", "made in the pane that was active")
    app.wait_for((inner / "made in the pane that was active").is_dir, "the new folder")
    app.wait_for_main_window()
    app.key("Tab")
    scene.enter("F7", "made in the other")
    app.wait_for((scene.left / "made in the other").is_dir, "the other new folder")
    scene.quit()


def work_is_not_ended_unasked(scene):
    manager = scene.display.manager
    source = scene.file(scene.left, "same name")
    target = scene.file(scene.right, "same name", OLDER)
    app = scene.start(left=source)
    wait_until_told(app, manager, "saved")
    scene.confirm("F5")
    app.wait_for_question("the overwrite question")

    for shutdown in (False, True):  # nobody may be asked; so the work goes on, whatever it is
        manager.save(ASKS_NOBODY, shutdown)
        wait_until_told(app, manager, "saved")
        expect("asks" not in manager.told, f"nobody may be asked: {manager.told}")
    manager.save(ASKS_ANYTHING)
    wait_until_told(app, manager, "asks")
    manager.let_ask()
    app.wait_for_question("the question about the work")
    app.key("Escape")
    wait_until_told(app, manager, "cancels")
    manager.go_on()
    expect(holds(target, OLDER) and holds(source), "the overwrite question is still open")

    end_session(app, manager)
    expect(holds(target, OLDER) and holds(source), "nothing was replaced unasked")
    expect(app.settings.is_file(), "the settings were saved")


if __name__ == "__main__":
    sys.exit(play_all([comes_back_as_it_was, work_is_not_ended_unasked], Session))
