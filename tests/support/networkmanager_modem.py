"""NetworkManager with one modem: extends the template that comes with python-dbusmock."""

import dbus
import dbusmock
from dbusmock import MOCK_IFACE
from dbusmock.templates import networkmanager
from dbusmock.templates.networkmanager import *  # the names that a template consists of

DEVICE = "/org/freedesktop/NetworkManager/Devices/modem"
ADDRESS = "/org/freedesktop/NetworkManager/IP4Config/modem"
ACTIVE = "/org/freedesktop/NetworkManager/ActiveConnection/modem"
PREPARE, ACTIVATED, DEACTIVATING = 40, 100, 110

ADD_AND_ACTIVATE = """
self.settings = ' '.join(f'{group}.{key}={value}' for group, values in sorted(args[0].items())
                         for key, value in sorted(values.items()))
self.SetModemState(40, 0)
ret = ('/org/freedesktop/NetworkManager/Settings/modem', '/org/freedesktop/NetworkManager/ActiveConnection/modem', {})
"""


def load(mock, parameters):
    networkmanager.load(mock, parameters)
    manager = dbusmock.get_object(MANAGER_OBJ)
    manager.SetModemState = set_modem_state
    manager.settings = ""
    manager.AddMethods(
        MANAGER_IFACE,
        [
            (
                "AddAndActivateConnection2",
                "a{sa{sv}}ooa{sv}",
                "ooa{sv}",
                ADD_AND_ACTIVATE,
            ),
            (
                "ActivateConnection",
                "ooo",
                "o",
                "self.settings = 'existing'; self.SetModemState(40, 0); ret = '" + ACTIVE + "'",
            ),
            ("DeactivateConnection", "o", "", "self.SetModemState(110, 39); self.SetModemState(30, 39)"),
        ],
    )


def set_modem_state(state, reason):
    device = dbusmock.get_object(DEVICE)
    before = device.Get(DEVICE_IFACE, "State")
    is_active = PREPARE <= state <= DEACTIVATING
    device.Set(DEVICE_IFACE, "ActiveConnection", dbus.ObjectPath(ACTIVE if is_active else "/"))
    device.Set(DEVICE_IFACE, "Ip4Config", dbus.ObjectPath(ADDRESS if state == ACTIVATED else "/"))
    device.Set(DEVICE_IFACE, "State", dbus.UInt32(state))
    device.EmitSignal(
        DEVICE_IFACE,
        "StateChanged",
        "uuu",
        [dbus.UInt32(state), before, dbus.UInt32(reason)],
    )


@dbus.service.method(MOCK_IFACE, in_signature="ssas", out_signature="")
def AddModem(self, interface, udi, available):
    """Adds the device of a ModemManager modem, with connections that somebody has set up."""
    self.AddObject(
        DEVICE,
        DEVICE_IFACE,
        {
            "DeviceType": dbus.UInt32(8),
            "Udi": udi,
            "IpInterface": interface,
            "State": dbus.UInt32(30),
            "ActiveConnection": dbus.ObjectPath("/"),
            "Ip4Config": dbus.ObjectPath("/"),
            "AvailableConnections": dbus.Array([dbus.ObjectPath(path) for path in available], signature="o"),
        },
        [],
    )
    self.AddObject(
        ADDRESS,
        "org.freedesktop.NetworkManager.IP4Config",
        {"AddressData": dbus.Array([{"address": "10.0.0.7", "prefix": dbus.UInt32(8)}], signature="a{sv}")},
        [],
    )
    self.AddObject(ACTIVE, ACTIVE_CONNECTION_IFACE, {"Id": "Mobile"}, [])
    for path in (ADDRESS, ACTIVE, DEVICE):
        self.object_manager_emit_added(path)


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def RemoveModem(self):
    for path in (DEVICE, ADDRESS, ACTIVE):
        self.object_manager_emit_removed(path)
        self.RemoveObject(path)


@dbus.service.method(MOCK_IFACE, in_signature="uu", out_signature="")
def SetModemState(self, state, reason):
    set_modem_state(state, reason)


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def ForgetConnection(self):
    dbusmock.get_object(MANAGER_OBJ).settings = ""


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="s")
def LastConnection(self):
    """The settings of the connection that was activated since they were forgotten, or "existing"."""
    return dbusmock.get_object(MANAGER_OBJ).settings
