"""Whether a file is a trace as public viewers take it: check_trace.py FILE [cut]

Events in order on each track, each begun slice ended, and none ended that was not begun. With "cut" the file may end
anywhere after an event, as that format allows. Prints the instants and slices."""
import json
import sys

text = open(sys.argv[1], encoding="utf-8").read()
cut = sys.argv[2:] == ["cut"]
events = json.loads(text if not cut or text.rstrip().endswith("]") else text + "]")
times, open_slices, names, counts = {}, {}, {}, {"i": 0, "B": 0, "E": 0}
for event in events:
    track = event["pid"], event["tid"]
    if event["ph"] == "M":
        assert event["name"] in ("process_name", "thread_name") and event["args"]["name"], event
        assert event["name"] != "thread_name" or track not in names, f"named twice: {event}"
        names[track] = event["args"]["name"]
        continue
    assert track in names, f"no name: {event}"
    assert event["ts"] >= times.get(event["pid"], 0), f"earlier than the event before: {event}"
    times[event["pid"]] = event["ts"]
    counts[event["ph"]] += 1
    slices = open_slices.setdefault(track, [])
    if event["ph"] == "E":
        assert slices, f"ends nothing: {event}"
        slices.pop()
        continue
    assert event["ph"] != "i" or event["s"] == "t", event
    depth = event["args"]["depth"]
    assert all(depth > outer for outer in slices[-1:]) or event["ph"] == "i" and depth == slices[-1], event
    if event["ph"] == "B":
        slices.append(depth)
assert cut or not any(open_slices.values()), open_slices
print(counts["i"], counts["B"])
