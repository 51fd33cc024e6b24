"""Whether exported rows are those of the session: check_rows.py ROWS FORMAT FILE

ROWS is what make_session.py has printed. Read by the parsers of Python, which share nothing with the program."""
import csv
import json
import re
import sys

wanted = {row[1]: row for row in map(json.loads, open(sys.argv[1]))}
form, path = sys.argv[2:]


def syslog(line):
    head = re.fullmatch(r'<(\d+)>1 - M S - (\w+) \[row@32473 ((?:\w+="(?:[^"\\\]]|\\.)*" ?)+)\](?: (.*))?', line, re.S)
    values = dict(re.findall(r'(\w+)="((?:[^"\\\]]|\\.)*)"', head[3]))
    assert int(head[1]) == 8 + {"error": 3, "notice": 5, "plain": 6, "detail": 7}[values["kind"]], line
    text = re.sub("#([01][0-7]{2})", lambda code: chr(int(code[1], 8)), (head[4] or "").removeprefix("\ufeff"))
    return {**values, "machine": "M", "text": text}


if form == "jsonl":
    rows = [json.loads(line) for line in open(path, encoding="utf-8", newline="\n")]
elif form == "csv":
    csv.field_size_limit(1 << 30)
    rows = list(csv.DictReader(open(path, encoding="utf-8", newline="")))
else:
    rows = [syslog(line.rstrip("\n")) for line in open(path, encoding="utf-8", newline="\n")]
flags = {True: True, False: False, "true": True, "false": False}
numbers = [int(row["number"]) for row in rows]
assert sorted(numbers) == sorted(wanted), (len(numbers), len(wanted), set(wanted) ^ set(numbers))
for row in rows:
    got = [row["log"], int(row["number"]), int(row["depth"]), row["kind"], flags[row["header"]], row["text"]]
    assert got == wanted[got[1]], (got, wanted[got[1]])
    assert (row["session"], row["machine"]) == ("S", "M"), row
