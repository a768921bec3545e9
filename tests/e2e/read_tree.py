#!/usr/bin/python3
"""Reads the running program as a screen reader does: over the accessibility bus, here one of the test's own.

Usage: read_tree.py PROGRAM [SCREENSHOT-FOLDER]

Debian's own python3, whatever else is installed: it is the one that python3-gi is for."""
import os
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True
from desktop import Failure  # noqa: E402
from drive_program import expect, play_all  # noqa: E402
from gi.repository import Gio, GLib  # noqa: E402

ACCESSIBLE = "org.a11y.atspi.Accessible"
REGISTRY = "org.a11y.atspi.Registry"
ACTIVE, SELECTED = 1, 23  # numbers of states
NAME_COLUMN = 1


class SessionBus:
    """A message bus that starts what the accessibility bus needs, and takes it down again."""

    def __init__(self, display):
        self._daemon = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--print-address=1"],
            env=display.env, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.address = self._daemon.stdout.readline().strip()
        if not self.address:
            raise Failure("dbus-daemon did not start")

    def close(self):
        self._daemon.terminate()
        self._daemon.wait()
        self._daemon.stdout.close()


def connected(address):
    flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
             | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


def call(bus, place, interface, method, arguments=None):
    """What the object at the place (name on the bus, path) answers, unpacked."""
    reply = bus.call_sync(place[0], place[1], interface, method, arguments, None,
                          Gio.DBusCallFlags.NONE, 20000, None)
    return reply.unpack()


class Reader:
    """The accessibility bus: the tree below each place, and where the focus went."""

    def __init__(self, session):
        launcher = ("org.a11y.Bus", "/org/a11y/bus")
        self._bus = connected(call(connected(session), launcher, "org.a11y.Bus", "GetAddress")[0])
        self.focused = []  # places, in the order in which the program told of them
        self._bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", "StateChanged", None, None,
                                   Gio.DBusSignalFlags.NONE, self._changed)
        call(self._bus, (REGISTRY, "/org/a11y/atspi/registry"), REGISTRY, "RegisterEvent",
             GLib.Variant("(s)", ("object:state-changed:focused",)))

    def _changed(self, _bus, sender, path, _interface, _signal, details):
        what, on = details.unpack()[:2]
        if what == "focused" and on:
            self.focused.append((sender, path))

    def told(self, condition):
        """Whether the condition holds after what has arrived."""
        while GLib.MainContext.default().iteration(False):
            pass
        return condition()

    def children(self, place):
        return call(self._bus, place, ACCESSIBLE, "GetChildren")[0]

    def _property(self, place, name):
        return call(self._bus, place, "org.freedesktop.DBus.Properties", "Get",
                    GLib.Variant("(ss)", (ACCESSIBLE, name)))[0]

    def name(self, place):
        return self._property(place, "Name")

    def description(self, place):
        return self._property(place, "Description")

    def role(self, place):
        return call(self._bus, place, ACCESSIBLE, "GetRoleName")[0]

    def _has(self, place, state):
        return bool(call(self._bus, place, ACCESSIBLE, "GetState")[0][0] >> state & 1)

    def is_selected(self, place):
        return self._has(place, SELECTED)

    def is_active(self, place):
        return self._has(place, ACTIVE)

    def cell(self, table, row, column):
        return call(self._bus, table, "org.a11y.atspi.Table", "GetAccessibleAt",
                    GLib.Variant("(ii)", (row, column)))[0]

    def program(self):
        root = (REGISTRY, "/org/a11y/atspi/accessible/root")
        return next((place for place in self.children(root) if "twinleaf" in self.name(place).lower()),
                    None)

    def walk(self, place):
        """The place and all below it, as a reader goes through them."""
        yield place
        for child in self.children(place):
            yield from self.walk(child)


def read(reader, app, left):
    program = app.wait_for(reader.program, "the program on the accessibility bus")
    places = [(place, reader.name(place), reader.role(place)) for place in reader.walk(program)]
    order = [name for _, name, _ in places]

    def named(wanted):
        expect(order.count(wanted) == 1, f"{wanted!r} stands once in {order}")
        return places[order.index(wanted)][0]

    expect(order.index("Toolbar") < order.index("Left path") < order.index("Left files") < order.index("Right path")
           < order.index("Right files"), f"left before right: {order}")

    buttons = [(reader.name(button), reader.description(button))
               for button in reader.children(named("Toolbar"))]
    expect(("Copy", "Copy items") in buttons, f"the toolbar: {buttons}")

    *segments, fold = reader.children(named("Left path"))
    expect(reader.name(fold) == "More folders", "the menu of what does not fit comes last")
    names = [reader.name(segment) for segment in segments]
    expect(names[1:] == list(left.parts[1:]), f"the navigator's segments: {names}")
    expect([reader.is_selected(segment) for segment in segments]
           == [False] * (len(segments) - 1) + [True], "the last segment is the selected one")

    shown = {reader.description(place): name for place, name, role in reversed(places)
             if role == "label" and reader.description(place) in ("Name", "Size", "Date")}
    expect(shown.get("Name") == "alpha.txt" and shown.get("Size") == "5 Bytes" and shown.get("Date"),
           f"the left info bar: {shown}")

    table = named("Left files")
    row = [reader.name(reader.cell(table, 1, column)) for column in range(5)]
    expect([text for text in row if text][0] == "alpha.txt", f"a row's name comes first: {row}")

    for key, expected in (("Tab", "beta.txt"), ("Tab", "alpha.txt"), ("ctrl+shift+b", "Copy"),
                          ("Right", "Move"), ("Escape", "alpha.txt")):
        reader.told(lambda: True)
        reader.focused.clear()
        app.key(key)
        app.wait_for(lambda: reader.told(lambda: bool(reader.focused)
                                         and reader.name(reader.focused[-1]) == expected),
                     f"{key} to tell of {expected!r}")


def a_screen_reader_reads(scene):
    alpha = scene.file(scene.left, "alpha.txt", b"text\n")
    beta = scene.file(scene.right, "beta.txt", b"text\n")
    session = SessionBus(scene.display)
    try:
        # Before the program comes: it asks once, when it has found the bus, what is listened for.
        reader = Reader(session.address)
        read(reader, scene.start(alpha, beta, session_bus=session.address), scene.left)
    finally:
        session.close()


if __name__ == "__main__":
    sys.exit(play_all([a_screen_reader_reads]))
