"""Prints the branches taken, by room of the library and by file, from a summary of llvm-cov.

The rooms that read and write the formats are also counted together; with --least PERCENT the program
fails when they are below it.
"""
import argparse
import collections
import json

FORMATS = ("support", "config", "replies", "zip", "pclxl", "fontconv", "macros")


def row(name, covered, count):
    share = 100 * covered / count if count else 100
    print(f"{name:<40} {covered:>6} {count:>6} {share:>6.1f} %")
    return share


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("summary")
    parser.add_argument("--least", type=float, default=0)
    arguments = parser.parse_args()
    with open(arguments.summary, encoding="utf-8") as file:
        files = json.load(file)["data"][0]["files"]

    rooms = collections.defaultdict(lambda: [0, 0])
    open_files = []
    for entry in files:
        name = entry["filename"].split("/src/")[1]
        branches = entry["summary"]["branches"]
        for total in (name.split("/")[0], "all"):
            rooms[total][0] += branches["covered"]
            rooms[total][1] += branches["count"]
        if branches["covered"] < branches["count"]:
            open_files.append((name, branches["covered"], branches["count"]))

    print(f"{'FILE':<40} {'TAKEN':>6} {'OF':>6}")
    for entry in sorted(open_files):
        row(*entry)
    print(f"\n{'ROOM':<40} {'TAKEN':>6} {'OF':>6}")
    for name in sorted(rooms, key=lambda room: (room == "all", room)):
        row(name, *rooms[name])
    formats = [sum(rooms[room][i] for room in FORMATS) for i in range(2)]
    if row("the formats together", *formats) < arguments.least:
        raise SystemExit(f"the formats have fewer than {arguments.least} % of their branches taken")


if __name__ == "__main__":
    main()
