"""Shows the values of libzkflnetwork in gdb as their texts.

gdb loads it by itself where it trusts the place in which it was installed; otherwise:

    (gdb) source .../share/gdb/auto-load/...-gdb.py

What addresses and adapters hold is known to the library alone: they want its debug information. So
do IRIs, unless the program was compiled with -femit-class-debug-always, or by clang with
-fstandalone-debug: of a class with virtual functions compilers describe the members only where those
functions are. Without that gdb does not know the size of an IRI, and its own printer of a std::vector
goes wrong, with a warning.
"""

import ipaddress
import locale

import gdb
import gdb.printing

LONGEST = 100_000  # a text that says it is longer was never made


def shown(text):
    """A text in quotes, as far as the terminal can show it."""
    charset = gdb.host_charset() if hasattr(gdb, "host_charset") else locale.getpreferredencoding()
    escaped = text.replace("\\", "\\\\").replace('"', '\\"')
    return '"' + escaped.encode(charset, "backslashreplace").decode(charset) + '"'


def shown_bytes(utf8):
    return shown(utf8.decode("utf-8", "replace"))


def unit_of(pointer):
    """The size of what a pointer points to."""
    return pointer.type.strip_typedefs().target().sizeof


def memory(address, size):
    return gdb.selected_inferior().read_memory(int(address), size).tobytes() if size else b""


def units(value):
    """The memory of a std::basic_string of libstdc++, and the size of one of its units."""
    length = int(value["_M_string_length"])
    if length > LONGEST:
        raise gdb.MemoryError(f"a string of {length} units")
    begin = value["_M_dataplus"]["_M_p"]
    return memory(begin, unit_of(begin) * length), unit_of(begin)


def string(value):
    """A std::basic_string of libstdc++."""
    read, unit = units(value)
    order = "le" if "little" in gdb.execute("show endian", to_string=True) else "be"
    encoding = {1: "utf-8", 2: f"utf-16-{order}", 4: f"utf-32-{order}"}[unit]
    return read.decode(encoding, "replace")


def elements(vector):
    """The elements of a std::vector of libstdc++."""
    begin, end = vector["_M_impl"]["_M_start"], vector["_M_impl"]["_M_finish"]
    count = (int(end) - int(begin)) // unit_of(begin)
    if not 0 <= count <= LONGEST:
        raise gdb.MemoryError(f"a vector of {count} elements")
    for i in range(count):
        yield (begin + i).dereference()


def facts(handle, name):
    """What a handle shares with its copies, or None; the program may know its class by name only."""
    pointer = handle["impl_"]["_M_ptr"]
    if int(pointer) == 0:
        return None
    return pointer.cast(gdb.lookup_type(f"foundation::network::{name}").pointer()).dereference()


def atomic(value):
    inner = value["_M_base"] if "_M_base" in [field.name for field in value.type.fields()] else value
    return inner["_M_i"]


def bytes_of(value):
    return memory(value.address, value.type.sizeof)


def trouble(failure):
    """What keeps a value from being shown."""
    words = str(failure)
    if "There is no member named" in words or "No type named foundation::network" in words:
        return "<libzkflnetwork has no debug information>"
    return f"<{words}>"


