#!/usr/bin/env python3
"""Makes the archives that hounzip.exe is tested with: written by Info-ZIP `zip`, by Python's zipfile, and by
hand for the damaged and hostile ones (names that try to leave the target folder, two entries, lying sizes,
changed CRC, truncation, unknown method, encryption flag, ...).

make_archives(folder) writes them and returns a list of Archive records, each with the exit code the unpacker
must give and, for a good archive, the file name and content it must write. Run as a script it only writes them
(python3 make_archives.py FOLDER) so that they can be looked at with any zip tool."""

import io
import os
import random
import shutil
import struct
import subprocess
import sys
import time
import zipfile
import zlib
from dataclasses import dataclass
from typing import Optional

# Exit codes of hounzip.exe.
OK, COMMAND_LINE, OPEN, FORMAT, UNSUPPORTED, DATA, WRITE, KEPT, MEMORY = range(9)

# Fixed modification time of the source files (even seconds, so that the MS-DOS form holds it exactly).
STAMP = 1614834368  # 2021-03-04 05:06:08 UTC
# The same wall-clock time as local time: what an MS-DOS time stamp in an archive means.
LOCAL_STAMP = int(time.mktime((2021, 3, 4, 5, 6, 8, 0, 0, -1)))


@dataclass
class Archive:
    ident: str                  # file name of the archive in the folder
    code: int                   # expected exit code
    name: Optional[str] = None  # file the unpacker must write (for code 0)
    data: Optional[bytes] = None
    stamp: Optional[int] = None  # expected modification time of the written file, when the archive stores one


def payloads():
    rng = random.Random(20240611)
    random_part = bytes(rng.getrandbits(8) for _ in range(700_000))
    text_part = b"".join(b"line %07d of the Vistrel test payload\r\n" % i for i in range(40_000))
    return {
        "mixed": random_part + text_part,  # crosses the 256 KiB buffers on both sides of the decoder
        "small": b"hello hounzip\r\n" * 10,
        "empty": b"",
    }


# ---- Hand-made archives --------------------------------------------------------------------------------------

DOS_TIME, DOS_DATE = (5 << 11) | (6 << 5) | 4, ((2021 - 1980) << 9) | (3 << 5) | 4


def deflate(data):
    packer = zlib.compressobj(6, zlib.DEFLATED, -15)
    return packer.compress(data) + packer.flush()


@dataclass
class Member:
    name: bytes
    data: bytes
    method: int = 8
    flags: int = 0
    packed: Optional[bytes] = None       # the bytes stored (default: data stored or deflated)
    crc: Optional[int] = None            # CRC written to both headers (default: the real one)
    central_sizes: Optional[tuple] = None  # (packed, size) written to the central header
    local_sizes: Optional[tuple] = None    # (packed, size) written to the local header
    local_name: Optional[bytes] = None
    descriptor: bool = False             # sizes and CRC after the data (flag bit 3)
    descriptor_room: Optional[int] = None  # cut the descriptor to this many bytes
    external_attributes: int = 0
    zip64: bool = False                  # all sizes and the offset only in Zip64 extra fields


