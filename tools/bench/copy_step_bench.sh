#!/bin/sh
# Measures what the copy step of a silent installation spends per packed member under Wine, beside
# what no copy step can avoid: starting a do-nothing GUI program and waiting for it, plus unpacking
# the member in-process.
#
#   tools/bench/copy_step_bench.sh [BUILD_DIR] [FILE_COUNTS]
#
# BUILD_DIR (default build/windows) must hold bin/hosetup.exe, bin/holang.dll, bin/hounzip.exe,
# bin/hosetup.chm, bin/nothing.exe and bin/copy_step_baseline.exe (targets hosetup, holang_copy,
# hounzip_copy, hosetup_chm, hzlaunch_nothing, copy_step_baseline). FILE_COUNTS (default
# "200 3000") names the packages to measure. The packages are built with the native hopack
# ($HOPACK, else build/dist/hopack of the native preset), or with BUILD_DIR's hopack.exe under Wine
# when there is none. Generated data lies in $BENCH_WORK (default BUILD_DIR/bench-copy-step) and
# is deleted at the end (BENCH_KEEP=1 keeps it; the polled log lines are in
# p<count>/events-<round>.txt); the figures are printed and kept in BENCH_WORK/result.txt. Needs
# about 1.4 GB of disk and, on two cores, about ten minutes. Prints figures only; it is not a test.
#
# The packages, CAD-like: every file of the package is packed (one hounzip.exe start each) and lies
# in one of seven folders with twelve sub-folders each; most files are small (0.5-96 KB), some of
# medium size (150 KB-1.5 MB) and a few large ones make up the rest; the content is text-like,
# binary with runs of zeros, or incompressible, 5:3:2.
#   200 files:   160 small, 36 medium, 4 large;    50 MiB
#   3,000 files: 2,900 small, 90 medium, 10 large; 160 MiB (any other count: all but 100 small)
#
# How the copy step is timed: right after the unpacker has put a file in place, the setup program
# sets its attributes, which under Wine changes the Linux file's change time (ctime, to the
# nanosecond); the unpacker's own writes come before that within the member's turn. So the gap
# between two consecutive package files' change times holds exactly one member's whole turn:
# progress report and message pump, replace decision, the unpacker's start, run and wait,
# attributes, log lines. The mean per member is the span from the first package file to the last
# divided by the members in between, the median is taken over the gaps. The pacing pauses of the
# installation sequence (the Sleep loops before the copy step's banner and after its last line)
# and the copies of the setup program's own files, which come before the package's files, lie
# outside that span; nothing is subtracted. As a cross-check a poller reads the growing log every
# 5 ms and stamps each new line (each file's path is written right after its attributes are set);
# it also gives the whole copy step, from its banner to its last line.
#
# The baseline (copy_step_baseline.cpp) runs in the same prefix with the same wineserver, on the
# same members, into folders of its own laid out like the installation's, before and after every
# installation, so that a change in the machine's load weighs on both sides alike. Each figure rests
# on at least 600 members: a package of fewer files is installed again (in a fresh prefix) until
# its installations hold 600, the 200-file package three times. The means and medians are taken
# over all members of all runs. On a shared machine the figures still move with the load of the
# others (the same process start under Wine takes about 25 ms at one time and 45 ms at another);
# the medians move least.
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "${1:-$here/build/windows}" && pwd)
counts=${2:-200 3000}
# Under no display, start again inside a virtual one.
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$build" "$counts"
fi
. "$here/tools/bench/bench_common.sh"
require_programs hosetup.exe holang.dll hounzip.exe hosetup.chm nothing.exe copy_step_baseline.exe
prepare_work "${BENCH_WORK:-$build/bench-copy-step}"
# Under a bare X server no window manager answers Wine's wait for a closed window; the tests run
# unmanaged for the same reason. It does not touch the copy step.
HO_WINE_UNMANAGED=1
export HO_WINE_UNMANAGED
trap 'wineserver -k 2>/dev/null || true; [ -n "${BENCH_KEEP:-}" ] || rm -rf "$work"/p*' EXIT

