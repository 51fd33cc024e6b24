#!/usr/bin/python3
"""What shipping costs, against posting the same bytes with curl to the same server; and how large the table is.
   bench_ship.py [--json] [--quick]"""
import json, os, shutil, statistics, subprocess, sys, tempfile, time, urllib.parse, urllib.request

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
QUICK = "--quick" in sys.argv  # shows that it runs, and does not judge
GOAL = 1.5
ROUNDS = 3
BATCH = 50_000  # rows, as RowBatch has them
COLUMNS = "machine, session, number, log, time, depth, kind, header, block, parent, length, text"


def ask(sql):
    with urllib.request.urlopen(os.environ["QM_ENGINE_URL"] + "/", sql.encode()) as answer:
        return answer.read()


def logtool(folder, *words):
    subprocess.run([ROOT + "/tools/logtool.sh", "--folder", folder, *words], check=True, stderr=subprocess.DEVNULL)


def report(name, value, unit, reference="", ratio=None, goal=None):
    if "--json" in sys.argv:
        met = None if goal is None else ratio <= goal
        print(json.dumps(dict(name=name, value=value, unit=unit, reference=reference, ratio=ratio, goal=goal, met=met)))
    else:
        met = "" if goal is None else "met" if ratio <= goal else "MISSED"
        numbers = ["" if number is None else f"{number:.3f}" for number in (ratio, goal)]
        print(f"{name:34} {value:10.3f} {unit:8}  {reference:31} {numbers[0]:>7}  {numbers[1]:>5}  {met}")
    return goal is None or ratio <= goal


def write_session(work, size):
    """Lines of some 80 bytes, as real programs write them; in one log."""
    with open(work + "/text", "w") as file:
        line = 0
        while file.tell() < size:
            file.write("".join(
                f"2026-11-23 07:{n // 60000 % 60:02}:{n // 1000 % 60:02}.{n % 1000:03} worker {n * 7919 % 16} handled request "
                f"{n} for user {n * 104729 % 10007} in {n * 31 % 907} ms\n" for n in range(line, line + 100_000)))
            line += 100_000
    logtool(work + "/session", "write", "Main", work + "/text")
    return line


def seconds(act):
    ask("DROP TABLE IF EXISTS posted")
    ask("CREATE TABLE posted AS log_rows")
    time.sleep(1)  # merges of the round before
    begin = time.monotonic()
    act()
    return time.monotonic() - begin


def main():
    work = tempfile.mkdtemp()
    try:
        rows = write_session(work, 20 << 20 if QUICK else 1 << 30)
        address = os.environ["QM_ENGINE_URL"]
        logtool(work + "/session", "ship", "--to", address, "--create")
        posts = []
        insert = urllib.parse.quote(f"INSERT INTO posted ({COLUMNS}) FORMAT RowBinary")
        for first in range(1, rows + 1, BATCH):
            path = f"{work}/{first}"
            with open(path, "wb") as file:
                file.write(ask(f"SELECT {COLUMNS} FROM log_rows WHERE number BETWEEN {first} AND {first + BATCH - 1}"
                               " ORDER BY number, log, length DESC LIMIT 1 BY number, log FORMAT RowBinary"))
            posts += ["--next"] * bool(posts) + ["-sf", "-H", "Expect:", "--data-binary", "@" + path,
                                                 f"{address}/?query={insert}"]
        times = []
        for _ in range(ROUNDS):
            ship = seconds(lambda: logtool(work + "/session", "ship", "--to", address + "/posted"))
            curl = seconds(lambda: subprocess.run(["curl", *posts], check=True))
            times.append((ship / curl, ship, curl))
        ratio, ship, curl = statistics.median(times)
        assert int(ask("SELECT count() FROM posted")) == rows
        ask("OPTIMIZE TABLE posted FINAL")
        size = int(ask("SELECT sum(bytes_on_disk) FROM system.parts WHERE active AND table = 'posted'"))
        report("posting with curl", curl * 1000, "ms")
        good = report(f"ship, {rows} rows", ship * 1000, "ms", "posting the same bytes", ratio, GOAL)
        files = sum(os.path.getsize(f"{work}/session/{name}") for name in os.listdir(work + "/session"))
        report("the table, merged, per row", size / rows, "bytes", "the session's files", size / files)
        sys.exit(0 if good or QUICK else 1)
    finally:
        shutil.rmtree(work)


if "QM_ENGINE_URL" in os.environ:
    main()
elif subprocess.run([ROOT + "/tools/engine.sh", "install"]).returncode:
    sys.exit(0)  # it has said why
else:
    os.execv(ROOT + "/tools/engine.sh", ["engine.sh", "with", *sys.argv])
