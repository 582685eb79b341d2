#!/usr/bin/env python3
"""A conversation with the published tool server that scripts/install_tool_server.sh installs:

    tool_server_test.py path/to/vorc folder

Where it isn't installed, the exit status is 77: left out."""

import os
import shutil
import subprocess
import sys

import loopback
import program

SERVER = os.path.join(os.path.realpath(sys.argv[2]), "node_modules/@modelcontextprotocol/server-everything/dist/index.js")
NODE = shutil.which("node")
if NODE is None or not os.path.exists(SERVER):
    print(f"left out: there is no {'node' if NODE is None else SERVER}")
    sys.exit(77)

BODY = f"""
  int h;
  int i;
  h = morv_mcp_connect("{NODE} {SERVER} stdio");
  $tools = morv_mcp_list_tools(h);
  printf("%d %s %d", h, morv_json_get($tools, "result.tools.0.name"), morv_strlen($tools));
  printf("%s", morv_mcp_call(h, "echo", "{{'message':'café \\\\\\\\ /'}}"));
  $sum = "";
  for (i = 0; i < 20; i++)
  {{
    $sum = morv_mcp_call(h, "get-sum", isprint("{{\\"a\\":", i, ",\\"b\\":40}}"));
  }}
  printf("%s", $sum);
  printf("%s", morv_json_get(morv_mcp_call(h, "get-structured-content", "{{'location':'Chicago'}}"), "temperature"));
  printf("%d", morv_starts_with(morv_mcp_call(h, "nothing", "{{}}"), "MCP error"));
  morv_mcp_disconnect(h);
"""

scripts = loopback.Scripts(sys.argv[1])
printed, errors = scripts.run(BODY)
program.check("a conversation", printed.splitlines(), ["1 echo 4095", "Echo: caf\xc3\xa9 \\ /", "The sum of 19 and 40 is 59.", "36", "1"])
program.check("nothing on standard error", errors, "")
left = subprocess.run(["pgrep", "-f", SERVER], capture_output=True, check=False).stdout
program.check("nothing is left", left, b"")
sys.exit(program.close(program.outcomes))
