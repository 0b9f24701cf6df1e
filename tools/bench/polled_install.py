"""A silent installation with its setup log watched, for the benchmark scripts.

The log is written with plain WriteFile calls, which Wine passes straight to the Linux file, and
the setup program appends each file's target path right after that file is in place. Reading the
growing log every 5 ms and stamping each new line gives the progress of the copy step to about
5 ms plus the poller's own lag.
"""
import os
import re
import subprocess
import time

LOG = ("drive_c", "ProgramData", "Harwick-Orbel", "Vistrel (64-bit)", "hosetup.log")
# The line the copy step writes last: the files the product makes itself, logged after the loop.
LAST_COPY_LINE = "~LibraryCache99~.tmp"
# A package file of the benchmarks' generated packages (f0000.txt ...).
PACKAGE_FILE = re.compile(r"\\f\d{4}\.\w+$")


def run_polled(wine_run, setup, prefix, events_path):
    """Runs "SETUP -S" through WINE_RUN and stamps every new log line.

    Writes "seconds<TAB>line" per line to EVENTS_PATH and returns (exit code, wall seconds,
    events), events being (seconds since the start, line) pairs."""
    log = os.path.join(prefix, *LOG)
    events = []
    start = time.monotonic()
    process = subprocess.Popen([wine_run, setup, "-S"], stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    offset, pending = 0, b""
    while True:
        done = process.poll() is not None
        now = time.monotonic() - start
        try:
            with open(log, "rb") as f:
                f.seek(offset)
                data = f.read()
        except FileNotFoundError:
            data = b""
        if data:
            offset += len(data)
            pending += data
            *lines, pending = pending.split(b"\r\n")
            events += [(now, line.decode("latin-1")) for line in lines]
        if done:
            break
        time.sleep(0.005)
    wall = time.monotonic() - start
    with open(events_path, "w") as f:
        f.writelines(f"{t:.3f}\t{line}\n" for t, line in events)
    return process.returncode, wall, events


def first_stamp(events, test):
    """The stamp of the first line that TEST accepts, or None."""
    return next((t for t, line in events if test(line)), None)


def copy_step_bounds(events):
    """(stamp of the "Copying files" banner, stamp of the copy step's last line); None where absent."""
    return (first_stamp(events, lambda line: "Copying files" in line),
            first_stamp(events, lambda line: line.endswith(LAST_COPY_LINE)))
