#!/usr/bin/env python3
"""Sets the compile time chmcmd writes into a CHM file to a given one, so that the same sources
give the same file: the ITSF header's time stamp and the #SYSTEM file's time record (code 10).
Nothing else in a CHM file depends on the time (checked with chmls extractall on two builds).

    chm_stable.py FILE.chm SECONDS_SINCE_1970
"""
import struct
import sys


def encint(data, at):
    """A CHM variable-length integer: 7 bits a byte, high bit set on all but the last."""
    value = 0
    while True:
        byte = data[at]
        at += 1
        value = (value << 7) | (byte & 0x7F)
        if byte < 0x80:
            return value, at


def directory(data):
    """Name -> (section, offset, length) from the PMGL chunks of the directory."""
    dir_offset, = struct.unpack_from("<Q", data, 0x48)
    content_offset, = struct.unpack_from("<Q", data, 0x58)
    if data[dir_offset:dir_offset + 4] != b"ITSP":
        raise ValueError("no ITSP directory header")
    header_length, = struct.unpack_from("<I", data, dir_offset + 8)
    chunk_size, = struct.unpack_from("<I", data, dir_offset + 0x10)
    chunks, = struct.unpack_from("<I", data, dir_offset + 0x2C)
    entries = {}
    for chunk in range(chunks):
        start = dir_offset + header_length + chunk * chunk_size
        if data[start:start + 4] != b"PMGL":
            continue
        free, = struct.unpack_from("<I", data, start + 4)
        at, end = start + 0x14, start + chunk_size - free
        while at < end:
            length, at = encint(data, at)
            name = data[at:at + length].decode("utf-8")
            at += length
            section, at = encint(data, at)
            offset, at = encint(data, at)
            size, at = encint(data, at)
            entries[name] = (section, offset, size)
    return entries, content_offset


def main():
    path, seconds = sys.argv[1], int(sys.argv[2]) & 0xFFFFFFFF
    data = bytearray(open(path, "rb").read())
    if data[:4] != b"ITSF":
        sys.exit(f"{path}: not a CHM file")
    struct.pack_into(">I", data, 0x10, seconds)
    entries, content_offset = directory(data)
    section, offset, size = entries["/#SYSTEM"]
    if section != 0:
        sys.exit(f"{path}: #SYSTEM is compressed")
    at, end = content_offset + offset + 4, content_offset + offset + size   # after the version
    while at + 4 <= end:
        code, length = struct.unpack_from("<HH", data, at)
        if code == 10 and length == 4:
            struct.pack_into("<I", data, at + 4, seconds)
        at += 4 + length
    open(path, "wb").write(data)


if __name__ == "__main__":
    main()
