#!/usr/bin/env python3
"""Writes the image digests of the programs hosetup.exe runs (the unpacker and the language
modules built with it) as a C++ source compiled into hosetup.exe.

The digest rule mirrors imageDigest() in core/own_files.cpp, where it is explained; the two must
stay byte for byte the same (test_shell checks that the built-in digests are those the program
computes for the built files):

  SHA-256 over the file's bytes from offset 0 up to the end of the section whose raw data ends
  last, leaving out the optional header's CheckSum (4 bytes) and the Certificate Table entry of
  the data directories (8 bytes). Code signing changes only those two fields and what lies after
  the sections, so a signed file has the digest of the file built.

Usage: own_digests.py OUTPUT.cpp --unpacker FILE... --language FILE...
The output is sorted and carries no time stamp, so a build of the same files writes the same bytes.
"""
import hashlib
import struct
import sys

CHECKSUM_OFFSET = 64                                  # in the optional header, PE32 and PE32+
CERTIFICATE_ENTRY_OFFSET = {0x10B: 128, 0x20B: 144}   # data directory 4, by optional-header magic
SECTION_HEADER_SIZE = 40
HEADER_BLOCK_SIZE = 4096                              # the headers and section table lie in it


def image_digest(path):
    with open(path, "rb") as f:
        data = f.read()
    if data[:2] != b"MZ":
        raise ValueError(f"{path}: no MZ header")
    pe = struct.unpack_from("<I", data, 0x3C)[0]
    if data[pe:pe + 4] != b"PE\0\0":
        raise ValueError(f"{path}: no PE signature")
    sections, = struct.unpack_from("<H", data, pe + 6)
    optional_size, = struct.unpack_from("<H", data, pe + 20)
    optional = pe + 24
    table_end = optional + optional_size + sections * SECTION_HEADER_SIZE
    if table_end > min(len(data), HEADER_BLOCK_SIZE):
        raise ValueError(f"{path}: section table beyond the header block")
    magic, = struct.unpack_from("<H", data, optional)
    if magic not in CERTIFICATE_ENTRY_OFFSET or optional_size < CERTIFICATE_ENTRY_OFFSET[magic] + 8:
        raise ValueError(f"{path}: unexpected optional header")
    end = 0
    for i in range(sections):
        raw_size, raw_offset = struct.unpack_from("<II", data, optional + optional_size + i * SECTION_HEADER_SIZE + 16)
        if raw_size:
            end = max(end, raw_offset + raw_size)
    if end < table_end or end > len(data):
        raise ValueError(f"{path}: sections beyond the end of the file")
    checksum = optional + CHECKSUM_OFFSET
    certificate = optional + CERTIFICATE_ENTRY_OFFSET[magic]
    digest = hashlib.sha256()
    digest.update(data[:checksum])
    digest.update(data[checksum + 4:certificate])
    digest.update(data[certificate + 8:end])
    return digest.digest()


def table(name, count_name, paths):
    digests = sorted({image_digest(p) for p in paths})
    def row(d):
        return ", ".join(f"0x{b:02x}" for b in d)
    rows = [f"    {{{{{row(d[:16])},\n      {row(d[16:])}}}}}," for d in digests]
    return [f"const ImageDigest {name}[] = {{"] + rows + ["};",
            f"const std::size_t {count_name} = sizeof {name} / sizeof {name}[0];", ""]


def main(argv):
    output, groups, current = argv[1], {"--unpacker": [], "--language": []}, None
    for arg in argv[2:]:
        if arg in groups:
            current = groups[arg]
        else:
            current.append(arg)
    lines = ["// Written by own_digests.py at build time from the built files; not to be edited.",
             '#include "core/core.h"', ""]
    lines += table("kUnpackerDigests", "kUnpackerDigestCount", groups["--unpacker"])
    lines += table("kLanguageModuleDigests", "kLanguageModuleDigestCount", groups["--language"])
    with open(output, "w", newline="\n") as f:
        f.write("\n".join(lines))


if __name__ == "__main__":
    main(sys.argv)
