"""Writes a session as its writers do, bit by bit: make_session.py FOLDER STEPS [PAUSE]

Rows go out before their text and numbers before both. Texts are hostile: NUL, invalid UTF-8, quotes, a line of 1 MB.
Prints each row as a JSON array: log, number, depth, kind, whether it is a header, text."""
import json
import os
import random
import struct
import sys
import time

folder, steps = sys.argv[1], int(sys.argv[2])
pause = float(sys.argv[3]) if len(sys.argv) > 3 else 0
chance = random.Random(steps)
os.makedirs(folder, exist_ok=True)
logs = {name: [] for name in ("Main", "Run", "Extra")}  # the kinds of its open blocks
sizes = dict.fromkeys(logs, 0)
number = depth = 0
counters = open(f"{folder}/Log.DAT", "wb", buffering=0)
TEXTS = [b"plain", b"", b'quote " comma , back\\slash ]', b"\0nul\t\x1f", "größe 日志".encode(), b"code page \xe4\x80",
         b"carriage\r", b"x" * 1_000_000]
KINDS = ["plain", "notice", "error", "detail"]
for step in range(steps):
    name = chance.choice(list(logs))
    header = False
    if chance.random() < 0.2 and depth < 6:
        depth += 1
        logs[name].append((depth, chance.randrange(4)))
        header = True
    elif chance.random() < 0.25 and logs[name] and logs[name][-1][0] == depth:
        depth -= 1
        logs[name].pop()
    indent, kind = logs[name][-1] if logs[name] else (0, 0)
    text = TEXTS[-1] if step == steps // 2 else chance.choice(TEXTS[:-1])
    text += f" {step}".encode()
    number += 1
    lead = b"\n" if sizes[name] else b""
    counters.seek(0)  # the file is never empty again
    counters.write(struct.pack("<IBxxx", number, depth))
    with open(f"{folder}/{name}.ROW", "ab") as file:
        file.write(struct.pack("<IBxxxIBxxxI", sizes[name] + len(lead), indent, kind, header, number))
    with open(f"{folder}/{name}.LOG", "ab") as file:
        file.write(lead + text)
    sizes[name] += len(lead) + len(text)
    try:
        shown = text.decode()
    except UnicodeDecodeError:
        shown = text.decode("cp1252")
    print(json.dumps([name, number, indent, KINDS[kind], header, shown]))
    time.sleep(pause * chance.random())
