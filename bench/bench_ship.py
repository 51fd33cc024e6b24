#!/usr/bin/python3
"""What a page of rows costs, against one read by its key with the server's own client; what shipping costs, against
   posting the same bytes with curl to the same server; and how large the table is.
   bench_ship.py [--json] [--quick]"""
import http.client, json, os, random, shutil, statistics, subprocess, sys, tempfile, time, urllib.parse, urllib.request

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
QUICK = "--quick" in sys.argv  # shows that it runs, and does not judge
GOAL = 1.5
PAGE_GOAL = 3
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


def measure_page():
    """50 rows anywhere among many, as host/engine/RowQuery.cpp asks for them, over one connection."""
    rows, step = 1_000_000 if QUICK else 100_000_000, 1_000_000
    table = open(ROOT + "/docs/log_rows.sql").read().split(";\n")[0]
    ask(table.replace("log_rows", "pages"))
    of_session = "FROM pages WHERE machine = 'press-7' AND session = 'S' AND number"
    for first in range(0, rows, step):
        ask(f"INSERT INTO pages ({COLUMNS}) SELECT 'press-7', 'S', number + 1, 'Main', 16000000000000000 + number * 100, number % 4,"
            " if(number % 100, 0, 2), 0, number - number % 50, 0, 60, concat('worker ', toString(number % 16), ' handled request ',"
            f" toString(number), ' for user ', toString(number * 104729 % 10007)) FROM numbers({first}, {step})")
    address = urllib.parse.urlsplit(os.environ["QM_ENGINE_URL"])
    connection = http.client.HTTPConnection(address.netloc)
    client = ["clickhouse-client", "--host", address.hostname, "--port", open(os.environ["QM_ENGINE_FOLDER"] + "/tcp_port").read().strip(), "--time", "-q"]
    pages, reads = [], []
    for _ in range(21):
        first = random.randrange(1, rows - 50)
        sql = ("SELECT number, log, time, depth, kind, text FROM (SELECT number, log, time, depth, kind, text "
               f"{of_session} BETWEEN {first} AND {first + 49} ORDER BY number, log, length DESC LIMIT 1 BY number, log)"
               " ORDER BY number, log FORMAT JSONCompact")
        begin = time.perf_counter()
        connection.request("POST", "/?wait_end_of_query=1&query=" + urllib.parse.quote(sql), b"")
        found = connection.getresponse().read()
        pages.append(time.perf_counter() - begin)
        assert json.loads(found)["rows"] == 50
        told = subprocess.run([*client, f"SELECT * {of_session} = {random.randrange(1, rows)}"], check=True,
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True).stderr
        reads.append(float(told))
    page, read = statistics.median(pages), statistics.median(reads)
    ask("DROP TABLE pages")
    report("one row by its key", read * 1000, "ms")
    return report(f"a page of 50 of {rows} rows", page * 1000, "ms", "the client's read by the key", page / read, PAGE_GOAL)


def main():
    good = measure_page()
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
        good &= report(f"ship, {rows} rows", ship * 1000, "ms", "posting the same bytes", ratio, GOAL)
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
