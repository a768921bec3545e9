"""A world of its own for the real program: display, window manager, home and settings.

Used by the end-to-end tests and by scripts/tour."""
import os
import pathlib
import plistlib
import re
import shutil
import signal
import subprocess
import time

# The sanitizers' build on a busy machine is slow; a condition that holds is seen at once.
LIMIT = 60


class Failure(AssertionError):
    pass


def wait_for(condition, what, process, limit=LIMIT):
    """The condition's first true answer; a Failure when the time is up, or the process ended without it."""
    end = time.monotonic() + limit
    ended = False
    while True:
        answer = condition()
        if answer:
            return answer
        if ended:
            raise Failure(f"{process.args[0]} ended ({process.returncode}) before {what}")
        if time.monotonic() > end:
            raise Failure(f"waited {limit:.0f} s for {what}")
        try:
            process.wait(0.03)  # files, windows and the focus are looked at again meanwhile
            ended = True
        except subprocess.TimeoutExpired:
            pass


def run(*command, env=None):
    """The finished command; its failure is the caller's to judge."""
    return subprocess.run(command, env=env, capture_output=True, text=True, errors="replace")


class Display:
    """An X server without a screen, and a window manager so that focus goes where a person expects."""

    # For all that run here: the bus, and settings to start with.
    session_bus = None
    settings = {}

    def __init__(self, size="1280x800"):
        needed = ("Xvfb", "xdotool", "xprop", "import", "matchbox-window-manager")
        missing = [program for program in needed if not shutil.which(program)]
        if missing:
            raise Failure(f"not installed: {', '.join(missing)} (scripts/install-deps tour)")
        read_end, write_end = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", size + "x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb did not start")
        self.name = ":" + number
        self.env = dict(os.environ, DISPLAY=self.name)
        self.platform = {"QT_QPA_PLATFORM": "xcb"}
        self._manager = subprocess.Popen(
            ["matchbox-window-manager", "-use_titlebar", "yes", "-use_cursor", "yes"],
            env=self.env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(lambda: "window id" in run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK",
                                            env=self.env).stdout, "the window manager", self._manager)

    def close(self):
        for process in (self._manager, self._server):
            process.terminate()
            process.wait()

    def xdotool(self, *arguments):
        return run("xdotool", *arguments, env=self.env).stdout.strip()

    def active_window(self):
        """Number and title of the window with the focus, or None."""
        found = re.search(r"window id # 0x([0-9a-f]+)",
                          run("xprop", "-root", "_NET_ACTIVE_WINDOW", env=self.env).stdout)
        if not found or int(found.group(1), 16) == 0:
            return None
        number = int(found.group(1), 16)
        # Only a window that has the keyboard too: keys go there, whatever the manager says.
        if self.xdotool("getwindowfocus") != str(number):
            return None
        return number, self.xdotool("getwindowname", str(number))

    def screenshot(self, file):
        return run("import", "-window", "root", str(file), env=self.env).returncode == 0


class Program:
    """The running program with its own home below `world`."""

    def __init__(self, program, display, world, *arguments, color_scheme="light",
                 session_bus=None):
        world = pathlib.Path(world)
        session_bus = session_bus or display.session_bus
        self.display = display
        self.home = world / "home"
        self.settings = world / "config" / "org.twinleaf.Twinleaf.plist"
        self.trash = world / "data" / "Trash"
        for folder in ("home", "config", "data", "state", "cache", "run"):
            (world / folder).mkdir(mode=0o700, parents=True, exist_ok=True)
        if display.settings and not self.settings.exists():
            self.settings.write_bytes(plistlib.dumps(display.settings))
        env = {key: value for key, value in display.env.items()
               if key not in ("WAYLAND_DISPLAY", "SESSION_MANAGER", "XAUTHORITY", "QT_STYLE_OVERRIDE")}
        env.update(HOME=str(self.home), XDG_CONFIG_HOME=str(world / "config"),
                   XDG_DATA_HOME=str(world / "data"), XDG_STATE_HOME=str(world / "state"),
                   XDG_CACHE_HOME=str(world / "cache"), XDG_RUNTIME_DIR=str(world / "run"),
                   DBUS_SESSION_BUS_ADDRESS=session_bus or "disabled:",
                   QT_ACCESSIBILITY="1" if session_bus else "0", LC_ALL="C.UTF-8", LANGUAGE="en", TZ="UTC",
                   TWINLEAF_COLOR_SCHEME=color_scheme, **display.platform)
        if session_bus:
            env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self.env = env
        self._log = open(world / "log.txt", "a+b")
        self._process = subprocess.Popen([str(program), *map(os.fspath, arguments)], env=env,
                                         stdin=subprocess.DEVNULL, stdout=self._log, stderr=self._log)
        self._question = None
        self.window = self._wait(self._window, "the main window")

    def _window(self):
        found = self.display.active_window()
        return found[0] if found else None

    def _wait(self, condition, what, limit=LIMIT):
        return wait_for(condition, what, self._process, limit)

    def key(self, *keys):
        self.display.xdotool("key", "--clearmodifiers", "--delay", "30", *keys)

    def type(self, text):
        """Types over what the entry field holds."""
        self.key("ctrl+a")
        self.display.xdotool("type", "--clearmodifiers", "--delay", "20", "--", text)

    def _new_question(self):
        """Number and title of a dialog over the main window that was not asked for before, or None."""
        active = self.display.active_window()
        return active if active and active[0] not in (self.window, self._question) else None

    def wait_for_question(self, what, limit=LIMIT):
        """Waits for a dialog over the main window that was not asked for before; its title."""
        self._question, title = self._wait(self._new_question, what, limit)
        return title

    def wait_for_main_window(self, limit=LIMIT):
        self._wait(lambda: self._window() == self.window, "the main window to be active again", limit)
        self._question = None  # a sheet that comes up again may be the same window

    def wait_for(self, condition, what):
        return self._wait(condition, what)

    def has_ended(self):
        return self._process.poll() is not None

    def terminate(self):
        self.send(signal.SIGTERM)

    def send(self, number):
        self._process.send_signal(number)

    def wait_for_end(self):
        """The exit status. An operation whose files are done may not have ended: it may be stopped."""
        def ended():
            question = self._new_question()
            if question:
                self._question = question[0]
                self.key("Return")
            return self.has_ended()
        self._wait(ended, "the program to end")
        return self._process.returncode

    def log(self):
        self._log.seek(0)
        return self._log.read().decode(errors="replace")

    def close(self):
        if self._process.poll() is None:
            self._process.send_signal(signal.SIGTERM)
            try:
                self._process.wait(5)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
        self._log.close()
