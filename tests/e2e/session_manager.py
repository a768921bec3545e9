"""A session manager as X11 desktops have one: the session library's other side (XSMP), with the test in charge."""
import ctypes
import select
from ctypes import CFUNCTYPE, POINTER, Structure, byref, c_char_p, c_int, c_ulong, c_void_p

from desktop import Failure

ASKS_NOBODY, ASKS_ANYTHING = 0, 2  # what a client may ask a person
SAVE_LOCAL, SAVE_BOTH = 1, 2
ACCEPTED = 1


class Value(Structure):
    _fields_ = [("length", c_int), ("value", c_void_p)]


class Property(Structure):
    _fields_ = [("name", c_char_p), ("type", c_char_p), ("count", c_int), ("values", POINTER(Value))]


# What a client may send, in the order of the library's structure, with what each brings along.
MESSAGES = [("register", c_int, [c_char_p]), ("interact", None, [c_int]), ("interact_done", None, [c_int]),
            ("save_request", None, [c_int] * 5), ("phase_2", None, []), ("saved", None, [c_int]),
            ("closed", None, [c_int, POINTER(c_char_p)]), ("set", None, [c_int, POINTER(POINTER(Property))]),
            ("delete", None, [c_int, POINTER(c_char_p)]), ("get", None, [])]
TYPES = {name: CFUNCTYPE(result, c_void_p, c_void_p, *brought) for name, result, brought in MESSAGES}


class Callbacks(Structure):
    _fields_ = [field for name, _, _ in MESSAGES
                for field in ((name, TYPES[name]), (name + "_data", c_void_p))]


class SessionManager:
    """`told`: what the one client sent since the last request, word by word."""

    def __init__(self):
        self._ice, self._sm = ctypes.CDLL("libICE.so.6"), ctypes.CDLL("libSM.so.6")
        for function in (self._ice.IceAcceptConnection, self._ice.IceComposeNetworkIdList,
                         self._sm.SmsGenerateClientID):
            function.restype = c_void_p
        self.told, self.properties, self._client = [], {}, None
        self._connections = []
        self._kept = [TYPES[name](getattr(self, "_" + name)) for name, _, _ in MESSAGES]
        new_client = CFUNCTYPE(c_int, c_void_p, c_void_p, POINTER(c_ulong), POINTER(Callbacks), c_void_p)(self._new)
        anybody = CFUNCTYPE(c_int, c_char_p)(lambda _host: 1)
        broken = CFUNCTYPE(None, c_void_p)(lambda _connection: None)  # the library's own would end the test
        self._ice.IceSetIOErrorHandler(broken)
        self._kept += [new_client, anybody, broken]
        error = ctypes.create_string_buffer(200)
        count, doors = c_int(), POINTER(c_void_p)()
        if not (self._sm.SmsInitialize(b"Test", b"1", new_client, None, anybody, len(error), error)
                and self._ice.IceListenForConnections(byref(count), byref(doors), len(error), error)):
            raise Failure(f"the session manager: {error.value.decode()}")
        self._doors = [c_void_p(doors[i]) for i in range(count.value)]
        for door in self._doors:
            self._ice.IceSetHostBasedAuthProc(door, anybody)
        addresses = ctypes.string_at(self._ice.IceComposeNetworkIdList(count, doors)).decode()
        self.address = next(one for one in addresses.split(",") if one.startswith(("local/", "unix/")))

    def heard(self, condition):
        """Whether the condition holds after what has arrived."""
        doors = {self._ice.IceGetListenConnectionNumber(door): door for door in self._doors}
        lines = {self._ice.IceConnectionNumber(line): line for line in self._connections}
        for ready in select.select([*doors, *lines], [], [], 0)[0]:
            if ready in doors:
                line = self._ice.IceAcceptConnection(doors[ready], byref(c_int()))
                if line:
                    self._connections.append(c_void_p(line))
            elif self._ice.IceProcessMessages(lines[ready], None, None):
                self._connections.remove(lines[ready])  # it ended; closing it once more is not allowed
        return condition()

    def save(self, asking, shutdown=True):
        self.told.clear()
        self._sm.SmsSaveYourself(self._client, SAVE_BOTH, int(shutdown), asking, 0)

    def let_ask(self):
        self._sm.SmsInteract(self._client)

    def go_on(self):
        self._sm.SmsShutdownCancelled(self._client)

    def end(self):
        self._sm.SmsDie(self._client)

    def _new(self, client, _data, mask, callbacks, _reason):
        self._client = c_void_p(client)
        mask[0] = (1 << len(MESSAGES)) - 1
        for (name, _, _), function in zip(MESSAGES, self._kept):
            setattr(callbacks[0], name, function)
        return 1

    def _register(self, _client, _data, previous):
        name = previous or ctypes.string_at(self._sm.SmsGenerateClientID(self._client))
        self._sm.SmsRegisterClientReply(self._client, name)
        if not previous:  # so the protocol has it: a new one tells at once how it is started again
            self._sm.SmsSaveYourself(self._client, SAVE_LOCAL, 0, ASKS_NOBODY, 0)
        self.told.append("again" if previous else "new")
        return 1

    def _interact(self, _client, _data, _kind):
        self.told.append("asks")

    def _interact_done(self, _client, _data, cancels):
        self.told.append("cancels" if cancels else "has asked")

    def _save_request(self, *_all):
        self.told.append("wants to be saved")

    def _phase_2(self, _client, _data):
        self._sm.SmsSaveYourselfPhase2(self._client)

    def _saved(self, _client, _data, success):
        self.told.append("saved" if success else "not saved")

    def _closed(self, _client, _data, _count, _reasons):
        self.told.append("closed")

    def _set(self, _client, _data, count, properties):
        for one in (properties[i][0] for i in range(count)):
            self.properties[one.name.decode()] = [
                ctypes.string_at(one.values[i].value, one.values[i].length) for i in range(one.count)]

    def _delete(self, _client, _data, _count, _names):
        pass

    def _get(self, _client, _data):
        self._sm.SmsReturnProperties(self._client, 0, None)
