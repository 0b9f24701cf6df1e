#!/usr/bin/env python3
"""Tests hounzip.exe under Wine: hzlaunch.exe starts every case's command line as the installer does, then the whole
work tree is compared with its state before. A case's folder must have gained exactly the written file in its
target folder and nothing else may differ anywhere, so a file written outside the target folder, a temporary file
left behind, a followed link or a damaged existing file shows up. --big (with HOUNZIP_BIG_TEST=1): a 4 GiB member."""

import argparse, hashlib, io, os, pathlib, random, re, shutil, stat, struct, subprocess, sys, tempfile, time
import zipfile, zlib
from types import SimpleNamespace as Record

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), "..", ".."))  # drive T: under scripts/wine-run
OK, COMMAND_LINE, OPEN, FORMAT, UNSUPPORTED, DATA, WRITE, KEPT = range(8)  # exit codes
STAMP = 1614834368  # 2021-03-04 05:06:08 UTC, which Info-ZIP stores as Unix time
LOCAL_STAMP = int(time.mktime((2021, 3, 4, 5, 6, 8, 0, 0, -1)))  # the same as an MS-DOS time (local time)
DOS_TIME, DOS_DATE = (5 << 11) | (6 << 5) | 4, ((2021 - 1980) << 9) | (3 << 5) | 4
MIXED = random.Random(7).randbytes(700_000) + b"".join(b"line %07d of a payload\r\n" % i for i in range(40_000))
SMALL, OLD = b"hello hounzip\r\n" * 10, b"the file that was there before\r\n"


ReadOnly = type("ReadOnly", (bytes,), {})  # content of a read-only file that a case finds before the run


def entry(name, data=SMALL, method=8, flags=0, packed=None, crc=None, central=None, local=None, local_name=None,
          descriptor=False, cut_descriptor=None, attributes=0, zip64=False):
    """A member of a hand-made archive. central and local replace the (packed, size) pair of that header,
    descriptor puts CRC and sizes behind the data (flag bit 3), zip64 puts sizes and offset in Zip64 fields."""
    return Record(**locals())


def raw_zip(members, zip64_end=False, cut=None):
    """The archive of members; zip64_end adds the Zip64 end records and escapes the 32-bit end record's fields."""
    out, centrals = io.BytesIO(), []
    for m in members:
        packed = m.packed if m.packed is not None else zlib.compress(m.data, 6, -15) if m.method == 8 else m.data
        crc, offset, flags = zlib.crc32(m.data) if m.crc is None else m.crc, out.tell(), m.flags | m.descriptor << 3
        sizes, lextra, cextra, version = (len(packed), len(m.data)), b"", b"", 45 if m.zip64 else 20
        (lpacked, lsize), (cpacked, csize), coffset, lcrc = m.local or sizes, m.central or sizes, offset, crc
        if m.zip64:
            lextra = struct.pack("<HHQQ", 1, 16, lsize, lpacked)
            cextra = struct.pack("<HHQQQ", 1, 24, csize, cpacked, offset)
            lpacked = lsize = cpacked = csize = coffset = 0xFFFFFFFF
        if m.descriptor:
            lcrc = lpacked = lsize = 0
        lname = m.name if m.local_name is None else m.local_name
        out.write(struct.pack("<IHHHHHIIIHH", 0x04034B50, version, flags, m.method, DOS_TIME, DOS_DATE, lcrc, lpacked,
                              lsize, len(lname), len(lextra)) + lname + lextra + packed)
        if m.descriptor:
            out.write(struct.pack("<IIII", 0x08074B50, crc, len(packed), len(m.data))[:m.cut_descriptor])
        centrals.append(struct.pack("<IHHHHHHIIIHHHHHII", 0x02014B50, 20, version, flags, m.method, DOS_TIME, DOS_DATE,
                                    crc, cpacked, csize, len(m.name), len(cextra), 0, 0, 0, m.attributes, coffset)
                        + m.name + cextra)
    start, count = out.tell(), len(members)
    out.write(b"".join(centrals))
    size = out.tell() - start
    if zip64_end:
        out.write(struct.pack("<IQHHIIQQQQ", 0x06064B50, 44, 45, 45, 0, 0, count, count, size, start))
        out.write(struct.pack("<IIQI", 0x07064B50, 0, start + size, 1))
        count, size, start = 0xFFFF, 0xFFFFFFFF, 0xFFFFFFFF
    out.write(struct.pack("<IHHHHIIH", 0x06054B50, 0, 0, count, count, size, start, 0))
    return out.getvalue()[:cut]


