#!/usr/bin/env python3
"""What the examples of this folder reach: a page, and a chat service that counts words.

    service.py [port]        (default: any free one; it is printed)
"""

import http.server
import json
import sys

PAGE = """<html><head><title>Harbour office</title></head><body>
<p>Open from 8:30 to 17:00, on Fridays to 14:15.</p>
<a href="/tides.html">Tides</a> <a href="/berths.html">Berths</a>
</body></html>
"""


class Service(http.server.BaseHTTPRequestHandler):
    def answer(self, kind, text):
        body = text.encode()
        self.send_response(200)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def do_GET(self):
        if self.path == "/":
            self.answer("text/html", PAGE)
        else:
            self.send_error(404)

    def do_POST(self):
        asked = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
        words = len(asked["messages"][0]["content"].split())
        reply = f"I am {asked['model']}, and you asked in {words} words."
        self.answer("application/json", json.dumps({"choices": [{"message": {"role": "assistant", "content": reply}}]}))

    def log_message(self, *_):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", int(sys.argv[1]) if len(sys.argv) > 1 else 0), Service)
print(server.server_address[1], flush=True)
server.serve_forever()
