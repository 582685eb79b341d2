"""A tool server that behaves as its first argument tells: fine, chatty:LINES (lines before each answer),
dead (ends at a call), deaf (answers no call), half (ends within its answer), long:BYTES (of a text),
garbage (bytes that are no text first), endless (a line without an end), stubborn (doesn't end)."""
import json
import signal
import sys
import time

mode, _, count = sys.argv[1].partition(":")
if mode == "stubborn":
    signal.signal(signal.SIGTERM, signal.SIG_IGN)
    signal.signal(signal.SIGHUP, signal.SIG_IGN)


def write(data):
    sys.stdout.buffer.write(data)
    sys.stdout.buffer.flush()


for line in sys.stdin:
    request = json.loads(line)
    print("note: on standard error", file=sys.stderr)
    if "id" not in request:
        continue
    if mode == "chatty":
        write(b"".join(b"log %d\n" % number for number in range(int(count))))
    if mode == "garbage":
        write(bytes(range(256)) * 40 + b"\n\0\0\0\r\r\n")
    answer = {"jsonrpc": "2.0", "id": request["id"], "result": {}}
    if request["method"] == "tools/call":
        if mode == "dead":
            sys.exit(1)
        if mode == "deaf":
            continue
        while mode == "endless":
            write(b"x" * 65536)
        parameters = request["params"]
        text = "x" * int(count) if mode == "long" else json.dumps(parameters, separators=(",", ":"))
        answer["result"] = {"content": [{"type": "text", "text": text}]}
        if parameters["name"] == "fails":
            answer = {"jsonrpc": "2.0", "id": request["id"], "error": {"code": 1}}
        if parameters["name"] == "length":
            answer["result"]["content"][0]["text"] = str(len(line))
    if request["method"] == "tools/list":
        answer["result"] = {"tools": [{"name": "echo"}]}
    told = json.dumps(answer, separators=(",", ":")).encode() + b"\r\n"
    if mode == "half" and request["method"] == "tools/call":
        write(told[:-5])
        sys.exit(0)
    write(told)
if mode == "stubborn":
    time.sleep(60)