def one(name, **kw):
    return raw_zip([entry(name, **kw)])


def info_zip(arguments):
    """The archive out.zip that Info-ZIP zip writes, started by the shell with arguments (fed from a pipe, it writes
    a data descriptor and Zip64 records)."""
    with tempfile.TemporaryDirectory() as src:
        os.makedirs(os.path.join(src, "sub", "dir"))
        for name, data in [("mixed.bin", MIXED), ("small.txt", SMALL), ("sub/dir/nested.txt", SMALL)]:
            pathlib.Path(src, name).write_bytes(data)
            os.utime(os.path.join(src, name), (STAMP, STAMP))
        subprocess.run("zip -q " + arguments, shell=True, cwd=src, check=True)
        return pathlib.Path(src, "out.zip").read_bytes()


def py_zip(name, data, method=zipfile.ZIP_DEFLATED, zip64=False, stream=False, repeat=1):
    """An archive written by Python's zipfile (repeat times data); into a pipe it writes a data descriptor."""
    target, info = io.BytesIO(), zipfile.ZipInfo(name, date_time=(2021, 3, 4, 5, 6, 8))
    unseekable = type("Pipe", (io.RawIOBase,), {"writable": lambda _: True, "write": lambda _, b: target.write(b)})
    info.compress_type = method
    with zipfile.ZipFile(unseekable() if stream else target, "w") as z, z.open(info, "w", force_zip64=zip64) as f:
        for _ in range(repeat):
            f.write(data)
    return target.getvalue()