def raw_zip(members, zip64_end=False, cut=None):
    """Writes members as a zip archive; zip64_end adds the Zip64 end records with escaped 32-bit fields."""
    out = io.BytesIO()
    centrals = []
    for m in members:
        packed = m.packed if m.packed is not None else (deflate(m.data) if m.method == 8 else m.data)
        crc = m.crc if m.crc is not None else zlib.crc32(m.data)
        offset = out.tell()
        flags = m.flags | (8 if m.descriptor else 0)
        lpacked, lsize = m.local_sizes or (len(packed), len(m.data))
        cpacked, csize = m.central_sizes or (len(packed), len(m.data))
        lextra = cextra = b""
        lcrc = crc
        if m.zip64:
            lextra = struct.pack("<HHQQ", 1, 16, lsize, lpacked)
            cextra = struct.pack("<HHQQQ", 1, 24, csize, cpacked, offset)
            lpacked = lsize = cpacked = csize = 0xFFFFFFFF
            coffset = 0xFFFFFFFF
        else:
            coffset = offset
        if m.descriptor:
            lcrc, lpacked, lsize = 0, 0, 0
        lname = m.local_name if m.local_name is not None else m.name
        out.write(struct.pack("<IHHHHHIIIHH", 0x04034B50, 45 if m.zip64 else 20, flags, m.method, DOS_TIME,
                              DOS_DATE, lcrc, lpacked, lsize, len(lname), len(lextra)) + lname + lextra)
        out.write(packed)
        if m.descriptor:
            d = struct.pack("<IIII", 0x08074B50, crc, len(packed), len(m.data))
            out.write(d if m.descriptor_room is None else d[:m.descriptor_room])
        centrals.append(struct.pack("<IHHHHHHIIIHHHHHII", 0x02014B50, 20, 45 if m.zip64 else 20, flags, m.method,
                                    DOS_TIME, DOS_DATE, crc, cpacked, csize, len(m.name), len(cextra), 0, 0, 0,
                                    m.external_attributes, coffset) + m.name + cextra)
    directory_offset = out.tell()
    for c in centrals:
        out.write(c)
    directory_size = out.tell() - directory_offset
    count = len(members)
    if zip64_end:
        end64_offset = out.tell()
        out.write(struct.pack("<IQHHIIQQQQ", 0x06064B50, 44, 45, 45, 0, 0, count, count, directory_size,
                              directory_offset))
        out.write(struct.pack("<IIQI", 0x07064B50, 0, end64_offset, 1))
        out.write(struct.pack("<IHHHHIIH", 0x06054B50, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0))
    else:
        out.write(struct.pack("<IHHHHIIH", 0x06054B50, 0, 0, count, count, directory_size, directory_offset, 0))
    blob = out.getvalue()
    return blob if cut is None else blob[:cut]