class Printer:
    """Shows something that need not have been made yet, or no longer is, without an error."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        try:
            return self.text()
        except (gdb.error, KeyError) as failure:
            return trouble(failure)


# --- IRIs ------------------------------------------------------------------------------------


class ComponentsPrinter(Printer):
    """Something with components, which gdb shows behind its text."""

    def children(self):
        try:
            return list(self.components())
        except (gdb.error, KeyError):
            return []


class IRIPrinter(ComponentsPrinter):
    """The text that the value keeps, and the components that it has in there."""

    def text(self):
        words = shown(string(self.value["text_"]))
        return words if self.is_parsed() else "built " + words

    def is_parsed(self):
        return bool(atomic(self.value["hasSourceText_"])) or not string(self.value["text_"])

    def components(self):
        read, _ = units(self.value["text_"])
        flags, ranges = self.value["flags_"], self.value["ranges_"]
        end = {name: int(ranges[name]) for name in
               ("schemeEnd", "hostBegin", "hostEnd", "pathBegin", "pathEnd", "queryEnd")}
        has_scheme = bool(flags["hasScheme"])
        if not self.value["hasComponents_"]:
            return
        if has_scheme:
            yield "scheme", shown_bytes(read[: end["schemeEnd"]])
        if flags["hasUserInfo"]:
            begin = (end["schemeEnd"] + 1 if has_scheme else 0) + len("//")
            yield "user information", shown_bytes(read[begin : end["hostBegin"] - 1])
        if flags["hasHost"]:
            yield "host", shown_bytes(read[end["hostBegin"] : end["hostEnd"]])
        if flags["hasPort"]:
            yield "port", str(int(self.value["portNumber_"]))
        yield "path", shown_bytes(read[end["pathBegin"] : end["pathEnd"]])
        if flags["hasQuery"]:
            yield "query", shown_bytes(read[end["pathEnd"] + 1 : end["queryEnd"]])
        if flags["hasFragment"]:
            yield "fragment", shown_bytes(read[end["queryEnd"] + 1 :])


class IRIArgsPrinter(ComponentsPrinter):
    """The components that were set, in plain text."""

    COMPONENTS = [("scheme", "Scheme", "scheme_"), ("user information", "UserInfo", "userInfo_"),
                  ("host", "Host", "host_"), ("port", "Port", "port_"), ("path", "Path", "path_"),
                  ("query", "Query", "query_"), ("fragment", "Fragment", "fragment_")]

    def text(self):
        return "components" if list(self.components()) else "no components"

    def components(self):
        for name, flag, member in self.COMPONENTS:
            if self.value[f"has{flag}_"]:
                part = self.value[member]
                yield name, str(int(part)) if name == "port" else shown(string(part))


# --- addresses -------------------------------------------------------------------------------


def address_text(address):
    """A boost::asio::ip::address."""
    if int(address["type_"]) == 0:
        return str(ipaddress.IPv4Address(bytes_of(address["ipv4_address_"]["addr_"])))
    inner = address["ipv6_address_"]
    scope = int(inner["scope_id_"])
    return str(ipaddress.IPv6Address(bytes_of(inner["addr_"]))) + (f"%{scope}" if scope else "")


class InetAddressPrinter(Printer):
    """The address, and the name under which it was looked up."""

    def text(self):
        impl = facts(self.value, "InetAddressImpl")
        name = string(self.value["hostName_"])
        words = "moved from" if impl is None else address_text(impl["address"])
        return words + (f" ({name})" if name else "")


class InterfaceAddressPrinter(Printer):
    def text(self):
        impl = facts(self.value, "InterfaceAddressImpl")
        return "moved from" if impl is None else string(impl["text"])


class HardwareAddressPrinter(Printer):
    def text(self):
        units = [int(each) for each in elements(self.value["elements_"])]
        return ":".join(f"{unit:02x}" for unit in units) or "empty"


class NetworkInterfacePrinter(Printer):
    """The name, the state and the addresses of an adapter."""

    def text(self):
        impl = facts(self.value, "NetworkInterfaceImpl")
        if impl is None:
            return "moved from"
        states = [word for word, member in (("up", "up_"), ("loopback", "loopback_"),
                                            ("multicast", "multicast_")) if impl[member]]
        return " ".join([shown(string(impl["friendlyName_"])), *states])

    def children(self):
        try:
            impl = facts(self.value, "NetworkInterfaceImpl")
            if impl is None:
                return []
            addresses = elements(impl["interfaceAddresses_"])
            return [("identifier", shown(string(impl["identifier_"]))),
                    ("hardware address", impl["hardwareAddress_"]),
                    *((f"address {i}", each) for i, each in enumerate(addresses))]
        except (gdb.error, KeyError):
            return []


def printers():
    result = gdb.printing.RegexpCollectionPrettyPrinter("libzkflnetwork")
    for name, printer in [("IRI", IRIPrinter), ("IRIArgs", IRIArgsPrinter),
                          ("InetAddress", InetAddressPrinter),
                          ("InterfaceAddress", InterfaceAddressPrinter),
                          ("HardwareAddress", HardwareAddressPrinter),
                          ("NetworkInterface", NetworkInterfacePrinter)]:
        result.add_printer(name, f"^foundation::network::{name}$", printer)
    return result


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
