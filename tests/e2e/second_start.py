#!/usr/bin/python3
"""What other programs and further starts ask of the running program over a session's bus of the test's own.

Usage: second_start.py PROGRAM [SCREENSHOT-FOLDER]

Debian's own python3, whatever else is installed: it is the one that python3-gi is for."""
import os
import pathlib
import signal
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True
from desktop import LIMIT, Program, wait_for  # noqa: E402
from drive_program import expect, holds, play_all, stored_paths  # noqa: E402
from gi.repository import Gio, GLib  # noqa: E402

NAME = "org.twinleaf.Twinleaf"
FILE_MANAGER = "org.freedesktop.FileManager1"
SERVICES = pathlib.Path(__file__).resolve().parents[2] / "cmake"
CONFIGURATION = """<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><servicedir>{}</servicedir>
<policy context="default"><allow send_destination="*"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>"""


class Session:
    """A bus that can start the program, and the environment of what runs on it."""

    def __init__(self, scene):
        scene.start().terminate()  # for its environment
        scene.app.wait_for_end()
        self._folder = tempfile.TemporaryDirectory(prefix="twinleaf-bus-")
        folder = pathlib.Path(self._folder.name)
        for template in SERVICES.glob("*.service.in"):
            service = template.read_text().replace("@TWINLEAF_PROGRAM@", str(scene.program))
            (folder / template.stem).write_text(service)
        (folder / "bus.conf").write_text(CONFIGURATION.format(folder))
        self.daemon = subprocess.Popen(
            ["dbus-daemon", f"--config-file={folder}/bus.conf", "--nofork", "--print-address=1"],
            env=scene.app.env, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.address = self.daemon.stdout.readline().strip()
        self._program = scene.program
        self.env = dict(scene.app.env, DBUS_SESSION_BUS_ADDRESS=self.address)
        self._bus = Gio.DBusConnection.new_for_address_sync(
            self.address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.started = []

    def close(self):
        for process in self.started:
            process.kill()
            process.communicate()
        owner = self.owner()
        if owner:
            os.kill(self.ask_bus("GetConnectionUnixProcessID", owner), signal.SIGKILL)
        self.daemon.terminate()
        self.daemon.communicate()
        self._folder.cleanup()

    def start(self, *arguments, **options):
        """A further start, which may end at once."""
        process = subprocess.Popen([self._program, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE, **{"env": self.env, **options})
        self.started.append(process)
        return process

    def finish(self, *arguments, **options):
        """The exit status of a start that ends at once, and its lines."""
        process = self.start(*arguments, **options)
        _, errors = process.communicate(timeout=LIMIT)
        return process.returncode, errors.decode().splitlines()

    def ask_bus(self, method, name):
        return self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                                   GLib.Variant("(s)", (name,)), None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0]

    def owner(self, name=NAME):
        return self.ask_bus("GetNameOwner", name) if self.ask_bus("NameHasOwner", name) else None

    def call(self, name, method, signature, *arguments):
        """The name of the error that is answered, or None."""
        try:
            self._bus.call_sync(name, "/" + name.replace(".", "/"),
                                "org.freedesktop.Application" if name == NAME else name, method,
                                GLib.Variant(signature, arguments), None, Gio.DBusCallFlags.NONE, LIMIT * 1000, None)
        except GLib.Error as error:
            return Gio.DBusError.get_remote_error(error)
        return None

    def show_items(self, *paths):
        return self.call(FILE_MANAGER, "ShowItems", "(ass)", [GLib.filename_to_uri(str(path)) for path in paths], "")


def on_a_bus(play):
    def played(scene):
        session = Session(scene)
        try:
            play(scene, session)
        finally:
            session.close()
    played.__name__ = play.__name__
    return played


@on_a_bus
def a_second_start_lands_in_the_first(scene, session):
    left = scene.left / "new left"
    left.mkdir()
    odd = os.fsencode(scene.right) + b"/\xff"
    os.mkdir(odd)
    item = scene.file(left, "item")
    app = scene.start(session_bus=session.address)
    ended = session.finish("new left/item", odd, cwd=scene.left)
    expect(ended == (0, []), f"the second start: {ended}")
    scene.confirm("F5")
    app.wait_for(lambda: os.path.exists(odd + b"/item"), "the copy between the folders that were handed over")
    expect(holds(item), "the source is still there")
    status, lines = session.finish("gone")
    expect(status == 1 and len(lines) == 1 and "gone" in lines[0], f"a folder that is not there: {status} {lines}")
    expect(session.finish() == (0, []), "without folders")
    expect(session.finish(item.as_uri()) == (0, []), "an address")
    without_display = {name: value for name, value in session.env.items() if name not in ("DISPLAY", "QT_QPA_PLATFORM")}
    expect(session.finish(left, env=without_display) == (0, []), "where there is no display")
    status, lines = session.finish(env=dict(without_display, DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere"))
    expect(status == 1 and len(lines) == 1 and "no display" in lines[0], f"nor a first one: {status} {lines}")
    for wrong in ("--new-window", ""):
        status, lines = session.finish(wrong)
        expect(status == 2 and len(lines) == 1, f"{wrong!r}: {status} {lines}")
    scene.quit()
    expect(stored_paths(app)[0] == str(left), f"what is not there changes nothing: {stored_paths(app)}")


@on_a_bus
def shows_the_items_that_a_program_names(scene, session):
    items = [scene.file(scene.home, name) for name in ("one", "two", "three")]
    app = scene.start(session_bus=session.address)
    expect(session.show_items(items[0], items[2]) is None, "the call is answered")
    scene.confirm("F5")
    app.wait_for(lambda: all(holds(scene.right / item.name) for item in (items[0], items[2])), "the copies of both")
    expect(not (scene.right / "two").exists(), "the third was not selected")
    app.wait_for_main_window()
    for method, signature, *arguments in (
            ("ShowItems", "(ass)", ["http://example.org/a", "smb://x/y", "file://host/z"], ""),
            ("ShowItems", "(i)", 1), ("ShowFolders", "(ass)", ["rubbish\n"] * 100_000, "\x01" * 1000)):
        expect(session.call(FILE_MANAGER, method, signature, *arguments) is not None, f"{arguments[:1]!r:.80} is refused")
    expect(session.call(NAME, "ActivateAction", "(sava{sv})", "no such", [], {}), "an unknown action is refused")
    uri = GLib.filename_to_uri(str(items[1]))
    expect(session.call(FILE_MANAGER, "ShowItemProperties", "(ass)", [uri], "") is None, "information")
    app.wait_for_question("the information sheet")
    expect(session.show_items(items[1]) is None, "it answers under a sheet, too")
    app.key("Escape")
    app.wait_for_main_window()
    scene.quit()


@on_a_bus
def is_started_by_the_first_who_asks(scene, session):
    item = scene.file(scene.home, "one")
    expect(session.show_items(item) is None, "the call is answered")
    expect(session.owner(FILE_MANAGER) == session.owner(), "the program has both names")


@on_a_bus
def two_starts_at_once_make_one_window(scene, session):
    both = [session.start(scene.left), session.start(scene.left)]
    first_to_end = wait_for(lambda: next((one for one in both if one.poll() is not None), None), "the end of one",
                            session.daemon)
    expect(first_to_end.returncode == 0, f"its status: {first_to_end.returncode}")
    expect(session.finish() == (0, []), "the other one is there")
    expect([one.poll() for one in both].count(None) == 1, "one stays")


@on_a_bus
def one_that_hangs_is_not_waited_for(scene, session):
    hanging = session.start(scene.left)
    wait_for(session.owner, "the first", hanging)
    before = session.owner()
    hanging.send_signal(signal.SIGSTOP)
    other = session.start(scene.left)
    wait_for(lambda: session.owner() not in (None, before), "another one of the name", other)
    expect(session.owner(FILE_MANAGER) == session.owner(), "and of the other name")
    line = other.stderr.readline()
    expect(b"does not answer" in line, f"what it says: {line}")
    hanging.send_signal(signal.SIGCONT)
    expect(session.finish() == (0, []), "a third start lands in the second")
    other.terminate()
    other.communicate(timeout=LIMIT)
    wait_for(lambda: session.owner() == session.owner(FILE_MANAGER) == before, "both names at the first again", hanging)


if __name__ == "__main__":
    sys.exit(play_all([a_second_start_lands_in_the_first, shows_the_items_that_a_program_names,
                       is_started_by_the_first_who_asks, two_starts_at_once_make_one_window,
                       one_that_hangs_is_not_waited_for]))
