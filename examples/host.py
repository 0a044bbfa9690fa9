#!/usr/bin/env python3
"""Lists the kinds of tools of a tool database, using nothing but the standard library.

usage: host.py DATABASE [RUNTIME]

The component is found by its name, as installed. RUNTIME is the automation runtime to use,
libautomation.so by default.
"""
import ctypes as c
import sys
import uuid

VT_BSTR, VT_VARIANT, VT_BYREF, VT_ARRAY = 8, 12, 0x4000, 0x2000
CLSCTX_INPROC_SERVER, DISPATCH_METHOD = 1, 1
RELEASE, GET_IDS_OF_NAMES, INVOKE = 2, 5, 6  # slots of IDispatch


class Variant(c.Structure):
    _fields_ = [("vt", c.c_uint16), ("reserved", c.c_uint16 * 3), ("value", c.c_void_p),
                ("more", c.c_void_p)]


class Parameters(c.Structure):
    _fields_ = [("arguments", c.POINTER(Variant)), ("names", c.c_void_p),
                ("count", c.c_uint32), ("named", c.c_uint32)]


def wide(text):
    """Zero-terminated UTF-16; keep it while it is used."""
    return c.create_string_buffer(text.encode("utf-16-le") + b"\0\0")


def identifier(text):
    return c.create_string_buffer(uuid.UUID(text).bytes_le, 16)


NO_INTERFACE = c.create_string_buffer(16)


class Host:
    def __init__(self, runtime):
        self.lib = c.CDLL(runtime)
        self.lib.SysAllocString.restype = c.c_void_p
        self.lib.SysStringByteLen.argtypes = [c.c_void_p]
        self.lib.SafeArrayGetUBound.argtypes = [c.c_void_p, c.c_uint32, c.c_void_p]
        self.lib.SafeArrayGetElement.argtypes = [c.c_void_p, c.c_void_p, c.c_void_p]
        self.lib.SysFreeString.argtypes = [c.c_void_p]

    def create(self, name):
        clsid, made = c.create_string_buffer(16), c.c_void_p()
        iid = identifier("00020400-0000-0000-C000-000000000046")
        if (self.lib.CLSIDFromProgID(wide(name), clsid) < 0 or
                self.lib.CoCreateInstance(clsid, None, CLSCTX_INPROC_SERVER, iid,
                                          c.byref(made)) < 0):
            raise SystemExit(f"cannot create {name}")
        return Object(self, made)

    def text(self, string):
        length = self.lib.SysStringByteLen(string)
        return c.string_at(string, length).decode("utf-16-le") if string else ""

    def strings(self, array):
        last = c.c_int32(-1)
        self.lib.SafeArrayGetUBound(array, 1, c.byref(last))
        for index in range(last.value + 1):
            string = c.c_void_p()
            self.lib.SafeArrayGetElement(array, c.byref(c.c_int32(index)), c.byref(string))
            yield self.text(string)
            self.lib.SysFreeString(string)


class Object:
    """An automation object; methods are called by name."""

    def __init__(self, host, pointer):
        self.host, self.pointer = host, pointer
        self.table = c.cast(c.cast(pointer, c.POINTER(c.c_void_p))[0], c.POINTER(c.c_void_p))

    def slot(self, number, *arguments):
        kinds = [c.c_void_p] + [type(a) if isinstance(a, c._SimpleCData) else c.c_void_p
                                for a in arguments]
        return c.CFUNCTYPE(c.c_int32, *kinds)(self.table[number])(self.pointer, *arguments)

    def call(self, name, *arguments):
        """Texts go in; variants are passed by reference and take results."""
        number, spelled, texts = c.c_int32(), wide(name), []
        names = (c.c_void_p * 1)(c.addressof(spelled))
        if self.slot(GET_IDS_OF_NAMES, c.addressof(NO_INTERFACE), c.addressof(names),
                     c.c_uint32(1), c.c_uint32(0), c.addressof(number)) < 0:
            raise AttributeError(name)
        passed = (Variant * max(1, len(arguments)))()
        for position, argument in enumerate(reversed(arguments)):
            if isinstance(argument, Variant):
                passed[position].vt, value = VT_BYREF | VT_VARIANT, c.addressof(argument)
            else:
                passed[position].vt, value = VT_BSTR, self.host.lib.SysAllocString(wide(argument))
                texts.append(value)
            passed[position].value = value
        parameters = Parameters(passed, None, len(arguments), 0)
        status = self.slot(INVOKE, number, c.addressof(NO_INTERFACE), c.c_uint32(0),
                           c.c_uint16(DISPATCH_METHOD), c.addressof(parameters), None, None, None)
        for text in texts:
            self.host.lib.SysFreeString(text)
        if status < 0:
            raise OSError(f"{name}: status 0x{status & 0xFFFFFFFF:08X}")

    def release(self):
        self.slot(RELEASE)


def main():
    if len(sys.argv) not in (2, 3):
        raise SystemExit(__doc__)
    host = Host(sys.argv[2] if len(sys.argv) > 2 else "libautomation.so")
    tools = host.create("ORXDB.OrxDbObj")
    types = Variant()
    tools.call("SetMdbFile", sys.argv[1])
    tools.call("GetToolTypes", types)
    assert types.vt == VT_ARRAY | VT_BSTR
    texts = list(host.strings(types.value))
    for triple in zip(texts[0::3], texts[1::3], texts[2::3]):
        print(*triple, sep="\t")
    host.lib.VariantClear(c.byref(types))
    tools.release()


if __name__ == "__main__":
    main()