def cases(big):
    """The table, or with big only a deflated member of 4 GiB + 300 MiB. A case names the file the unpacker must
    write (only for exit code 0) and what the case's folder holds before: bytes or ReadOnly for a file, None for a
    folder, a str for a symbolic link to that path, False for nothing (there the target folder is not made).
    Failing archives find a read-only file under their member's name, payload.bin, that must survive."""
    table = []

    def add(label, archive, code, written=None, data=SMALL, stamp=LOCAL_STAMP, args=None, pre=None, name="a.zip",
            digest=None, exe="hounzip.exe"):
        pre = {"target/payload.bin": ReadOnly(OLD)} if pre is None and code != OK else pre or {}
        table.append(Record(label=label, archive=archive, code=code, written=written, stamp=stamp, args=args, pre=pre,
                            name=name, digest=digest or hashlib.sha256(data).hexdigest(), exe=exe))
    if big:
        block, digest = bytes(range(256)) * 4096, hashlib.sha256()  # 1 MiB that compresses well but not to nothing
        for _ in range(4396):
            digest.update(block)
        add("big", py_zip("big.bin", block, zip64=True, repeat=4396), OK, "big.bin", digest=digest.hexdigest())
        return table
    add("iz_deflate", info_zip("out.zip mixed.bin"), OK, "mixed.bin", MIXED, STAMP)
    add("iz_stored", info_zip("-0 out.zip small.txt"), OK, "small.txt", SMALL, STAMP)
    add("iz_zip64", info_zip("-fz out.zip mixed.bin"), OK, "mixed.bin", MIXED, STAMP)
    add("iz_nested", info_zip("out.zip sub/dir/nested.txt"), OK, "nested.txt", SMALL, STAMP)
    add("iz_streamed", info_zip("- - <mixed.bin | cat >out.zip"), OK, "-", MIXED, None)
    add("iz_two_files", info_zip("out.zip small.txt mixed.bin"), FORMAT)
    add("iz_directory", info_zip("-r out.zip sub"), FORMAT)
    add("py_deflate", py_zip("mixed.bin", MIXED), OK, "mixed.bin", MIXED)
    add("py_stored", py_zip("small.txt", SMALL, zipfile.ZIP_STORED), OK, "small.txt")
    add("py_zip64", py_zip("mixed64.bin", MIXED, zip64=True), OK, "mixed64.bin", MIXED)
    add("py_empty", py_zip("empty.bin", b""), OK, "empty.bin", b"")
    add("py_descriptor", py_zip("streamed.bin", MIXED, stream=True), OK, "streamed.bin", MIXED)
    add("raw_zip64", raw_zip([entry(b"big64.bin", MIXED, zip64=True)], zip64_end=True), OK, "big64.bin", MIXED)
    add("raw_descriptor", one(b"desc.bin", data=MIXED, descriptor=True), OK, "desc.bin", MIXED)
    # Names that try to leave the target folder: only the base name is written.
    for i, name in enumerate([b"../../", b"..\\..\\", b"C:/", b"C:", b"/tmp/", b"\\\\server\\share\\"]):
        add(f"escape{i}", one(name + b"escape%d.txt" % i), OK, f"escape{i}.txt")
    # Names that Windows reads as a device, a stream or, stripped, as another name; and two that it does not.
    for name in [b"NUL.txt", b"com1.tar.gz", b"COM\xb9", b"lpt\xb2.txt", b"Com\xb3.log", b"CONIN$", b"aux", b"LPT9",
                 b"CON .log", b"nul ", b"dir/file.", b"file ", b"file. .", b"sub/..", b"file.txt:hidden", b"a|b", b""]:
        add("name_" + re.sub(r"[^0-9A-Za-z]", "_", name.decode("latin-1")), one(name), FORMAT)
    add("name_utf8_superscript", one("COM\u00b9".encode(), flags=0x800), FORMAT)
    add("name_near_device", one(b"COM10.txt"), OK, "COM10.txt")
    add("name_near_device2", one(b"NULL.txt"), OK, "NULL.txt")
    damaged = bytearray(zlib.compress(MIXED, 6, -15))
    packed = len(damaged)
    damaged[1000:1400] = bytes(b ^ 0x5A for b in damaged[1000:1400])
    add("two_files", raw_zip([entry(b"payload.bin"), entry(b"two.txt")]), FORMAT)
    add("directory_attribute", one(b"payload.bin", data=b"", method=0, attributes=0x10), FORMAT)
    add("crc_changed", one(b"payload.bin", data=MIXED, crc=zlib.crc32(MIXED) ^ 1), DATA)
    add("crc_changed_stored", one(b"payload.bin", method=0, crc=zlib.crc32(SMALL) ^ 4), DATA)
    add("deflate_damaged", one(b"payload.bin", data=MIXED, packed=bytes(damaged)), DATA)
    add("truncated", raw_zip([entry(b"payload.bin", MIXED)], cut=300_000), FORMAT)
    add("truncated_end", one(b"payload.bin", method=0)[:-5], FORMAT)
    add("method_bzip2", one(b"payload.bin", method=12, packed=SMALL), UNSUPPORTED)
    add("encrypted", one(b"payload.bin", flags=1), UNSUPPORTED)
    add("central_packed_too_big", one(b"payload.bin", data=MIXED, central=(10_000_000, len(MIXED))), FORMAT)
    # Both headers agree with each other but not with the data: the decoder must notice.
    add("sizes_lie_both", one(b"payload.bin", data=MIXED, central=(packed, 1000), local=(packed, 1000)), DATA)
    add("sizes_local_differs", one(b"payload.bin", data=MIXED, local=(packed, len(MIXED) + 1)), FORMAT)
    add("name_local_differs", one(b"payload.bin", local_name=b"other.bin"), FORMAT)
    add("stored_sizes_differ", one(b"payload.bin", method=0, central=(150, 149), local=(150, 149)), FORMAT)
    add("descriptor_cut", one(b"payload.bin", descriptor=True, cut_descriptor=6), FORMAT)
    add("not_a_zip", random.Random(7).randbytes(5000), FORMAT)
    add("zero_bytes", b"", FORMAT)
    # Command lines, the target folder, an existing target.
    plain = one(b"plain.txt", method=0)
    add("replace_read_only", plain, OK, "plain.txt", pre={"target/plain.txt": ReadOnly(OLD)})
    add("keep_without_n", plain, KEPT, args='"{archive}" "{folder}" -q', pre={"target/plain.txt": OLD})
    add("fresh_without_n", plain, OK, "plain.txt", args='"{archive}" "{folder}" -q')
    add("folder_without_backslash", plain, OK, "plain.txt", args='"{archive}" "{bare}"  -n -q')
    add("options_anywhere", plain, OK, "plain.txt", args='-Q "{archive}"\t/N "{folder}"')
    add("dot_suffix", plain, OK, "plain.txt", args='"{archive}." "{folder}"  -n -q', name="_000010_")
    add("spaced paths", plain, OK, "plain.txt", name="my member.zip")
    bad_t = ["-t", "-t0a1b2c3", "-t0a1b2c3d4", "/t0a1b2c3g", "-t0x1b2c3d", "-t+a1b2c3d", "-t 0a1b2c3d",
             "-t0a1b2c3d -T0a1b2c3d"]  # the temporary name's eight hex digits, malformed or given twice
    for label, args in [("missing_folder", '"{archive}" -q'), ("unknown_option", '"{archive}" "{folder}" -x -q'),
                        ("three_paths", '"{archive}" "{folder}" "{folder}" -q'), ("empty_folder", '"{archive}" "" -q')
                        ] + [(f"temporary{i}", '"{archive}" "{folder}" -n -q ' + t) for i, t in enumerate(bad_t)]:
        add(label, plain, COMMAND_LINE, args=args)
    add("archive_missing", plain, OPEN, args='"{folder}nothing.zip" "{folder}"  -n -q')
    add("archive_is_folder", plain, OPEN, args='"{folder}" "{folder}"  -n -q')
    add("target_folder_missing", plain, WRITE, pre={"target": False})
    add("target_is_folder", plain, WRITE, pre={"target/plain.txt/inner": None})
    # Links that someone planted (host symbolic links stand in for junctions): never followed or written through,
    # never replaced. Wine cannot see a dangling link, so there the rename replaces it; Windows refuses it.
    add("link_at_target", plain, WRITE, pre={"target/plain.txt": "../outside", "outside": OLD})
    add("dangling_link_at_target", plain, OK, "plain.txt", pre={"target/plain.txt": "../made_through_link"})
    add("folder_is_link", plain, WRITE, pre={"target": "real", "real/kept.txt": OLD})
    add("folder_above_is_link", plain, WRITE, args='"{archive}" "{base}\\up\\target\\"  -n -q',
        pre={"up": "real", "real/target/kept.txt": OLD})
    # hounzip_fixedname.exe tries only hzu00000000.tmp, and -t only the name it gives: a file, link or folder
    # planted there is neither opened nor replaced, and no other name is tried.
    for label, planted in [("planted_temporary_file", OLD), ("planted_temporary_link", "../outside")]:
        add(label, plain, WRITE, pre={"target/hzu00000000.tmp": planted, "outside": OLD}, exe="hounzip_fixedname.exe")
    given = '"{archive}" /T0a1B2c3D "{folder}"  -n -q'
    add("given_temporary_part", plain, OK, "plain.txt", args=given, pre={"target/hzu0a1b2c3e.tmp": OLD})
    for label, planted in [("given_file", OLD), ("given_link", "../outside"), ("given_folder", None)]:
        add(label, plain, WRITE, args=given, pre={"target/hzu0a1b2c3d.tmp": planted, "outside": OLD})
    add("planted_temporary_names", plain, OK, "plain.txt", pre={
        "outside": OLD, "target/hzu.tmp": "../outside", "target/plain.txt.tmp": "../made_through_link",
        "target/hzu0000.tmp": "../made_through_link", "target/hzu1.tmp": OLD, "target/~plain.txt": OLD})
    return table


