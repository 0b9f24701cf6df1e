#!/usr/bin/env python3
"""Tests hounzip.exe under Wine the way the installer uses it.

Every case gets its own folder with a target folder inside and a file beside it. All command lines are written
verbatim into one list file and started one after another by hzlaunch.exe (CreateProcessA with a hidden window,
as the installer does), so only one Wine start of the launcher is paid. Afterwards each case is checked:
the exit code, the written file (byte-equal, with the stored modification time), and the whole folder tree before
and after, so that a file written outside the target folder, a temporary file left behind, or a damaged existing
file shows up.

With --big (and HOUNZIP_BIG_TEST=1) it instead unpacks one member of more than 4 GiB."""

import argparse
import hashlib
import os
import shutil
import stat
import subprocess
import sys
import time
import zlib

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True  # keep the source folder clean
import make_archives as ma  # noqa: E402

OLD_CONTENT = b"the file that was there before\r\n"


def win(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def snapshot(root):
    """Every file and folder below root: relative path -> (content digest or 'dir', read-only flag)."""
    tree = {}
    for folder, dirs, files in os.walk(root):
        for d in dirs:
            tree[os.path.relpath(os.path.join(folder, d), root)] = ("dir", False)
        for f in files:
            path = os.path.join(folder, f)
            with open(path, "rb") as h:
                digest = hashlib.sha256(h.read()).hexdigest()
            tree[os.path.relpath(path, root)] = (digest, not os.stat(path).st_mode & stat.S_IWUSR)
    return tree


class Case:
    def __init__(self, label, code, args=None, archive=None, written=None, data=None, stamp=None):
        self.label, self.code, self.archive = label, code, archive
        self.written, self.data, self.stamp = written, data, stamp
        self.args = args  # command line after the program name; None gives the installer's own form
        self.line = None


def build_cases(work, archives_dir, archives):
    """Case folders and command lines. Returns the list of cases."""
    cases = []
    by_ident = {a.ident: a for a in archives}

    def folder_of(case):
        return os.path.join(work, "cases", case.label, "target") + os.sep

    def add(case, existing=None, read_only=False, make_target=True):
        base = os.path.join(work, "cases", case.label)
        os.makedirs(base)
        with open(os.path.join(base, "beside.txt"), "wb") as f:
            f.write(b"must stay as it is\r\n")
        if make_target:
            os.makedirs(folder_of(case))
        if existing:
            path = os.path.join(folder_of(case), existing)
            with open(path, "wb") as f:
                f.write(OLD_CONTENT)
            if read_only:
                os.chmod(path, 0o444)
        cases.append(case)
        return case

    # Every archive, with the installer's exact command line (empty options: two blanks before -n). A failing
    # one finds a file in the target folder under the name its member would have, which must survive; half of
    # those are read-only, the way the installer's own files may be.
    for i, a in enumerate(archives):
        case = Case(a.ident, a.code, archive=os.path.join(archives_dir, a.ident), written=a.name, data=a.data,
                    stamp=a.stamp)
        add(case, existing=None if a.code == ma.OK else "payload.bin", read_only=(i % 2 == 0))

    small = by_ident["py_stored.zip"]
    small_path = os.path.join(archives_dir, small.ident)

    def small_case(label, code, **kw):
        return Case(label, code, archive=small_path, written=small.name if code == ma.OK else None,
                    data=small.data, **kw)

    # Replacing: an existing read-only file is replaced with -n; without -n a quiet run keeps it.
    add(small_case("replace_read_only", ma.OK), existing=small.name, read_only=True)
    add(small_case("keep_without_n", ma.KEPT, args='"{archive}" "{folder}" -q'), existing=small.name)
    add(small_case("fresh_without_n", ma.OK, args='"{archive}" "{folder}" -q'))

    # Command-line forms.
    add(small_case("folder_without_backslash", ma.OK, args='"{archive}" "{folder_bare}"  -n -q'))
    add(small_case("options_anywhere", ma.OK, args='-Q "{archive}"\t/N "{folder}"'))
    add(small_case("missing_folder", ma.COMMAND_LINE, args='"{archive}"  -n -q'))
    add(small_case("unknown_option", ma.COMMAND_LINE, args='"{archive}" "{folder}" -x -n -q'))
    add(small_case("three_paths", ma.COMMAND_LINE, args='"{archive}" "{folder}" "{folder}" -n -q'))
    add(small_case("empty_folder", ma.COMMAND_LINE, args='"{archive}" "" -n -q'))
    add(small_case("archive_missing", ma.OPEN, args='"{folder}nothing.zip" "{folder}"  -n -q'))
    add(small_case("archive_is_folder", ma.OPEN, args='"{folder}" "{folder}"  -n -q'))
    add(small_case("target_folder_missing", ma.WRITE), make_target=False)
    case = add(small_case("target_is_folder", ma.WRITE))
    os.makedirs(os.path.join(folder_of(case), small.name, "inner"))

    # A member name without extension, passed with the "." that the installer appends.
    member = os.path.join(work, "cases", "dot_suffix_member")
    case = add(Case("dot_suffix", ma.OK, args='"{member}." "{folder}"  -n -q', written=small.name, data=small.data))
    os.makedirs(member)
    shutil.copy(small_path, os.path.join(member, "_000010_"))
    case.member = os.path.join(member, "_000010_")

    # Blanks in both paths.
    spaced = os.path.join(work, "cases", "spaced archive")
    os.makedirs(spaced)
    shutil.copy(small_path, os.path.join(spaced, "my member.zip"))
    case = add(Case("spaced paths", ma.OK, args='"{member}" "{folder}"  -n -q', written=small.name, data=small.data))
    case.member = os.path.join(spaced, "my member.zip")

    for case in cases:
        folder = win(folder_of(case))
        fields = {"archive": win(case.archive) if case.archive else "", "folder": folder,
                  "folder_bare": folder.rstrip("\\"), "member": win(getattr(case, "member", "") or "/")}
        args = case.args or '"{archive}" "{folder}"  -n -q'
        case.line = '"{exe}" ' + args.format(**fields)
        case.folder = folder_of(case)
    return cases


def run_launcher(opts, work, lines, repeat=1):
    listing = os.path.join(work, "commands.txt")
    with open(listing, "w", newline="\r\n") as f:
        f.write("\n".join(lines) + "\n")
    launcher = os.path.join(opts.bin, "hzlaunch.exe")
    result = subprocess.run([opts.wine_run, launcher, win(listing), str(repeat)], cwd=work,
                            stdout=subprocess.PIPE, timeout=600)
    out = result.stdout.decode("ascii", "replace").split()
    return [int(code) for code in out[0::3]], [float(ms) for ms in out[1::3]]


def check(cases, codes, before, after, work):
    failures = []
    escape_names = set()
    for case, code in zip(cases, codes):
        problems = []
        if code != case.code:
            problems.append(f"exit code {code}, expected {case.code}")
        prefix = os.path.join("cases", case.label) + os.sep
        old = {k: v for k, v in before.items() if k.startswith(prefix)}
        new = {k: v for k, v in after.items() if k.startswith(prefix)}
        expected = dict(old)
        if case.code == ma.OK:
            rel = os.path.relpath(os.path.join(case.folder, case.written), work)
            expected[rel] = (hashlib.sha256(case.data).hexdigest(), False)
            if case.written.startswith("escape") or case.written.startswith("hounzip_escape"):
                escape_names.add(case.written)
            if case.stamp is not None and os.path.exists(os.path.join(work, rel)):
                mtime = os.stat(os.path.join(work, rel)).st_mtime
                if abs(mtime - case.stamp) > 2:
                    problems.append(f"modification time {time.ctime(mtime)}, expected {time.ctime(case.stamp)}")
        for rel in sorted(set(expected) | set(new)):
            if expected.get(rel) != new.get(rel):
                what = "missing" if rel not in new else ("unexpected" if rel not in expected else "different")
                problems.append(f"{what}: {rel}")
        if problems:
            failures.append(f"{case.label}: " + "; ".join(problems))
        print(f"{'FAIL' if problems else 'ok  '} {case.label:34} exit {code}")
    # Outside the case folders (archives, the work folder itself) nothing may change at all.
    in_case = tuple(os.path.join("cases", c.label) + os.sep for c in cases)
    for rel in sorted(set(before) | set(after)):
        if not rel.startswith(in_case) and before.get(rel) != after.get(rel):
            failures.append(f"changed outside every target folder: {rel}")
    # Names that tried to leave their target folder exist only inside it, and nowhere the name pointed.
    prefix = os.environ.get("WINEPREFIX", "")
    for name in sorted(escape_names):
        places = [k for k in after if os.path.basename(k) == name]
        if len(places) != 1:
            failures.append(f"{name} found at {places}")
        for outside in [os.path.join(prefix, "drive_c", name), os.path.join("/tmp", name), os.path.join("/", name),
                        os.path.join(work, name), os.path.join(work, "cases", name)]:
            if os.path.exists(outside):
                failures.append(f"written outside the target folder: {outside}")
    return failures


def clear_escapes(work):
    prefix = os.environ.get("WINEPREFIX", "")
    for name in ["escape%d.txt" % i for i in range(1, 7)] + ["hounzip_escape5.txt"]:
        for place in [os.path.join(prefix, "drive_c", name), os.path.join("/tmp", name), os.path.join("/", name)]:
            if os.path.exists(place):
                os.remove(place)


def main_tests(opts):
    work = os.path.abspath(opts.work)
    if os.path.exists(work):
        for folder, dirs, files in os.walk(work):  # read-only files from an earlier run
            for f in files:
                os.chmod(os.path.join(folder, f), 0o644)
        shutil.rmtree(work)
    os.makedirs(work)
    clear_escapes(work)
    archives_dir = os.path.join(work, "archives")
    archives = ma.make_archives(archives_dir)
    cases = build_cases(work, archives_dir, archives)
    exe = win(os.path.join(opts.bin, "hounzip.exe"))
    lines = [c.line.replace("{exe}", exe) for c in cases]
    before = snapshot(work)
    codes, _ = run_launcher(opts, work, lines)
    if len(codes) != len(cases):
        print(f"launcher reported {len(codes)} results for {len(cases)} cases")
        return 1
    os.remove(os.path.join(work, "commands.txt"))
    failures = check(cases, codes, before, snapshot(work), work)
    print(f"\n{len(cases) - len(failures)} of {len(cases)} cases passed")
    for f in failures:
        print("  " + f)
    return 1 if failures else 0


def big_test(opts):
    if os.environ.get("HOUNZIP_BIG_TEST") != "1":
        print("skipped: set HOUNZIP_BIG_TEST=1 to unpack a member of more than 4 GiB (needs about 4.5 GiB of disk)")
        return 77
    work = os.path.abspath(opts.work) + "-big"
    shutil.rmtree(work, ignore_errors=True)
    os.makedirs(os.path.join(work, "target"))
    size = (4 << 30) + (300 << 20)
    started = time.time()
    archive, crc = ma.make_big_archive(work, size)
    print(f"archive of {os.path.getsize(archive)} bytes made in {time.time() - started:.0f} s")
    started = time.time()
    line = f'"{win(os.path.join(opts.bin, "hounzip.exe"))}" "{win(archive)}" "{win(os.path.join(work, "target"))}\\"  -n -q'
    codes, ms = run_launcher(opts, work, [line])
    print(f"exit code {codes}, unpacked in {time.time() - started:.0f} s")
    out = os.path.join(work, "target", "big.bin")
    ok = codes == [0] and os.path.exists(out) and os.path.getsize(out) == size
    if ok:
        got = 0
        with open(out, "rb") as f:
            while piece := f.read(1 << 22):
                got = zlib.crc32(piece, got)
        ok = got == crc
        print(f"size {os.path.getsize(out)}, CRC-32 {got:08x} (expected {crc:08x})")
    leftovers = sorted(os.listdir(os.path.join(work, "target")))
    ok = ok and leftovers == ["big.bin"]
    shutil.rmtree(work, ignore_errors=True)
    print("PASS" if ok else f"FAIL (target folder held {leftovers})")
    return 0 if ok else 1


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--bin", required=True, help="folder with hounzip.exe and hzlaunch.exe")
    parser.add_argument("--wine-run", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--big", action="store_true")
    opts = parser.parse_args()
    sys.exit(big_test(opts) if opts.big else main_tests(opts))
