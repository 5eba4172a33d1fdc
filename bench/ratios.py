"""Prints the table of ratios of a run of scripts/bench: for each row the median time of the library,
its peer, and the time of the library over that of the peer. Below 1 the library is the faster one."""

import json
import os
import sys


class Row:
    """A measurement beside its peer, which is another one, or a counter that already is the ratio."""

    def __init__(self, what, program, ours, peer, measured="", counter="", inverse=False):
        self.what = what
        self.program = program
        self.ours = ours  # what the name of the measurement begins with
        self.peer = peer  # for people
        self.measured = measured  # the same of the peer
        self.counter = counter
        self.inverse = inverse  # the counter is a speed


def rows():
    for size in (5, 50, 500):
        yield Row(f"send a file of {size} MB to a file", "send", f"SendFile/MB:{size}/",
                  "dd, blocks of 2048 bytes", counter="to_dd")
    for workers, calls in ((4, 250), (4, 32), (64, 1)):
        yield Row(f"5,000 jobs to 1,000 printers, {workers} workers of {calls} calls", "fleet",
                  f"Fleet/workers:{workers}/calls:{calls}/bad:0/",
                  "connect, write, close", counter="to_bare")
    for row, what in ((600, "rows of 600 bytes"), (100, "rows of 100 bytes"), (0, "text")):
        yield Row(f"filter a PCL job of 200 MB, {what}", "filter", f"Filter/MB:200/row:{row}/",
                  "sending it unfiltered", counter="speed", inverse=True)
    for image, what in ((1, "an image"), (0, "operators")):
        yield Row(f"convert a PCL XL job of 200 MB, {what}", "pclxl",
                  f"Convert/MB:200/image:{image}/", "copying it twice", counter="to_copies")
    for sample in ("text", "program", "literals", "raster"):
        for way, peer in (("ZlibLoop", "zlib's inflate loop"), ("Libdeflate", "libdeflate")):
            yield Row(f"inflate {sample}", "inflate", f"{sample}/Library", peer,
                      measured=f"{sample}/{way}")
    for method in ("shrunk", "reduced1", "reduced4", "imploded 4K", "imploded 8K trees"):
        yield Row(f"extract a member that is {method}", "inflate", f"old/{method}",
                  "extracting a stored one", measured="old/stored")
    for count in (2000, 20000):
        yield Row(f"find the fonts among {count} files", "find", f"FindFonts/{count}",
                  "a loop that opens and reads each", measured=f"BareLoop/{count}")
    for ours, peer, what in (("AfmToPfm", "ReadAfm", "AFM to PFM"),
                             ("PfmToAfm", "ReadPfm", "PFM to AFM"),
                             ("PclToPfm", "ReadPcl", "PCL soft font to PFM")):
        yield Row(what, "convert", ours, "reading the source", measured=peer)
    yield Row("open a long INI file", "ini", "OpenLongFile", "reading its lines",
              measured="ReadLinesAlone")
    yield Row("open a long INI file", "ini", "OpenLongFile", "GLib's key files",
              measured="OpenLongFileGlib")
    yield Row("find a key of a large section", "ini", "FindInLargeSection", "walking its lines",
              measured="FindByWalking")
    yield Row("find a key of a large section", "ini", "FindInLargeSection", "GLib's key files",
              measured="FindInLargeSectionGlib")
    yield Row("parse and release an option reply", "replies", "ParseOptions",
              "the memory of its records alone", measured="AllocateOptionsOnly")


def medians(folder, program):
    """The medians of a program by name, None where it did not run."""
    path = os.path.join(folder, program + ".json")
    if not os.path.exists(path):
        return None
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    return {run["run_name"]: run for run in runs if run.get("aggregate_name") == "median"}


def find(runs, name):
    """The one of that name, or of a name that begins with it when it ends with a slash."""
    for run_name, run in runs.items():
        if run_name == name or (name.endswith("/") and run_name.startswith(name)):
            return run
    return None


def seconds(run):
    return run["real_time"] * {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[run["time_unit"]]


def shown(time):
    for unit, scale in (("s", 1), ("ms", 1e-3), ("us", 1e-6)):
        if time >= scale:
            return f"{time / scale:.3g} {unit}"
    return f"{time / 1e-9:.3g} ns"


def ratio(row, runs, ours):
    if row.counter:
        value = ours[row.counter]
        return 1 / value if row.inverse else value
    peer = find(runs, row.measured)
    return seconds(ours) / seconds(peer) if peer else None


def main():
    folder = sys.argv[1]
    table = [("What", "Time", "Beside", "Ratio"), ("---", "---:", "---", "---:")]
    for row in rows():
        runs = medians(folder, row.program)
        if runs is None:
            continue
        ours = find(runs, row.ours)
        # A program is built without a peer that the system lacks.
        value = ratio(row, runs, ours) if ours else None
        table.append((row.what, shown(seconds(ours)) if ours else "-", row.peer,
                      f"{value:.2f}" if value is not None else "-"))
    widths = [max(len(cells[i]) for cells in table) for i in range(4)]
    for cells in table:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(cells, widths)) + " |")


main()