def hand_made(p):
    """(ident, bytes, code, written name, data) of the hand-made archives."""
    small, mixed = p["small"], p["mixed"]
    damaged = bytearray(deflate(mixed))
    for i in range(1000, 1400):
        damaged[i] ^= 0x5A
    stored_good = raw_zip([Member(b"plain.txt", small, method=0)])
    good = [
        ("raw_stored.zip", stored_good, "plain.txt", small),
        ("raw_zip64.zip", raw_zip([Member(b"big64.bin", mixed, zip64=True)], zip64_end=True), "big64.bin", mixed),
        ("raw_descriptor.zip", raw_zip([Member(b"desc.bin", mixed, descriptor=True)]), "desc.bin", mixed),
        # Names that try to leave the target folder: only the base name is written.
        ("name_dotdot.zip", raw_zip([Member(b"../../escape1.txt", small)]), "escape1.txt", small),
        ("name_backslash.zip", raw_zip([Member(b"..\\..\\escape2.txt", small)]), "escape2.txt", small),
        ("name_drive.zip", raw_zip([Member(b"C:/escape3.txt", small)]), "escape3.txt", small),
        ("name_drive_relative.zip", raw_zip([Member(b"C:escape4.txt", small)]), "escape4.txt", small),
        ("name_absolute.zip", raw_zip([Member(b"/tmp/hounzip_escape5.txt", small)]), "hounzip_escape5.txt", small),
        ("name_unc.zip", raw_zip([Member(b"\\\\server\\share\\escape6.txt", small)]), "escape6.txt", small),
    ]
    bad = [
        ("name_only_dotdot.zip", raw_zip([Member(b"sub/..", small)]), FORMAT),
        ("name_empty.zip", raw_zip([Member(b"", small)]), FORMAT),
        ("name_device.zip", raw_zip([Member(b"dir/NUL.txt", small)]), FORMAT),
        ("name_stream.zip", raw_zip([Member(b"file.txt:hidden", small)]), FORMAT),
        ("two_files.zip", raw_zip([Member(b"one.txt", small), Member(b"two.txt", small)]), FORMAT),
        ("directory_only.zip", raw_zip([Member(b"folder/", b"", method=0)]), FORMAT),
        ("directory_attribute.zip", raw_zip([Member(b"folder", b"", method=0, external_attributes=0x10)]), FORMAT),
        ("crc_changed.zip", raw_zip([Member(b"payload.bin", mixed, crc=zlib.crc32(mixed) ^ 1)]), DATA),
        ("crc_changed_stored.zip", raw_zip([Member(b"payload.bin", small, method=0, crc=zlib.crc32(small) ^ 4)]), DATA),
        ("deflate_damaged.zip", raw_zip([Member(b"payload.bin", mixed, packed=bytes(damaged))]), DATA),
        ("truncated.zip", raw_zip([Member(b"payload.bin", mixed)], cut=300_000), FORMAT),
        ("truncated_end.zip", stored_good[:-5], FORMAT),
        ("method_bzip2.zip", raw_zip([Member(b"payload.bin", small, method=12, packed=small)]), UNSUPPORTED),
        ("encrypted.zip", raw_zip([Member(b"payload.bin", small, flags=1)]), UNSUPPORTED),
        # The central directory claims more packed bytes than lie before it.
        ("central_packed_too_big.zip",
         raw_zip([Member(b"payload.bin", mixed, central_sizes=(10_000_000, len(mixed)))]), FORMAT),
        # Central and local headers agree with each other but not with the data: the decoder must notice.
        ("sizes_lie_both.zip", raw_zip([Member(b"payload.bin", mixed, central_sizes=(len(deflate(mixed)), 1000),
                                               local_sizes=(len(deflate(mixed)), 1000))]), DATA),
        ("sizes_local_differs.zip",
         raw_zip([Member(b"payload.bin", mixed, local_sizes=(len(deflate(mixed)), len(mixed) + 1))]), FORMAT),
        ("name_local_differs.zip", raw_zip([Member(b"payload.bin", small, local_name=b"other.bin")]), FORMAT),
        ("stored_sizes_differ.zip", raw_zip([Member(b"payload.bin", small, method=0,
                                                    central_sizes=(len(small), len(small) - 1),
                                                    local_sizes=(len(small), len(small) - 1))]), FORMAT),
        # Flag bit 3 set, but the descriptor would run into the central directory.
        ("descriptor_cut.zip", raw_zip([Member(b"payload.bin", small, descriptor=True, descriptor_room=6)]), FORMAT),
        ("not_a_zip.zip", bytes(random.Random(7).getrandbits(8) for _ in range(5000)), FORMAT),
        ("zero_bytes.zip", b"", FORMAT),
    ]
    return good, bad


# ---- Archives made by the usual tools ------------------------------------------------------------------------

