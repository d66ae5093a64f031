#!/usr/bin/env python3
"""Gives one type of a binary type library its version.

The compiler of descriptions refuses `version` on an interface that is dispatch only, and writes 0.0. This sets the number in
the compiler's result:

    set_interface_version.py LIBRARY.tlb {ID} MAJOR.MINOR

A library of the form "MSFT" begins with a header of 84 bytes (88 where flag 0x100 is set), then one offset for each of its types,
then a directory of its sections, 16 bytes each: the first is that of the types, the sixth that of the ids. A type takes 100 bytes
and holds its kind in the low four bits at 0, the place of its id within the ids at 44, and its version at 56: major in the low half,
minor in the high half. Whatever does not look like this is refused.
"""

import pathlib
import struct
import sys
import uuid

HEADER, TYPE_SIZE, ID_SIZE = 84, 100, 24
KIND_DISPATCH = 4


def integer(data, place):
    return struct.unpack_from("<i", data, place)[0]


def section(data, number):
    """Offset and length of a section of the directory."""
    flags, types = integer(data, 20), integer(data, 32)
    directory = HEADER + (4 if flags & 0x100 else 0) + 4 * types
    return struct.unpack_from("<ii", data, directory + 16 * number)


def version_place(data, wanted):
    if data[:4] != b"MSFT":
        raise ValueError("it is no type library of the form MSFT")
    types, types_length = section(data, 0)
    ids, ids_length = section(data, 5)
    if types_length != TYPE_SIZE * integer(data, 32) or ids_length % ID_SIZE:
        raise ValueError("its sections have other sizes than expected")
    for place in range(types, types + types_length, TYPE_SIZE):
        id_place = integer(data, place + 44)
        if id_place < 0 or data[ids + id_place : ids + id_place + 16] != wanted.bytes_le:
            continue
        if integer(data, place) & 15 != KIND_DISPATCH:
            raise ValueError("that type is not dispatch only")
        return place + 56
    raise ValueError("it holds no type with that id")


def main():
    path, wanted, version = pathlib.Path(sys.argv[1]), uuid.UUID(sys.argv[2]), sys.argv[3]
    data = bytearray(path.read_bytes())
    major, minor = (int(number) for number in version.split("."))
    try:
        struct.pack_into("<HH", data, version_place(data, wanted), major, minor)
    except (ValueError, struct.error) as problem:
        sys.exit(f"{path}: {problem}; {{{wanted}}} keeps its version")
    path.write_bytes(data)


main()
