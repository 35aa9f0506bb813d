"""A settings portal on the session bus. Takes changes, GROUP KEY VALUE with the value as GVariant text: at first as
arguments; without any, on standard input, a line each."""

import sys

from gi.repository import Gio, GLib

INTERFACE = """<node><interface name="org.freedesktop.portal.Settings">
<method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""
PATH = "/org/freedesktop/portal/desktop"
NAME = "org.freedesktop.portal.Settings"

settings = {}
loop = GLib.MainLoop()
bus = Gio.bus_get_sync(Gio.BusType.SESSION)


def answer(connection, sender, path, interface, method, arguments, invocation):
    invocation.return_value(GLib.Variant("(a{sa{sv}})", (settings,)))


def change(line):
    group, key, text = line.split(" ", 2)
    value = GLib.Variant.parse(None, text, None, None)
    settings.setdefault(group, {})[key] = value
    return group, key, value


def read_change(source, condition):
    line = sys.stdin.readline().strip()
    if not line:
        loop.quit()
        return False
    group, key, value = change(line)
    bus.emit_signal(None, PATH, NAME, "SettingChanged", GLib.Variant("(ssv)", (group, key, value)))
    bus.flush_sync()
    print("done " + line, flush=True)
    return True


for initial in sys.argv[1:]:
    change(initial)
bus.register_object(PATH, Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], answer, None, None)
Gio.bus_own_name_on_connection(
    bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, lambda *_: print("ready", flush=True), None
)
if not sys.argv[1:]:
    GLib.io_add_watch(sys.stdin.fileno(), GLib.IO_IN | GLib.IO_HUP, read_change)
loop.run()
