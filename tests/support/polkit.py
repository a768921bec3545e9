"""A polkit for python3-dbusmock: it grants rights for a while to the process that asks, as the scripted
person lets it, and keeps what it was asked."""
import dbus
from dbusmock import MOCK_IFACE

BUS_NAME = "org.freedesktop.PolicyKit1"
MAIN_OBJ = "/org/freedesktop/PolicyKit1/Authority"
MAIN_IFACE = "org.freedesktop.PolicyKit1.Authority"
SYSTEM_BUS = True

INTERACTION = 1
ID = "polkit.temporary_authorization_id"


def load(mock, _parameters):
    # Or "refuses", "waits" (never answers), "fails" (there is no agent), "always" (nobody need be asked),
    # "keeps" (agrees, and nothing can be revoked: there is no session).
    mock.person = "agrees"
    mock.held = {}  # id: process
    mock.last_id = 0
    mock.said = []
    mock.waiting = []


def process_of(subject):
    kind, details = subject
    return (str(kind), int(details["pid"]), int(details["start-time"]), int(details["uid"]))


def grant(mock, process):
    mock.last_id += 1
    mock.held[f"tmp{mock.last_id}"] = process


@dbus.service.method(MAIN_IFACE, in_signature="(sa{sv})sa{ss}us", out_signature="(bba{ss})",
                     async_callbacks=("answer", "fail"))
def CheckAuthorization(self, subject, action, details, flags, cancellation, answer, fail):
    process = process_of(subject)
    asks = bool(flags & INTERACTION)
    self.said.append(f"{'ask' if asks else 'check'} {action} {len(details)}")

    def verdict():
        if self.person == "always":
            return answer((True, False, dbus.Dictionary({}, signature="ss")))
        ids = [key for key, holder in self.held.items() if holder == process]
        return answer((bool(ids), not ids, dbus.Dictionary({ID: ids[0]} if ids else {}, signature="ss")))

    if asks and self.person == "fails":
        return fail(dbus.DBusException("No agent", name=BUS_NAME + ".Error.Failed"))
    if asks and self.person == "waits":
        self.waiting.append((cancellation, fail))
        return None
    if asks and self.person in ("agrees", "keeps"):
        grant(self, process)
    return verdict()


@dbus.service.method(MAIN_IFACE, in_signature="s")
def CancelCheckAuthorization(self, cancellation):
    self.said.append("cancel")
    for waiting, fail in self.waiting:
        if waiting == cancellation:
            fail(dbus.DBusException("Cancelled", name=BUS_NAME + ".Error.Cancelled"))


@dbus.service.method(MAIN_IFACE, in_signature="s")
def RevokeTemporaryAuthorizationById(self, key):
    self.said.append("revoke " + key)
    if self.person == "keeps":
        raise dbus.DBusException("No session", name=BUS_NAME + ".Error.Failed")
    del self.held[str(key)]


@dbus.service.method(MOCK_IFACE, in_signature="s")
def Person(self, person):
    self.person = str(person)


@dbus.service.method(MOCK_IFACE)
def Expire(self):
    self.held.clear()


@dbus.service.method(MOCK_IFACE)
def GrantOther(self):
    grant(self, ("unix-process", 1, 1, 0))


@dbus.service.method(MOCK_IFACE, out_signature="as")
def Said(self):
    said, self.said = self.said, []
    return dbus.Array(said, signature="s")


@dbus.service.method(MOCK_IFACE, out_signature="i")
def Held(self):
    return len(self.held)