def write_source(folder, name, data):
    path = os.path.join(folder, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(data)
    os.utime(path, (STAMP, STAMP))
    return path


def info_zip(folder, p):
    """Archives written by Info-ZIP zip (which stores the Unix modification time in an extra field)."""
    src = os.path.join(folder, "src")
    write_source(src, "mixed.bin", p["mixed"])
    write_source(src, "small.txt", p["small"])
    write_source(src, "empty.dat", p["empty"])
    write_source(src, "sub/dir/nested.txt", p["small"])

    def zip_(archive, *args, stdin=None):
        path = os.path.join(folder, archive)
        if os.path.exists(path):
            os.remove(path)
        if stdin is None:
            subprocess.run(["zip", "-q", path, *args], cwd=src, check=True)
        else:
            # Through a pipe, so that zip cannot seek back and writes a data descriptor.
            streamed = subprocess.run(["zip", "-q", *args], cwd=src, check=True, input=stdin, stdout=subprocess.PIPE)
            with open(path, "wb") as out:
                out.write(streamed.stdout)
        return archive

    return [
        Archive(zip_("iz_deflate.zip", "mixed.bin"), OK, "mixed.bin", p["mixed"], STAMP),
        Archive(zip_("iz_stored.zip", "-0", "small.txt"), OK, "small.txt", p["small"], STAMP),
        Archive(zip_("iz_zip64.zip", "-fz", "mixed.bin"), OK, "mixed.bin", p["mixed"], STAMP),
        Archive(zip_("iz_empty.zip", "empty.dat"), OK, "empty.dat", b"", STAMP),
        Archive(zip_("iz_nested.zip", "sub/dir/nested.txt"), OK, "nested.txt", p["small"], STAMP),
        # Streamed from standard input to standard output: data descriptor and Zip64 records, member name "-".
        Archive(zip_("iz_streamed.zip", "-", "-", stdin=p["mixed"]), OK, "-", p["mixed"]),
        Archive(zip_("iz_two.zip", "small.txt", "mixed.bin"), FORMAT),
        Archive(zip_("iz_directory.zip", "-r", "sub"), FORMAT),
    ]


def python_zipfile(folder, p):
    """Archives written by Python's zipfile (MS-DOS time only, local time)."""
    made = []

    def add(archive, name, data, method=zipfile.ZIP_DEFLATED, force_zip64=False, stream=False):
        info = zipfile.ZipInfo(name, date_time=(2021, 3, 4, 5, 6, 8))
        info.compress_type = method
        target = io.BytesIO()

        class Unseekable(io.RawIOBase):  # makes zipfile write a data descriptor
            def writable(self):
                return True

            def write(self, b):
                return target.write(b)

        with zipfile.ZipFile(Unseekable() if stream else target, "w") as z:
            with z.open(info, "w", force_zip64=force_zip64) as f:
                f.write(data)
        with open(os.path.join(folder, archive), "wb") as f:
            f.write(target.getvalue())
        made.append(Archive(archive, OK, name, data, LOCAL_STAMP))

    add("py_deflate.zip", "mixed.bin", p["mixed"])
    add("py_stored.zip", "small.txt", p["small"], method=zipfile.ZIP_STORED)
    add("py_zip64.zip", "mixed64.bin", p["mixed"], force_zip64=True)
    add("py_zip64_stored.zip", "small64.txt", p["small"], method=zipfile.ZIP_STORED, force_zip64=True)
    add("py_empty.zip", "empty.bin", p["empty"])
    add("py_descriptor.zip", "streamed.bin", p["mixed"], stream=True)
    return made


def make_archives(folder):
    os.makedirs(folder, exist_ok=True)
    p = payloads()
    archives = info_zip(folder, p) + python_zipfile(folder, p)
    good, bad = hand_made(p)
    for ident, blob, name, data in good:
        with open(os.path.join(folder, ident), "wb") as f:
            f.write(blob)
        archives.append(Archive(ident, OK, name, data, LOCAL_STAMP))
    for ident, blob, code in bad:
        with open(os.path.join(folder, ident), "wb") as f:
            f.write(blob)
        archives.append(Archive(ident, code))
    return archives


def make_big_archive(folder, size):
    """A deflated member of `size` bytes (more than 4 GiB), written in pieces; returns (archive path, CRC-32)."""
    os.makedirs(folder, exist_ok=True)
    path = os.path.join(folder, "big.zip")
    block = bytes(range(256)) * 4096  # 1 MiB that compresses well but not to nothing
    crc = 0
    info = zipfile.ZipInfo("big.bin", date_time=(2021, 3, 4, 5, 6, 8))
    info.compress_type = zipfile.ZIP_DEFLATED
    with zipfile.ZipFile(path, "w", compresslevel=1) as z, z.open(info, "w", force_zip64=True) as f:
        left = size
        while left > 0:
            piece = block if left >= len(block) else block[:left]
            f.write(piece)
            crc = zlib.crc32(piece, crc)
            left -= len(piece)
    return path, crc


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: make_archives.py FOLDER")
    for a in make_archives(sys.argv[1]):
        print(f"{a.ident:32} exit {a.code}" + (f" -> {a.name}" if a.name else ""))
