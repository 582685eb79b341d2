"""A tool server that misbehaves as its first argument tells: chatty:N, dead, deaf, stubborn or fine."""
import json
import signal
import sys
import time

mode, _, count = sys.argv[1].partition(":")
if mode == "stubborn":
    signal.signal(signal.SIGTERM, signal.SIG_IGN)
for line in sys.stdin:
    request = json.loads(line)
    print("note: on standard error", file=sys.stderr)
    if "id" not in request:
        continue
    for number in range(int(count or 0)):
        print(f"log {number}")
    answer = {"jsonrpc": "2.0", "id": request["id"], "result": {}}
    if request["method"] == "tools/call":
        if mode == "dead":
            sys.exit(1)
        parameters = request["params"]
        text = json.dumps(parameters, separators=(",", ":"))
        answer["result"] = {"content": [{"type": "text", "text": text}]}
        if parameters["name"] == "fails":
            answer = {"jsonrpc": "2.0", "id": request["id"], "error": {"code": 1}}
    if request["method"] == "tools/list":
        answer["result"] = {"tools": [{"name": "echo"}]}
    print(json.dumps(answer, separators=(",", ":")), end="\r\n", flush=True)
if mode == "stubborn":
    time.sleep(60)
