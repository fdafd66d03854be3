"""A NetworkManager with one modem, which does what the test says."""

import dbus
import dbusmock
from dbusmock import MOCK_IFACE
from gi.repository import GLib

BUS_NAME = MAIN_IFACE = "org.freedesktop.NetworkManager"
MAIN_OBJ = "/org/freedesktop"
SYSTEM_BUS = True
IS_OBJECT_MANAGER = True

MANAGER = MAIN_OBJ + "/NetworkManager"
DEVICE, ADDRESS, ACTIVE = MANAGER + "/Devices/0", MANAGER + "/IP4Config/0", MANAGER + "/ActiveConnection/0"
DEVICE_IFACE = BUS_NAME + ".Device"
DISCONNECTED, PREPARE, ACTIVATED, DEACTIVATING, FAILED = 30, 40, 100, 110, 120


def load(mock, _parameters):
    new = f"self.activate(args[0]); ret = ('/', '{ACTIVE}', {{}})"
    methods = [
        ("AddAndActivateConnection2", "a{sa{sv}}ooa{sv}", "ooa{sv}", new),
        ("ActivateConnection", "ooo", "o", f"self.activate({{}}); ret = '{ACTIVE}'"),
        ("DeactivateConnection", "o", "", "self.SetModemState(110, 39); self.SetModemState(30, 39)"),
    ]
    mock.AddObject(MANAGER, BUS_NAME, {}, methods)
    manager = dbusmock.get_object(MANAGER)
    manager.activate = activate
    manager.settings, manager.course = None, []


def activate(settings):
    """Follows the course that the test has set, once the call has been answered."""
    manager = dbusmock.get_object(MANAGER)
    manager.settings = settings
    if dbusmock.get_object(DEVICE).Get(DEVICE_IFACE, "State") == DEACTIVATING:  # the next one waits for that
        manager.SetModemState(DISCONNECTED, 39)
    manager.SetModemState(PREPARE, 0)
    for step in manager.course:
        GLib.idle_add(manager.SetModemState, *step)
    manager.course = []


@dbus.service.method(MOCK_IFACE, in_signature="uu", out_signature="")
def SetModemState(_self, state, reason):
    device = dbusmock.get_object(DEVICE)
    before = device.Get(DEVICE_IFACE, "State")
    is_active = PREPARE <= state <= DEACTIVATING
    device.Set(DEVICE_IFACE, "ActiveConnection", dbus.ObjectPath(ACTIVE if is_active else "/"))
    device.Set(DEVICE_IFACE, "Ip4Config", dbus.ObjectPath(ADDRESS if state == ACTIVATED else "/"))
    device.Set(DEVICE_IFACE, "State", dbus.UInt32(state))
    device.EmitSignal(DEVICE_IFACE, "StateChanged", "uuu", [dbus.UInt32(state), before, dbus.UInt32(reason)])


@dbus.service.method(MOCK_IFACE, in_signature="as", out_signature="")
def AddModem(self, connections):
    """The first modem of ModemManager, with connections that somebody has set up. Its traffic is that of "lo"."""
    device = {
        "DeviceType": dbus.UInt32(8),
        "Udi": "/org/freedesktop/ModemManager1/Modem/0",
        "IpInterface": "lo",
        "State": dbus.UInt32(DISCONNECTED),
        "ActiveConnection": dbus.ObjectPath("/"),
        "Ip4Config": dbus.ObjectPath("/"),
        "AvailableConnections": dbus.Array(connections, signature="o"),
    }
    addresses = dbus.Array([{"address": "10.0.0.7", "prefix": dbus.UInt32(8)}], signature="a{sv}")
    for path, interface, properties in (
        (ADDRESS, BUS_NAME + ".IP4Config", {"AddressData": addresses}),
        (ACTIVE, BUS_NAME + ".Connection.Active", {"Id": "Mobile"}),
        (DEVICE, DEVICE_IFACE, device),
    ):
        self.AddObject(path, interface, properties, [])
        self.object_manager_emit_added(path)


@dbus.service.method(MOCK_IFACE, in_signature="uu", out_signature="")
def SetCourse(_self, state, reason):
    """The state that the next connection reaches. After a failure the modem is disconnected."""
    end = [(DISCONNECTED, 0)] if state == FAILED else []
    dbusmock.get_object(MANAGER).course = [(state, reason)] + end


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="s")
def LastConnection(_self):
    """The settings of the connection that was activated; nothing if they were there already."""
    settings = dbusmock.get_object(MANAGER).settings
    if settings is None:
        return "none"
    words = [f"{group}.{key}={value}" for group, values in settings.items() for key, value in values.items()]
    return " ".join(sorted(words))
