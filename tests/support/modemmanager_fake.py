"""ModemManager as a test wants it: modems with any properties, right or wrong."""

import dbus
import dbusmock
from dbusmock import MOCK_IFACE

BUS_NAME = MAIN_IFACE = "org.freedesktop.ModemManager1"
MAIN_OBJ = "/org/freedesktop/ModemManager1"
SYSTEM_BUS = True
IS_OBJECT_MANAGER = True

MODEM = MAIN_OBJ + "/Modem/0"
SIM = MAIN_OBJ + "/SIM/0"
MODEM_IFACE = MAIN_IFACE + ".Modem"
DIE_AFTER_ANSWER = "import os; from gi.repository import GLib; GLib.idle_add(os._exit, 0, priority=GLib.PRIORITY_HIGH)"


def load(mock, _parameters):
    mock.AddMethod(MAIN_IFACE, "ScanDevices", "", "", "")


@dbus.service.method(MOCK_IFACE, in_signature="a{sv}a{sv}u", out_signature="")
def Plug(self, properties, sim, messages):
    """Adds a modem with these properties besides the usual ones, its SIM, and received messages, the newest first."""
    usual = {
        "Model": "Fake",
        "State": 8,
        "StateFailedReason": dbus.UInt32(0),
        "UnlockRequired": dbus.UInt32(1),
        "EquipmentIdentifier": "1",
        "Sim": dbus.ObjectPath(SIM),
    }
    paths = [dbus.ObjectPath(f"{MAIN_OBJ}/SMS/{number}") for number in range(messages)]
    for number, path in enumerate(paths):
        second = messages - number
        time = f"2024-01-01T{second // 3600:02}:{second // 60 % 60:02}:{second % 60:02}+00"
        sms = {"State": dbus.UInt32(3), "PduType": dbus.UInt32(1), "Text": f"text {number}", "Timestamp": time}
        self.AddObject(path, MAIN_IFACE + ".Sms", sms, [])
    self.AddObject(SIM, MAIN_IFACE + ".Sim", sim, [("SendPin", "s", "", DIE_AFTER_ANSWER)])
    self.AddObject(MODEM, MODEM_IFACE, {**usual, **properties}, [("Enable", "b", "", "")])
    messaging = {"Messages": dbus.Array(paths, signature="o")}
    dbusmock.get_object(MODEM).AddProperties(MODEM_IFACE + ".Messaging", messaging)
    self.object_manager_emit_added(MODEM)


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def Unplug(self):
    self.object_manager_emit_removed(MODEM)
    for path in (MODEM, SIM):
        self.RemoveObject(path)
