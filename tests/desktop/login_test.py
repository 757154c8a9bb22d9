"""At a login screen the program waits without a window, until somebody has logged in."""

import os
import subprocess
import sys
import threading

import gi

from programs import LIMIT, Utility, wait_until

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402  the version comes first

FOLDER = sys.argv[1]
INTERFACE = """<node><interface name="org.freedesktop.login1.Manager">
<method name="ListSessions"><arg type="a(susso)" direction="out"/></method></interface></node>"""


class LoginScreen:
    """A login manager without sessions, on the session bus, which the program takes for the system bus."""

    def __init__(self):
        self.questions = 0
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self._bus.register_object("/org/freedesktop/login1", Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0],
                                  self._list_sessions, None, None)
        self._name("RequestName", GLib.Variant("(su)", ("org.freedesktop.login1", 0)))
        threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

    def _list_sessions(self, _bus, _sender, _path, _interface, _method, _arguments, invocation):
        self.questions += 1
        invocation.return_value(GLib.Variant("(a(susso))", ([],)))

    def _name(self, method, arguments):
        self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments,
                            None, Gio.DBusCallFlags.NONE, -1, None)

    def end(self):
        """Now the owner of the process counts as logged in."""
        self._name("ReleaseName", GLib.Variant("(s)", ("org.freedesktop.login1",)))


def windows():
    return subprocess.run(["xdotool", "search", "--name", "^Vantrel$"], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True).stdout.split()


def main():
    os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = os.environ["DBUS_SESSION_BUS_ADDRESS"]
    screen = LoginScreen()
    early = []

    def log_in():
        wait_until("the program asks again and again", lambda: screen.questions >= 5)
        early.extend(windows())
        screen.end()

    person = threading.Thread(target=log_in)
    person.start()
    utility = Utility(FOLDER) # returns when the window is open
    person.join(LIMIT)
    assert screen.questions >= 5 and not early, "the window did not wait for the login"
    utility.end()
    print("the program waited for the login", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
