"""A tool server with one tool, "tide": the hour's height of water. One JSON text a line, both ways."""

import json
import sys

TOOL = {"name": "tide", "description": "Height of water in centimetres", "inputSchema": {
    "type": "object", "properties": {"hour": {"type": "integer"}}, "required": ["hour"]}}

for line in sys.stdin:
    request = json.loads(line)
    if "id" not in request:
        continue
    answer = {"jsonrpc": "2.0", "id": request["id"]}
    if request["method"] == "initialize":
        answer["result"] = {"protocolVersion": "2025-03-26", "capabilities": {"tools": {}},
                            "serverInfo": {"name": "tides", "version": "1"}}
    elif request["method"] == "tools/list":
        answer["result"] = {"tools": [TOOL]}
    elif request["method"] == "tools/call" and request["params"]["name"] == "tide":
        height = 200 - abs(6 - request["params"]["arguments"]["hour"] % 12) * 30
        answer["result"] = {"content": [{"type": "text", "text": f"{height} cm"}]}
    else:
        answer["error"] = {"code": -32601, "message": "no such thing"}
    # Compact: the caller looks for "id":1 without a blank.
    print(json.dumps(answer, separators=(",", ":")), flush=True)