# generate COUNT FOLDER: the package's files, its description (FOLDER/source/bench.toml) and
# FOLDER/plan.txt ("files bytes" and then one "name<TAB>folder below the baseline root" per file).
generate() {
    python3 - "$here/tools/bench" "$1" "$2" <<'PY'
import os, random, sys
sys.path.insert(0, sys.argv[1])
from bench_package import FOLDERS, Content, file_name
count, work = int(sys.argv[2]), sys.argv[3]
small_n, medium_n, large_n, total = {200: (160, 36, 4, 50 << 20)}.get(count, (count - 100, 90, 10, 160 << 20))
rng = random.Random(20240601 + count)
content = Content(rng)

sizes = [content.small_size() for _ in range(small_n)]
sizes += [int(150_000 * 10 ** rng.random()) for _ in range(medium_n)]
weights = [rng.uniform(0.6, 1.4) for _ in range(large_n)]
rest = total - sum(sizes)
sizes += [int(rest * w / sum(weights)) for w in weights]
rng.shuffle(sizes)

toml = ['[product]', 'name = "Vistrel Bench"', 'label = "Vistrel Bench 2024"',
        'compile_date = "2024-05-17"', '']
plan = [f"{len(sizes)} {sum(sizes)}"]
for n, size in enumerate(sizes):
    kind = content.kind()
    directory, place = rng.choice(FOLDERS)
    sub = f"{place}Set{rng.randint(1, 12):02d}"
    name = file_name(n, kind)
    path = os.path.join(work, "source", "files", name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(content.make(kind, size))
    toml += ['[[file]]', f'source = "files/{name}"', f'directory = {directory}',
             'subfolder = "' + sub.replace("\\", "\\\\") + '"', '']
    plan.append(f"{name}\t{directory}/{sub.replace(chr(92), '/')}")
with open(os.path.join(work, "source", "bench.toml"), "w") as f:
    f.write("\n".join(toml))
with open(os.path.join(work, "plan.txt"), "w") as f:
    f.write("\n".join(plan) + "\n")
PY
}

# baseline_list FOLDER: FOLDER/baseline.txt, one "member<TAB>target folder\" per package file, as
# Windows paths (see win), from the members' stored names; makes the target folders.
baseline_list() {
    python3 - "$1" "$(cd "${HO_WINE_TREE:-$here}" && pwd -P)" <<'PY'
import glob, os, sys, zipfile
folder, tree = sys.argv[1], sys.argv[2]
def win(path):
    return "T:\\" + os.path.relpath(os.path.realpath(path), tree).replace("/", "\\")
place = dict(line.rstrip("\n").split("\t") for line in list(open(os.path.join(folder, "plan.txt")))[1:])
with open(os.path.join(folder, "baseline.txt"), "w", newline="") as out:
    for member in sorted(glob.glob(os.path.join(folder, "dist", "_*_"))):
        with open(member, "rb") as f:
            if f.read(4) != b"PK\x03\x04":
                continue        # stored plain: the data file and the setup program's own files
        name = zipfile.ZipFile(member).namelist()[0]
        if name in place:
            target = os.path.join(folder, "baseline", place[name])
            os.makedirs(target, exist_ok=True)
            out.write(win(member) + "\t" + win(target) + "\\\r\n")
PY
}

# run_baseline FOLDER ROUND [LINES]: one baseline run into emptied target folders, over the first
# LINES members (default all). The do-nothing program lies beside the unpacker, in the distribution
# folder: Wine's loader looks for a starting program's DLLs in its folder first and, finding no such
# name there, reads the whole folder to compare the names without case (about 1 ms per name in a
# folder of 3,000 members, four or five names per start). That is the cost of starting any program from
# there, not of the copy step, so both sides pay it.
run_baseline() {
    find "$1/baseline" -type f -delete
    head -n "${3:-1000000}" "$1/baseline.txt" > "$1/baseline-list.txt"
    "$here/scripts/wine-run" "$bin/copy_step_baseline.exe" "$(win "$1/dist/nothing.exe")" \
        "$(win "$1/baseline-list.txt")" > "$1/baseline-$2.txt" 2> "$1/baseline-$2.err" || true
}

# install FOLDER ROUND: the silent installation, its log polled; FOLDER/events-ROUND.txt and
# FOLDER/install-ROUND.txt (the run's figures, then the gaps between the package files in ms).
install() {
    python3 - "$here/tools/bench" "$1" "$2" "$here/scripts/wine-run" "$1/dist/hosetup.exe" "$WINEPREFIX" <<'PY'
import os, re, sys
sys.path.insert(0, sys.argv[1])
from polled_install import PACKAGE_FILE, copy_step_bounds, run_polled
folder, round, wine_run, setup, prefix = sys.argv[2:7]
code, wall, events = run_polled(wine_run, setup, prefix, os.path.join(folder, f"events-{round}.txt"))
banner, end = copy_step_bounds(events)
package = [t for t, line in events if PACKAGE_FILE.search(line)]
logged = (package[-1] - package[0]) * 1000 / (len(package) - 1) if len(package) > 1 else 0
# The package's files in installation order, by their change times.
changed = {}
for root, _, names in os.walk(os.path.join(prefix, "drive_c")):
    for name in names:
        if re.fullmatch(r"f\d{4}\.\w+", name):
            changed[int(name[1:5])] = os.stat(os.path.join(root, name)).st_ctime_ns / 1e6
times = [changed[n] for n in sorted(changed)]
gaps = [b - a for a, b in zip(times, times[1:])]
with open(os.path.join(folder, f"install-{round}.txt"), "w") as f:
    f.write(f"{code} {wall:.3f} {banner} {end} {len(package)} {len(times)} {logged:.3f}\n")
    f.write(" ".join(f"{gap:.3f}" for gap in gaps) + "\n")
PY
}

# report FOLDER ROUNDS: the package's figures, from all rounds' installations and baseline runs.
report() {
    python3 - "$1" "$2" <<'PY'
import os, statistics, sys
folder, rounds = sys.argv[1], int(sys.argv[2])
files, size = map(int, open(os.path.join(folder, "plan.txt")).readline().split())
gaps, walls, steps, per_line = [], [], [], []
for r in range(1, rounds + 1):
    with open(os.path.join(folder, f"install-{r}.txt")) as f:
        code, wall, banner, end, logged, changed, line_ms = f.readline().split()
        if code != "0":
            sys.exit(f"installation {r}: hosetup.exe -S failed with exit code {code}")
        if int(logged) != files or int(changed) != files or end == "None":
            sys.exit(f"installation {r}: of the {files} package files the log names {logged} "
                     f"and {changed} are installed")
        gaps += map(float, f.readline().split())
    walls.append(float(wall)); steps.append(float(end) - float(banner)); per_line.append(float(line_ms))
members, starts, unpacks, retries = [], [], [], 0
for r in range(1, rounds + 2):
    run = {}
    for line in open(os.path.join(folder, f"baseline-{r}.txt")):
        key, value = line.split()
        if key == "member_ms":
            members.append(float(value))
        run[key] = float(value)
    if run.get("members") != files or run.get("failures") != 0:
        errors = open(os.path.join(folder, f"baseline-{r}.err")).read()
        sys.exit(f"baseline run {r}: {run.get('members', 0):.0f} members, "
                 f"{run.get('failures', 0):.0f} failed\n{errors}")
    starts.append(run["start_ms"]); unpacks.append(run["unpack_ms"]); retries += int(run["retries"])
copy = (statistics.fmean(gaps), statistics.median(gaps))
base = (statistics.fmean(members), statistics.median(members))
print(f"package: {files} packed files, {size / 1048576:.1f} MiB; "
      f"{rounds} installation(s), {rounds + 1} baseline runs")
print("                                  mean   median  (ms per member)")
print(f"  copy step                    {copy[0]:7.2f}  {copy[1]:7.2f}")
print(f"  baseline                     {base[0]:7.2f}  {base[1]:7.2f}")
print(f"    start nothing.exe and wait {statistics.fmean(starts):7.2f}")
print(f"    unpack in-process          {statistics.fmean(unpacks):7.2f}")
if retries:
    print(f"    ({retries} starts failed once and were repeated)")
print(f"  ratio copy step / baseline   {copy[0] / base[0]:7.3f}  {copy[1] / base[1]:7.3f}")
print("  whole copy step " + ", ".join(f"{s:.2f}" for s in steps) + " s (log lines: " +
      ", ".join(f"{m:.2f}" for m in per_line) + " ms per member); whole run " +
      ", ".join(f"{w:.2f}" for w in walls) + " s wall\n")
PY
}

: > "$work/result.txt"
for count in $counts; do
    folder=$work/p$count
    # Each figure rests on at least 600 installed members: small packages are installed again.
    rounds=$(( (600 + count - 1) / count ))
    mkdir -p "$folder/program"
    echo "package of $count files: generating ..."
    generate "$count" "$folder"
    for program in hosetup.exe holang.dll hounzip.exe hosetup.chm; do
        cp "$bin/$program" "$folder/program/"
    done
    hopack build "$folder/source/bench.toml" "$folder/dist" --program "$folder/program" > "$folder/hopack.txt"
    cp "$bin/nothing.exe" "$folder/dist/"
    baseline_list "$folder"
    round=1
    while [ "$round" -le "$rounds" ]; do
        # A fresh prefix for each installation, so that no earlier one makes the run an update; one
        # wineserver kept up for the round, so that no program under test pays for its start.
        [ "$round" = 1 ] || { wineserver -k; rm -rf "$WINEPREFIX"; }
        WINEPREFIX=$folder/wineprefix
        export WINEPREFIX
        "$here/scripts/wine-run" cmd /c exit 0 > /dev/null
        wineserver -w
        wineserver -p
        echo "package of $count files, round $round of $rounds: baseline, installation ..."
        # The first starts in a new prefix are slow (Wine's services settle): a warm-up first.
        run_baseline "$folder" warm-up 50
        run_baseline "$folder" "$round"
        install "$folder" "$round"
        round=$((round + 1))
    done
    run_baseline "$folder" "$round"
    wineserver -k
    report "$folder" "$rounds" >> "$work/result.txt" || { cat "$work/result.txt"; exit 1; }
    [ -n "${BENCH_KEEP:-}" ] || rm -rf "$folder"
done
cat "$work/result.txt"