def win(path):
    return "T:\\" + os.path.relpath(os.path.realpath(path), ROOT).replace("/", "\\")


def state(path):
    if os.path.islink(path):
        return "link", os.readlink(path)
    if os.path.isdir(path):
        return "dir"
    with open(path, "rb") as f:
        return hashlib.file_digest(f, "sha256").hexdigest(), not os.stat(path).st_mode & stat.S_IWUSR


def snapshot(root):
    """Every entry below root: relative path -> "dir", ("link", its target) or (content digest, read-only)."""
    return {os.path.relpath(os.path.join(d, n), root): state(os.path.join(d, n))
            for d, dirs, files in os.walk(root) for n in dirs + files}


def plant(path, what):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    if what is None:
        os.makedirs(path)
    elif isinstance(what, str):
        os.symlink(what, path)
    elif what is not False:
        pathlib.Path(path).write_bytes(what)
        os.chmod(path, 0o444 if isinstance(what, ReadOnly) else 0o644)


def main(opts):
    if opts.big and os.environ.get("HOUNZIP_BIG_TEST") != "1":
        print("skipped: set HOUNZIP_BIG_TEST=1 to unpack a member of more than 4 GiB (needs about 4.5 GiB of disk)")
        return 77
    work = os.path.abspath(opts.work) + ("-big" if opts.big else "")
    shutil.rmtree(work, ignore_errors=True)
    table, lines = cases(opts.big), []
    for case in table:
        base = os.path.join(work, "cases", case.label)
        os.makedirs(os.path.join(base, "target") if "target" not in case.pre else base)
        for rel, what in list(case.pre.items()) + [(case.name, case.archive)]:
            plant(os.path.join(base, rel), what)
        folder = win(base) + "\\target"  # as named: win() would resolve a link at "target"
        fields = {"archive": win(os.path.join(base, case.name)), "folder": folder + "\\", "bare": folder,
                  "base": win(base)}
        exe = win(os.path.join(opts.bin, case.exe))
        lines.append(f'"{exe}" ' + (case.args or '"{archive}" "{folder}"  -n -q').format(**fields))
    # Where the hostile names pointed, outside the work tree.
    prefix = os.environ.get("WINEPREFIX", os.path.join(ROOT, "build", "wineprefix"))
    places = [os.path.join(o, f"escape{i}.txt") for o in (ROOT, ROOT + "/tmp", prefix + "/drive_c") for i in range(6)]
    places = [p for p in places if not os.path.lexists(p)]  # those from an earlier run are not this run's fault
    listing, before = os.path.join(work, "commands.txt"), snapshot(work)
    with open(listing, "w", newline="\r\n") as f:
        f.write("\n".join(lines) + "\n")
    command = [os.path.realpath(p) for p in (opts.wine_run, os.path.join(opts.bin, "hzlaunch.exe"), listing)]
    out = subprocess.run(command, cwd=work, stdout=subprocess.PIPE, timeout=1700).stdout.decode("ascii", "replace")
    os.remove(listing)
    codes, after = [int(code) for code in out.split()[0::3]], snapshot(work)
    failures = [] if len(codes) == len(table) else [f"the launcher reported {len(codes)} of {len(table)} results"]
    for case, code in zip(table, codes):
        own = os.path.join("cases", case.label) + os.sep
        expected = {k: v for k, v in before.items() if k.startswith(own)}
        got = {k: v for k, v in after.items() if k.startswith(own)}
        problems = [] if code == case.code else [f"exit code {code}, expected {case.code}"]
        if case.written is not None:
            written = os.path.join(own, "target", case.written)
            expected[written] = (case.digest, False)
            mtime = os.lstat(os.path.join(work, written)).st_mtime if written in got else case.stamp
            if case.stamp is not None and abs(mtime - case.stamp) > 2:
                problems.append(f"modification time {time.ctime(mtime)}, expected {time.ctime(case.stamp)}")
        problems += [("missing " if k not in got else "unexpected " if k not in expected else "changed ") + k
                     for k in sorted(expected.keys() | got.keys()) if expected.get(k) != got.get(k)]
        print(f"{'FAIL' if problems else 'ok  '} {case.label:26} exit {code}  " + "; ".join(problems))
        failures += [case.label] if problems else []
    failures += ["changed outside every case folder: " + k for k in sorted(before.keys() | after.keys())
                 if k.count(os.sep) < 2 and before.get(k) != after.get(k)]
    failures += ["written outside the work tree: " + p for p in places if os.path.lexists(p)]
    print(f"\n{len(table) - len(failures)} passed, {len(failures)} failed\n" + "\n".join(failures))
    if opts.big:
        shutil.rmtree(work, ignore_errors=True)
    return 1 if failures else 0


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for option in ("--bin", "--wine-run", "--work"):  # test programs' folder, scripts/wine-run, work folder
        parser.add_argument(option, required=True)
    parser.add_argument("--big", action="store_true")
    sys.exit(main(parser.parse_args()))
